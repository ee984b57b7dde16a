#include "ui/dialogs/dialog_pref_arc.h"

#include "session/operation.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/qt_text.h"
#include "words/ui_dialogs.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

struct Row {
    const char* caption;
    const char* value;
    const char* browse; ///< null: none
    bool onlyOnCd = false;
};
constexpr Row rows[] = {
    {"Label_FileOf", "Label_NomeArc", nullptr},
    {"Label_MainOf", "Label_MainDir", "Pul_SfogliaMainDir"},
    {"Label_SecondaryOf", "Label_SecondaryDir", "Pul_SfogliaSecDir"},
    {"Label_LevelsOf", "Label_TotLevels", nullptr},
    {"Label_SizeOf", "Label_SizeArc", nullptr},
    {"Label_OnCdOf", "Label_OnCd", nullptr},
    {"Label_CdCountOf", "Label_TotCd", nullptr, true},
    {"Label_SizeCdOf", "Label_SizeCd", nullptr, true},
    {"Label_SizeHdOf", "Label_SizeHd", nullptr, true},
};
constexpr int archiveWidth = 560;

} // namespace

ArchiveDialog::ArchiveDialog(Session& session, QWidget* parent)
    : QDialog(parent), session_(session), form_(session), compress_(new QCheckBox(this))
{
    setObjectName(QStringLiteral("Dialog_PrefArc"));
    compress_->setObjectName(QStringLiteral("Check_Compresso"));
    compress_->setChecked(session.archive.header.compressLevels);
    connect(compress_, &QCheckBox::toggled, this, [this](bool on) { form_.SetCompress(on); });
    auto* mp3 = new QCheckBox(this);
    mp3->setObjectName(QStringLiteral("Check_WavInMp3"));
    mp3->setChecked(session.archive.header.wavInMp3);
    connect(mp3, &QCheckBox::toggled, this, [this](bool on) { form_.SetWavInMp3(on); });
    auto* newOnly = new QLabel(this);
    newOnly->setObjectName(QStringLiteral("Label_NewOnly"));
    newOnly->setWordWrap(true);
    newOnly->setForegroundRole(QPalette::PlaceholderText);

    auto* buttons = AnswerButtons(*this);

    auto* page = new QWidget;
    auto* parts = new QVBoxLayout(page);
    parts->setContentsMargins({});
    parts->addLayout(MakeFacts());
    parts->addSpacing(6);
    parts->addWidget(compress_);
    parts->addWidget(mp3);
    parts->addWidget(newOnly);
    parts->addStretch();
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(page), 1);
    column->addLayout(buttons);
    SetCaptions(*this);
    ShowFacts();
    ResizeToFit(*this, {archiveWidth, sizeHint().height()});
    compress_->setFocus();
}

QLayout* ArchiveDialog::MakeFacts()
{
    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    const bool onCd = form_.Facts().onCd;
    int line = 0;
    for (const Row& row : rows) {
        auto* caption = new QLabel(this);
        caption->setObjectName(QString::fromLatin1(row.caption));
        auto* value = new ElidedLabel(this);
        value->setObjectName(QString::fromLatin1(row.value));
        value->SetElide(Qt::ElideMiddle);
        grid->addWidget(caption, line, 0);
        grid->addWidget(value, line, 1);
        caption->setVisible(onCd || !row.onlyOnCd);
        value->setVisible(onCd || !row.onlyOnCd);
        if (row.browse != nullptr) {
            auto* browse = NamedButton(this, row.browse);
            browse->setAutoDefault(false);
            grid->addWidget(browse, line, 2);
            const bool main = row.browse == std::string_view{"Pul_SfogliaMainDir"};
            connect(browse, &QPushButton::clicked, this, [this, main] {
                const Operation operation{session_};
                main ? form_.BrowseMain() : form_.BrowseSecondary();
                ShowFacts();
            });
        }
        ++line;
    }
    return grid;
}

void ArchiveDialog::ShowFacts()
{
    const ArchiveFacts facts = form_.Facts();
    const auto show = [this](const char* name, const std::string& text) {
        findChild<QLabel*>(QString::fromLatin1(name))->setText(ToQt(text));
    };
    show("Label_NomeArc", facts.file);
    show("Label_MainDir", facts.mainFolder);
    show("Label_SecondaryDir", facts.secondaryFolder);
    show("Label_TotLevels", std::to_string(facts.levels));
    show("Label_SizeArc", facts.size);
    show("Label_OnCd", GetMsg(facts.onCd ? Msg::FlagYes : Msg::FlagNo));
    if (!facts.onCd)
        return;
    show("Label_TotCd", std::to_string(facts.cdCount));
    show("Label_SizeCd", facts.sizeOnCd);
    show("Label_SizeHd", facts.sizeOnDisk);
}

void ArchiveDialog::accept()
{
    const Operation operation{session_};
    form_.Accept();
    QDialog::accept();
}

void ArchiveDialog::reject()
{
    form_.Cancel();
    QDialog::reject();
}

} // namespace kestrova
