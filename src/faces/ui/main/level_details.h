#pragma once

#include "library/level_list.h"
#include "ui/widgets/elided_label.h"

#include <QPushButton>
#include <QWidget>

namespace kestrova
{

class ShotPanes;

/// The chosen level: its name and note, the Play button, pictures, facts.
class LevelDetails : public QWidget
{
public:
    explicit LevelDetails(QWidget* parent = nullptr);

    /// What the record alone knows, at once.
    void ShowRecord(const LevelRecord& record);
    /// The rest: facts and pictures from the disk.
    void ShowFacts(Session& session, const LevelFacts& facts);
    void ShowNothing();
    void ShowActivity(const QString& text);

    [[nodiscard]] QPushButton* PlayButton() const { return play_; }
    [[nodiscard]] ShotPanes& Shots() const { return *shots_; }
    [[nodiscard]] QPushButton* MoreInfoButton() const { return moreInfo_; }
    [[nodiscard]] QPushButton* AuthorButton() const { return authorInfo_; }
    [[nodiscard]] QPushButton* SaveGamesButton() const { return saveGames_; }

private:
    QLayout* MakeHead();
    QLayout* MakeFacts();
    QLayout* MakeButtons();

    ElidedLabel* name_;
    QPushButton* play_;
    ElidedLabel* installed_;
    ElidedParagraph* note_;
    ShotPanes* shots_;
    ElidedLabel* author_;
    ElidedLabel* sizes_;
    ElidedLabel* code_;
    ElidedLabel* place_;
    QPushButton* moreInfo_;
    QPushButton* authorInfo_;
    QPushButton* saveGames_;
};

} // namespace kestrova
