#include "swap/kept_originals.h"

#include "core/name_list.h"
#include "originals/vault.h"
#include "session/operation.h"
#include "session/telling.h"
#include "swap/folder_guard.h"
#include "swap/recovery.h"
#include "words/originals.h"
#include "words/session.h"

#include <algorithm>

namespace kestrova
{

bool BringOriginalBackTold(Session& session, const std::string& id)
{
    const Operation operation{session};
    if (!RecoverInterruptedWork(session))
        return false;
    const auto failed = [&](const Failure& failure) {
        TellFailure(session.host, GetMsg(Msg::OriginalNotBroughtBack), failure);
        return false;
    };
    const auto folder = FolderOfKept(session.Folders(), id);
    if (!folder)
        return failed(folder.Error());
    if (const auto held = session.locks.Hold(*folder); !held) {
        TellFailure(session.host, GetMsg(Msg::FolderNotLocked, {TextOf(*folder)}), held.Error());
        return false;
    }
    // Another folder may be in use by now; the file goes where it stood.
    Folders folders = session.Folders();
    folders.trle = *folder;
    const bool may = MayChangeTrle(session, folders);
    const auto place = may ? BringOriginalBack(session.machine, folders, id) : Result<Path>{Path{}};
    if (*folder != session.TrleFolder())
        session.locks.Release(*folder);
    if (!may)
        return false;
    if (!place)
        return failed(place.Error());
    session.host.Tell(Tone::Plain, GetMsg(Msg::OriginalBroughtBack, {TextOf(*place)}));
    return true;
}

bool DeleteOriginalsTold(Session& session, const std::vector<std::string>& ids)
{
    const Operation operation{session};
    const auto failed = [&](const Failure& failure) {
        TellFailure(session.host, GetMsg(Msg::OriginalNotDeleted), failure);
        return false;
    };
    const auto kept = KeptFiles(session.Folders());
    if (!kept)
        return failed(kept.Error());
    std::vector<std::string> names;
    for (const std::string& id : ids) {
        const auto file = std::find_if(kept->begin(), kept->end(),
                                       [&](const KeptFile& one) { return one.id == id; });
        if (file == kept->end())
            return failed({ErrorCode::Missing, GetMsg(Msg::OriginalsUnknownId, {id}), {}});
        names.push_back(Readable(file->file));
    }
    if (!session.host.AskYesNo(GetMsg(Msg::AskDeleteOriginals, {ShownNames(names)})))
        return false;
    for (const std::string& id : ids)
        if (const auto deleted = DeleteKept(session.Folders(), id); !deleted)
            return failed(deleted.Error());
    return true;
}

} // namespace kestrova
