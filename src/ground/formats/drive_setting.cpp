#include "formats/drive_setting.h"

#include "core/text.h"

#include <algorithm>
#include <fmt/format.h>

namespace kestrova
{

namespace
{

constexpr std::size_t longestDriveName = 32;
constexpr std::size_t longestPath = 4096;
constexpr std::uint64_t mostMegabytes = 1'000'000;
constexpr std::string_view writesWord = "writes";

std::string EscapedPath(std::string_view path)
{
    const bool plain = IsUtf8(path);
    std::string text;
    for (const char letter : path) {
        const auto byte = static_cast<unsigned char>(letter);
        const bool held =
            byte > ' ' && byte != 0x7f && letter != '%' && letter != '|' && (plain || byte < 0x80);
        text += held ? std::string{letter} : fmt::format("%{:02X}", byte);
    }
    return text;
}

std::optional<std::string> PathOfText(std::string_view text)
{
    constexpr int hexadecimal = 16;
    std::string path;
    while (!text.empty()) {
        unsigned byte = 0;
        const char* const digits = text.data() + 1;
        if (text.size() > 2 && text.front() == '%' &&
            std::from_chars(digits, digits + 2, byte, hexadecimal).ptr == digits + 2) {
            path += static_cast<char>(byte);
            text.remove_prefix(3);
        } else {
            path += text.front();
            text.remove_prefix(1);
        }
    }
    if (path.size() > longestPath || path.find('\0') != std::string::npos)
        return std::nullopt;
    return path;
}

bool IsPlain(char letter)
{
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
           (letter >= '0' && letter <= '9');
}

} // namespace

bool IsDriveName(std::string_view name)
{
    return !name.empty() && name.size() <= longestDriveName && IsPlain(name.front()) &&
           std::all_of(name.begin(), name.end(), [](char letter) {
               return IsPlain(letter) || letter == '-' || letter == '_' || letter == '.';
           });
}

std::string FormatDriveSetting(const DriveSetting& drive)
{
    return fmt::format("{}|{}|{}|{}", EscapedPath(drive.medium), EscapedPath(drive.folder),
                       drive.megabytes == 0 ? std::string{} : std::to_string(drive.megabytes),
                       drive.writes ? writesWord : "");
}

std::optional<DriveSetting> ParseDriveSetting(std::string_view name, std::string_view value)
{
    constexpr std::size_t longestValue = 4 * 2 * longestPath;
    if (!IsDriveName(name) || value.size() > longestValue)
        return std::nullopt;
    std::vector<std::string> parts = Split(value, '|');
    parts.resize(std::max<std::size_t>(parts.size(), 4));
    const auto medium = PathOfText(Trim(parts[0]));
    const auto folder = PathOfText(Trim(parts[1]));
    if (!medium || !folder || folder->empty())
        return std::nullopt;
    DriveSetting drive{std::string{name}, *medium, *folder};
    drive.megabytes =
        std::min(WholeNumber<std::uint64_t>(Trim(parts[2])).value_or(0), mostMegabytes);
    drive.writes = EqualNames(Trim(parts[3]), writesWord);
    return drive;
}

} // namespace kestrova
