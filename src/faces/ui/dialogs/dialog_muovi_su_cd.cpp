#include "ui/dialogs/dialog_muovi_su_cd.h"

#include "archive/archive_saving.h"
#include "core/size_words.h"
#include "core/text.h"
#include "discs/create_discs.h"
#include "discs/disc_choice.h"
#include "drives/cd_drives.h"
#include "session/operation.h"
#include "session/telling.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/disc_plan_tree.h"
#include "ui/dialogs/help_desk.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/input_gate.h"
#include "ui/widgets/qt_text.h"
#include "words/disc_commands.h"
#include "words/discs_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr QSize discsSize{680, 560};
constexpr int fastestSpeed = 52;
constexpr int speedStep = 2;
constexpr int usualCapacity = 4700;
constexpr int unitCapacityRole = Qt::UserRole + 1; ///< megabytes that its discs take

QLabel* DiscsCaption(QWidget* control, const char* name)
{
    auto* label = new QLabel;
    label->setObjectName(QString::fromLatin1(name));
    label->setBuddy(control);
    return label;
}

} // namespace

DiscsWindowProgress::DiscsWindowProgress(QLabel& label, QProgressBar& bar, QPushButton& button)
    : OwnProgress(label, bar), label_(label), bar_(bar), button_(button)
{
    bar_.setTextVisible(false);
    bar_.hide();
    if (InputGate* gate = InputGate::Current())
        gate->AdmitAlways(button);
}

void DiscsWindowProgress::Begin()
{
    underWay_ = true;
    stopped_ = false;
    caption_ = button_.text();
    button_.setText(Words(Msg::DiscsStop));
}

void DiscsWindowProgress::End()
{
    underWay_ = false;
    label_.clear();
    bar_.setValue(0);
    bar_.hide();
    button_.setText(caption_);
    button_.setEnabled(true);
}

void DiscsWindowProgress::Stop()
{
    stopped_ = true;
    button_.setEnabled(false);
}

void DiscsWindowProgress::SetBar(std::uint64_t done, std::uint64_t total)
{
    if (total > 0)
        bar_.show();
    OwnProgress::SetBar(done, total);
}

bool DiscsWindowProgress::Step()
{
    return OwnProgress::Step() && !stopped_;
}

MuoviSuCdDialog::MuoviSuCdDialog(Session& session, QWidget* parent)
    : QDialog(parent), session_(session), operations_(session.running.operations),
      capacity_(new QComboBox(this)), speed_(new QComboBox(this)), unit_(new QComboBox(this)),
      images_(new QLineEdit(this)), browse_(NamedButton(this, "Pul_SfogliaImages")),
      list_(new DiscPlanTree(this)), count_(NamedLabel(this, "Label_Count")),
      info_(NamedLabel(this, "Label_Info")), bar_(new QProgressBar(this)),
      start_(NamedButton(this, "Pul_Start")), progress_(*info_, *bar_, *start_)
{
    setObjectName(QStringLiteral("Dialog_MuoviSuCd"));
    auto* page = new QWidget;
    auto* parts = new QVBoxLayout(page);
    parts->setContentsMargins({});
    parts->addLayout(MakeContent());
    parts->addLayout(MakeDisc());
    parts->addWidget(list_, 1);
    parts->addWidget(count_);
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(page), 1);
    column->addLayout(MakeButtons());
    FillChoices();
    SetCaptions(*this);
    Connect();
    ResizeToFit(*this, discsSize);
    capacity_->setFocus();
    QTimer::singleShot(0, this, [this] { Measure(); });
}

QCheckBox* MuoviSuCdDialog::AddBox(const char* name, bool checked)
{
    auto* box = new QCheckBox(this);
    box->setObjectName(QString::fromLatin1(name));
    box->setChecked(checked);
    return box;
}

QLayout* MuoviSuCdDialog::MakeContent()
{
    levels_ = AddBox("Check_Archivio", true);
    trle_ = AddBox("Check_Trle", false);
    setup_ = AddBox("Check_Kestrova", false);
    imageFirst_ = AddBox("Check_CreaImage", true);
    trle_->setEnabled(!session_.TrleFolder().empty());
    auto* boxes = new QGridLayout;
    boxes->addWidget(levels_, 0, 0);
    boxes->addWidget(trle_, 1, 0);
    boxes->addWidget(setup_, 0, 1);
    boxes->addWidget(imageFirst_, 1, 1);
    return boxes;
}

