#pragma once

#include "session/session.h"
#include "ui/main/level_view.h"
#include "ui/main/list_place.h"

#include <QWidget>
#include <functional>

class QSettings;
class QToolButton;

namespace kestrova
{

/// In lines of text: what is lower than that, or narrower in letters, is a pane of a small screen.
constexpr int lowLines = 15;
constexpr int narrowLetters = 40;

class LibraryBar;
class LibraryFoot;
class LibrarySource;
class SearchField;

/// `Frame_Livelli`: the list of levels with its search, its order and its filter. It knows which
/// level is chosen.
class LevelListPane : public QWidget
{
public:
    explicit LevelListPane(Session& session, QWidget* parent = nullptr);

    /// Another level is chosen, which may be one of many on the way; no value when none is left.
    std::function<void(std::optional<LevelCode>)> passed = [](std::optional<LevelCode>) {};
    /// The chosen level is wanted: Return, or a double click.
    std::function<void()> activated = [] {};
    /// A right click on a chosen level, at that place of the screen.
    std::function<void(QPoint)> menuWanted = [](QPoint) {};
    /// The chosen levels are to be deleted: the key for it, in the list.
    std::function<void()> removalWanted = [] {};

    /// Order, filter, columns or covers are other ones now, by the person's will.
    std::function<void()> lookChanged = [] {};

    /// Rows from the session; the chosen level stays, otherwise the first one is chosen. Whoever
    /// asks shows the chosen level anew.
    void Refresh();
    /// While a command works on the levels: where the chosen one goes, the one that comes into its
    /// place is chosen, not the first.
    void KeepPlace(bool keep) { keepsPlace_ = keep; }
    /// A level that the list does not have is none. One that is hidden is not chosen.
    void Choose(LevelCode code);
    /// Chooses a level, and shows all of them where it would be hidden.
    void Reveal(LevelCode code);
    /// No value while the list shows no level.
    [[nodiscard]] std::optional<LevelCode> Chosen() const;
    /// All that are chosen, in the order of the list.
    [[nodiscard]] std::vector<LevelCode> ChosenAll() const;
    [[nodiscard]] std::vector<LibraryLevel> ChosenLevels() const;
    /// What is noted of a level: who shows it too asks here, so that the file is read once.
    [[nodiscard]] LevelNote NoteOf(LevelCode code) const;
    /// Of all levels.
    [[nodiscard]] std::vector<std::string> Tags() const { return model_->Shown().Tags(); }

    void FocusList();
    void FocusSearch();
    /// The level before (-1) or behind (1) the chosen one, of those that are shown.
    void SearchOn(int step);
    void SetLook(LibraryLook look);

    void RememberLook(QSettings& places) const;
    void RestoreLook(const QSettings& places);

    bool eventFilter(QObject* object, QEvent* event) override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void MakeSearch();
    void MakeView();
    void MakeBar();
    void MakeFoot();
    QLayout* MakeTop();
    /// Rows change by that work, and who is chosen stays chosen.
    template <class Work> void Change(const Work& work);
    void SetOrder(LibraryOrder order, bool turned);
    void SearchTyped(const QString& text);
    void SearchFirst();
    void TellNotFound();
    void RowChosen(const QModelIndex& index);
    void ChooseRow(int row);
    void TellChosen();
    /// Rows have changed: a level that is shown is chosen, and marked.
    void ChooseShown(const ListPlace& before);
    void MarkChosen();
    void ShowCounts();
    void WantMenu(QPoint place);

    Session& session_;
    LevelModel* model_;
    LevelView* view_;
    SearchField* search_;
    LibraryBar* bar_;
    LibrarySource* source_;
    LibraryFoot* foot_;
    QToolButton* find_;
    std::optional<LevelCode> chosen_; ///< it may be hidden while no level is shown
    std::optional<LevelCode> told_;   ///< what the others were told is chosen
    Path shownArchive_;
    bool keepsPlace_ = false;
};

} // namespace kestrova
