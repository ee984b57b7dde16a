// The main window's commands on screen-shots.
#include "ui/main/main_window.h"

#include "archive/level_folders.h"
#include "shots/shot_commands.h"
#include "ui/dialogs/dialog_import_shot.h"
#include "ui/dialogs/dialog_resize.h"
#include "ui/dialogs/dialog_screen_shot.h"
#include "ui/dialogs/shot_panes.h"
#include "ui/main/level_details.h"
#include "words/ui_main.h"

#include <QMenu>

namespace kestrova
{

std::map<std::string, std::function<void()>> MainWindow::ShotCommands()
{
    const auto on = [this](bool (*command)(Session&, ShotList&)) {
        return [this, command] {
            Run([this, command] {
                if (!chosen_)
                    return;
                if (showSoon_.isActive())
                    ShowChosen(); // the panes are those of the level that is chosen now
                ShotPanes& panes = details_->Shots();
                command(session_, panes.List());
                panes.ShowPair();
            });
        };
    };
    return {{"mnu_AddScreenshot", on(AddShot)},
            {"mnu_DeleteShot", on(DeleteShot)},
            {"mnu_RenameShot", on(RenameShot)},
            {"mnu_SaveShot", on(SaveShotAs)},
            {"mnu_ResizeSave", [this] { ResizeShot(); }},
            {"mnu_CopyScreenShots", [this] { ImportShotsOfStore(); }},
            {"mnu_CaptureScreen", [this] {
                 Run([this] {
                     session_.host.Tell(Tone::Plain, GetMsg(Msg::CaptureOnlyInPlay, {lineBreak}));
                 });
             }}};
}

void MainWindow::ConnectShots()
{
    details_->Shots().zoomed = [this](std::ptrdiff_t index) { ZoomShot(index); };
    details_->Shots().menuWanted = [this](QPoint place) {
        if (session_.runningOperations == 0)
            findChild<QMenu*>(QStringLiteral("mnu_Edit"))->popup(place);
    };
}

void MainWindow::ZoomShot(std::ptrdiff_t index)
{
    if (session_.runningOperations == 0 && chosen_)
        ScreenShotDialog(details_->Shots().List(), index, this).exec();
}

void MainWindow::ResizeShot()
{
    std::optional<Path> shot;
    Run([&] {
        if (!chosen_)
            return;
        if (showSoon_.isActive())
            ShowChosen();
        shot = ShotToResize(session_, details_->Shots().List());
    });
    if (shot && ResizeDialog(session_, *shot, this).exec() == QDialog::Accepted)
        ShowChosen();
}

void MainWindow::ImportShotsOfStore()
{
    const std::ptrdiff_t index =
        chosen_ && session_.runningOperations == 0 ? FindLevel(session_, *chosen_) : -1;
    if (index < 0)
        return;
    if (ImportShotDialog(session_, static_cast<std::size_t>(index), this).exec() ==
        QDialog::Accepted)
        ShowChosen();
}

} // namespace kestrova
