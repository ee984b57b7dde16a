#include "ui/dialogs/shot_strip.h"

#include "ui/widgets/qt_text.h"
#include "words/level_page.h"

#include <QAbstractListModel>
#include <QContextMenuEvent>
#include <QIcon>
#include <QScrollBar>

namespace kestrova
{

namespace
{

constexpr QSize smallPicture{80, 60};
/// Both panes show as many.
constexpr std::ptrdiff_t shownBeside = 2;

} // namespace

/// A row for each picture; only those that are seen are decoded.
class ShotStrip::Model : public QAbstractListModel
{
public:
    Model(CoverCache& cache, QObject* parent) : QAbstractListModel(parent), cache_(cache)
    {
        cache_.places = [this](LevelCode row) {
            const auto place = static_cast<std::size_t>(row);
            if (place >= files_.size())
                return CoverPlaces{};
            return CoverPlaces{files_[place].parent_path(), {}, files_[place].filename().native()};
        };
        cache_.came = [this](LevelCode row) {
            const QModelIndex at = index(row);
            Q_EMIT dataChanged(at, at, {Qt::DecorationRole});
        };
    }
    void SetFiles(const std::vector<Path>& files)
    {
        cache_.LookAgain();
        if (files == files_)
            return;
        beginResetModel();
        files_ = files;
        endResetModel();
    }
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(files_.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override
    {
        const auto place = static_cast<std::size_t>(index.row());
        if (place >= files_.size())
            return {};
        if (role == Qt::DecorationRole) // a pixmap would be shown as large as it is
            return QIcon(cache_.Cover(index.row()));
        const QString name = ToQt(StripExtension(TextOf(files_[place].filename())));
        if (role == Qt::AccessibleTextRole)
            return name;
        if (role == Qt::ToolTipRole)
            return PlainTip(name);
        if (role == Qt::SizeHintRole)
            return smallPicture + QSize(6, 6);
        return {};
    }

private:
    CoverCache& cache_;
    std::vector<Path> files_;
};

ShotStrip::ShotStrip(QWidget* parent)
    : QListView(parent), cache_(CoverCache::UsualShelf()), model_(new Model(cache_, this))
{
    setObjectName(QStringLiteral("List_Strip"));
    setAccessibleName(Words(Msg::StripName));
    setModel(model_);
    setFlow(QListView::LeftToRight);
    setWrapping(false);
    setUniformItemSizes(true);
    setIconSize(smallPicture);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setFixedHeight(smallPicture.height() + horizontalScrollBar()->sizeHint().height() + 12);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    connect(this, &QListView::clicked, this,
            [this](const QModelIndex& index) { picked(index.row()); });
    connect(this, &QListView::activated, this,
            [this](const QModelIndex& index) { picked(index.row()); });
    hide();
}

void ShotStrip::contextMenuEvent(QContextMenuEvent* event)
{
    // By the keyboard it is of the chosen picture, wherever that stands.
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex index = byKey ? currentIndex() : indexAt(event->pos());
    const QPoint place = byKey ? visualRect(index).center() : event->pos();
    if (index.isValid())
        menuWanted(index.row(), viewport()->mapToGlobal(place));
}

void ShotStrip::ShowList(const ShotList& shots)
{
    model_->SetFiles(shots.Files());
    setVisible(shots.Count() > shownBeside);
    const QModelIndex shown =
        model_->index(static_cast<int>(std::max<std::ptrdiff_t>(shots.Index(), 0)));
    setCurrentIndex(shown);
    if (shown.isValid())
        scrollTo(shown);
}

} // namespace kestrova
