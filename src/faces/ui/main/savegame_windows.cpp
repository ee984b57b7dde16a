#include "ui/main/savegame_windows.h"

#include "platform/places.h"
#include "saves/savegame_watch.h"
#include "session/operation.h"
#include "ui/dialogs/dialog_list_savegame.h"
#include "ui/dialogs/dialog_savegame_history.h"
#include "words/saves.h"
#include "words/ui_main.h"

#include <QTimer>

#include <memory>

namespace kestrova
{

namespace
{

constexpr int watchMs = 150;

/// Prepares the list, shows it, and shows the level anew when something was done.
void ShowList(Session& session, ListPurpose purpose, const Path& folder, QWidget* window)
{
    SavegameList rules{session, purpose};
    bool prepared = false;
    {
        const Operation operation{session};
        prepared = rules.Prepare(folder);
    }
    if (!prepared || ListSavegameDialog{session, rules, window}.exec() != QDialog::Accepted ||
        purpose == ListPurpose::Mail)
        return;
    if (const auto code = session.list.Selected())
        session.list.Select(*code);
}

} // namespace

void ShowSavegames(Session& session, ListPurpose purpose, QWidget* window)
{
    ShowList(session, purpose, {}, window);
}

void ShowSavegameImport(Session& session, QWidget* window)
{
    std::optional<Path> folder;
    {
        const Operation operation{session};
        folder =
            session.host.ChooseFolder(GetMsg(Msg::ChooseImportFolder), platform::CurrentFolder());
    }
    if (folder)
        ShowList(session, ListPurpose::Import, *folder, window);
}

void ShowSavegameHistory(Session& session, QWidget* window)
{
    if (const auto code = session.list.Selected())
        SavegameHistoryDialog{session, *code, window}.exec();
    else
        session.host.Tell(Tone::Error, GetMsg(Msg::NoLevelForSavegames));
}

void WatchSavegames(Session& session, QWidget* window, std::function<bool()> gameRuns)
{
    auto* timer = new QTimer(window);
    QObject::connect(
        timer, &QTimer::timeout, window,
        [&session, gameRuns = std::move(gameRuns), watch = std::make_shared<SavegameWatch>()] {
            watch->Tick(session, gameRuns());
        });
    timer->start(watchMs);
}

} // namespace kestrova
