#include "swap/kept_originals.h"

#include "originals/vault.h"
#include "session/operation.h"
#include "session/telling.h"
#include "swap/folder_guard.h"
#include "swap/recovery.h"
#include "words/originals.h"
#include "words/session.h"

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

} // namespace kestrova
