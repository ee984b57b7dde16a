#include "pictures/bitmap.h"

#include <algorithm>
#include <array>
#include <bit>

namespace kestrova
{

namespace
{

enum Packing : std::uint32_t { plain = 0, rle8 = 1, rle4 = 2, masks = 3, alphaMasks = 6 };

struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
};

/// Numbers at places that the caller has compared with the size.
class Bytes
{
public:
    explicit Bytes(std::string_view bytes) : bytes_(bytes) {}
    [[nodiscard]] std::uint8_t U8(std::size_t at) const
    {
        return static_cast<std::uint8_t>(bytes_[at]);
    }
    [[nodiscard]] std::uint32_t U16(std::size_t at) const
    {
        return U8(at) | static_cast<std::uint32_t>(U8(at + 1)) << 8;
    }
    [[nodiscard]] std::uint32_t U32(std::size_t at) const { return U16(at) | U16(at + 2) << 16; }
    [[nodiscard]] std::int32_t I32(std::size_t at) const
    {
        return static_cast<std::int32_t>(U32(at));
    }
    [[nodiscard]] std::size_t Size() const { return bytes_.size(); }

private:
    std::string_view bytes_;
};

/// One colour part of a masked pixel, spread to 8 bits by a table.
struct ColourBits {
    std::uint32_t mask = 0;
    int shift = 0;
    std::array<std::uint8_t, 256> spread{};

