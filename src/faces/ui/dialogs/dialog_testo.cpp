#include "ui/dialogs/dialog_testo.h"

#include "core/text.h"
#include "ui/desktop/file_names.h"
#include "ui/dialogs/dialog_indice.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/help_marks.h"
#include "ui/widgets/letter_size.h"
#include "ui/widgets/qt_text.h"
#include "words/help.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSettings>
#include <QShortcut>
#include <QTextBlock>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr QSize helpSize{760, 600};
/// Lines of a hit's surroundings that stay above it.
constexpr int linesAbove = 1;

QSettings Places(const Session& session)
{
    return {PathToQt(session.programFolder / OnDisk::FileNameWindowState), QSettings::IniFormat};
}

} // namespace

HelpDialog::HelpDialog(Session& session, std::string help, std::string tag, Load load,
                       QWidget* parent)
    : QDialog(parent), session_(session), reader_(std::move(help), std::move(tag)),
      load_(std::move(load)), text_(new QPlainTextEdit(this)), wanted_(new QLineEdit(this))
{
    setObjectName(QStringLiteral("Dialog_Testo"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    MakeText();
    auto* column = new QVBoxLayout(this);
    column->addLayout(MakeSearch());
    column->addWidget(text_, 1);
    column->addLayout(MakeButtons());
    MakeKeys();
    SetCaptions(*this);
    text_->setAccessibleName(windowTitle().trimmed());
    text_->setFocus();
    ResizeToFit(*this, helpSize);
    first_.setSingleShot(true);
    connect(&first_, &QTimer::timeout, this, [this] { Search(&HelpReader::Find); });
    first_.start();
}

void HelpDialog::MakeText()
{
    text_->setObjectName(QStringLiteral("Text_File"));
    text_->setReadOnly(true);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text_->setUndoRedoEnabled(false);
    text_->setPlainText(ToQt(reader_.Text()));
    MarkTopics(*text_);
    text_->viewport()->installEventFilter(this);
    text_->installEventFilter(this);
    auto* letters = new LetterSize(*text_);
    const QString key = QStringLiteral("Dialog_Testo/letters");
    letters->Set(Places(session_).value(key).toInt());
    letters->changed = [this, key](int steps) { Places(session_).setValue(key, steps); };
}

QLayout* HelpDialog::MakeSearch()
{
    wanted_->setObjectName(QStringLiteral("Text_Trova"));
    wanted_->setText(ToQt(reader_.search));
    wanted_->setToolTip(Words(Msg::HelpFindTip));
    auto* label = new QLabel(this);
    label->setObjectName(QStringLiteral("Label_Trova"));
    label->setBuddy(wanted_);
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(wanted_, 1);
    struct Step {
        const char* name;
        void (HelpReader::*step)();
        Message tip;
    };
    constexpr Step steps[] = {{"Pul_Trova", &HelpReader::Find, Msg::HelpFirstTip},
                              {"Pul_Dopo", &HelpReader::Next, Msg::HelpNextTip},
                              {"Pul_Prima", &HelpReader::Previous, Msg::HelpPreviousTip}};
    for (const Step& step : steps) {
        QPushButton* button = NamedButton(this, step.name);
        button->setToolTip(Words(step.tip));
        button->setAutoDefault(step.step == &HelpReader::Find);
        button->setDefault(step.step == &HelpReader::Find);
        connect(button, &QPushButton::clicked, this, [this, make = step.step] { Search(make); });
        row->addWidget(button);
    }
    return row;
}

QLayout* HelpDialog::MakeButtons()
{
    QPushButton* index = NamedButton(this, "Pul_Index");
    QPushButton* close = NamedButton(this, "Pul_Ok");
    for (QPushButton* button : {index, close})
        button->setAutoDefault(false);
    connect(index, &QPushButton::clicked, this, &HelpDialog::ShowIndex);
    connect(close, &QPushButton::clicked, this, &HelpDialog::accept);
    auto* hint = new QLabel(Words(Msg::HelpHint), this);
    hint->setForegroundRole(QPalette::PlaceholderText);
    hint->setWordWrap(true);
    auto* row = new QHBoxLayout;
    row->addWidget(index);
    row->addWidget(hint, 1);
    row->addWidget(close);
    return row;
}

void HelpDialog::MakeKeys()
{
    const auto key = [this](const QKeySequence& sequence, auto work) {
        connect(new QShortcut(sequence, this), &QShortcut::activated, this, work);
    };
    key(Qt::CTRL | Qt::Key_F, [this] {
        wanted_->setFocus();
        wanted_->selectAll();
    });
    key(Qt::Key_F3, [this] { Search(&HelpReader::Next); });
    key(Qt::SHIFT | Qt::Key_F3, [this] { Search(&HelpReader::Previous); });
    key(Qt::CTRL | Qt::Key_I, [this] { ShowIndex(); });
}

void HelpDialog::Jump(const std::string& what)
{
    reader_.Jump(what);
    wanted_->setText(ToQt(what));
    ShowHit();
}

void HelpDialog::Search(void (HelpReader::*step)())
{
    reader_.search = FromQt(wanted_->text());
    (reader_.*step)();
    ShowHit();
}

void HelpDialog::ShowHit()
{
    const auto& hit = reader_.Selection();
    if (!hit)
        return;
    QTextCursor cursor = text_->textCursor();
    cursor.setPosition(static_cast<int>(reader_.ShownPlace(hit->from)));
    cursor.setPosition(static_cast<int>(reader_.ShownPlace(hit->from + hit->length)),
                       QTextCursor::KeepAnchor);
    text_->setTextCursor(cursor);
    // A hit that stands deep in the window says little of what follows it.
    QScrollBar* bar = text_->verticalScrollBar();
    const int line = text_->cursorRect().top() / std::max(1, text_->fontMetrics().lineSpacing());
    bar->setValue(bar->value() + line - linesAbove);
    // The lines of some fonts are higher than their spacing says: then that was too far.
    const int above = text_->fontMetrics().lineSpacing() * linesAbove;
    while (text_->cursorRect().top() < above && bar->value() > bar->minimum())
        bar->setValue(bar->value() - 1);
}

void HelpDialog::Pick()
{
    const auto place = static_cast<std::size_t>(text_->textCursor().selectionStart());
    reader_.Pick(reader_.PlaceOf(place));
    wanted_->setText(ToQt(reader_.search));
    if (const auto& hit = reader_.Selection()) {
        QTextCursor cursor = text_->textCursor();
        cursor.setPosition(static_cast<int>(reader_.ShownPlace(hit->from)));
        cursor.setPosition(static_cast<int>(reader_.ShownPlace(hit->from + hit->length)),
                           QTextCursor::KeepAnchor);
        text_->setTextCursor(cursor);
    }
}

void HelpDialog::ShowIndex()
{
    const auto help = load_();
    if (!help)
        return;
    HelpIndexDialog dialog{session_, *help, this};
    if (dialog.exec() == QDialog::Accepted)
        Jump(dialog.Chosen());
}

bool HelpDialog::eventFilter(QObject* object, QEvent* event)
{
    if (object == text_->viewport() && event->type() == QEvent::MouseButtonDblClick) {
        const auto* click = static_cast<const QMouseEvent*>(event);
        if (click->button() == Qt::LeftButton) {
            text_->setTextCursor(text_->cursorForPosition(click->position().toPoint()));
            Pick();
            return true;
        }
    }
    if (object == text_ && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<const QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            Pick();
            return true;
        }
    }
    return QDialog::eventFilter(object, event);
}

} // namespace kestrova
