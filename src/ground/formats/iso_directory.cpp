#include "formats/iso_directory.h"

#include "core/text.h"
#include "formats/sectors.h"
#include "words/formats.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <unordered_set>

namespace kestrova
{

namespace
{

constexpr std::uint64_t firstDescriptor = 16;
constexpr std::uint64_t mostDescriptors = 64;
constexpr std::size_t mostFiles = 1'000'000;
constexpr std::uint64_t mostFolderBytes = UINT64_C(256) << 20;
constexpr std::size_t mostPathBytes = std::size_t{512} << 20; ///< of all of them
constexpr std::size_t mostDepth = 128;
constexpr int mostContinued = 32; ///< pieces of one record's fields
constexpr std::size_t shortestRecord = 34;
constexpr std::uint8_t folderFlag = 2;
constexpr std::uint8_t goesOnFlag = 128;

using Sector = std::array<std::byte, discSector>;

std::uint8_t At(std::string_view bytes, std::size_t place)
{
    return static_cast<std::uint8_t>(bytes[place]);
}

std::uint32_t Number(std::string_view bytes, std::size_t place)
{
    std::uint32_t number = 0;
    for (std::size_t i = 4; i > 0; --i)
        number = number << 8 | At(bytes, place + i - 1);
    return number;
}

std::string_view View(std::span<const std::byte> bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void AppendUtf8(std::string& text, std::uint32_t letter)
{
    const auto put = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (letter < 0x80) {
        put(letter);
    } else if (letter < 0x800) {
        put(0xC0 | letter >> 6);
        put(0x80 | (letter & 0x3F));
    } else if (letter < 0x10000) {
        put(0xE0 | letter >> 12);
        put(0x80 | (letter >> 6 & 0x3F));
        put(0x80 | (letter & 0x3F));
    } else {
        put(0xF0 | letter >> 18);
        put(0x80 | (letter >> 12 & 0x3F));
        put(0x80 | (letter >> 6 & 0x3F));
        put(0x80 | (letter & 0x3F));
    }
}

/// Two bytes a letter, the highest first; a letter beyond them is a pair.
std::string FromWide(std::string_view bytes)
{
    std::string text;
    const auto unit = [&](std::size_t at) {
        return static_cast<std::uint32_t>(At(bytes, at) << 8 | At(bytes, at + 1));
    };
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        std::uint32_t letter = unit(at);
        if (letter >= 0xD800 && letter < 0xDC00 && at + 3 < bytes.size()) {
            const std::uint32_t low = unit(at + 2);
            if (low >= 0xDC00 && low < 0xE000) {
                letter = 0x10000 + ((letter - 0xD800) << 10) + (low - 0xDC00);
                at += 2;
            }
        }
        AppendUtf8(text, letter);
    }
    return text;
}

/// Without the version that ends the names of plain discs (`NAME.DAT;1`, `NAME.;1`).
std::string WithoutVersion(std::string name, bool isPlain)
{
    const std::size_t sign = name.rfind(';');
    if (sign != std::string::npos && sign + 1 < name.size() &&
        std::all_of(name.begin() + static_cast<std::ptrdiff_t>(sign) + 1, name.end(),
                    [](char letter) { return letter >= '0' && letter <= '9'; }))
        name.resize(sign);
    if (isPlain && name.ends_with('.'))
        name.pop_back();
    return name;
}

struct Place {
    std::uint32_t sector = 0;
    std::uint32_t bytes = 0;
};

struct Volume {
    Place root{};
    bool isWide = false; ///< Joliet
    std::string label{};
    std::uint64_t bytes = 0;
};

/// What Rock Ridge says of a record.
struct RidgeFields {
    std::optional<std::string> name{};
    bool isLink = false;
    bool isMoved = false;                    ///< a folder that is shown elsewhere
    std::optional<std::uint32_t> folderAt{}; ///< where a moved folder stands in truth
};

class IsoWalk
{
public:
    explicit IsoWalk(const IsoReader& read) : read_(read) {}

    Status Run(IsoDirectory& found)
    {
        if (Status status = FindVolumes(); !status)
            return status;
        if (Status status = FindRidge(); !status)
            return status;
        const Volume& volume = hasRidge_ || !wide_ ? *plain_ : *wide_;
        isWide_ = volume.isWide;
        found.label = wide_ && plain_->label.empty() ? wide_->label : plain_->label;
        found.bytes = plain_->bytes;
        open_.push_back({volume.root, {}, 0});
        while (!open_.empty()) {
            const Open next = std::move(open_.back());
            open_.pop_back();
            if (Status status = ReadFolder(next, found.files); !status)
                return status;
        }
        return {};
    }

private:
    struct Open {
        Place place;
        std::string path; ///< empty, or with "/" at its end
        std::size_t depth = 0;
    };

