#pragma once

#include "ui/main/level_model.h"

#include <QWidget>
#include <functional>

class QLabel;
class QLineEdit;
class QListView;

namespace kestrova
{

/// `Frame_Livelli`: the list of levels with its search. It knows which level is chosen.
class LevelListPane : public QWidget
{
public:
    explicit LevelListPane(Session& session, QWidget* parent = nullptr);

    /// The person has chosen another level, which may be one of many on the way.
    std::function<void(LevelCode)> passed = [](LevelCode) {};
    /// The chosen level is wanted: Return, or a double click.
    std::function<void()> activated = [] {};
    /// A right click on the chosen level, at that place of the screen.
    std::function<void(QPoint)> menuWanted = [](QPoint) {};

    /// Rows from the session; the chosen level stays, otherwise the first one is chosen.
    void Refresh();
    /// False for a level that the list does not have.
    bool Choose(LevelCode code);
    [[nodiscard]] std::optional<LevelCode> Chosen() const { return chosen_; }

    void FocusList();
    void FocusSearch();
    /// The match before (-1) or behind (1) the chosen level; without a search text the next row.
    void SearchOn(int step);

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void MakeSearch();
    void MakeView();
    QLayout* MakeTop();
    QLayout* MakeBottom();
    void SearchTyped(const QString& text);
    void SearchFirst();
    void TellNotFound();
    void RowChosen(const QModelIndex& index);
    void ChooseRow(std::ptrdiff_t row);
    void MarkChosen();
    void ShowCounts();
    void WantMenu(QPoint place);
    [[nodiscard]] QString EmptyWords() const;

    Session& session_;
    LevelModel* model_;
    QLineEdit* search_;
    QListView* view_;
    QLabel* empty_ = nullptr;
    QLabel* counts_;
    std::vector<QWidget*> searchButtons_; ///< without levels they do nothing
    std::optional<LevelCode> chosen_;
};

} // namespace kestrova
