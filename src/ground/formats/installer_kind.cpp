#include "formats/installer_kind.h"

#include "core/text.h"
#include "formats/config_values.h"
#include "words/installers.h"

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr std::string_view flyDriveProgram = "setup.exe";
constexpr std::uint64_t leastFlyDrive = 40'001;
constexpr std::string_view flyDriveMark{"I\0n\0d\0i\0g\0o\0", 12};
constexpr std::string_view petite = "compressed by petite"; // not shown
constexpr std::string_view winZip = "winzip";
constexpr char flyDriveEnd = '\x80';
constexpr std::ptrdiff_t leastFlyDriveEnds = 3;

/// Of bytes that need not be text; `word` is in small letters.
bool HoldsWord(std::string_view bytes, std::string_view word)
{
    return std::search(bytes.begin(), bytes.end(), word.begin(), word.end(),
                       [](char a, char b) { return LowerAscii(a) == b; }) != bytes.end();
}

bool IsFlyDrive(const InstallerBytes& bytes)
{
    return bytes.middle.find(flyDriveMark) != std::string_view::npos ||
           std::count(bytes.end.begin(), bytes.end.end(), flyDriveEnd) >= leastFlyDriveEnds;
}

} // namespace

InstallerBytes InstallerBytesOf(std::string_view program)
{
    InstallerBytes bytes;
    bytes.size = program.size();
    bytes.begin = program.substr(0, InstallerBytes::beginSize);
    if (program.size() > InstallerBytes::middleOffset)
        bytes.middle = program.substr(InstallerBytes::middleOffset, InstallerBytes::middleSize);
    bytes.end = program.substr(program.size() - std::min(program.size(), InstallerBytes::endSize));
    return bytes;
}

InstallerKind DetectInstaller(std::string_view fileName, const InstallerBytes& bytes)
{
    if (EqualNames(fileName, flyDriveProgram) && bytes.size >= leastFlyDrive && IsFlyDrive(bytes))
        return {OnDisk::ExeFlyDrive, Msg::InstallerFlyDrive};
    if (HoldsWord(bytes.begin, petite))
        return {OnDisk::ExeZip, Msg::InstallerWinAce};
    if (HoldsWord(bytes.begin, winZip))
        return {OnDisk::ExeZip, Msg::InstallerWinZip};
    return {{}, Msg::InstallerUnknown};
}

} // namespace kestrova
