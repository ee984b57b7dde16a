#include "editor/setup_shortcuts.h"

#include "core/copying.h"
#include "core/leftovers.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "editor/setup_names.h"
#include "formats/desktop_entry.h"
#include "formats/trle_folder.h"
#include "platform/places.h"
#include "tools/program_launch.h"
#include "words/level_setup.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Names that every icon theme has.
constexpr std::string_view iconGame = "applications-games";
constexpr std::string_view iconSetup = "preferences-desktop";
constexpr std::string_view iconManual = "x-office-document";
constexpr std::string_view iconTool = "applications-utilities";
constexpr std::string_view iconWeb = "text-html";
constexpr std::string_view entryCategories = "Game;";
constexpr std::uint64_t longestWebLink = 64 * 1024;

/// How a program of the tree will be started.
std::vector<std::string> CommandFor(const Tools& tools, const Path& program, const Path& later)
{
    std::vector<std::string> command;
    if (IsWindowsProgram(program)) {
        if (const Path prefix = PrefixAbove(later); !prefix.empty())
            command = {std::string{OnDisk::EnvironmentCommand},
                       std::string{OnDisk::PrefixVariable} + prefix.native()};
        command.emplace_back(Trim(tools.wineCommand));
        for (std::string& word : Split(tools.wineWords, ' '))
            if (!word.empty())
                command.push_back(std::move(word));
    }
    command.push_back(later.native());
    return command;
}

/// Gathers the entries for what is there.
struct Gatherer {
    const Tools& tools;
    const Path& tree;
    const Path& target;
    const SetupLanguage& language;
    std::vector<Shortcut> shortcuts{};

    void Add(const std::string& folder, const std::string& name, std::vector<std::string> command,
             std::string_view icon)
    {
        shortcuts.push_back({Path{folder} / (name + std::string{OnDisk::EndingDesktop}),
                             FormatDesktopEntry({name, std::move(command), target.native(),
                                                 std::string{icon}, entryCategories})});
    }
    void AddProgram(const std::string& folder, Message name, std::string_view fragment,
                    std::string_view icon, std::string_view word = {})
    {
        const Path program = ResolvePath(InFolder(tree, fragment));
        if (!FileExists(program))
            return;
        auto command = CommandFor(tools, program, target / program.lexically_relative(tree));
        if (!word.empty())
            command.emplace_back(word);
        Add(folder, LinkNameIn(name, language), std::move(command), icon);
    }
    void AddManual()
    {
        const Path manual = ResolvePath(InFolder(tree, OnDisk::DirManual) / Path{language.manual});
        if (FileExists(manual))
            Add(LinkNameIn(Msg::LinkDocuments, language), LinkNameIn(Msg::LinkManual, language),
                {std::string{OnDisk::OpenCommand},
                 (target / manual.lexically_relative(tree)).native()},
                iconManual);
    }
    void AddWeb(std::string_view file)
    {
        // What cannot be read leads nowhere.
        const std::string address = AddressOfShortcut(
            ReadWholeFile(ResolvePath(tree / Path{file}), longestWebLink).ValueOr({}));
        if (!address.empty())
            Add(LinkNameIn(Msg::LinkWeb, language), BaseNameOf(StripExtension(file)),
                {std::string{OnDisk::OpenCommand}, address}, iconWeb);
    }
};

bool IsSameGroup(const std::vector<Shortcut>& shortcuts, const Path& folder)
{
    return std::all_of(shortcuts.begin(), shortcuts.end(), [&](const Shortcut& shortcut) {
        const auto there = ReadFileIfThere(folder / shortcut.place);
        return there && *there == shortcut.text;
    });
}