QLayout* MuoviSuCdDialog::MakeDisc()
{
    capacity_->setObjectName(QStringLiteral("Combo_Mb"));
    capacity_->setEditable(true);
    capacity_->setInsertPolicy(QComboBox::NoInsert);
    speed_->setObjectName(QStringLiteral("Combo_Speed"));
    unit_->setObjectName(QStringLiteral("Combo_Unita"));
    unit_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    images_->setObjectName(QStringLiteral("Text_Images"));
    images_->setPlaceholderText(Words(Msg::DiscsImagesHint));
    browse_->setAutoDefault(false);
    auto* rows = new QGridLayout;
    rows->addWidget(DiscsCaption(capacity_, "Label_MbOf"), 0, 0);
    rows->addWidget(capacity_, 0, 1);
    rows->addWidget(DiscsCaption(speed_, "Label_SpeedOf"), 0, 2);
    rows->addWidget(speed_, 0, 3);
    rows->addWidget(DiscsCaption(unit_, "Label_UnitaOf"), 1, 0);
    rows->addWidget(unit_, 1, 1, 1, 3);
    rows->addWidget(DiscsCaption(images_, "Label_ImagesOf"), 2, 0);
    rows->addWidget(images_, 2, 1, 1, 2);
    rows->addWidget(browse_, 2, 3);
    rows->setColumnStretch(1, 1);
    return rows;
}

QLayout* MuoviSuCdDialog::MakeButtons()
{
    info_->setMinimumHeight(fontMetrics().lineSpacing() * 2);
    bar_->setObjectName(QStringLiteral("ProgressBar1"));
    auto* cancel = NamedButton(this, "Pul_Cancel");
    cancel->setAutoDefault(false);
    connect(cancel, &QPushButton::clicked, this, &MuoviSuCdDialog::reject);
    start_->setDefault(true);
    auto* work = new QHBoxLayout;
    work->addWidget(info_, 1);
    work->addWidget(bar_);
    auto* row = new QHBoxLayout;
    row->addWidget(HelpButton(this));
    row->addStretch();
    row->addWidget(start_);
    row->addWidget(cancel);
    auto* column = new QVBoxLayout;
    column->addLayout(work);
    column->addLayout(row);
    return column;
}

void MuoviSuCdDialog::FillChoices()
{
    for (const DiscCapacity& capacity : DiscCapacities())
        capacity_->addItem(Words(capacity.text), capacity.megabytes);
    capacity_->setCurrentIndex(capacity_->findData(usualCapacity));
    for (int speed = speedStep; speed <= fastestSpeed; speed += speedStep)
        speed_->addItem(Words(Msg::DiscsSpeedRow, {std::to_string(speed)}), speed);
    for (const CdDrive& drive :
         ListCdDrives(session_.machine, session_.programFolder, session_.settings)) {
        if (!drive.writer)
            continue;
        unit_->addItem(Words(Msg::DiscsUnitRow, {drive.name, drive.model}), ToQt(drive.name));
        unit_->setItemData(unit_->count() - 1, drive.megabytes, unitCapacityRole);
    }
    unit_->addItem(Words(Msg::DiscsImagesOnly), QString());
    TakeCapacityOfUnit();
}

void MuoviSuCdDialog::TakeCapacityOfUnit()
{
    const int own = unit_->currentData(unitCapacityRole).toInt();
    if (own == 0 && !unitsCapacity_)
        return;
    const QSignalBlocker quiet{capacity_};
    unitsCapacity_ = own != 0;
    const int row = capacity_->findData(own != 0 ? own : usualCapacity);
    capacity_->setCurrentIndex(row);
    if (row < 0)
        capacity_->setEditText(ToQt(TextOfCapacity(own)));
}

