#include "ui/widgets/picture_reading.h"

#include "core/files.h"
#include "words/ui_widgets.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>
#include <cstring>

namespace kestrova
{

namespace
{

/// Larger than any screen-shot that a player keeps.
constexpr std::uint64_t fileLimit = 256U << 20;

/// Of a picture that is only shown small.
constexpr std::int64_t smallPixels = 24 * 1024 * 1024;

Failure Unshown(const Path& file, Message why)
{
    return {ErrorCode::CannotRead, TextOf(file), GetMsg(why)};
}

/// Kinds that only the window library's reader knows; of an animation the first picture. Of bitmaps
/// and jpegs it would show half a picture where the file is cut.
Result<QImage> ReadOther(std::string& bytes, std::int64_t mostPixels)
{
    QByteArray view = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&view);
    QImageReader reader(&buffer);
    const QByteArray kind = reader.format();
    if (kind != "png" && kind != "gif" && kind != "webp")
        return MakeFailure(ErrorCode::Damaged, {});
    const QSize size = reader.size();
    if (size.isValid() && !IsPictureSize(size.width(), size.height(), mostPixels))
        return MakeFailure(ErrorCode::Refused, {});
    QImage image = size.isValid() ? reader.read() : QImage();
    if (image.isNull())
        return MakeFailure(ErrorCode::Damaged, {});
    return image;
}

/// What looks into the pixels, which must outlive it.
QImage ViewOf(const Picture& picture)
{
    return {picture.rgb.data(), picture.width, picture.height,
            static_cast<qsizetype>(picture.width) * 3, QImage::Format_RGB888};
}

} // namespace

Result<QImage> ReadPicture(std::string& bytes)
{
    const auto decoded = DecodePicture(bytes);
    if (!decoded && decoded.Error().code == ErrorCode::Refused)
        return decoded.Error();
    if (!decoded)
        return ReadOther(bytes, maxPicturePixels);
    return ViewOf(*decoded).convertToFormat(QImage::Format_RGB32);
}

Result<QImage> ReadSmallPicture(std::string& bytes, int side)
{
    const auto decoded = DecodeSmall(bytes, side, smallPixels);
    if (!decoded && decoded.Error().code == ErrorCode::Refused)
        return decoded.Error();
    const auto other = decoded ? Result<QImage>{ViewOf(*decoded)} : ReadOther(bytes, smallPixels);
    if (!other)
        return other.Error();
    QImage image = other->convertToFormat(QImage::Format_RGB32);
    if (std::max(image.width(), image.height()) <= side)
        return image;
    const QSize fitting = image.size().scaled(side, side, Qt::KeepAspectRatio);
    return image.scaled(fitting.expandedTo({1, 1}), Qt::IgnoreAspectRatio,
                        Qt::SmoothTransformation);
}

Result<QImage> LoadPicture(const Path& file)
{
    auto bytes = ReadWholeFile(file, fileLimit);
    if (!bytes)
        return bytes.Error();
    auto picture = ReadPicture(*bytes);
    if (picture)
        return picture;
    return Unshown(file, picture.Error().code == ErrorCode::Refused ? Msg::ShotTooLarge
                                                                    : Msg::ShotDamaged);
}

Picture PictureOf(const QImage& image)
{
    const QImage rgb = image.convertToFormat(QImage::Format_RGB888);
    Picture picture{rgb.width(), rgb.height(), {}};
    const std::size_t row = static_cast<std::size_t>(rgb.width()) * 3;
    picture.rgb.resize(row * static_cast<std::size_t>(rgb.height()));
    for (int y = 0; y < rgb.height(); ++y)
        std::memcpy(picture.rgb.data() + row * static_cast<std::size_t>(y), rgb.constScanLine(y),
                    row);
    return picture;
}

} // namespace kestrova
