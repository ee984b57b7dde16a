// What a person does in the main window: searching, and the buttons' and menu's commands.
#include "ui/main/main_window.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "intake/edit_level.h"
#include "levels/export_level.h"
#include "levels/level_life.h"
#include "levels/more_info.h"
#include "library/level_list.h"
#include "play/play_level.h"
#include "ui/dialogs/dialog_author.h"
#include "ui/dialogs/dialog_new_level.h"
#include "ui/dialogs/dialog_pref_arc.h"
#include "ui/main/level_details.h"
#include "ui/main/main_menu.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/qt_text.h"
#include "upkeep/archive_life.h"
#include "upkeep/new_archive.h"
#include "words/archive.h"
#include "words/levels.h"
#include "words/ui_main.h"

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStatusBar>

namespace kestrova
{

void MainWindow::SearchTyped(const QString& text)
{
    {
        // The list forgets its place when its rows change.
        const QSignalBlocker quiet{view_->selectionModel()};
        model_->SetSearch(FromQt(text));
    }
    if (model_->rowCount() > 0 && (!chosen_ || model_->ShownRowOf(*chosen_) < 0))
        ChooseRow(model_->RowOf(model_->CodeAt(0)));
    MarkChosen();
    ShowCounts();
}

void MainWindow::SearchFirst()
{
    const std::string text{Trim(FromQt(search_->text()))};
    const std::ptrdiff_t row = FindRow(model_->Rows(), text, 0, 1);
    if (row >= 0) {
        ChooseRow(row);
        MarkChosen();
        view_->setFocus();
    } else if (!text.empty()) {
        Run([this] { session_.host.Tell(Tone::Plain, GetMsg(Msg::NotFound)); });
    }
}

void MainWindow::SearchOn(int step)
{
    const std::string text{Trim(FromQt(search_->text()))};
    const std::ptrdiff_t from = chosen_ ? model_->RowOf(*chosen_) + step : 0;
    const std::ptrdiff_t row = FindRow(model_->Rows(), text, from, step);
    if (row >= 0) {
        ChooseRow(row);
        MarkChosen();
    } else if (!text.empty()) {
        Run([this] { session_.host.Tell(Tone::Plain, GetMsg(Msg::NotFound)); });
    }
}

QString MainWindow::EmptyWords() const
{
    if (!session_.archive.Loaded())
        return Words(Msg::EmptyNoArchive, {lineBreak});
    if (model_->rowCount() == 0)
        return Words(Msg::EmptyNoHit, {FromQt(search_->text().trimmed()), lineBreak});
    if (session_.archive.levels.size() == 1)
        return Words(Msg::EmptyNoLevels, {lineBreak});
    return {};
}

void MainWindow::ShowCounts()
{
    const QString words = EmptyWords();
    empty_->setText(words);
    empty_->setVisible(!words.isEmpty());
    const int all = static_cast<int>(model_->Rows().size());
    for (const char* button : {"Pul_Search", "Pul_Prima", "Pul_Dopo"})
        findChild<QWidget*>(QString::fromLatin1(button))->setEnabled(all > 0);
    const int shown = model_->rowCount();
    counts_->setText(all == shown
                         ? all == 1 ? Words(Msg::CountOneLevel)
                                    : Words(Msg::CountLevels, {std::to_string(all)})
                         : Words(Msg::CountMatches, {std::to_string(shown), std::to_string(all)}));
}

void MainWindow::Play()
{
    Run([this] {
        if (!chosen_)
            return session_.host.Tell(Tone::Error, GetMsg(Msg::NoLevelToPlay));
        if (!PlayLevel(session_, *chosen_))
            return;
        statusBar()->showMessage(Words(Msg::GameStarted, {LevelNameOf(session_, *chosen_)}),
                                 statusMs);
        GameHasStarted();
    });
}

void MainWindow::MoreInfo()
{
    Run([this] {
        if (!chosen_)
            return session_.host.Tell(Tone::Error, GetMsg(Msg::NoLevelSelected));
        ShowMoreInfo(session_, *chosen_);
    });
}

void MainWindow::ShowAuthor()
{
    const std::ptrdiff_t index = chosen_ ? FindLevel(session_, *chosen_) : -1;
    if (index >= 0 && session_.runningOperations == 0)
        AuthorDialog(session_, static_cast<std::size_t>(index), this).exec();
}

void MainWindow::ExportChosen()
{
    if (chosen_)
        ExportLevel(session_, *chosen_);
    else
        session_.host.Tell(Tone::Error, GetMsg(Msg::NoLevelToPlay));
}

void MainWindow::SaveCurrentArchive()
{
    if (!HasArchive(session_))
        return;
    const auto written = WriteArchive(session_, session_.ArchivePath());
    if (written)
        statusBar()->showMessage(Words(Msg::ArchiveSaved), statusMs);
    else
        TellFailure(session_, GetMsg(Msg::ErrorSavingArchive) + TextOf(session_.ArchivePath()),
                    written.Error());
}

void MainWindow::NewArchive()
{
    const bool had = session_.archive.Loaded();
    if (CreateArchive(session_) || session_.archive.Loaded() || !had)
        return;
    // The list in memory belongs to no file now; nobody has to look for the old one.
    const std::string name = TextOf(session_.RememberedArchive().filename());
    if (session_.host.AskYesNo(GetMsg(Msg::AskBackToArchive, {name}), Consent::YesKeeps))
        (void)ReadLastArchive(session_); // it tells why when it cannot
}

void MainWindow::EditArchivePreferences()
{
    if (session_.runningOperations == 0 && HasArchive(session_))
        ArchiveDialog(session_, this).exec();
}

void MainWindow::AddLevelFrom(const std::vector<Path>& sources)
{
    if (session_.runningOperations > 0 || !HasArchive(session_))
        return;
    NewLevelDialog dialog{session_, this};
    LevelCode code = 0;
    if (AddLevel(
            session_, dialog.Progress(), [&](Intake& level) { return dialog.Show(level, sources); },
            code))
        statusBar()->showMessage(Words(Msg::LevelAdded, {LevelNameOf(session_, code)}), statusMs);
}

void MainWindow::EditChosen()
{
    if (session_.runningOperations > 0)
        return;
    if (!chosen_)
        return session_.host.Tell(Tone::Error, GetMsg(Msg::NoLevelSelected));
    NewLevelDialog dialog{session_, this};
    EditLevel(session_, dialog.Progress(), *chosen_,
              [&](Intake& level) { return dialog.Show(level); });
}

void MainWindow::RemoveChosen()
{
    if (!chosen_)
        return session_.host.Tell(Tone::Error, GetMsg(Msg::NoLevelSelected));
    RemoveLevel(session_, *chosen_);
}

} // namespace kestrova
