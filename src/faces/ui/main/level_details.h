#pragma once

#include "library/level_list.h"
#include "library/library_levels.h"
#include "ui/main/play_head.h"
#include "ui/widgets/elided_label.h"

#include <QPushButton>

class QBoxLayout;
class QTabWidget;

namespace kestrova
{

struct LevelMarks;
class LevelFilesPage;
class LevelLogPage;
class LinkButton;
class MarksBox;
class SavegamesPage;
class ShotPanes;

/// The chosen level: its name, the Play button, and its pages: note, pictures and facts; savegames;
/// files; documents; log.
class LevelDetails : public QWidget
{
public:
    explicit LevelDetails(Session& session, QWidget* parent = nullptr);

    /// What the record alone knows, at once.
    void ShowRecord(const LevelRecord& record);
    /// The rest: facts and pictures from the disk.
    void ShowFacts(Session& session, const LevelFacts& facts);
    void ShowNothing();
    void ShowActivity(const QString& text);
    void ShowPlay(const PlayNow& now);
    void OpenSavegames();
    /// What somebody types on the level is stored now.
    void EndTyping();

    /// What is noted of a level.
    NoteOfLevel noteOf = [](LevelCode) { return LevelNote{}; };
    /// Something is about to be done, and it is over; or a line about what went well.
    std::function<void()> begins = [] {};
    std::function<void()> ends = [] {};
    std::function<void(const std::string&)> note = [](const std::string&) {};

    [[nodiscard]] PlayHead& Head() const { return *head_; }
    [[nodiscard]] SavegamesPage& Savegames() const { return *saves_; }
    [[nodiscard]] ShotPanes& Shots() const { return *shots_; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QLayout* MakeHead();
    void MakeOverview();
    QLayout* MakeFacts();
    QWidget* MakeButtons();
    void AllowButtons(bool allowed);
    void ShowNote(const QString& words);
    void ShowSizes(double files, double extras);
    void ShowAuthor(const LevelRecord& record);
    void OpenAuthor();
    void CountSavegames(int live, int archived);
    void Mark(LevelCode code, const LevelMarks& marks);
    void AddPictures(const std::vector<Path>& files);

    Session& session_;
    std::optional<LevelCode> shown_; ///< of the level that is shown whole
    bool stands_ = false;            ///< it stands in the Level Editor's folder
    PlayNow playing_;
    QBoxLayout* top_; ///< the name and the Play button
    PlayHead* head_;
    QTabWidget* tabs_;
    QWidget* overview_; ///< the first page
    ElidedLabel* name_;
    ElidedLabel* installed_;
    ElidedParagraph* note_;
    ShotPanes* shots_;
    LinkButton* author_;
    ElidedLabel* sizes_;
    ElidedLabel* code_;
    ElidedLabel* place_;
    QWidget* buttons_;
    QPushButton* moreInfo_;
    QPushButton* authorInfo_;
    QPushButton* saveGames_;
    SavegamesPage* saves_;
    LevelFilesPage* files_;
    LevelFilesPage* documents_;
    LevelLogPage* log_;
    MarksBox* marks_;
};

} // namespace kestrova
