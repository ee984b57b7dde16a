#include "ui/dialogs/dialog_scambia_nomi.h"

#include "core/text.h"
#include "editor/wad_scripts.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/help_desk.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/qt_text.h"
#include "words/wads_window.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr QSize scambiaSize{440, 140};

} // namespace

ScambiaNomiDialog::ScambiaNomiDialog(Host& host, std::string original, QWidget* parent)
    : QDialog(parent), host_(host), original_(std::move(original)), name_(original_),
      edit_(new QLineEdit(this))
{
    setObjectName(QStringLiteral("Dialog_ScambiaNomi"));
    auto* oldOf = new QLabel(this);
    oldOf->setObjectName(QStringLiteral("Label_OldNameOf"));
    auto* old = new ElidedLabel(this);
    old->setObjectName(QStringLiteral("Label_OldName"));
    old->setText(ToQt(original_));
    old->SetElide(Qt::ElideMiddle);
    auto* newOf = new QLabel(this);
    newOf->setObjectName(QStringLiteral("Label_NewNameOf"));
    newOf->setBuddy(edit_);
    edit_->setObjectName(QStringLiteral("Text_NuovoNome"));
    edit_->setText(ToQt(original_));
    edit_->selectAll();

    auto* rows = new QGridLayout;
    rows->addWidget(oldOf, 0, 0);
    rows->addWidget(old, 0, 1);
    rows->addWidget(newOf, 1, 0);
    rows->addWidget(edit_, 1, 1);
    rows->setColumnStretch(1, 1);
    auto* help = HelpButton(this);
    auto* keep = NamedButton(this, "Pul_UsaOld");
    auto* take = NamedButton(this, "Pul_Ok");
    for (QPushButton* button : {help, keep})
        button->setAutoDefault(false);
    take->setDefault(true);
    connect(keep, &QPushButton::clicked, this, &QDialog::accept);
    connect(take, &QPushButton::clicked, this, &ScambiaNomiDialog::Take);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(help);
    buttons->addStretch();
    buttons->addWidget(keep);
    buttons->addWidget(take);
    auto* column = new QVBoxLayout(this);
    column->addLayout(rows);
    column->addStretch();
    column->addLayout(buttons);
    SetCaptions(*this);
    ResizeToFit(*this, scambiaSize);
    edit_->setFocus();
}

void ScambiaNomiDialog::Take()
{
    const std::string name = FromQt(edit_->text());
    if (Trim(name).empty())
        return host_.Tell(Tone::Error, GetMsg(Msg::ScambiaEmpty));
    if (!CanBeLevelName(name))
        return host_.Tell(Tone::Error, GetMsg(Msg::ScambiaNoName));
    name_ = name;
    accept();
}

} // namespace kestrova