    ColourBits() = default;
    explicit ColourBits(std::uint32_t wanted)
    {
        if (wanted == 0)
            return;
        const int top = 32 - std::countl_zero(wanted);
        shift = std::max(std::countr_zero(wanted), top - 8);
        mask = wanted >> shift;
        for (std::uint32_t value = 0; value < 256; ++value)
            spread[value] =
                static_cast<std::uint8_t>((std::min(value, mask) * 255 + mask / 2) / mask);
    }
    [[nodiscard]] std::uint8_t Of(std::uint32_t pixel) const
    {
        return spread[(pixel >> shift) & mask & 0xFF];
    }
};

struct Layout {
    std::int64_t width = 0;
    std::int64_t height = 0;
    bool topDown = false;
    std::uint32_t bits = 0;
    std::uint32_t packing = plain;
    std::size_t pixels = 0; ///< where they begin
    std::array<Colour, 256> palette{};
    std::array<ColourBits, 3> channels{};
};

Failure Damaged()
{
    return MakeFailure(ErrorCode::Damaged, {});
}

void ReadPalette(const Bytes& file, std::size_t at, std::size_t entry, std::size_t count,
                 Layout& layout)
{
    count = std::min({count, layout.palette.size(), std::size_t{1} << layout.bits});
    for (std::size_t i = 0; i < count && at + entry <= layout.pixels; ++i, at += entry)
        layout.palette[i] = {file.U8(at + 2), file.U8(at + 1), file.U8(at)};
}

bool IsPackingOf(const Layout& layout)
{
    switch (layout.bits) {
    case 1:
    case 24:
        return layout.packing == plain;
    case 4:
        return layout.packing == plain || layout.packing == rle4;
    case 8:
        return layout.packing == plain || layout.packing == rle8;
    case 16:
    case 32:
        return layout.packing == plain || layout.packing == masks || layout.packing == alphaMasks;
    default:
        return false;
    }
}

Result<Layout> ReadHeader(const Bytes& file, std::int64_t mostPixels)
{
    if (file.Size() < 26 || file.U8(0) != 'B' || file.U8(1) != 'M')
        return Damaged();
    Layout layout;
    layout.pixels = file.U32(10);
    const std::size_t header = file.U32(14);
    const bool early = header == 12;
    if ((!early && header < 16) || header > 124 || layout.pixels < 14 + header ||
        layout.pixels >= file.Size())
        return Damaged();
    if (early) {
        layout.width = file.U16(18);
        layout.height = file.U16(20);
    } else {
        layout.width = file.I32(18);
        layout.height = file.I32(22);
    }
    layout.bits = file.U16(early ? 24 : 28);
    layout.packing = header >= 20 ? file.U32(30) : plain;
    layout.topDown = layout.height < 0;
    layout.height = layout.topDown ? -layout.height : layout.height;
    if (!IsPictureSize(layout.width, layout.height, mostPixels))
        return MakeFailure(ErrorCode::Refused, {});
    const bool os2 = header == 64; // its packings 3 and 4 mean something else
    if (!IsPackingOf(layout) || (os2 && layout.packing > rle4))
        return Damaged();

    std::size_t behind = 14 + header;
    if (layout.packing == masks || layout.packing == alphaMasks) {
        if (header < 40 || file.Size() < 66)
            return Damaged();
        for (std::size_t i = 0; i < 3; ++i)
            layout.channels[i] = ColourBits{file.U32(54 + 4 * i)};
    } else if (layout.bits == 16) {
        layout.channels = {ColourBits{0x7C00}, ColourBits{0x03E0}, ColourBits{0x001F}};
    } else if (layout.bits == 32) {
        layout.channels = {ColourBits{0xFF0000}, ColourBits{0x00FF00}, ColourBits{0x0000FF}};
    }
    if (layout.bits <= 8) {
        const std::size_t used = header >= 36 ? file.U32(46) : 0;
        ReadPalette(file, behind, early ? 3 : 4, used == 0 ? layout.palette.size() : used, layout);
    }
    return layout;
}

void Put(std::uint8_t*& to, const Colour& colour)
{
    *to++ = colour.red;
    *to++ = colour.green;
    *to++ = colour.blue;
}

/// The picture's row that is the file's row number `row`.
std::uint8_t* RowOf(Picture& picture, const Layout& layout, std::int64_t row)
{
    const std::int64_t fromTop = layout.topDown ? row : layout.height - 1 - row;
    return picture.rgb.data() + fromTop * layout.width * 3;
}

void ReadRow(const Bytes& file, const Layout& layout, std::size_t from, std::uint8_t* to)
{
    const auto width = static_cast<std::size_t>(layout.width);
    for (std::size_t x = 0; x < width; ++x) {
        switch (layout.bits) {
        case 1:
            Put(to, layout.palette[(file.U8(from + x / 8) >> (7 - x % 8)) & 1U]);
            break;
        case 4:
            Put(to, layout.palette[(file.U8(from + x / 2) >> (x % 2 == 0 ? 4 : 0)) & 15U]);
            break;
        case 8:
            Put(to, layout.palette[file.U8(from + x)]);
            break;
        case 24:
            Put(to, {file.U8(from + 3 * x + 2), file.U8(from + 3 * x + 1), file.U8(from + 3 * x)});
            break;
        default: {
            const std::uint32_t pixel =
                layout.bits == 16 ? file.U16(from + 2 * x) : file.U32(from + 4 * x);
            Put(to, {layout.channels[0].Of(pixel), layout.channels[1].Of(pixel),
                     layout.channels[2].Of(pixel)});
        }
        }
    }
}

Picture BlankPicture(const Layout& layout)
{
    Picture picture;
    picture.width = static_cast<int>(layout.width);
    picture.height = static_cast<int>(layout.height);
    picture.rgb.resize(static_cast<std::size_t>(layout.width * layout.height * 3));
    return picture;
}

Result<Picture> ReadPlain(const Bytes& file, const Layout& layout)
{
    const std::uint64_t rowBits = static_cast<std::uint64_t>(layout.width) * layout.bits;
    const std::uint64_t stride = (rowBits + 31) / 32 * 4;
    // The last row's padding is missing in many a file.
    const std::uint64_t needed =
        stride * static_cast<std::uint64_t>(layout.height - 1) + (rowBits + 7) / 8;
    if (file.Size() - layout.pixels < needed)
        return Damaged();
    Picture picture = BlankPicture(layout);
    for (std::int64_t row = 0; row < layout.height; ++row)
        ReadRow(file, layout, layout.pixels + static_cast<std::size_t>(row) * stride,
                RowOf(picture, layout, row));
    return picture;
}

/// Run-length packing: pairs of count and value. Count 0 leads an escape: 0 ends the row, 1 ends
/// the picture, 2 moves right and on by the next two bytes, any other is that many pixels as they
/// stand, padded to two bytes. With 4 bits a byte holds two pixels, the high half first.
class RunLengthReader
{
public:
    RunLengthReader(const Bytes& file, const Layout& layout)
        : file_(file), layout_(layout), picture_(BlankPicture(layout)), at_(layout.pixels)
    {
        for (std::uint8_t* to = picture_.rgb.data();
             to != picture_.rgb.data() + picture_.rgb.size();)
            Put(to, layout.palette[0]);
    }

