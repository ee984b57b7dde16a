#include "ui/dialogs/dialog_compila.h"

#include "session/operation.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/help_desk.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/input_gate.h"
#include "ui/widgets/qt_text.h"
#include "words/assistant.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr int compilaWidth = 560;
constexpr int compilaLines = 20; ///< of its instructions, when no name in them is long

} // namespace

CompilaDialog::CompilaDialog(Session& session, TomCompile& compile, QWidget* parent)
    : QDialog(parent), session_(session), compile_(compile)
{
    setObjectName(QStringLiteral("Dialog_Compila"));
    auto* text = new QPlainTextEdit(this);
    text->setObjectName(QStringLiteral("Text_InfoCompile"));
    text->setAccessibleName(Words(Msg::CompilaStepsName));
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setPlainText(ToQt(compile_.Instructions()));
    auto* lent = new QLabel(this);
    lent->setObjectName(QStringLiteral("Label_Lent"));
    lent->setWordWrap(true);
    auto* page = new QWidget;
    auto* parts = new QVBoxLayout(page);
    parts->setContentsMargins({});
    parts->addWidget(text, 1);
    parts->addWidget(lent);
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(page), 1);
    column->addLayout(MakeButtons());
    SetCaptions(*this);
    const int others = sizeHint().height() - text->sizeHint().height();
    ResizeToFit(*this, {compilaWidth, others + text->fontMetrics().lineSpacing() * compilaLines});
}

QLayout* CompilaDialog::MakeButtons()
{
    auto* start = NamedButton(this, "Pul_Compila");
    auto* taken = NamedButton(this, "Pul_Done");
    auto* cancel = NamedButton(this, "Pul_Annulla");
    auto* help = HelpButton(this);
    for (QPushButton* button : {taken, cancel, help})
        button->setAutoDefault(false);
    start->setDefault(true);
    start->setFocus();
    const auto step = [this](QPushButton* button, auto work) {
        connect(button, &QPushButton::clicked, this, [this, work] { Run(work); });
    };
    step(start, [this] { compile_.StartByHand(); });
    step(taken, [this] { compile_.TakeResults(); });
    step(cancel, [this] { compile_.Cancel(); });
    auto* row = new QHBoxLayout;
    row->addWidget(help);
    row->addStretch();
    row->addWidget(start);
    row->addWidget(taken);
    row->addWidget(cancel);
    return row;
}

template <class Work> void CompilaDialog::Run(Work work)
{
    {
        const Operation operation{session_};
        work();
    }
    if (!compile_.NeedsPerson())
        done(compile_.IsDone() ? Accepted : Rejected);
}

void CompilaDialog::reject() {}

void ShowCompila(Session& session, TomCompile& compile, QWidget* parent)
{
    CompilaDialog dialog{session, compile, parent};
    const InputGate::Admission admission{dialog};
    dialog.exec();
}

} // namespace kestrova
