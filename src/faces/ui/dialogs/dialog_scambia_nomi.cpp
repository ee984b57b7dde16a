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
#include <algorithm>

namespace kestrova
{

namespace
{

constexpr int scambiaWidth = 440;
constexpr int mostLetters = 60;
constexpr int besideTheName = 50; ///< margins, and the edges of its field

/// Wide enough to show the whole name, unless that is longer than names are.
int WidthFor(const QLabel& label, const QLineEdit& edit)
{
    const QFontMetrics metrics = edit.fontMetrics();
    const int name =
        std::min(metrics.horizontalAdvance(edit.text()), metrics.averageCharWidth() * mostLetters);
    return std::max(scambiaWidth, label.sizeHint().width() + name + besideTheName);
}

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
    edit_->end(false);
    edit_->cursorBackward(true, static_cast<int>(edit_->text().size())); // its beginning is seen

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
    column->addLayout(buttons);
    SetCaptions(*this);
    ResizeToFit(*this, {WidthFor(*oldOf, *edit_), sizeHint().height()});
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