    Result<Picture> Read()
    {
        while (!ended_ && file_.Size() - at_ >= 2) {
            const std::uint32_t count = file_.U8(at_);
            const std::uint32_t value = file_.U8(at_ + 1);
            at_ += 2;
            if (count == 0 && !Escape(value))
                return Damaged();
            for (std::uint32_t i = 0; i < count; ++i)
                PutPixel(value, i);
        }
        // The end mark may be missing behind the last pixel.
        const bool full = row_ == layout_.height - 1 && x_ >= layout_.width;
        if (!ended_ && !full)
            return Damaged();
        return std::move(picture_);
    }

private:
    bool Escape(std::uint32_t value)
    {
        if (value == 0) {
            x_ = 0;
            ended_ = ++row_ >= layout_.height;
            return true;
        }
        if (value == 1) {
            ended_ = true;
            return true;
        }
        const std::size_t size = value == 2 ? 2 : Halves() ? (value + 1) / 2 : value;
        if (file_.Size() - at_ < size)
            return false;
        if (value == 2) {
            x_ += file_.U8(at_);
            row_ += file_.U8(at_ + 1);
        } else {
            for (std::uint32_t i = 0; i < value; ++i)
                PutPixel(file_.U8(at_ + (Halves() ? i / 2 : i)), i);
        }
        at_ = std::min(at_ + size + size % 2, file_.Size());
        return row_ < layout_.height;
    }

    void PutPixel(std::uint32_t byte, std::uint32_t place)
    {
        const std::uint32_t index = !Halves() ? byte : place % 2 == 0 ? byte >> 4 : byte & 15U;
        if (x_ < layout_.width) {
            std::uint8_t* to = RowOf(picture_, layout_, row_) + x_ * 3;
            Put(to, layout_.palette[index]);
        }
        ++x_;
    }

    [[nodiscard]] bool Halves() const { return layout_.bits == 4; }

    const Bytes& file_;
    const Layout& layout_;
    Picture picture_;
    std::size_t at_;
    std::int64_t x_ = 0;
    std::int64_t row_ = 0;
    bool ended_ = false;
};

void PutField(std::string& bytes, std::size_t number, int width)
{
    for (int i = 0; i < width; ++i)
        bytes += static_cast<char>((number >> (8 * i)) & 0xFF);
}

} // namespace

Result<Picture> DecodeBitmap(std::string_view bytes, std::int64_t mostPixels)
{
    const Bytes file{bytes};
    const Result<Layout> layout = ReadHeader(file, mostPixels);
    if (!layout)
        return layout.Error();
    if (layout->packing != rle8 && layout->packing != rle4)
        return ReadPlain(file, *layout);
    // A pair fills 255 pixels at most: a few bytes that claim a vast picture are no picture.
    if (layout->width * layout->height >
        static_cast<std::int64_t>(bytes.size() - layout->pixels) * 128 + (1 << 20))
        return Damaged();
    return RunLengthReader{file, *layout}.Read();
}

std::string EncodeBitmap(const Picture& picture)
{
    const auto width = static_cast<std::size_t>(picture.width);
    const auto height = static_cast<std::size_t>(picture.height);
    const std::size_t stride = (width * 3 + 3) / 4 * 4;
    std::string bytes = "BM";
    bytes.reserve(54 + stride * height);
    PutField(bytes, 54 + stride * height, 4);
    PutField(bytes, 0, 4);
    PutField(bytes, 54, 4);
    PutField(bytes, 40, 4);
    PutField(bytes, width, 4);
    PutField(bytes, height, 4);
    PutField(bytes, 1, 2);
    PutField(bytes, 24, 2);
    PutField(bytes, plain, 4);
    PutField(bytes, stride * height, 4);
    bytes.resize(54 + stride * height);
    for (std::size_t row = 0; row < height; ++row) {
        const std::uint8_t* from = picture.rgb.data() + (height - 1 - row) * width * 3;
        char* to = bytes.data() + 54 + row * stride;
        for (std::size_t x = 0; x < width; ++x, from += 3, to += 3) {
            to[0] = static_cast<char>(from[2]);
            to[1] = static_cast<char>(from[1]);
            to[2] = static_cast<char>(from[0]);
        }
    }
    return bytes;
}

} // namespace kestrova
