#include "platform/optical_drives.h"

#include "platform/file_content.h"
#include "platform/last_error.h"
#include "platform/places.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <fcntl.h>
#include <linux/cdrom.h>
#include <map>
#include <sstream>
#include <sys/ioctl.h>
#include <unistd.h>

namespace kestrova::platform
{

namespace fs = std::filesystem;

namespace
{

constexpr std::uint64_t longestText = UINT64_C(1) << 16;

/// A device that is open for questions: no disc needs to lie in it.
class Device
{
public:
    explicit Device(const fs::path& path)
        : descriptor_(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC))
    {
    }
    ~Device()
    {
        if (descriptor_ >= 0)
            ::close(descriptor_);
    }
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;
    [[nodiscard]] bool IsOpen() const { return descriptor_ >= 0; }
    /// -1 for a failure, whose reason is in `errno`.
    [[nodiscard]] int Ask(unsigned long question, unsigned long detail = 0) const
    {
        return ::ioctl(descriptor_, question, detail);
    }

private:
    int descriptor_;
};

/// The text of a small file of the system without blanks around it; empty when there is none.
std::string TextOf(const fs::path& file)
{
    constexpr std::string_view blanks = " \t\r\n";
    std::string text;
    if (ReadAll(file, text, longestText))
        return {};
    const auto first = text.find_first_not_of(blanks);
    return first == std::string::npos
               ? std::string{}
               : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// The lines `E:NAME=VALUE` of what udev keeps of a device.
std::map<std::string, std::string> UdevFacts(const fs::path& file)
{
    std::map<std::string, std::string> facts;
    std::istringstream lines{TextOf(file)};
    for (std::string line; std::getline(lines, line);)
        if (const auto equals = line.find('='); line.starts_with("E:") && equals != line.npos)
            facts[line.substr(2, equals - 2)] = line.substr(equals + 1);
    return facts;
}

/// The drives that the system's table of drives calls writers: its rows are features, its columns
/// drives.
std::vector<std::string> WritersOfTable(const fs::path& table)
{
    constexpr std::string_view nameRow = "drive name"; // not shown
    constexpr std::string_view writeRow = "Can write"; // not shown
    std::vector<std::string> names;
    std::vector<std::string> writers;
    std::istringstream lines{TextOf(table)};
    for (std::string line; std::getline(lines, line);) {
        const auto colon = line.find(':');
        if (colon == std::string::npos)
            continue;
        std::istringstream columns{line.substr(colon + 1)};
        std::size_t column = 0;
        for (std::string value; columns >> value; ++column)
            if (line.starts_with(nameRow))
                names.push_back(value);
            else if (line.starts_with(writeRow) && value == "1" && column < names.size())
                writers.push_back(names[column]);
    }
    return writers;
}

bool WritesByUdev(const std::map<std::string, std::string>& facts)
{
    constexpr std::array kinds{"ID_CDROM_CD_R",        "ID_CDROM_CD_RW",   "ID_CDROM_DVD_R",
                               "ID_CDROM_DVD_RW",      "ID_CDROM_DVD_RAM", "ID_CDROM_DVD_PLUS_R",
                               "ID_CDROM_DVD_PLUS_RW", "ID_CDROM_BD_R",    "ID_CDROM_BD_RE"};
    return std::any_of(kinds.begin(), kinds.end(),
                       [&](const char* kind) { return facts.contains(kind); });
}

/// What udev noted of the disc when it came; without udev, what the drive itself says.
Medium MediumOf(const std::map<std::string, std::string>& facts, const fs::path& device)
{
    const auto state = facts.find("ID_CDROM_MEDIA_STATE");
    if (state != facts.end() && state->second == "blank")
        return Medium::Blank;
    if (state != facts.end() || facts.contains("ID_FS_TYPE"))
        return Medium::Written;
    const Device open{device};
    if (!open.IsOpen())
        return errno == ENOMEDIUM ? Medium::None : Medium::Unknown;
    const int status = open.Ask(CDROM_DRIVE_STATUS, CDSL_CURRENT);
    if (status == CDS_NO_DISC || status == CDS_TRAY_OPEN)
        return Medium::None;
    if (status != CDS_DISC_OK)
        return Medium::Unknown;
    DiscHead head;
    return ReadDiscHead(device, head) ? Medium::Unknown : Medium::Written;
}

fs::path FolderOfDevice(const fs::path& device, const fs::path& mounts)
{
    for (const MountedDrive& mounted : MountedDrives(mounts)) {
        std::error_code failure;
        const fs::path real = fs::canonical(mounted.device, failure);
        if ((failure ? mounted.device : real) == device)
            return mounted.folder;
    }
    return {};
}

OpticalDrive DriveOf(const std::string& name, const OpticalPlaces& places)
{
    constexpr std::uint64_t sector = 512;
    OpticalDrive drive;
    drive.name = name;
    drive.device = places.devices / name;
    const fs::path block = places.blocks / name;
    drive.model = TextOf(block / "device" / "vendor");
    if (const std::string model = TextOf(block / "device" / "model"); !model.empty())
        drive.model += (drive.model.empty() ? "" : " ") + model;
    const auto facts = UdevFacts(places.udev / ("b" + TextOf(block / "dev")));
    drive.writer = WritesByUdev(facts);
    drive.medium = MediumOf(facts, drive.device);
    drive.folder = FolderOfDevice(drive.device, places.mounts);
    if (drive.medium != Medium::Written)
        return drive;
    if (const auto label = facts.find("ID_FS_LABEL"); label != facts.end())
        drive.label = label->second;
    else if (DiscHead head; !ReadDiscHead(drive.device, head))
        drive.label = head.label;
    const std::string size = TextOf(block / "size");
    std::uint64_t sectors = 0;
    (void)std::from_chars(size.data(), size.data() + size.size(), sectors); // 0 when it says none
    drive.total = std::min(sectors, UINT64_MAX / sector) * sector;
    return drive;
}

} // namespace

std::vector<OpticalDrive> OpticalDrives(const OpticalPlaces& places)
{
    std::vector<OpticalDrive> drives;
    std::vector<FolderEntry> entries;
    if (ListFolder(places.blocks, entries))
        return drives;
    const std::vector<std::string> writers = WritersOfTable(places.features);
    for (const FolderEntry& entry : entries) {
        const std::string_view number =
            std::string_view{entry.name}.substr(std::min<std::size_t>(2, entry.name.size()));
        if (!entry.name.starts_with("sr") || number.empty() ||
            number.find_first_not_of("0123456789") != number.npos)
            continue;
        drives.push_back(DriveOf(entry.name, places));
        if (std::find(writers.begin(), writers.end(), entry.name) != writers.end())
            drives.back().writer = true;
    }
    std::sort(drives.begin(), drives.end(), [](const OpticalDrive& a, const OpticalDrive& b) {
        return a.name.size() != b.name.size() ? a.name.size() < b.name.size() : a.name < b.name;
    });
    return drives;
}

std::error_code ReadDiscHead(const fs::path& image, DiscHead& head)
{
    constexpr std::uint64_t descriptorAt = 16 * 2048;
    constexpr std::size_t labelAt = 40;
    constexpr std::size_t labelLength = 32;
    constexpr std::size_t sizeAt = 80;
    constexpr std::uint64_t sector = 2048;
    std::array<char, 2048> bytes{};
    File file;
    std::size_t got = 0;
    if (const auto failure = File::OpenForRead(image, file))
        return failure;
    if (const auto failure =
            file.ReadAt(descriptorAt, std::as_writable_bytes(std::span(bytes)), got))
        return failure;
    if (got != bytes.size() || std::string_view{bytes.data() + 1, 5} != "CD001")
        return std::make_error_code(std::errc::not_a_directory);
    std::string& label = head.label;
    label.assign(bytes.data() + labelAt, labelLength);
    label.resize(std::min(label.find('\0'), label.size()));
    label.resize(label.find_last_not_of(' ') + 1);
    std::uint64_t sectors = 0;
    for (std::size_t i = 4; i-- > 0;)
        sectors = sectors << 8 | static_cast<unsigned char>(bytes[sizeAt + i]);
    head.bytes = sectors * sector;
    return {};
}

std::error_code MoveDoor(const fs::path& device, DoorMove move)
{
    const Device open{device};
    if (!open.IsOpen())
        return LastError();
    if (open.Ask(CDROM_LOCKDOOR, 0) < 0 && errno == ENOTTY)
        return LastError(); // no drive at all
    return open.Ask(move == DoorMove::Open ? CDROMEJECT : CDROMCLOSETRAY) < 0 ? LastError()
                                                                              : std::error_code{};
}

} // namespace kestrova::platform
