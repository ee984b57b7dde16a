#include "pictures/jpeg.h"

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
Failure Damaged()
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
    const Codec codec{tjInitDecompress()};
    if (!codec)
        return NoMemory();
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto size = static_cast<unsigned long>(bytes.size());
    int width = 0;
    int height = 0;
    int sampling = 0;
    int colours = 0;
    if (tjDecompressHeader3(codec.get(), data, size, &width, &height, &sampling, &colours) != 0 &&
        tjGetErrorCode(codec.get()) != TJERR_WARNING)
        return Damaged();
    if (!IsPictureSize(width, height))
        return MakeFailure(ErrorCode::Refused, {});

    Picture picture{width, height, {}};
    const std::size_t pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    picture.rgb.resize(pixels * 3);
    const bool print = colours == TJCS_CMYK || colours == TJCS_YCCK;
    std::vector<std::uint8_t> cmyk(print ? pixels * 4 : 0);
    const int failed =
        tjDecompress2(codec.get(), data, size, print ? cmyk.data() : picture.rgb.data(), width, 0,
                      height, print ? TJPF_CMYK : TJPF_RGB,
                      TJFLAG_LIMITSCANS); // a small file with thousands of scans takes minutes
    if (failed != 0 && (tjGetErrorCode(codec.get()) != TJERR_WARNING || !HasItsEnd(bytes)))
        return Damaged();
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
        return Damaged();
    bytes.resize(size);
    return bytes;
}

} // namespace kestrova
