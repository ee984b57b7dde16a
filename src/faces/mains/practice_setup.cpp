#include "mains/stand_in.h"
#include "practice/setup_payload.h"

#ifdef _WIN32
#include <windows.h>
#endif

/// The practice folder's stand-in for the setup program of a level. It installs what stands behind
/// it in its own file. The lines of the payload's head:
///
///     title=NAME     what it installs
///     into=trle      into the Level Editor's folder: the one that it works in, that the registry
///                    names, or that lies as `trle` beside a folder above it or below `practice`
///     into=FOLDER    into a folder, from where it works on
///     delete=FILE    deletes that of the target
///     act=…          as for the other stand-ins
///
/// `--pack FILE KIND FOLDER [LINE]…` makes a setup program of itself and what lies in the folder;
/// `--pack-with PROGRAM FILE KIND FOLDER [LINE]…` of another program.
namespace
{

using namespace stand_in;

#ifndef _WIN32
/// Room for a name that one kind bears at a place of its own. Notes stand ahead of all code, so the
/// place lies within whatever the rest comes to.
struct Room {
    std::uint32_t nameSize = 4;
    std::uint32_t size = 0;
    std::uint32_t kind = 1;
    std::array<char, 4> name{'K', 'v', 'S', '\0'};
    std::array<char, 48 * 1024> bytes{};
};
constexpr Room MakeRoom()
{
    Room made;
    made.size = made.bytes.size();
    for (char& byte : made.bytes)
        byte = kestrova::setupRoom;
    return made;
}
[[gnu::section(".note.kestrova"), gnu::used]] constexpr Room room = MakeRoom();
#endif

/// What a person reads of it.
namespace texts
{
constexpr const char* installing = "Installing ";
constexpr const char* installed = "Installed into ";
constexpr const char* nothing = "ERROR: This setup brings nothing";
constexpr const char* noEditor = "ERROR: No Level Editor was found";
constexpr const char* noKind = "ERROR: No such kind, or no room for its mark: ";
} // namespace texts

bool IsLevelEditor(const Place& folder)
{
    return std::filesystem::exists(Spelled(folder, "tomb4.exe"));
}

/// What the registry says; empty without one.
Place RegisteredFolder()
{
#ifdef _WIN32
    std::array<wchar_t, 1024> text{};
    DWORD size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    const wchar_t* key =
        L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\winroomedit.exe";
    for (const wchar_t* value : {L"Path", static_cast<const wchar_t*>(nullptr)}) {
        size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        if (RegGetValueW(HKEY_LOCAL_MACHINE, key, value, RRF_RT_REG_SZ, nullptr, text.data(),
                         &size) != ERROR_SUCCESS)
            continue;
        const Place named{text.data()};
        return std::filesystem::is_directory(named) ? named : named.parent_path();
    }
#endif
    return {};
}

/// Empty when there is none.
Place LevelEditor(const Place& program)
{
    const Place registered = RegisteredFolder();
    if (!registered.empty() && IsLevelEditor(registered))
        return registered;
    for (const Place& start : {std::filesystem::current_path(), program.parent_path()})
        for (Place folder = start;; folder = folder.parent_path()) {
            for (const char* below : {"", "trle", "practice/trle", "kestrova-practice/trle"})
                if (IsLevelEditor(folder / below))
                    return folder / below;
            if (!folder.has_relative_path())
                break;
        }
    return {};
}

Place TargetOf(const kestrova::SetupPayload& payload, const Place& program)
{
    std::string into = "trle";
    for (const std::string& value : ValuesOf(payload.head, "into="))
        into = value;
    return into == "trle" ? LevelEditor(program) : std::filesystem::current_path() / Place{into};
}

int Install(const Place& program, const std::vector<Place>& words)
{
    const auto bytes = BytesOf(program);
    if (!bytes)
        return Fail(notFound, Shown(program));
    const auto payload = kestrova::PayloadOf(*bytes);
    if (!payload)
        return Fail(texts::nothing);
    for (const std::string& title : ValuesOf(payload->head, "title="))
        std::cout << texts::installing << title << std::endl;
    const Acts acts{payload->head};
    if (!acts.Begin(program, words))
        return 0;
    const Place target = TargetOf(*payload, program);
    if (target.empty())
        return Fail(texts::noEditor);
    for (const kestrova::SetupFile& file : payload->files) {
        const Place place = Spelled(target, file.name);
        std::filesystem::create_directories(place.parent_path());
        if (!acts.WriteResult(place, file.bytes))
            return Fail(notWritten, Shown(place));
    }
    for (const std::string& name : ValuesOf(payload->head, "delete="))
        std::filesystem::remove(Spelled(target, name));
    std::cout << texts::installed << Shown(target) << std::endl;
    return 0;
}

std::optional<kestrova::SetupKind> KindNamed(const std::string& name)
{
    using enum kestrova::SetupKind;
    const std::array<std::pair<const char*, kestrova::SetupKind>, 5> kinds{
        {{"unknown", Unknown},
         {"winzip", WinZip},
         {"winace", WinAce},
         {"flydrive", FlyDrive},
         {"wide-flydrive", WideFlyDrive}}};
    for (const auto& [word, kind] : kinds)
        if (name == word)
            return kind;
    return std::nullopt;
}

/// `words`: file, kind, folder, lines of the head.
int Pack(const Place& program, const std::vector<Place>& words)
{
    const auto own = BytesOf(program);
    if (!own)
        return Fail(notFound, Shown(program));
    kestrova::SetupPayload payload;
    for (std::size_t i = 3; i < words.size(); ++i)
        payload.head += Shown(words[i]) + '\n';
    const Place& folder = words.at(2);
    for (const auto& entry : std::filesystem::recursive_directory_iterator{folder})
        if (entry.is_regular_file()) {
            auto bytes = BytesOf(entry.path());
            if (!bytes)
                return Fail(notFound, Shown(entry.path()));
            const auto name = entry.path().lexically_relative(folder).generic_u8string();
            payload.files.push_back({{name.begin(), name.end()}, std::move(*bytes)});
        }
    const auto kind = KindNamed(Shown(words[1]));
    const auto packed = kind ? kestrova::PackSetup(*own, *kind, payload) : std::nullopt;
    if (!packed)
        return Fail(texts::noKind, Shown(words[1]));
    if (!Write(words[0], *packed))
        return Fail(notWritten, Shown(words[0]));
    std::filesystem::permissions(words[0], std::filesystem::perms{0755});
    return 0;
}

int InstallOrPack(const Place& program, const std::vector<Place>& words)
{
    if (words.size() > 3 && words[0] == "--pack")
        return Pack(program, {words.begin() + 1, words.end()});
    if (words.size() > 4 && words[0] == "--pack-with")
        return Pack(words[1], {words.begin() + 2, words.end()});
    return Install(program, words);
}

} // namespace

STAND_IN_MAIN(InstallOrPack)
