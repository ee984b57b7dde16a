#include "pictures/bitmap.h"
#include "pictures/jpeg.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// Any picture, told apart by its content: what is read has as many pixels as it says, and its
/// bitmap reads back the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    const auto picture = DecodePicture(bytes);
    const auto small = DecodeSmall(bytes, 64, 1 << 20);
    Promise(!small || small->rgb.size() == static_cast<std::size_t>(small->width) *
                                               static_cast<std::size_t>(small->height) * 3,
            "a small picture has all its pixels");
    if (!picture)
        return 0;
    Promise(IsPictureSize(picture->width, picture->height), "a size within the limit");
    const std::size_t pixels =
        static_cast<std::size_t>(picture->width) * static_cast<std::size_t>(picture->height);
    Promise(picture->rgb.size() == pixels * 3, "a picture has all its pixels");
    // Small inputs can claim many pixels; writing those again and again finds nothing new.
    constexpr std::size_t worthWriting = 1 << 20;
    if (pixels > worthWriting)
        return 0;
    const auto again = DecodePicture(EncodeBitmap(*picture));
    Promise(again && again->rgb == picture->rgb, "the bitmap reads the same");
    if (picture->width <= 65500 && picture->height <= 65500) {
        const auto jpeg = EncodeJpeg(*picture);
        Promise(jpeg && DecodePicture(*jpeg), "the jpeg can be read");
    }
    return 0;
}
