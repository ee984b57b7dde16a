#pragma once

#include "saves/level_savegames.h"
#include "words/message.h"

#include <QWidget>
#include <functional>
#include <set>
#include <string_view>

class QLabel;
class QLayout;
class QPoint;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace kestrova
{

class ElidedParagraph;
class FittedColumns;
class PictureView;

/// All savegames of the chosen level: those in the game's slots, in its archive slots and in the
/// history, and what can be done with them. They are read when the page is seen.
class SavegamesPage : public QWidget
{
public:
    SavegamesPage(Session& session, QWidget* parent);

    void ShowLevel(LevelCode code);
    void ShowNothing();

    /// A command of the menu is wanted, by the name of its item.
    std::function<void(std::string_view)> command = [](std::string_view) {};
    /// Something is about to be done, and then a line about what went well.
    std::function<void()> begins = [] {};
    std::function<void(const std::string&)> note = [](const std::string&) {};

protected:
    void showEvent(QShowEvent* event) override;

private:
    using Chosen = std::vector<LevelSavegame>;
    QLayout* MakeBeside();
    QWidget* MakeButtons();
    QPushButton* Button(const char* name, Message caption, Message tip,
                        void (SavegamesPage::*does)());
    void Read();
    void Fill();
    QTreeWidgetItem* AddGroup(const QString& words, bool open);
    void AddRow(QTreeWidgetItem& group, std::size_t index);
    [[nodiscard]] Chosen ChosenOnes() const;
    void ShowButtons();
    void ShowBeside();
    void ShowMenu(QPoint place);
    void Bring();
    void Export();
    void Delete();
    void FreeSlots();
    void FillSlots();
    void Import(const std::vector<Path>& files);

    Session& session_;
    std::optional<LevelCode> code_;
    bool read_ = false; ///< the list is of that level, as it was when it was shown
    Chosen savegames_;
    std::set<std::pair<SavegamePlace, int>> closed_; ///< groups that the person has closed
    QLabel* empty_;
    QTreeWidget* list_;
    FittedColumns* columns_ = nullptr;
    PictureView* picture_;
    ElidedParagraph* words_;
    QPushButton* bring_ = nullptr;
    QPushButton* export_ = nullptr;
    QPushButton* delete_ = nullptr;
    QPushButton* free_ = nullptr;
    QPushButton* fill_ = nullptr;
};

} // namespace kestrova
