#include "ui/dialogs/dialog_tipo_exe.h"

#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/help_desk.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr int tipoExeWidth = 480;

} // namespace

TipoExeDialog::TipoExeDialog(InstalledPlace& place, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("Dialog_TipoExe"));
    auto* warning = new QLabel(this);
    warning->setObjectName(QStringLiteral("Label_After"));
    warning->setWordWrap(true);
    warning->setTextFormat(Qt::PlainText);
    auto* trle = NamedButton(this, "Pul_Trle");
    auto* browse = NamedButton(this, "Pul_Sfoglia");
    auto* help = HelpButton(this);
    auto* column = new QVBoxLayout(this);
    column->addWidget(warning);
    for (QPushButton* button : {trle, browse}) {
        button->setAutoDefault(false); // Enter says nothing that nobody chose
        column->addWidget(button);
    }
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(help);
    help->setAutoDefault(false);
    column->addLayout(row);
    connect(trle, &QPushButton::clicked, this, [this, &place] {
        place.TakeTrle();
        accept();
    });
    connect(browse, &QPushButton::clicked, this, [this, &place] {
        if (place.Browse())
            accept();
    });
    SetCaptions(*this);
    ResizeToFit(*this, {tipoExeWidth, sizeHint().height()});
    warning->setFocus();
}

} // namespace kestrova
