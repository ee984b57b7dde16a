#include "pictures/picture.h"

#include "pictures/bitmap.h"
#include "pictures/jpeg.h"

#include <algorithm>

namespace kestrova
{

bool IsPictureSize(std::int64_t width, std::int64_t height, std::int64_t mostPixels)
{
    return width > 0 && height > 0 && width <= mostPixels && height <= mostPixels / width;
}

namespace
{

/// The mean of each square of `parts` by `parts` pixels; what is left at the right and below goes.
Picture Shrunk(Picture picture, int parts)
{
    if (parts < 2 || picture.width < parts || picture.height < parts)
        return picture;
    Picture small{picture.width / parts, picture.height / parts, {}};
    const auto row = static_cast<std::size_t>(picture.width) * 3;
    const auto width = static_cast<std::size_t>(small.width) * 3;
    const auto square = static_cast<std::size_t>(parts);
    small.rgb.reserve(width * static_cast<std::size_t>(small.height));
    std::vector<std::uint32_t> sums(width);
    for (std::size_t y = 0; y < static_cast<std::size_t>(small.height); ++y) {
        std::fill(sums.begin(), sums.end(), 0);
        for (std::size_t line = 0; line < square; ++line) {
            const std::uint8_t* from = picture.rgb.data() + (y * square + line) * row;
            for (std::size_t x = 0; x < width; x += 3)
                for (std::size_t i = 0; i < square; ++i, from += 3)
                    for (std::size_t part = 0; part < 3; ++part)
                        sums[x + part] += from[part];
        }
        for (const std::uint32_t sum : sums)
            small.rgb.push_back(static_cast<std::uint8_t>(sum / (square * square)));
    }
    return small;
}

} // namespace

Result<Picture> DecodePicture(std::string_view bytes)
{
    if (bytes.starts_with("BM"))
        return DecodeBitmap(bytes);
    if (bytes.starts_with("\xFF\xD8"))
        return DecodeJpeg(bytes);
    return MakeFailure(ErrorCode::Damaged, {});
}

Result<Picture> DecodeSmall(std::string_view bytes, int side, std::int64_t mostPixels)
{
    if (bytes.starts_with("BM")) {
        auto picture = DecodeBitmap(bytes, mostPixels);
        if (!picture)
            return picture;
        const int parts = std::max(picture->width, picture->height) / side;
        return Shrunk(std::move(*picture), parts);
    }
    if (bytes.starts_with("\xFF\xD8"))
        return DecodeSmallJpeg(bytes, side, mostPixels);
    return MakeFailure(ErrorCode::Damaged, {});
}

} // namespace kestrova
