#include "ui/main/library_bar.h"

#include "core/text.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/qt_text.h"
#include "words/library_window.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace kestrova
{

namespace
{

struct OrderRow {
    LibraryOrder order;
    Message words;
};
constexpr OrderRow orders[] = {
    {LibraryOrder::Name, Msg::SortName},
    {LibraryOrder::Author, Msg::SortAuthor},
    {LibraryOrder::LastPlayed, Msg::SortLastPlayed},
    {LibraryOrder::TimePlayed, Msg::SortTimePlayed},
    {LibraryOrder::Size, Msg::SortSize},
    {LibraryOrder::Added, Msg::SortAdded},
    {LibraryOrder::Stars, Msg::SortStars},
    {LibraryOrder::Status, Msg::SortStatus},
    {LibraryOrder::Savegames, Msg::ColumnSavegames},
};

struct FilterRow {
    LibraryFilter filter;
    Message words;
};
constexpr FilterRow filters[] = {
    {LibraryFilter::All, Msg::FilterAll},
    {LibraryFilter::Playing, Msg::StatusPlaying},
    {LibraryFilter::New, Msg::StatusNew},
    {LibraryFilter::Finished, Msg::StatusFinished},
    {LibraryFilter::GivenUp, Msg::StatusGivenUp},
    {LibraryFilter::Favourites, Msg::FilterFavourites},
    {LibraryFilter::OnDisc, Msg::FilterOnDisc},
};

QComboBox* MakeBox(const char* name, Message words, QWidget* parent)
{
    auto* box = new QComboBox(parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setAccessibleName(Words(words));
    box->setToolTip(Words(words));
    // A tag may be long, and the window small.
    constexpr int fewestLetters = 5;
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(fewestLetters);
    return box;
}

} // namespace

LibraryBar::LibraryBar(QWidget* parent)
    : QWidget(parent), order_(MakeBox("Combo_Sort", Msg::SortBoxName, this)),
      filter_(MakeBox("Combo_Filter", Msg::FilterBoxName, this)), turn_(MakeButton("Pul_Turn")),
      rows_(MakeLook("Pul_Rows", LibraryLook::Rows)),
      covers_(MakeLook("Pul_Covers", LibraryLook::Covers)), above_(new QHBoxLayout),
      below_(new QHBoxLayout)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addLayout(above_);
    column->addLayout(below_);
    Arrange();
    connect(turn_, &QToolButton::clicked, this, [this] { turned(); });
    // The keyboard cannot reach the head of the columns.
    rows_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(rows_, &QToolButton::customContextMenuRequested, this,
            [this] { columnsWanted(rows_->mapToGlobal(rows_->rect().bottomLeft())); });
    for (const OrderRow& order : orders)
        order_->addItem(Words(order.words));
    connect(order_, &QComboBox::currentIndexChanged, this,
            [this](int index) { ordered(orders[index].order); });
    connect(filter_, &QComboBox::currentIndexChanged, this, [this](int index) {
        const auto number = static_cast<std::size_t>(index);
        if (number < std::size(filters))
            filtered(filters[number].filter, {});
        else
            filtered(LibraryFilter::Tag, tags_[number - std::size(filters)]);
    });
    Show(Library{});
}

/// In two rows both boxes can be read beside a wide level, or on a small screen.
void LibraryBar::Arrange()
{
    constexpr int roomyLetters = 52;
    const bool narrow = width() < roomyLetters * fontMetrics().averageCharWidth();
    const bool inTwoRows = narrow && !low_;
    if (std::exchange(inTwoRows_, inTwoRows) == inTwoRows)
        return;
    above_->addWidget(order_, 1);
    above_->addWidget(turn_);
    QHBoxLayout* const behind = inTwoRows ? below_ : above_;
    behind->addWidget(filter_, 1);
    behind->addWidget(rows_);
    behind->addWidget(covers_);
}

void LibraryBar::SetLow(bool low)
{
    low_ = low;
    rows_->setHidden(low);
    covers_->setHidden(low);
    Arrange();
}

void LibraryBar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    Arrange();
}

QToolButton* LibraryBar::MakeButton(const char* name)
{
    auto* button = new QToolButton(this);
    button->setObjectName(QString::fromLatin1(name));
    button->setProperty("pictured", true);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

QToolButton* LibraryBar::MakeLook(const char* name, LibraryLook look)
{
    QToolButton* button = MakeButton(name);
    button->setIcon(DrawnIcon(look == LibraryLook::Rows ? Drawing::Rows : Drawing::Covers));
    button->setCheckable(true);
    button->setAutoExclusive(true);
    connect(button, &QToolButton::clicked, this, [this, look] { looked(look); });
    return button;
}

void LibraryBar::FillFilters(const Library& library)
{
    tags_ = library.Tags();
    const std::string& tag = library.Tag();
    if (!tag.empty() && std::none_of(tags_.begin(), tags_.end(),
                                     [&](const std::string& one) { return EqualNames(one, tag); }))
        tags_.push_back(tag);
    filter_->clear();
    for (const FilterRow& filter : filters)
        filter_->addItem(Words(filter.words));
    for (const std::string& one : tags_)
        filter_->addItem(Words(Msg::FilterTag, {one}));
}

void LibraryBar::Show(const Library& library)
{
    const QSignalBlocker quietOrder{order_};
    const QSignalBlocker quietFilter{filter_};
    const auto* const order =
        std::find_if(std::begin(orders), std::end(orders),
                     [&](const OrderRow& one) { return one.order == library.Order(); });
    order_->setCurrentIndex(static_cast<int>(order - std::begin(orders)));
    turn_->setArrowType(library.IsTurned() ? Qt::UpArrow : Qt::DownArrow);
    FillFilters(library);
    const auto* const filter =
        std::find_if(std::begin(filters), std::end(filters),
                     [&](const FilterRow& one) { return one.filter == library.Filter(); });
    std::ptrdiff_t index = filter - std::begin(filters);
    if (library.Filter() == LibraryFilter::Tag)
        index +=
            std::find_if(tags_.begin(), tags_.end(),
                         [&](const std::string& one) { return EqualNames(one, library.Tag()); }) -
            tags_.begin();
    filter_->setCurrentIndex(static_cast<int>(index));
}

void LibraryBar::Show(LibraryLook look)
{
    (look == LibraryLook::Rows ? rows_ : covers_)->setChecked(true);
}

QString LibraryBar::FilterWords() const
{
    return filter_->currentText();
}

std::vector<QWidget*> LibraryBar::Controls() const
{
    return {order_, turn_, filter_, rows_, covers_};
}

} // namespace kestrova
