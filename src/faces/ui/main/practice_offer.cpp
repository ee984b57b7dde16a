#include "ui/main/practice_offer.h"

#include "app/practice_library.h"
#include "core/file_kinds.h"
#include "editor/find_trle.h"
#include "editor/folder_test.h"
#include "formats/trle_folder.h"
#include "session/operation.h"
#include "ui/desktop/file_names.h"
#include "ui/widgets/qt_text.h"
#include "words/ui_main.h"

#include <QDir>

namespace kestrova
{

namespace
{

/// What cannot be listed counts as filled: the practice folder is made below it, or refused there.
bool IsEmptyFolder(const Path& folder)
{
    const auto files = ListFiles(folder, OnDisk::PatAll);
    const auto folders = ListSubfolders(folder);
    return files && folders && files->empty() && folders->empty();
}

std::optional<PracticeMade> Make(Host& host, const Path& folder)
{
    const auto made = MakePracticeShown(host, folder);
    if (made)
        return *made;
    TellPracticeFailed(host, made.Error());
    return std::nullopt;
}

} // namespace

std::optional<Path> OfferPracticeFolder(Session& session)
{
    const auto chosen =
        session.host.ChooseFolder(GetMsg(Msg::ChoosePracticePlace), PathFromQt(QDir::homePath()));
    if (!chosen)
        return std::nullopt;
    const Operation operation{session};
    const Path below = *chosen / OnDisk::PracticeFolderName;
    for (const Path& there :
         {*chosen, *chosen / OnDisk::LastPartTrle, below / OnDisk::LastPartTrle})
        if (IsTrleFolder(session.host, session.Folders(), session.preferences, there, false))
            return there;
    const auto made = Make(session.host, IsEmptyFolder(*chosen) ? *chosen : below);
    if (!made)
        return std::nullopt;
    if (!made->remark.empty())
        session.host.Tell(Tone::Plain, made->remark);
    KnowPracticePlaces(session, made->trle, made->levels);
    return made->trle;
}

} // namespace kestrova
