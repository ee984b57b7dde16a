#include "ui/shot_panes.h"

#include "pictures/picture.h"
#include "ui/icons.h"
#include "ui/qt_text.h"

#include <QBuffer>
#include <QHBoxLayout>
#include <QImageReader>
#include <QPainter>
#include <QTextOption>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

/// Larger than any screen-shot that a player keeps.
constexpr std::uint64_t fileLimit = 256U << 20;

Failure Unshown(const Path& file, Msg why)
{
    return {ErrorCode::CannotRead, TextOf(file), GetMsg(why)};
}

/// Kinds that only the desktop's own reader knows; of the other two it would show half a picture
/// of a file that is cut.
QImage ReadOther(std::string& bytes)
{
    QByteArray view = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&view);
    QImageReader reader(&buffer);
    if (reader.format() == "bmp" || reader.format() == "jpeg")
        return {};
    const QSize size = reader.size();
    return IsPictureSize(size.width(), size.height()) ? reader.read() : QImage();
}

} // namespace

Result<QImage> LoadPicture(const Path& file)
{
    auto bytes = ReadWholeFile(file, fileLimit);
    if (!bytes)
        return bytes.Error();
    const auto decoded = DecodePicture(*bytes);
    if (decoded) {
        const QImage view(decoded->rgb.data(), decoded->width, decoded->height,
                          static_cast<qsizetype>(decoded->width) * 3, QImage::Format_RGB888);
        return view.convertToFormat(QImage::Format_RGB32);
    }
    if (decoded.Error().code == ErrorCode::Refused)
        return Unshown(file, Msg::ShotTooLarge);
    QImage other = ReadOther(*bytes);
    if (other.isNull())
        return Unshown(file, Msg::ShotDamaged);
    return other;
}

void PictureView::Show(const QImage& picture)
{
    picture_ = picture;
    scaled_ = {};
    words_.clear();
    update();
}

void PictureView::ShowWords(const QString& words)
{
    picture_ = {};
    scaled_ = {};
    words_ = words;
    update();
}

void PictureView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::AlternateBase));
    if (picture_.isNull()) {
        QTextOption wrapped(Qt::AlignCenter);
        wrapped.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(QRectF(rect().adjusted(8, 8, -8, -8)), words_, wrapped);
        return;
    }
    const qreal scale = devicePixelRatioF();
    const QSize room = size() * scale;
    const QSize fitting = picture_.size().scaled(room, Qt::KeepAspectRatio);
    if (scaled_.size() != fitting) {
        scaled_ = QPixmap::fromImage(
            picture_.scaled(fitting, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        scaled_.setDevicePixelRatio(scale);
    }
    const QSizeF shown = QSizeF(fitting) / scale;
    painter.drawPixmap(QPointF((width() - shown.width()) / 2, (height() - shown.height()) / 2),
                       scaled_);
}

ShotPanes::ShotPanes(QWidget* parent)
    : QWidget(parent), previous_(new QToolButton(this)), next_(new QToolButton(this))
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    const auto turner = [](QToolButton* button, Drawing drawing, const char* name) {
        button->setObjectName(QString::fromLatin1(name));
        button->setProperty("pictured", true);
        button->setIcon(DrawnIcon(drawing));
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    };
    turner(previous_, Drawing::Previous, "Pul_PrimaScreenShot");
    turner(next_, Drawing::Next, "Pul_DopoScreenShot");
    row->addWidget(previous_);
    row->addLayout(MakePane(left_, "1", Msg::LeftShotName), 1);
    row->addLayout(MakePane(right_, "2", Msg::RightShotName), 1);
    row->addWidget(next_);
    connect(previous_, &QToolButton::clicked, this, [this] {
        if (shots_.Previous())
            ShowPair();
    });
    connect(next_, &QToolButton::clicked, this, [this] {
        if (shots_.Next())
            ShowPair();
    });
    Clear();
}

QLayout* ShotPanes::MakePane(Pane& pane, const char* number, Msg name)
{
    const QString behind = QString::fromLatin1(number);
    pane.view = new PictureView(this);
    pane.view->setObjectName(QStringLiteral("Image") + behind);
    pane.view->setAccessibleName(Words(name));
    pane.label = new ElidedLabel(this);
    pane.label->setObjectName(QStringLiteral("Label_InfoImage") + behind);
    pane.zoom = new QToolButton(this);
    pane.zoom->setObjectName(QStringLiteral("Pul_Zoom") + behind);
    pane.zoom->setProperty("pictured", true);
    pane.zoom->setIcon(DrawnIcon(Drawing::Zoom));
    pane.zoom->setAutoRaise(true);
    pane.zoom->setEnabled(false);
    pane.zoom->setToolTip(Words(Msg::NotAvailableYet));
    auto* line = new QHBoxLayout;
    line->addWidget(pane.label, 1);
    line->addWidget(pane.zoom);
    auto* column = new QVBoxLayout;
    column->addWidget(pane.view, 1);
    column->addLayout(line);
    return column;
}

void ShotPanes::ShowLevel(Session& session, LevelCode code)
{
    shots_.Load(session, code);
    ShowPair();
}

void ShotPanes::Clear()
{
    for (Pane* pane : {&left_, &right_}) {
        pane->shown.clear();
        pane->label->clear();
        pane->view->ShowWords(Words(Msg::NoPicture));
    }
    previous_->setEnabled(false);
    next_->setEnabled(false);
}

void ShotPanes::ShowPair()
{
    ShowFile(left_, shots_.Left());
    ShowFile(right_, shots_.Right());
    previous_->setEnabled(shots_.HasPrevious());
    next_->setEnabled(shots_.HasNext());
}

void ShotPanes::ShowFile(Pane& pane, const Path& file)
{
    const Path found = ResolvePath(file);
    if (!FileExists(found)) {
        pane.shown.clear();
        pane.label->clear();
        pane.view->ShowWords(Words(Msg::ShotNotFound, {TextOf(file)}));
        return;
    }
    std::error_code none;
    const auto time = std::filesystem::last_write_time(found, none).time_since_epoch().count();
    if (pane.shown == found && pane.shownTime == time && pane.view->HasPicture())
        return;
    pane.shown = found;
    pane.shownTime = time;
    pane.label->setText(ToQt(StripExtension(TextOf(found.filename()))));
    if (const auto picture = LoadPicture(found))
        pane.view->Show(*picture);
    else
        pane.view->ShowWords(Words(Msg::ShotUnreadable, {picture.Error().reason}));
}

} // namespace kestrova