    static Failure Broken() { return InWords(ErrorCode::Damaged, GetMsg(Msg::DiscListDamaged)); }

    bool ReadSectors(std::uint64_t sector, std::span<std::byte> into) const
    {
        return read_(sector * discSector, into);
    }

    Status FindVolumes()
    {
        for (std::uint64_t at = 0; at < mostDescriptors; ++at) {
            Sector sector;
            if (!ReadSectors(firstDescriptor + at, sector))
                break;
            const std::string_view bytes = View(sector);
            if (bytes.substr(1, 5) != "CD001" || At(bytes, 0) == 0xFF)
                break;
            const std::string_view escape = bytes.substr(88, 3);
            const bool isWide = escape == "%/@" || escape == "%/C" || escape == "%/E";
            Volume volume{{Number(bytes, 156 + 2), Number(bytes, 156 + 10)},
                          isWide,
                          std::string{TrimEnd(bytes.substr(40, 32))},
                          Number(bytes, 80) * discSector};
            if (isWide)
                volume.label = TrimEnd(FromWide(bytes.substr(40, 32)));
            if (At(bytes, 0) == 1 && !plain_)
                plain_ = std::move(volume);
            else if (At(bytes, 0) == 2 && isWide && !wide_)
                wide_ = std::move(volume);
        }
        return plain_ ? Status{} : InWords(ErrorCode::Damaged, GetMsg(Msg::NoDisc));
    }

    /// Whether the first record of the root says that there is Rock Ridge.
    Status FindRidge()
    {
        Sector sector;
        if (!ReadSectors(plain_->root.sector, sector))
            return Broken();
        const std::string_view bytes = View(sector);
        const std::size_t length = At(bytes, 0);
        if (length < shortestRecord)
            return Broken();
        const std::string_view fields = bytes.substr(shortestRecord, length - shortestRecord);
        hasRidge_ = fields.size() >= 7 && fields.starts_with("SP") && At(fields, 4) == 0xBE &&
                    At(fields, 5) == 0xEF;
        if (hasRidge_)
            skipped_ = At(fields, 6);
        return {};
    }

    Status ReadFolder(const Open& at, std::vector<IsoFile>& files)
    {
        folderBytes_ += at.place.bytes;
        if (at.place.bytes > mostFolderBytes || folderBytes_ > mostFolderBytes ||
            at.depth > mostDepth || !seen_.insert(at.place.sector).second)
            return Broken();
        Sector sector;
        const std::uint64_t sectors = WholeSectors(at.place.bytes) / discSector;
        bool goesOn = false;
        for (std::uint64_t i = 0; i < sectors; ++i) {
            if (!ReadSectors(at.place.sector + i, sector))
                return Broken();
            std::string_view bytes = View(sector);
            while (bytes.size() >= shortestRecord && At(bytes, 0) != 0) {
                const std::size_t length = At(bytes, 0);
                if (length < shortestRecord || length > bytes.size() ||
                    std::size_t{At(bytes, 32)} + 33 > length)
                    return Broken();
                if (Status status = TakeRecord(bytes.substr(0, length), at, files, goesOn); !status)
                    return status;
                bytes.remove_prefix(length);
            }
        }
        return goesOn ? Broken() : Status{};
    }

    Status TakeRecord(std::string_view record, const Open& at, std::vector<IsoFile>& files,
                      bool& goesOn)
    {
        const std::size_t nameLength = At(record, 32);
        const std::string_view name = record.substr(33, nameLength);
        if (name.size() == 1 && At(name, 0) <= 1)
            return {}; // itself, and the folder above
        RidgeFields ridge;
        if (hasRidge_) {
            const std::size_t fields = 33 + nameLength + (nameLength % 2 == 0 ? 1 : 0) + skipped_;
            if (fields < record.size() && !ReadRidge(std::string{record.substr(fields)}, ridge))
                return Broken();
        }
        if (ridge.isMoved)
            return {};
        const bool isFolder = (At(record, 25) & folderFlag) != 0 || ridge.folderAt;
        IsoFile file{at.path + (ridge.name ? *ridge.name : NameOf(name))};
        pathBytes_ += file.path.size();
        if (files.size() >= mostFiles || pathBytes_ > mostPathBytes ||
            !IsName(std::string_view{file.path}.substr(at.path.size())))
            return Broken();
        if (isFolder)
            return TakeFolder(record, ridge, at, std::move(file), files);
        file.kind = ridge.isLink ? IsoKind::Link : IsoKind::File;
        return TakeExtent(record, std::move(file), files, goesOn);
    }

