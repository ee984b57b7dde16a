#include "ui/main/library_foot.h"

#include "ui/main/level_view.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/qt_text.h"
#include "words/library_window.h"

#include <QHBoxLayout>
#include <QSlider>
#include <QToolButton>

namespace kestrova
{

namespace
{

/// In letters: with less room the buttons show their pictures alone.
constexpr int roomyLetters = 50;

QToolButton* MakeStep(QWidget* parent, const char* name, Drawing drawing, Message tip)
{
    auto* made = new QToolButton(parent);
    made->setObjectName(QString::fromLatin1(name));
    made->setIcon(DrawnIcon(drawing));
    made->setToolTip(Words(tip));
    made->setProperty("pictured", false);
    made->setFocusPolicy(Qt::TabFocus);
    return made;
}

} // namespace

LibraryFoot::LibraryFoot(QWidget* parent)
    : QWidget(parent),
      before_(MakeStep(this, "Pul_Prima", Drawing::Previous, Msg::PreviousLevelTip)),
      behind_(MakeStep(this, "Pul_Dopo", Drawing::Next, Msg::NextLevelTip)),
      slider_(new QSlider(Qt::Horizontal, this)), counts_(new ElidedLabel(this))
{
    counts_->setObjectName(QStringLiteral("Label_Counts"));
    counts_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    slider_->setObjectName(QStringLiteral("Slider_Covers"));
    slider_->setAccessibleName(Words(Msg::CoverSizeName));
    slider_->setToolTip(Words(Msg::CoverSizeName));
    slider_->setRange(smallestCover, largestCover);
    slider_->setValue(usualCover);
    constexpr int step = 15;
    slider_->setSingleStep(step);
    slider_->setPageStep(3 * step);
    slider_->setMinimumWidth(1);
    slider_->hide();
    connect(before_, &QToolButton::clicked, this, [this] { stepped(-1); });
    connect(behind_, &QToolButton::clicked, this, [this] { stepped(1); });
    connect(slider_, &QSlider::valueChanged, this, [this](int width) { coverWidthWanted(width); });
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(before_);
    row->addWidget(behind_);
    row->addWidget(slider_, 1);
    row->addWidget(counts_, 1);
}

void LibraryFoot::ShowCoverWidth(int width)
{
    slider_->setValue(width);
}

void LibraryFoot::ShowSlider(bool shown)
{
    slider_->setVisible(shown);
}

void LibraryFoot::ShowCounts(const QString& words, bool anyLevels)
{
    counts_->setText(words);
    before_->setEnabled(anyLevels);
    behind_->setEnabled(anyLevels);
}

std::vector<QWidget*> LibraryFoot::Controls() const
{
    return {before_, behind_, slider_};
}

void LibraryFoot::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const bool roomy = width() >= roomyLetters * fontMetrics().averageCharWidth();
    for (QToolButton* button : {before_, behind_})
        button->setToolButtonStyle(roomy ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonIconOnly);
}

} // namespace kestrova
