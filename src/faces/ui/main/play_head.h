#pragma once

#include "ui/widgets/elided_label.h"
#include "words/message.h"

#include <QWidget>
#include <functional>
#include <optional>
#include <string>

class QPushButton;

namespace kestrova
{

/// Minutes, or hours and minutes; less than a minute is one.
std::string PlayedInWords(std::int64_t seconds);

/// What is going on with the game.
struct PlayNow {
    enum class Step { Nothing, Installs, Starts, Runs };
    Step step = Step::Nothing;
    std::string level; ///< the name of the level that stands in the folder; empty: nobody knows
    std::int64_t seconds = 0; ///< for how long it runs
    bool isOurs = false;      ///< it was started here, and can be ended here
};

/// The Play button, which says what is going on, with what can be done while a game runs below it.
class PlayHead : public QWidget
{
public:
    explicit PlayHead(QWidget* parent);

    /// `isChosen`: the level that stands in the folder is the one that is shown.
    void Show(const PlayNow& now, bool isChosen);
    /// The button is no higher than its words and its picture, where there is little room.
    void SetLow(bool low);
    [[nodiscard]] QPushButton* PlayButton() const { return play_; }
    /// What is going on, in words; it stands where there is room for it.
    [[nodiscard]] QWidget* Line() const { return line_; }

    std::function<void()> showWanted = [] {};
    std::function<void()> stopWanted = [] {};

private:
    QPushButton* Small(const char* name, Message caption, Message tip);

    QPushButton* play_;
    QPushButton* show_;
    QPushButton* stop_;
    ElidedLabel* line_;
    QString caption_; ///< of the button while nothing is going on, with its letter
};

} // namespace kestrova
