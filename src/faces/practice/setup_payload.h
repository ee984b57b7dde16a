#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A setup program of the practice folder: the stand-in, and behind it what it installs. It is read
/// and written by programs for Windows too, so this stands on the standard library alone.
///
///     0  n  the stand-in's own bytes
///     n  p  the payload: lines of its head, an empty line, then each file: its name, a line end,
///           its size in digits, a line end, its bytes
///   n+p  8  p, little-endian
///   +8   8  "KVSETUP\n"
///  +16   8  a mark of the kind, or zeros
namespace kestrova
{

/// By what a setup program is told from others.
enum class SetupKind {
    Unknown,
    WinZip,      ///< the maker's name in its first bytes
    WinAce,      ///< the packer's name in its first bytes
    FlyDrive,    ///< bytes of 128 at its very end
    WideFlyDrive ///< the maker's name in wide letters, at a place of its own
};

struct SetupFile {
    std::string name; ///< from the target on, in UTF-8
    std::string bytes;
};

struct SetupPayload {
    std::string head; ///< lines: `title=`, `into=`, `act=` …
    std::vector<SetupFile> files;
};

inline constexpr std::string_view setupMark = "KVSETUP\n";
inline constexpr std::size_t setupTail = 24;
inline constexpr std::size_t setupStart = 624; ///< how far names of makers are looked for
inline constexpr std::size_t wideNamePlace = 30'300;
/// The stand-in keeps room for the wide name: bytes of this value.
inline constexpr char setupRoom = 0x4B;

inline std::uint64_t SetupNumber(std::string_view bytes, std::size_t place, int width)
{
    std::uint64_t number = 0;
    for (int i = width; i-- > 0;)
        number =
            number << 8 | static_cast<unsigned char>(bytes[place + static_cast<std::size_t>(i)]);
    return number;
}

/// Where a name may stand near the start without harm: the message of a Windows program for an
/// older system, or a note among the headers of another, which nobody needs. 0 when there is none.
inline std::size_t RoomAtStart(std::string& program)
{
    constexpr std::size_t message = 78;
    constexpr std::size_t firstHeader = 64;
    constexpr std::size_t header = 56;
    constexpr std::uint64_t note = 4;
    if (program.size() < setupStart)
        return 0;
    if (program.starts_with("MZ"))
        return message;
    if (!program.starts_with("\x7F"
                             "ELF"))
        return 0;
    for (std::size_t at = firstHeader; at + header <= setupStart; at += header)
        if (SetupNumber(program, at, 4) == note) {
            program.replace(at, header, header, '\0'); // of the kind "not used"
            return at + 4;
        }
    return 0;
}

/// Marks a program as one of that kind; false when it has no room for the mark.
inline bool MarkSetup(std::string& program, SetupKind kind)
{
    if (kind == SetupKind::WideFlyDrive) {
        const std::string wide{"I\0n\0d\0i\0g\0o\0", 12};
        if (program.size() < wideNamePlace + wide.size() ||
            program.compare(wideNamePlace, wide.size(), std::string(wide.size(), setupRoom)) != 0)
            return false;
        program.replace(wideNamePlace, wide.size(), wide);
        return true;
    }
    const std::string_view name = kind == SetupKind::WinZip   ? "WinZip"
                                  : kind == SetupKind::WinAce ? "Compressed by Petite" // not shown
                                                              : "";
    const std::size_t place = name.empty() ? 0 : RoomAtStart(program);
    if (place != 0)
        program.replace(place, name.size(), name);
    return name.empty() || place != 0;
}

/// The setup program of that kind; nothing when the stand-in has no room for its mark.
inline std::optional<std::string> PackSetup(std::string program, SetupKind kind,
                                            const SetupPayload& payload)
{
    if (!MarkSetup(program, kind))
        return std::nullopt;
    std::string bytes = payload.head + '\n';
    for (const SetupFile& file : payload.files)
        bytes += file.name + '\n' + std::to_string(file.bytes.size()) + '\n' + file.bytes;
    const std::uint64_t size = bytes.size();
    program += bytes;
    for (int i = 0; i < 8; ++i)
        program += static_cast<char>(size >> (8 * i) & 0xFF);
    program += setupMark;
    const bool drive = kind == SetupKind::FlyDrive;
    program += drive ? std::string{"\x80\x80\x80\0\0\0\0\0", 8} : std::string(8, '\0');
    return program;
}

/// What a setup program installs; nothing when it brings nothing.
inline std::optional<SetupPayload> PayloadOf(std::string_view program)
{
    if (program.size() < setupTail ||
        program.substr(program.size() - 16, setupMark.size()) != setupMark)
        return std::nullopt;
    const std::uint64_t size = SetupNumber(program, program.size() - setupTail, 8);
    if (size > program.size() - setupTail)
        return std::nullopt;
    std::string_view rest = program.substr(program.size() - setupTail - size, size);
    const auto line = [&rest] {
        const std::size_t end = rest.find('\n');
        const std::string_view taken = rest.substr(0, end);
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
        return std::string{taken};
    };
    SetupPayload payload;
    for (std::string head = line(); !head.empty(); head = line())
        payload.head += head + '\n';
    while (!rest.empty()) {
        SetupFile file{line(), {}};
        std::uint64_t bytes = 0;
        for (const char digit : line())
            bytes = bytes * 10 + static_cast<std::uint64_t>(digit - '0');
        if (bytes > rest.size())
            return std::nullopt;
        file.bytes = rest.substr(0, bytes);
        rest.remove_prefix(bytes);
        payload.files.push_back(std::move(file));
    }
    return payload;
}

} // namespace kestrova
