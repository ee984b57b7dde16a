#include "ui/main/practice_offer.h"

#include "app/disc_drives.h"
#include "core/file_kinds.h"
#include "editor/find_trle.h"
#include "editor/folder_test.h"
#include "formats/trle_folder.h"
#include "platform/places.h"
#include "practice/practice_folder.h"
#include "session/operation.h"
#include "session/telling.h"
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
    const auto progress = host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::MakingPractice));
    progress->AllowStop();
    const auto made = MakePracticeFolder(folder, StandInsIn(platform::ExecutableFolder()),
                                         [&](int done, int total, const std::string& what) {
                                             progress->SetLabel(what);
                                             progress->SetBar(static_cast<std::uint64_t>(done),
                                                              static_cast<std::uint64_t>(total));
                                             return progress->Step();
                                         });
    if (made)
        return *made;
    if (made.Error().code != ErrorCode::Stopped)
        TellFailure(host, GetMsg(Msg::WindowPracticeFailed), made.Error());
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
    if (Trim(session.preferences.downloadFolder) == OnDisk::DefaultDownloadFolder)
        session.preferences.downloadFolder = made->levels.native();
    AddPracticeDrive(session.settings, made->trle);
    return made->trle;
}

} // namespace kestrova