void MuoviSuCdDialog::Connect()
{
    const auto choose = [this] { TakeChoice(); };
    for (QCheckBox* box : {levels_, trle_, setup_, imageFirst_})
        connect(box, &QCheckBox::toggled, this, choose);
    connect(capacity_, &QComboBox::currentTextChanged, this, choose);
    connect(speed_, &QComboBox::currentIndexChanged, this, choose);
    connect(unit_, &QComboBox::currentIndexChanged, this, [this] {
        TakeCapacityOfUnit();
        TakeChoice();
    });
    connect(images_, &QLineEdit::textChanged, this, choose);
    connect(browse_, &QPushButton::clicked, this, [this] { ChooseImages(); });
    connect(start_, &QPushButton::clicked, this, [this] { StartOrStop(); });
}

template <class Work> void MuoviSuCdDialog::Run(Work work)
{
    if (session_.running.operations > operations_)
        return;
    const Operation operation{session_};
    progress_.Begin();
    work();
    progress_.End();
}

void MuoviSuCdDialog::Measure()
{
    Run([this] {
        measured_ = DoneOrTold(session_.host,
                               plan_.Measure(session_.Folders(), session_.archive, progress_));
    });
    TakeChoice();
}

void MuoviSuCdDialog::TakeChoice()
{
    DiscChoice& choice = plan_.choice;
    choice.levels = levels_->isChecked();
    choice.trle = trle_->isChecked();
    choice.setup = setup_->isChecked();
    choice.imageFirst = imageFirst_->isChecked();
    const int row = capacity_->findText(capacity_->currentText());
    const std::string typed{Trim(FromQt(capacity_->currentText()))};
    const bool isNumber = !typed.empty() && typed.front() >= '0' && typed.front() <= '9';
    choice.megabytes = row >= 0   ? capacity_->itemData(row).toInt()
                       : isNumber ? LeadingNumber(typed)
                                  : 0;
    choice.drive = FromQt(unit_->currentData().toString());
    choice.imagesOnly = choice.drive.empty();
    choice.speed = speed_->currentData().toInt();
    choice.images = PathFromQt(images_->text().trimmed());
    imageFirst_->setEnabled(!choice.imagesOnly);
    speed_->setEnabled(!choice.imagesOnly);
    images_->setEnabled(choice.imagesOnly);
    browse_->setEnabled(choice.imagesOnly);
    if (choice.trle && !extrasMeasured_)
        Run([this] {
            const Status measured = MeasureExtras(DiscParts{session_, progress_}, plan_);
            extrasMeasured_ = DoneOrTold(session_.host, measured);
        });
    if (!choice.trle && extrasMeasured_) {
        plan_.extras = {};
        extrasMeasured_ = false;
    }
    plan_.Divide();
    ShowPlan();
}

void MuoviSuCdDialog::ShowPlan()
{
    list_->Show(plan_, session_.archive);
    count_->setText(
        plan_.Discs().empty()
            ? QString()
            : Words(Msg::PlanInAll,
                    {std::to_string(plan_.Discs().size()), TextOfCapacity(plan_.choice.megabytes),
                     std::to_string(plan_.LevelCount()),
                     SizeInWords(static_cast<double>(plan_.RoomOfImages()))}));
}

void MuoviSuCdDialog::ChooseImages()
{
    std::optional<Path> folder;
    {
        const Operation operation{session_};
        folder = session_.host.ChooseFolder(GetMsg(Msg::DiscsChooseImages),
                                            PathFromQt(images_->text().trimmed()));
    }
    if (folder)
        images_->setText(PathToQt(*folder));
}

void MuoviSuCdDialog::StartOrStop()
{
    if (progress_.IsUnderWay()) {
        progress_.Stop();
        return;
    }
    if (!measured_) { // that was stopped
        Measure();
        return;
    }
    bool done = false;
    Run([&] { done = MakeArchiveDiscs(session_, progress_, plan_); });
    setup_->setChecked(plan_.choice.setup);
    if (done)
        accept();
    else
        TakeChoice();
}

void MuoviSuCdDialog::reject()
{
    if (session_.running.operations == operations_)
        QDialog::reject();
}

void ShowDiscs(Session& session, QWidget* parent)
{
    {
        const Operation operation{session};
        if (!HasArchive(session.host, session.archive))
            return;
    }
    MuoviSuCdDialog dialog{session, parent};
    const InputGate::Admission admission{dialog};
    dialog.exec();
    session.list.Refresh();
}

} // namespace kestrova
