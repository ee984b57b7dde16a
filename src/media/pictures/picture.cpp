#include "pictures/picture.h"

#include "pictures/bitmap.h"
#include "pictures/jpeg.h"

namespace kestrova
{

bool IsPictureSize(std::int64_t width, std::int64_t height)
{
    return width > 0 && height > 0 && width <= maxPicturePixels &&
           height <= maxPicturePixels / width;
}

Result<Picture> DecodePicture(std::string_view bytes)
{
    if (bytes.starts_with("BM"))
        return DecodeBitmap(bytes);
    if (bytes.starts_with("\xFF\xD8"))
        return DecodeJpeg(bytes);
    return MakeFailure(ErrorCode::Damaged, {});
}

} // namespace kestrova
