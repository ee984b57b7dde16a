#include "ui/main/play_head.h"

#include "ui/widgets/icons.h"
#include "ui/widgets/letter_size.h"
#include "ui/widgets/qt_text.h"
#include "words/captions.h"
#include "words/level_page.h"
#include "words/ui_main.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace kestrova
{

namespace
{

constexpr double playScale = 1.25;
constexpr int secondsOfMinute = 60;
constexpr int minutesOfHour = 60;

Message ButtonOf(PlayNow::Step step)
{
    switch (step) {
    case PlayNow::Step::Installs:
        return Msg::PlayInstalling;
    case PlayNow::Step::Starts:
        return Msg::PlayStarting;
    case PlayNow::Step::Runs:
        return Msg::PlayRunning;
    case PlayNow::Step::Nothing:
        break;
    }
    return {};
}

QString LineOf(const PlayNow& now)
{
    switch (now.step) {
    case PlayNow::Step::Installs:
        return Words(Msg::PlayLineInstalls, {now.level});
    case PlayNow::Step::Starts:
        return Words(Msg::PlayLineStarts, {now.level});
    case PlayNow::Step::Runs:
        return now.level.empty()
                   ? Words(Msg::PlayLineRunsUnknown)
                   : Words(Msg::PlayLineRuns, {now.level, PlayedInWords(now.seconds)});
    case PlayNow::Step::Nothing:
        break;
    }
    return {};
}

} // namespace

std::string PlayedInWords(std::int64_t seconds)
{
    const std::int64_t minutes =
        seconds > 0 ? std::max<std::int64_t>(seconds / secondsOfMinute, 1) : 0;
    if (minutes < minutesOfHour)
        return GetMsg(Msg::PlayTimeMinutes, {std::to_string(minutes)});
    return GetMsg(Msg::PlayTimeHours, {std::to_string(minutes / minutesOfHour),
                                       std::to_string(minutes % minutesOfHour)});
}

PlayHead::PlayHead(QWidget* parent)
    : QWidget(parent), play_(new QPushButton(this)),
      show_(Small("Pul_ShowGame", Msg::PlayShow, Msg::PlayShowTip)),
      stop_(Small("Pul_StopGame", Msg::PlayStop, Msg::PlayStopTip)), line_(new ElidedLabel(parent))
{
    setObjectName(QStringLiteral("Head_Play"));
    play_->setObjectName(QStringLiteral("Pul_Play"));
    QFont font = TimesAsLarge(play_->font(), playScale);
    font.setBold(true);
    play_->setFont(font);
    play_->setIcon(DrawnIcon(Drawing::Play));
    play_->setIconSize(QSize(22, 22));
    SetLow(false);
    play_->setToolTip(Words(Msg::PlayTip));
    line_->setObjectName(QStringLiteral("Label_Playing"));
    line_->setTextFormat(Qt::PlainText);
    line_->hide();
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(show_);
    buttons->addWidget(stop_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(play_);
    column->addLayout(buttons);
    connect(show_, &QPushButton::clicked, this, [this] { showWanted(); });
    connect(stop_, &QPushButton::clicked, this, [this] { stopWanted(); });
}

QPushButton* PlayHead::Small(const char* name, Message caption, Message tip)
{
    auto* button = new QPushButton(Words(caption), this);
    button->setObjectName(QString::fromLatin1(name));
    button->setAccessibleName(button->text());
    button->setToolTip(Words(tip));
    button->hide();
    return button;
}

void PlayHead::SetLow(bool low)
{
    constexpr int width = 132;
    constexpr int height = 52;
    play_->setMinimumSize(width, low ? 0 : height);
}

void PlayHead::Show(const PlayNow& now, bool isChosen)
{
    const bool idle = !isChosen || now.step == PlayNow::Step::Nothing;
    if (idle && !caption_.isEmpty())
        play_->setText(std::exchange(caption_, {}));
    if (!idle) {
        if (caption_.isEmpty())
            caption_ = play_->text();
        play_->setText(Words(ButtonOf(now.step)));
    }
    const QString line = LineOf(now);
    play_->setAccessibleDescription(line);
    line_->setText(line);
    line_->setVisible(!line.isEmpty());
    show_->setVisible(now.step == PlayNow::Step::Runs);
    stop_->setVisible(now.isOurs);
    // What follows may keep the program from painting for a while.
    if (now.step == PlayNow::Step::Installs || now.step == PlayNow::Step::Starts)
        repaint();
}

} // namespace kestrova
