#include "formats/rar_headers.h"

#include "platform/files.h"

#include <algorithm>
#include <span>

namespace kestrova
{

namespace
{

constexpr std::string_view oldMark{"Rar!\x1a\x07\x00", 7};
constexpr std::string_view newMark{"Rar!\x1a\x07\x01\x00", 8};
/// A rar that unpacks itself begins within so many bytes.
constexpr std::size_t longestProgram = std::size_t{1} << 20;
/// Of one header; rar itself writes none above 2 MB, and names are far shorter.
constexpr std::size_t longestHeader = std::size_t{64} << 10;
constexpr std::size_t mostHeaders = 1'000'000;

/// Takes numbers off the front of some bytes. Beyond the end all are 0, and `Good` is false.
class Taker
{
public:
    explicit Taker(std::string_view bytes) : bytes_(bytes) {}

    [[nodiscard]] bool Good() const { return good_; }
    std::uint64_t Number(std::size_t width)
    {
        std::uint64_t value = 0;
        const std::string_view taken = Bytes(width);
        for (std::size_t i = taken.size(); i > 0; --i)
            value = value << 8 | static_cast<unsigned char>(taken[i - 1]);
        return value;
    }
    std::uint64_t Variable()
    {
        constexpr int bitsOfByte = 7;
        constexpr int most = 64;
        std::uint64_t value = 0;
        for (int shift = 0; shift < most; shift += bitsOfByte) {
            const std::uint64_t byte = Number(1);
            value |= (byte & 0x7F) << shift;
            if ((byte & 0x80) == 0)
                return value;
        }
        good_ = false;
        return 0;
    }
    std::string_view Bytes(std::uint64_t count)
    {
        good_ = good_ && count <= bytes_.size();
        if (!good_)
            return {};
        const std::string_view taken = bytes_.substr(0, count);
        bytes_.remove_prefix(count);
        return taken;
    }
    [[nodiscard]] std::size_t Left() const { return bytes_.size(); }

private:
    std::string_view bytes_;
    bool good_ = true;
};

/// One header as far as the walk needs it.
struct Header {
    std::uint64_t whole = 0; ///< of the header itself
    std::uint64_t data = 0;  ///< behind it
    bool ends = false;       ///< the list goes no further
};

Header OldHeader(std::string_view bytes, RarHeaders& headers)
{
    constexpr std::uint64_t archiveKind = 0x73;
    constexpr std::uint64_t fileKind = 0x74;
    constexpr std::uint64_t serviceKind = 0x7A;
    constexpr std::uint64_t endKind = 0x7B;
    Taker take{bytes};
    take.Number(2);
    const std::uint64_t kind = take.Number(1);
    const std::uint64_t flags = take.Number(2);
    Header header{take.Number(2), 0, kind == endKind};
    constexpr std::uint64_t lockedList = 0x80;
    if (kind == archiveKind && (flags & lockedList) != 0) {
        headers.locked = header.ends = true;
        return header;
    }
    constexpr std::uint64_t hasData = 0x8000;
    if (kind != fileKind && kind != serviceKind) {
        header.data = (flags & hasData) != 0 ? take.Number(4) : 0;
        return header;
    }
    header.data = take.Number(4);
    PackedFile file;
    take.Number(4); // size of the file
    const std::uint64_t system = take.Number(1);
    const auto checksum = static_cast<std::uint32_t>(take.Number(4));
    take.Bytes(6); // time, version, method
    const std::uint64_t nameSize = take.Number(2);
    const std::uint64_t attributes = take.Number(4);
    constexpr std::uint64_t big = 0x100;
    constexpr int half = 32;
    if ((flags & big) != 0) {
        header.data |= take.Number(4) << half;
        take.Number(4);
    }
    file.name = take.Bytes(nameSize);
    header.ends = !take.Good();
    if (header.ends || kind != fileKind)
        return header;
    constexpr std::uint64_t split = 0x3;
    constexpr std::uint64_t locked = 0x4;
    constexpr std::uint64_t folder = 0xE0;
    constexpr std::uint64_t unixSystem = 3;
    constexpr std::uint64_t kindOfUnix = 0170000;
    constexpr std::uint64_t plainOfUnix = 0100000;
    constexpr std::uint64_t versionOfFile = 0x800;
    headers.locked = headers.locked || (flags & locked) != 0;
    const bool isPlain = (flags & folder) != folder && (flags & versionOfFile) == 0 &&
                         (system != unixSystem || (attributes & kindOfUnix) == 0 ||
                          (attributes & kindOfUnix) == plainOfUnix);
    if ((flags & split) == 0)
        file.checksum = checksum;
    if (isPlain)
        headers.files.push_back(std::move(file));
    return header;
}

/// True for a file that is one; its extras tell whether it is locked.
bool TakeExtras(std::string_view extras, bool& locked)
{
    constexpr std::uint64_t lockedKind = 1;
    constexpr std::uint64_t versionKind = 4;
    constexpr std::uint64_t linkKind = 5;
    bool isPlain = true;
    Taker take{extras};
    while (take.Good() && take.Left() > 0) {
        Taker record{take.Bytes(take.Variable())};
        const std::uint64_t kind = record.Variable();
        if (!record.Good() || !take.Good())
            break;
        locked = locked || kind == lockedKind;
        isPlain = isPlain && kind != linkKind && kind != versionKind;
    }
    return isPlain;
}

Header NewHeader(std::string_view bytes, RarHeaders& headers)
{
    constexpr std::uint64_t fileKind = 2;
    constexpr std::uint64_t lockedKind = 4;
    constexpr std::uint64_t endKind = 5;
    Taker take{bytes};
    take.Number(4);
    const std::uint64_t size = take.Variable();
    Header header{bytes.size() - take.Left() + size, 0, false};
    Taker body{take.Bytes(size)};
    const std::uint64_t kind = body.Variable();
    const std::uint64_t flags = body.Variable();
    const std::uint64_t extras = (flags & 1) != 0 ? body.Variable() : 0;
    header.data = (flags & 2) != 0 ? body.Variable() : 0;
    header.ends = !take.Good() || !body.Good() || kind == endKind || kind == lockedKind;
    headers.locked = headers.locked || (take.Good() && kind == lockedKind);
    if (header.ends || kind != fileKind)
        return header;
    PackedFile file;
    const std::uint64_t fileFlags = body.Variable();
    body.Variable(); // size
    body.Variable(); // attributes
    constexpr std::uint64_t folder = 1;
    constexpr std::uint64_t hasTime = 2;
    constexpr std::uint64_t hasChecksum = 4;
    constexpr std::uint64_t sizeUnknown = 8;
    constexpr std::uint64_t split = 0x18;
    if ((fileFlags & hasTime) != 0)
        body.Number(4);
    if ((fileFlags & hasChecksum) != 0)
        file.checksum = static_cast<std::uint32_t>(body.Number(4));
    body.Variable(); // method
    body.Variable(); // system
    file.name = body.Bytes(body.Variable());
    if (!body.Good() || extras > body.Left()) {
        header.ends = true;
        return header;
    }
    body.Bytes(body.Left() - extras);
    const bool isPlain = TakeExtras(body.Bytes(extras), headers.locked);
    if ((flags & split) != 0 || (fileFlags & sizeUnknown) != 0)
        file.checksum.reset();
    if (isPlain && (fileFlags & folder) == 0)
        headers.files.push_back(std::move(file));
    return header;
}

} // namespace

RarHeaders ParseRarHeaders(const BytesAt& bytesAt, std::uint64_t size)
{
    RarHeaders headers;
    std::string begin = bytesAt(0, newMark.size());
    std::uint64_t place = 0;
    if (begin.starts_with("MZ")) {
        begin = bytesAt(0, longestProgram);
        const std::size_t found = begin.find(oldMark.substr(0, oldMark.size() - 1));
        place = found == std::string::npos ? 0 : found;
        begin.erase(0, place);
    }
    const bool isNew = begin.starts_with(newMark);
    if (!isNew && !begin.starts_with(oldMark))
        return headers;
    headers.isRar = true;
    place += isNew ? newMark.size() : oldMark.size();
    for (std::size_t count = 0; count < mostHeaders && place < size; ++count) {
        const std::string bytes = bytesAt(place, longestHeader);
        const Header header = isNew ? NewHeader(bytes, headers) : OldHeader(bytes, headers);
        if (header.ends || header.whole == 0 || header.whole > size - place ||
            header.data > size - place - header.whole)
            break;
        place += header.whole + header.data;
    }
    return headers;
}

RarHeaders ReadRarHeaders(const Path& rar)
{
    platform::File file;
    if (platform::File::OpenForRead(rar, file))
        return {};
    const auto bytesAt = [&](std::uint64_t place, std::size_t most) {
        std::string bytes(most, '\0');
        std::size_t got = 0;
        if (file.ReadAt(place, std::as_writable_bytes(std::span{bytes}), got))
            got = 0;
        bytes.resize(got);
        return bytes;
    };
    return ParseRarHeaders(bytesAt, file.Facts().size);
}

} // namespace kestrova
