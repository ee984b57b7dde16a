#include "pictures/jpeg.h"

#include "pictures/jpeg_reader.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <turbojpeg.h>

namespace kestrova
{

namespace
{

struct CloseCodec {
    void operator()(void* codec) const { tjDestroy(codec); }
};
using Codec = std::unique_ptr<void, CloseCodec>;

Failure NoMemory()
{
    return MakeFailure(ErrorCode::NoSpace, {});
}
Failure DamagedJpeg()
{
    return MakeFailure(ErrorCode::Damaged, {});
}

/// The end mark stands behind the last scan; a thumbnail's end mark stands before it.
bool HasItsEnd(std::string_view bytes)
{
    const std::size_t end = bytes.rfind("\xFF\xD9");
    const std::size_t scan = bytes.rfind("\xFF\xDA");
    return end != std::string_view::npos && (scan == std::string_view::npos || scan < end);
}

/// Print colours stand inverted in these files, as the programs that write them do it.
void FromPrintColours(const std::vector<std::uint8_t>& cmyk, std::vector<std::uint8_t>& rgb)
{
    for (std::size_t pixel = 0; pixel < cmyk.size() / 4; ++pixel)
        for (std::size_t part = 0; part < 3; ++part)
            rgb[pixel * 3 + part] =
                static_cast<std::uint8_t>(cmyk[pixel * 4 + part] * cmyk[pixel * 4 + 3] / 255);
}

} // namespace

Result<Picture> DecodeJpeg(std::string_view bytes)
{
    return DecodeSmallJpeg(bytes, std::numeric_limits<int>::max(), maxPicturePixels);
}

Result<Picture> DecodeSmallJpeg(std::string_view bytes, int side, std::int64_t mostPixels)
{
    JpegReader reader;
    if (!reader.ReadHeader(bytes))
        return DamagedJpeg();
    if (!IsPictureSize(reader.Width(), reader.Height(), mostPixels))
        return MakeFailure(ErrorCode::Refused, {});
    int parts = 1;
    while (parts < 8 && std::max(reader.Width(), reader.Height()) / (parts * 2) >= side)
        parts *= 2;
    reader.Shrink(parts);
    Picture picture{reader.Width(), reader.Height(), {}};
    const std::size_t pixels =
        static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
    picture.rgb.resize(pixels * 3);
    const bool print = reader.HasPrintColours();
    std::vector<std::uint8_t> cmyk(print ? pixels * 4 : 0);
    const bool read = reader.ReadPixels(print ? cmyk : picture.rgb);
    if (!read || (reader.Warned() && !HasItsEnd(bytes)))
        return DamagedJpeg();
    if (print)
        FromPrintColours(cmyk, picture.rgb);
    return picture;
}

Result<std::string> EncodeJpeg(const Picture& picture, int quality)
{
    if (!IsPictureSize(picture.width, picture.height) || picture.width > 65500 ||
        picture.height > 65500)
        return MakeFailure(ErrorCode::Refused, {});
    const Codec codec{tjInitCompress()};
    const unsigned long room = tjBufSize(picture.width, picture.height, TJSAMP_444);
    if (!codec || room == static_cast<unsigned long>(-1))
        return NoMemory();
    std::string bytes(room, '\0');
    auto* out = reinterpret_cast<unsigned char*>(bytes.data());
    unsigned long size = room;
    if (tjCompress2(codec.get(), picture.rgb.data(), picture.width, 0, picture.height, TJPF_RGB,
                    &out, &size, TJSAMP_444, quality, TJFLAG_NOREALLOC | TJFLAG_ACCURATEDCT) != 0)
        return DamagedJpeg();
    bytes.resize(size);
    return bytes;
}

} // namespace kestrova
