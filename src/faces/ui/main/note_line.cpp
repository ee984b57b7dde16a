#include "ui/main/note_line.h"

#include "app/undoable.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/qt_text.h"
#include "words/level_page.h"

#include <QHBoxLayout>
#include <QToolButton>

namespace kestrova
{

NoteLine::NoteLine(Session& session, QWidget* parent)
    : QWidget(parent), session_(session), words_(new ElidedLabel(this)),
      undo_(new QToolButton(this))
{
    words_->setObjectName(QStringLiteral("Label_Note"));
    words_->setTextFormat(Qt::PlainText);
    undo_->setObjectName(QStringLiteral("Pul_NoteUndo"));
    undo_->setText(Words(Msg::NoteUndo));
    undo_->setAccessibleName(undo_->text());
    undo_->setAutoRaise(true);
    undo_->hide();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 0, 0, 0);
    row->addWidget(words_, 1);
    row->addWidget(undo_);
    connect(undo_, &QToolButton::clicked, this, [this] {
        // Something else may have been done since, in another run of the program.
        if (Newest() == offered_ && session_.running.operations == 0)
            undoWanted();
    });
}

std::int32_t NoteLine::Newest() const
{
    if (!session_.archive.Loaded())
        return 0;
    const auto newest = NextUndoable(session_.Folders(), session_.archive, UndoWay::Undo);
    return newest ? NumberOf(*newest) : 0;
}

void NoteLine::Begin()
{
    before_ = Newest();
    words_->clear();
    undo_->hide();
}

void NoteLine::Show(const std::string& text)
{
    words_->setText(ToQt(text));
    offered_ = Newest();
    const bool isNew = offered_ > before_;
    undo_->setVisible(isNew);
    before_ = offered_; // what is said next, of a key say, offers its own change alone
    if (!isNew)
        return;
    const auto newest = NextUndoable(session_.Folders(), session_.archive, UndoWay::Undo);
    undo_->setToolTip(newest ? Words(Msg::NoteUndoOf, {WhatWasDone(*newest)}) : QString());
}

void NoteLine::LastsWhileTheGameRuns()
{
    ofTheGame_ = words_->text();
}

void NoteLine::GameEnded()
{
    if (!ofTheGame_.isEmpty() && words_->text() == ofTheGame_)
        words_->clear();
    ofTheGame_.clear();
}

void NoteLine::End()
{
    if (!words_->text().isEmpty() || Newest() <= before_)
        return;
    if (const auto newest = NextUndoable(session_.Folders(), session_.archive, UndoWay::Undo))
        Show(GetMsg(Msg::NoteDone, {WhatWasDone(*newest)}));
}

} // namespace kestrova
