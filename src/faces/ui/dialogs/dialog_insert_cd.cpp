#include "ui/dialogs/dialog_insert_cd.h"

#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/letter_size.h"
#include "ui/widgets/qt_text.h"
#include "words/disc_windows.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr int insertCdWidth = 460;
constexpr int drivesAgainMs = 2000; ///< a disc that comes meanwhile is shown

QString DriveLine(const DiscDrive& drive)
{
    if (!drive.holdsDisc)
        return Words(Msg::InsertCdEmpty, {drive.name});
    return drive.label.empty() ? Words(Msg::InsertCdUnnamed, {drive.name})
                               : Words(Msg::InsertCdNamed, {drive.name, drive.label});
}

} // namespace

InsertCdDialog::InsertCdDialog(InsertCd& question, QWidget* parent)
    : QDialog(parent), question_(question), drives_(new QComboBox(this))
{
    setObjectName(QStringLiteral("Dialog_InsertCd"));
    auto* message = new QLabel(this);
    message->setObjectName(QStringLiteral("Label_Mex"));
    message->setTextFormat(Qt::PlainText);
    message->setText(ToQt(question.Message()));
    message->setFont(TimesAsLarge(message->font(), 1.25));
    auto* details = new QLabel(this);
    details->setObjectName(QStringLiteral("Label_Details"));
    details->setTextFormat(Qt::PlainText);
    details->setWordWrap(true);
    details->setText(
        WithWordsWithin(ToQt(question.Details()), details->fontMetrics(), insertCdWidth - 40));
    drives_->setObjectName(QStringLiteral("Combo_Unita"));
    drives_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto* caption = new QLabel(this);
    caption->setObjectName(QStringLiteral("Label_Unita"));
    caption->setBuddy(drives_);
    auto* image = NamedButton(this, "Pul_Image");
    image->setAutoDefault(false);

    auto* content = new QWidget;
    auto* texts = new QVBoxLayout(content);
    texts->setContentsMargins({});
    texts->addWidget(message);
    texts->addWidget(details);
    auto* row = new QHBoxLayout;
    row->addWidget(caption);
    row->addWidget(drives_, 1);
    texts->addLayout(row);
    auto* images = new QHBoxLayout;
    images->addStretch();
    images->addWidget(image);
    texts->addLayout(images);
    texts->addStretch();
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(content), 1);
    column->addLayout(AnswerButtons(*this));
    SetCaptions(*this);
    ShowDrives();
    connect(drives_, &QComboBox::currentIndexChanged, this, [this](int at) {
        question_.chosen = at < 0 ? std::nullopt : std::optional{static_cast<std::size_t>(at)};
    });
    connect(image, &QPushButton::clicked, this, &InsertCdDialog::ChooseImage);
    auto* again = new QTimer(this);
    connect(again, &QTimer::timeout, this, [this] {
        if (!looking_ && !drives_->view()->isVisible() && isActiveWindow()) {
            question_.Refresh();
            ShowDrives();
        }
    });
    again->start(drivesAgainMs);
    ResizeToFit(*this, {insertCdWidth, sizeHint().height()});
    drives_->setFocus();
}

void InsertCdDialog::ShowDrives()
{
    const QSignalBlocker quiet{drives_};
    drives_->clear();
    for (const DiscDrive& drive : question_.Drives())
        drives_->addItem(DriveLine(drive));
    drives_->setCurrentIndex(question_.chosen ? static_cast<int>(*question_.chosen) : -1);
}

void InsertCdDialog::reject()
{
    if (!looking_)
        QDialog::reject();
}

void InsertCdDialog::accept()
{
    if (std::exchange(looking_, true))
        return;
    const bool found = question_.Accept();
    looking_ = false;
    ShowDrives();
    if (found)
        QDialog::accept();
}

void InsertCdDialog::ChooseImage()
{
    if (std::exchange(looking_, true))
        return;
    const bool found = question_.ChooseImage();
    looking_ = false;
    if (found)
        QDialog::accept();
}

} // namespace kestrova