    Status TakeFolder(std::string_view record, const RidgeFields& ridge, const Open& at,
                      IsoFile file, std::vector<IsoFile>& files)
    {
        Place place{Number(record, 2), Number(record, 10)};
        if (ridge.folderAt) {
            // A folder that was moved tells its own size in its first record.
            Sector sector;
            if (!ReadSectors(*ridge.folderAt, sector))
                return Broken();
            place = {*ridge.folderAt, Number(View(sector), 10)};
        }
        file.kind = IsoKind::Folder;
        open_.push_back({place, file.path + "/", at.depth + 1});
        files.push_back(std::move(file));
        return {};
    }

    /// A file of 4 GB and more has several records, one behind the other.
    Status TakeExtent(std::string_view record, IsoFile file, std::vector<IsoFile>& files,
                      bool& goesOn)
    {
        if (At(record, 26) != 0 || At(record, 27) != 0)
            return Broken(); // pieces with gaps, which nobody has written for decades
        if (goesOn && (files.empty() || files.back().path != file.path))
            return Broken();
        IsoFile& whole = goesOn ? files.back() : files.emplace_back(std::move(file));
        const IsoExtent extent{(std::uint64_t{Number(record, 2)} + At(record, 1)) * discSector,
                               Number(record, 10)};
        whole.size += extent.size;
        whole.extents.push_back(extent);
        goesOn = (At(record, 25) & goesOnFlag) != 0;
        return {};
    }

    std::string NameOf(std::string_view name) const
    {
        return WithoutVersion(isWide_ ? FromWide(name) : std::string{name}, !isWide_);
    }

    static bool IsName(std::string_view name)
    {
        return !name.empty() && name != "." && name != ".." &&
               name.find('/') == std::string_view::npos &&
               name.find('\0') == std::string_view::npos;
    }

    /// The fields of a record, those that stand elsewhere too. False when they make no sense.
    bool ReadRidge(std::string fields, RidgeFields& found) const
    {
        for (int piece = 0; piece < mostContinued; ++piece) {
            std::optional<std::array<std::uint32_t, 3>> next;
            std::string_view rest = fields;
            while (rest.size() >= 4) {
                const std::size_t length = At(rest, 2);
                if (length < 4 || length > rest.size() || rest.starts_with("ST"))
                    break;
                TakeField(rest.substr(0, length), found, next);
                rest.remove_prefix(length);
            }
            if (!next)
                return true;
            const auto& [sectorAt, offset, size] = *next;
            Sector sector;
            if (offset > sector.size() || size > sector.size() - offset ||
                !ReadSectors(sectorAt, sector))
                return false;
            fields = std::string{View(sector).substr(offset, size)};
        }
        return false;
    }

    static void TakeField(std::string_view field, RidgeFields& found,
                          std::optional<std::array<std::uint32_t, 3>>& next)
    {
        const std::string_view sign = field.substr(0, 2);
        constexpr std::uint8_t special = 2 | 4; // itself, the folder above
        if (sign == "NM" && field.size() >= 5 && (At(field, 4) & special) == 0)
            found.name = found.name.value_or(std::string{}).append(field.substr(5));
        else if (sign == "SL")
            found.isLink = true;
        else if (sign == "RE")
            found.isMoved = true;
        else if (sign == "CL" && field.size() >= 12)
            found.folderAt = Number(field, 4);
        else if (sign == "CE" && field.size() >= 28)
            next = {Number(field, 4), Number(field, 12), Number(field, 20)};
    }

    const IsoReader& read_;
    std::optional<Volume> plain_;
    std::optional<Volume> wide_;
    bool hasRidge_ = false;
    bool isWide_ = false;
    std::size_t skipped_ = 0; ///< bytes before the fields of each record
    std::vector<Open> open_;
    std::unordered_set<std::uint32_t> seen_;
    std::uint64_t folderBytes_ = 0;
    std::size_t pathBytes_ = 0;
};

} // namespace

Result<IsoDirectory> ReadIsoDirectory(const IsoReader& read)
{
    IsoDirectory found;
    IsoWalk walk{read};
    if (Status status = walk.Run(found); !status)
        return status.Error();
    return found;
}

} // namespace kestrova
