#include "ui/dialogs/dialog_trova_trle.h"

#include "online/url_update.h"
#include "session/operation.h"
#include "ui/dialogs/dialog_installa_trle.h"
#include "ui/dialogs/dialog_siti.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/help_desk.h"
#include "ui/main/practice_offer.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/qt_text.h"
#include "words/ui_dialogs.h"
#include "words/ui_shared.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr int findWidth = 600;
constexpr int picture = 48;

} // namespace

FindTrleDialog::FindTrleDialog(Session& session, TrleFinder& finder, QWidget* parent)
    : QDialog(parent), session_(session), finder_(finder), path_(new ElidedLabel(this))
{
    setObjectName(QStringLiteral("Dialog_TrovaTrle"));
    auto* image = new QLabel(this);
    image->setObjectName(QStringLiteral("Image1"));
    image->setPixmap(ProgramIcon().pixmap(picture));
    image->setAccessibleName(Words(Msg::ProgramName));
    auto* ask = new QLabel(this);
    ask->setObjectName(QStringLiteral("Label_Ask"));
    ask->setWordWrap(true);
    path_->setObjectName(QStringLiteral("Label_Path"));
    path_->SetElide(Qt::ElideMiddle);
    auto* browse = NamedButton(this, "Pul_Sfoglia");
    auto* ok = NamedButton(this, "Pul_Ok");
    auto* cancel = NamedButton(this, "Pul_Cancel");
    auto* help = HelpButton(this);
    for (QPushButton* button : {browse, cancel, help})
        button->setAutoDefault(false);

    auto* words = new QVBoxLayout;
    words->addWidget(ask);
    words->addWidget(path_);
    auto* top = new QHBoxLayout;
    top->addWidget(image, 0, Qt::AlignTop);
    top->addLayout(words, 1);
    auto* browseRow = new QHBoxLayout;
    browseRow->addStretch();
    browseRow->addWidget(browse);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(help);
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* page = new QWidget;
    auto* parts = new QVBoxLayout(page);
    parts->setContentsMargins({});
    parts->addLayout(top);
    parts->addLayout(browseRow);
    parts->addWidget(MakeOffer("Frame_Practice", "Label_PracticeNote", "Pul_Practice"));
    parts->addWidget(MakeOffer("Frame_Cd", nullptr, "Pul_InstallTrleCD"));
    parts->addWidget(MakeOffer("Frame_Compress", "Label_CompressNote", "Pul_InstallCompresso"));
    parts->addStretch();
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(page), 1);
    column->addLayout(buttons);

    connect(browse, &QPushButton::clicked, this, [this] { Run([this] { finder_.Browse(); }); });
    connect(findChild<QPushButton*>(QStringLiteral("Pul_Practice")), &QPushButton::clicked, this,
            [this] {
                Run([this] {
                    if (const auto made = OfferPracticeFolder(session_))
                        finder_.Take(*made);
                });
            });
    connect(findChild<QPushButton*>(QStringLiteral("Pul_InstallTrleCD")), &QPushButton::clicked,
            this, [this] { SetUp(SetupFrom::Folder); });
    connect(findChild<QPushButton*>(QStringLiteral("Pul_InstallCompresso")), &QPushButton::clicked,
            this, [this] { SetUp(SetupFrom::Zips); });
    connect(ok, &QPushButton::clicked, this, [this] {
        Run([this] {
            if (finder_.Accept())
                accept();
        });
    });
    connect(cancel, &QPushButton::clicked, this, &FindTrleDialog::reject);
    ok->setDefault(true);
    SetCaptions(*this);
    ShowFolder();
    ResizeToFit(*this, {findWidth, sizeHint().height()});
    browse->setFocus();
}

template <class Work> void FindTrleDialog::Run(Work work)
{
    {
        const Operation operation{session_};
        work();
    }
    ShowFolder();
}

void FindTrleDialog::SetUp(SetupFrom from)
{
    if (const auto installed = ShowSetup(session_, from, this))
        Run([&] { finder_.Take(*installed); });
}

QWidget* FindTrleDialog::MakeOffer(const char* frame, const char* note, const char* button)
{
    auto* box = new QGroupBox(this);
    box->setObjectName(QString::fromLatin1(frame));
    auto* row = new QHBoxLayout(box);
    if (note != nullptr) {
        auto* words = new QLabel(box);
        words->setObjectName(QString::fromLatin1(note));
        words->setWordWrap(true);
        row->addWidget(words, 1);
    } else {
        row->addStretch();
    }
    auto* offer = NamedButton(box, button);
    offer->setAutoDefault(false);
    row->addWidget(offer, 0, Qt::AlignTop);
    return box;
}

void FindTrleDialog::ShowFolder()
{
    const bool there = !finder_.Folder().empty();
    const std::string last{Trim(session_.preferences.trlePath)};
    path_->setText(there          ? ToQt(TextOf(finder_.Folder()))
                   : last.empty() ? Words(Msg::TrovaNothing)
                                  : Words(Msg::TrovaGone, {last}));
    path_->setEnabled(there || !last.empty());
    auto* ok = findChild<QPushButton*>(QStringLiteral("Pul_Ok"));
    ok->setEnabled(there);
    if (there)
        ok->setFocus();
}

void FindTrleDialog::reject()
{
    bool wantsUrls = false;
    Run([&] { wantsUrls = WantsEditorUrls(session_.host); });
    if (wantsUrls)
        ShowUrls(session_, UrlKindEditor, this);
    Run([this] { finder_.GiveUp(); });
    QDialog::reject();
}

} // namespace kestrova
