#include "ui/dialogs/dialogs_small.h"

#include "session/operation.h"
#include "ui/dialogs/help_desk.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/letter_size.h"
#include "ui/widgets/qt_text.h"
#include "words/ui_dialogs.h"
#include "words/ui_shared.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr int aboutIcon = 96;
constexpr int aboutWidth = 350;

} // namespace

QPushButton* NamedButton(QWidget* parent, const char* name)
{
    auto* button = new QPushButton(parent);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

QLabel* NamedLabel(QWidget* parent, const char* name)
{
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QHBoxLayout* AnswerButtons(QDialog& dialog)
{
    auto* ok = NamedButton(&dialog, "Pul_Ok");
    auto* cancel = NamedButton(&dialog, "Pul_Cancel");
    auto* help = HelpButton(&dialog);
    ok->setDefault(true);
    QObject::connect(ok, &QPushButton::clicked, &dialog, &QDialog::accept);
    QObject::connect(cancel, &QPushButton::clicked, &dialog, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(help);
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    return buttons;
}

bool MayDropTyped(Session& session)
{
    const Operation operation{session};
    return session.host.AskYesNo(GetMsg(Msg::AskDropTyped));
}

SplashDialog::SplashDialog(const QPixmap& picture) : QDialog(nullptr, Qt::SplashScreen)
{
    setObjectName(QStringLiteral("Dialog_Splash"));
    auto* label = new QLabel(this);
    label->setPixmap(picture);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(label);
}

void SplashDialog::mousePressEvent(QMouseEvent*)
{
    close();
}

void SplashDialog::keyPressEvent(QKeyEvent*)
{
    close();
}

AboutDialog::AboutDialog(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("Dialog_About"));
    auto* picture = new QLabel(this);
    picture->setPixmap(ProgramIcon().pixmap(aboutIcon));
    picture->setAccessibleName(Words(Msg::ProgramName));
    auto* name = new QLabel(Words(Msg::ProgramName), this);
    QFont large = TimesAsLarge(name->font(), 1.8);
    large.setBold(true);
    name->setFont(large);
    auto* version = new QLabel(Words(Msg::AboutVersion, {KESTROVA_VERSION}), this);
    version->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* text =
        new QLabel(Words(Msg::AboutText, {lineBreak, lineBreak, lineBreak, lineBreak}), this);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    text->setMinimumWidth(aboutWidth);
    auto* ok = NamedButton(this, "Pul_Ok");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    auto* words = new QVBoxLayout;
    words->addWidget(name);
    words->addWidget(version);
    words->addSpacing(8);
    words->addWidget(text);
    auto* row = new QHBoxLayout;
    row->addWidget(picture, 0, Qt::AlignTop);
    row->addSpacing(8);
    row->addLayout(words, 1);
    auto* column = new QVBoxLayout(this);
    column->addLayout(row);
    column->addWidget(ok, 0, Qt::AlignRight);
    SetCaptions(*this);
}

NewArcDialog::NewArcDialog(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("Dialog_NewArc"));
    auto* ask = new QLabel(this);
    ask->setObjectName(QStringLiteral("Label_Ask"));
    ask->setWordWrap(true);
    auto* load = NamedButton(this, "Pul_Load");
    auto* fresh = NamedButton(this, "Pul_New");
    fresh->setDefault(true);
    connect(load, &QPushButton::clicked, this, &QDialog::reject);
    connect(fresh, &QPushButton::clicked, this, &QDialog::accept);
    auto* row = new QHBoxLayout;
    row->addWidget(load);
    row->addWidget(fresh);
    auto* column = new QVBoxLayout(this);
    column->addWidget(ask);
    column->addSpacing(8);
    column->addLayout(row);
    SetCaptions(*this);
}

} // namespace kestrova
