#include "ui/dialogs/dialog_setup_cd.h"

#include "ui/desktop/host_windows.h"
#include "ui/dialogs/dialog_insert_cd.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/help_desk.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/input_gate.h"
#include "ui/widgets/qt_text.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr int setupCdWidth = 520;

QLabel* WrappedLabel(QWidget* parent, const char* name)
{
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

/// Whatever asks for it is under way, so that no other window takes input.
bool IsAccepted(QDialog& dialog)
{
    const InputGate::Admission admission{dialog};
    return dialog.exec() == QDialog::Accepted;
}

} // namespace

SetupCdDialog::SetupCdDialog(SetupCd& setup, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("Dialog_SetupCd"));
    auto* content = new QWidget;
    auto* grid = new QGridLayout(content);
    grid->setContentsMargins({});
    auto* title = WrappedLabel(content, "Label_Titolo");
    title->setText(WithWordsWithin(ToQt(setup.Title()), title->fontMetrics(), setupCdWidth - 40));
    grid->addWidget(title, 0, 0, 1, 2);
    const auto way = [&](int row, bool full, const char* name, const char* text, const char* size) {
        auto* button = new QRadioButton(content);
        button->setObjectName(QString::fromLatin1(name));
        button->setChecked(setup.full == full);
        auto* sizeLabel = new QLabel(content);
        sizeLabel->setObjectName(QString::fromLatin1(size));
        sizeLabel->setText(ToQt(setup.SizeText(full)));
        sizeLabel->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(button, row, 0);
        grid->addWidget(sizeLabel, row, 1);
        auto* words = WrappedLabel(content, text);
        words->setIndent(24);
        grid->addWidget(words, row + 1, 0, 1, 2);
        connect(button, &QRadioButton::toggled, this, [&setup, full](bool on) {
            if (on)
                setup.full = full;
        });
        return button;
    };
    auto* compact = way(1, false, "Opt_Compact", "Label_Compact", "Label_CompactSize");
    auto* full = way(3, true, "Opt_Full", "Label_Full", "Label_SizeFull");
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(5, 1);

    auto* install = NamedButton(this, "Pul_Install");
    install->setDefault(true);
    auto* cancel = NamedButton(this, "Pul_Cancel");
    auto* help = HelpButton(this);
    for (QPushButton* button : {cancel, help})
        button->setAutoDefault(false);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(help);
    buttons->addStretch();
    buttons->addWidget(install);
    buttons->addWidget(cancel);
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(content), 1);
    column->addLayout(buttons);
    connect(install, &QPushButton::clicked, this, [this, &setup] {
        if (setup.Install())
            accept();
    });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    SetCaptions(*this);
    ResizeToFit(*this, {setupCdWidth, sizeHint().height()});
    (setup.full ? full : compact)->setFocus();
}

DiscWindows WindowsForDiscs()
{
    return {.insert =
                [](InsertCd& question) {
                    InsertCdDialog dialog{question, TopWindow()};
                    return IsAccepted(dialog);
                },
            .setup =
                [](SetupCd& setup) {
                    SetupCdDialog dialog{setup, TopWindow()};
                    return IsAccepted(dialog);
                }};
}

} // namespace kestrova
