#include "tools/program_launch.h"

#include "core/text.h"
#include "platform/locale.h"
#include "platform/real_path.h"
#include "platform/user_folders.h"
#include "tools/file_names.h"
#include "words/tools.h"

#include <array>

namespace kestrova
{

namespace
{

constexpr std::string_view windowsProgram = "MZ";
constexpr std::string_view binaryProgram = "\x7F"
                                           "ELF";
constexpr std::string_view scriptProgram = "#!";
/// Where the old header of a Windows program names the place of the new one.
constexpr std::size_t newHeaderOffset = 0x3C;
/// Behind the signature of four bytes: the machine that the program is for.
constexpr std::size_t machineOffset = 4;
constexpr unsigned machineI386 = 0x14C;
/// No linker puts the new header further away.
constexpr std::size_t headerReach = 1 << 16;

std::string BytesOfStart(const Path& file)
{
    platform::File handle;
    std::string bytes(headerReach, '\0');
    std::size_t filled = 0;
    if (!platform::File::OpenForRead(file, handle))
        for (std::size_t got = 1; got != 0 && filled < bytes.size(); filled += got)
            if (handle.Read(std::as_writable_bytes(std::span(bytes)).subspan(filled), got))
                break;
    bytes.resize(filled);
    return bytes;
}

unsigned NumberAt(std::string_view bytes, std::size_t place, int width)
{
    unsigned number = 0;
    for (int i = width; i-- > 0;)
        number =
            number << 8 | static_cast<unsigned char>(bytes[place + static_cast<std::size_t>(i)]);
    return number;
}

/// The machine field of a Windows program; 0 when there is none (a program of sixteen bits).
unsigned MachineOf(std::string_view bytes)
{
    if (bytes.size() < newHeaderOffset + 4)
        return 0;
    const std::size_t header = NumberAt(bytes, newHeaderOffset, 4);
    if (header + machineOffset + 2 > bytes.size() ||
        bytes.substr(header, machineOffset) != std::string_view{"PE\0\0", machineOffset})
        return 0;
    return NumberAt(bytes, header + machineOffset, 2);
}

Result<platform::Launch> ThroughWine(const Tools& tools, const Path& program,
                                     std::string_view bytes)
{
    auto launch = WineItself(tools, TextOf(program));
    if (!launch)
        return launch;
    if (MachineOf(bytes) == machineI386 && !Has32BitWine(launch->argv.front()))
        return Failure{ErrorCode::CannotOpen, TextOf(program), GetMsg(Msg::Wine32Missing)};
    launch->argv.push_back(program.native());
    if (const Path prefix = PrefixAbove(program); !prefix.empty())
        launch->environment.emplace_back(OnDisk::WinePrefixVariable, prefix.native());
    return launch;
}

} // namespace

bool Has32BitWine(const Path& wine)
{
    Path real;
    if (platform::RealPath(wine, real) || !wine.filename().native().starts_with("wine"))
        return true;
    static constexpr std::array parts{
        "lib/i386-linux-gnu/wine",
        "lib/wine/i386-unix",
        "lib/wine/i386-windows/ntdll.dll", // the folder alone may hold a library of something else
        "lib/wine/wine",
        "lib32/wine",
        "lib64/wine/i386-windows/ntdll.dll",
        "lib/x86_64-linux-gnu/wine/i386-windows/ntdll.dll",
    };
    for (const Path& found : {wine, real})
        for (const char* part : parts)
            if (platform::FactsOf(found.parent_path().parent_path() / part).kind !=
                platform::FileKind::Missing)
                return true;
    return false;
}

Result<platform::Launch> WineItself(const Tools& tools, const std::string& subject)
{
    const std::string command{Trim(tools.wineCommand)};
    const Path wine =
        command.find('/') != std::string::npos ? Path{command} : tools.findOnPath(command);
    if (wine.empty() || !FileExists(wine))
        return Failure{ErrorCode::CannotOpen, subject, GetMsg(Msg::WineMissing, {command})};
    platform::Launch launch;
    launch.argv = {wine.native()};
    // Wine reads its words in the locale's letters.
    if (!platform::UsesUtf8())
        launch.environment.emplace_back(OnDisk::LocaleVariable, OnDisk::Utf8Locale);
    for (std::string& word : Split(tools.wineWords, ' '))
        if (!word.empty())
            launch.argv.push_back(std::move(word));
    return launch;
}

Result<platform::Launch> LaunchOf(const Tools& tools, const Path& program,
                                  const ToolArguments& arguments)
{
    const std::string bytes = BytesOfStart(program);
    platform::Launch launch;
    if (bytes.starts_with(windowsProgram)) {
        auto through = ThroughWine(tools, program, bytes);
        if (!through)
            return through;
        launch = std::move(*through);
    } else {
        launch.argv = {program.native()};
    }
    launch.argv.insert(launch.argv.end(), arguments.begin(), arguments.end());
    launch.folder = program.parent_path();
    return launch;
}

Result<platform::Launch> LaunchInPrefix(const Tools& tools, const Path& prefix,
                                        const ToolArguments& words)
{
    auto launch = WineItself(tools, words.front());
    if (!launch)
        return launch;
    launch->argv.insert(launch->argv.end(), words.begin(), words.end());
    launch->environment.emplace_back(OnDisk::WinePrefixVariable, prefix.native());
    launch->folder = prefix;
    return launch;
}

Path PrefixAbove(const Path& path)
{
    for (Path folder = path.parent_path(); folder.has_relative_path();
         folder = folder.parent_path())
        if (EqualNames(folder.filename().native(), OnDisk::WineDriveFolder))
            return folder.parent_path();
    return {};
}

Path WinePrefixFor(const Path& place)
{
    if (Path prefix = PrefixAbove(place); !prefix.empty())
        return prefix;
    if (Path prefix = platform::NamedWinePrefix(); !prefix.empty())
        return prefix;
    const Path home = platform::HomeFolder();
    return home.empty() ? home : home / OnDisk::WineUsualPrefix;
}

std::string NotStartable(const Path& program)
{
    constexpr std::uint32_t anyExecute = 0111;
    const auto words = [](std::errc why) { return std::make_error_code(why).message(); };
    const platform::FileFacts facts = platform::FactsOf(program);
    if (facts.kind != platform::FileKind::File)
        return words(std::errc::no_such_file_or_directory);
    if ((facts.mode & anyExecute) == 0)
        return words(std::errc::permission_denied);
    const std::string begin = BytesOfStart(program);
    return begin.starts_with(scriptProgram) || begin.starts_with(binaryProgram)
               ? std::string{}
               : words(std::errc::executable_format_error);
}

bool IsWindowsProgram(const Path& program)
{
    return BytesOfStart(ResolvePath(program)).starts_with(windowsProgram);
}

} // namespace kestrova
