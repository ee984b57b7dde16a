#include "ui/main/marks_box.h"

#include "core/text.h"
#include "ui/main/play_head.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/qt_text.h"
#include "ui/widgets/stars_box.h"
#include "words/level_page.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include <utility>

namespace kestrova
{

namespace
{

/// A pause in typing that is long enough to store what was typed.
constexpr int typingPauseMs = 2000;
constexpr int ownNoteLines = 2;

constexpr Message statusWords[] = {Msg::MarkNew, Msg::MarkPlaying, Msg::MarkFinished,
                                   Msg::MarkGivenUp};

QString TimesOf(const LevelNote& note)
{
    std::string words;
    const auto add = [&](const std::string& part) { words += (words.empty() ? "" : " · ") + part; };
    if (note.added)
        add(GetMsg(Msg::MarkAdded, {FromQt(DayText(*note.added))}));
    if (note.lastPlayed)
        add(GetMsg(Msg::MarkLastPlayed, {FromQt(DayText(*note.lastPlayed))}));
    if (note.secondsPlayed > 0)
        add(GetMsg(Msg::MarkPlayed, {PlayedInWords(note.secondsPlayed)}));
    return ToQt(words);
}

} // namespace

MarksBox::MarksBox(QWidget* parent)
    : QWidget(parent), stars_(new StarsBox(this)), status_(new QComboBox(this)),
      text_(new QPlainTextEdit(this)), tags_(new ElidedLabel(this)), times_(new ElidedLabel(this))
{
    stars_->setObjectName(QStringLiteral("Box_Stars"));
    status_->setObjectName(QStringLiteral("Combo_Status"));
    status_->setAccessibleName(Words(Msg::MarkStatusName));
    for (const Message words : statusWords)
        status_->addItem(Words(words));
    text_->setObjectName(QStringLiteral("Text_OwnNote"));
    text_->setAccessibleName(Words(Msg::MarkOwnNoteName));
    text_->setPlaceholderText(Words(Msg::MarkOwnNoteHint));
    text_->setTabChangesFocus(true);
    text_->setFixedHeight(ownNoteLines * text_->fontMetrics().lineSpacing() + 12);
    text_->installEventFilter(this);
    tags_->setObjectName(QStringLiteral("Label_Tags"));
    times_->setObjectName(QStringLiteral("Label_Played"));
    times_->setTextFormat(Qt::PlainText);
    auto* row = new QHBoxLayout;
    row->addWidget(stars_);
    row->addWidget(status_);
    row->addWidget(tags_, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addLayout(row);
    column->addWidget(times_);
    column->addWidget(text_);
    typed_.setSingleShot(true);
    connect(&typed_, &QTimer::timeout, this, &MarksBox::Commit);
    connect(text_, &QPlainTextEdit::textChanged, this, [this] {
        if (code_)
            typed_.start(typingPauseMs);
    });
    connect(status_, &QComboBox::activated, this, [this](int chosen) {
        LevelMarks marks;
        marks.status = static_cast<LevelStatus>(chosen);
        Say(marks);
    });
    stars_->changed = [this](int stars) {
        LevelMarks marks;
        marks.stars = stars;
        Say(marks);
    };
    Clear();
}

void MarksBox::Show(LevelCode code, LevelNote note)
{
    const bool other = code_ != code;
    if (other)
        EndTyping();
    code_.reset(); // what is shown now is no word of the player's
    note_ = std::move(note);
    setEnabled(true);
    stars_->SetStars(note_.stars);
    status_->setCurrentIndex(static_cast<int>(note_.status));
    times_->setText(TimesOf(note_));
    tags_->setText(note_.tags.empty() ? QString{} : Words(Msg::MarkTags, {Join(note_.tags, ", ")}));
    // What somebody types just now stays.
    if (other || !typed_.isActive())
        if (const QString own = ToQt(note_.ownNote); own != text_->toPlainText())
            text_->setPlainText(own);
    code_ = code;
}

void MarksBox::Clear()
{
    EndTyping();
    code_.reset();
    note_ = {};
    stars_->SetStars(0);
    status_->setCurrentIndex(0);
    text_->clear();
    times_->clear();
    tags_->clear();
    setEnabled(false);
}

void MarksBox::Commit()
{
    const bool waits = typed_.isActive();
    typed_.stop();
    const std::string own = FromQt(text_->toPlainText());
    if (!code_ || !waits || own == note_.ownNote)
        return;
    note_.ownNote = own;
    LevelMarks marks;
    marks.ownNote = own;
    marks.goesOn = std::exchange(goesOn_, true);
    Say(marks);
}

void MarksBox::EndTyping()
{
    Commit();
    goesOn_ = false;
}

void MarksBox::Say(const LevelMarks& marks)
{
    if (code_)
        marked(*code_, marks);
}

bool MarksBox::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == text_ && event->type() == QEvent::FocusOut)
        EndTyping();
    return QWidget::eventFilter(watched, event);
}

} // namespace kestrova