/// All of them are entries of a setup into that folder, or into one that is no more.
bool IsOutdatedGroup(const Path& folder, const Path& target)
{
    const auto tree = ScanTreeIfThere(folder);
    return tree && !tree->files.empty() &&
           std::all_of(tree->files.begin(), tree->files.end(), [&](const Path& file) {
               if (!EndsWithName(file.native(), OnDisk::EndingDesktop))
                   return false;
               const auto text = ReadFileIfThere(file, longestWebLink);
               const Path works = text && *text ? FolderOfDesktopEntry(**text) : std::string{};
               return !works.empty() && (works == target || IsFree(works).ValueOr(false));
           });
}

/// The older group stands until the new one is ready to take its place.
Status TakePlaceOf(const Path& group, const Path& written)
{
    const WorkFolder older{FreshPlaceIn(group.parent_path()), WorkFolder::Make::Later};
    auto failure = platform::Rename(group, older.Folder());
    if (!failure) {
        failure = platform::Rename(written, group);
        if (failure)
            (void)platform::Rename(older.Folder(), group); // as it was
    }
    if (failure)
        return InWords(ErrorCode::CannotWrite, GetMsg(Msg::SetupNoLinkFolder) + TextOf(group),
                       failure.message());
    return FlushFolder(group.parent_path());
}

} // namespace

std::vector<Shortcut> ShortcutsFor(const Tools& tools, const Path& tree, const Path& target,
                                   const SetupLanguage& language)
{
    Gatherer gatherer{tools, tree, target, language};
    const std::string toolsFolder = LinkNameIn(Msg::LinkTools, language);
    gatherer.AddProgram({}, Msg::LinkGame, OnDisk::FragTrleTomb4, iconGame);
    gatherer.AddProgram({}, Msg::LinkGameSetup, OnDisk::FragTrleTomb4, iconSetup,
                        OnDisk::GameSetupWord);
    gatherer.AddManual();
    gatherer.AddProgram(toolsFolder, Msg::LinkRoomEditor, OnDisk::RoomEditor, iconTool);
    gatherer.AddProgram(toolsFolder, Msg::LinkConverter, OnDisk::FragConverter, iconTool);
    gatherer.AddWeb(OnDisk::WebLinkMaker);
    gatherer.AddWeb(OnDisk::WebLinkPublisher);
    return std::move(gatherer.shortcuts);
}

Path ShortcutsFolder()
{
    return platform::UserDataFolder() / OnDisk::FolderApplications / OnDisk::SetupMaker;
}

Status WriteShortcuts(const std::vector<Shortcut>& shortcuts, const Path& folder)
{
    for (const Shortcut& shortcut : shortcuts) {
        const Path file = folder / shortcut.place;
        auto written = MakeFolders(file.parent_path());
        if (written)
            written = WriteWholeFile(file, shortcut.text, false);
        if (!written)
            return InWords(written.Error().code,
                           GetMsg(Msg::SetupNoLinkFolder) + TextOf(file.parent_path()),
                           written.Error().reason);
    }
    return {};
}

Status PlaceShortcuts(const std::vector<Shortcut>& shortcuts, const Path& written,
                      const std::string& group, const Path& target)
{
    const auto nameOf = [&](int number) {
        return ShortcutsFolder() / (number == 1 ? group : group + ' ' + std::to_string(number));
    };
    constexpr int mostGroups = 100;
    for (int number = 1; number <= mostGroups; ++number) {
        const auto free = IsFree(nameOf(number));
        if (!free)
            return free.Error();
        if (!*free && IsSameGroup(shortcuts, nameOf(number)))
            return RemoveTree(written);
        if (!*free && IsOutdatedGroup(nameOf(number), target))
            return TakePlaceOf(nameOf(number), written);
        if (!*free)
            continue;
        const auto failure = platform::Rename(written, nameOf(number));
        return failure ? InWords(ErrorCode::CannotWrite,
                                 GetMsg(Msg::SetupNoLinkFolder) + TextOf(nameOf(number)),
                                 failure.message())
                       : FlushFolder(ShortcutsFolder());
    }
    return InWords(ErrorCode::CannotWrite, GetMsg(Msg::SetupNoLinkFolder) + TextOf(nameOf(1)));
}

} // namespace kestrova
