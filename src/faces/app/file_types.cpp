#include "app/file_types.h"

#include "app/file_names.h"
#include "core/copying.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "formats/desktop_entry.h"
#include "formats/program_folder.h"
#include "platform/places.h"
#include "platform/user_folders.h"
#include "session/operation.h"
#include "session/telling.h"
#include "tools/program_launch.h"
#include "tools/run_to_end.h"
#include "words/file_types.h"

namespace kestrova
{

namespace
{

constexpr std::chrono::seconds longestUpdate{60};
constexpr std::string_view programCategories = "Game;AdventureGame;";

const Tool& MimeUpdater()
{
    static const Tool tool{.name = "update-mime-database", .package = "shared-mime-info"};
    return tool;
}

const Tool& EntryUpdater()
{
    static const Tool tool{.name = "update-desktop-database", .package = "desktop-file-utils"};
    return tool;
}

const Tool& DefaultSetter()
{
    static const Tool tool{.name = "xdg-mime", .package = "xdg-utils"};
    return tool;
}

/// One file of the registration: copied from the share folder, or written.
struct RegisteredFile {
    Path place;
    Path source{};
    std::string text{};
};

std::vector<std::string> SiblingCommand(const Session& session, const Path& program)
{
    std::vector<std::string> command;
    if (IsWindowsProgram(program))
        command.emplace_back(Trim(session.settings.wineCommand));
    command.push_back(program.native());
    return command;
}

std::vector<RegisteredFile> FilesToRegister(Session& session)
{
    const Path data = platform::UserDataFolder();
    const Path share = platform::ResourceFolder();
    const auto entry = [&](std::string_view name, const DesktopEntry& content) {
        return RegisteredFile{data / OnDisk::EntriesFolder / name, {}, FormatDesktopEntry(content)};
    };
    const Path packages = data / OnDisk::MimeFolder / OnDisk::MimePackages;
    const Path program = platform::ExecutableFolder() / OnDisk::WindowsProgram;
    const std::string archives = std::string{OnDisk::TypeOfArchives} + ';';
    std::vector<RegisteredFile> files{
        {packages / OnDisk::MimePackage, share / OnDisk::MimeXml},
        {data / OnDisk::MimeIcons / OnDisk::MimeIcon, share / OnDisk::MimeIcon},
        {data / OnDisk::AppIcons / OnDisk::ProgramIconFile, share / OnDisk::ProgramIconFile},
        entry(OnDisk::ProgramEntry, {Told(Msg::EntryOfProgram),
                                     {program.native()},
                                     {},
                                     "kestrova",
                                     programCategories,
                                     archives,
                                     Told(Msg::CommentOfProgram),
                                     Msg::KeywordsOfProgram.text,
                                     OnDisk::WindowClass})};
    const Path sibling = ResolvePath(session.programFolder / OnDisk::SiblingProgram);
    if (FileExists(sibling)) {
        files.push_back(
            {packages / OnDisk::MimePackageOfSibling, share / OnDisk::MimeXmlOfSibling});
        files.push_back(entry(OnDisk::SiblingEntry,
                              {Told(Msg::EntryOfSibling), SiblingCommand(session, sibling),
                               session.programFolder.native(), "kestrova", programCategories,
                               std::string{OnDisk::TypeOfSibling} + ';'}));
    }
    return files;
}

Status PutRegistered(const RegisteredFile& file)
{
    if (auto made = MakeFolders(file.place.parent_path()); !made)
        return made;
    return file.source.empty() ? WriteWholeFile(file.place, file.text)
                               : CopyFileOver(file.source, file.place);
}

/// False when the tool is not there or failed; the desktop reads the files later on then.
bool Update(const Tools& tools, const Tool& tool, const ToolArguments& arguments)
{
    if (FindTool(tools, tool).empty())
        return false;
    ToolReport report;
    const auto done =
        RunToolBatch(tools, tool, arguments, longestUpdate, ToolProgressState{}, report);
    return done || report.trouble == ToolTrouble::NoOutput; // they say nothing when all is well
}

} // namespace

bool AreFileTypesKnown()
{
    std::vector<Path> folders = platform::SharedDataFolders();
    folders.push_back(platform::UserDataFolder());
    return std::any_of(folders.begin(), folders.end(), [](const Path& folder) {
        return FileExists(folder / OnDisk::MimeFolder / OnDisk::MimePackages / OnDisk::MimePackage);
    });
}

Result<std::vector<Path>> RegisterFileTypes(Session& session, bool& anew)
{
    std::vector<Path> written;
    for (const RegisteredFile& file : FilesToRegister(session)) {
        if (const auto put = PutRegistered(file); !put)
            return put.Error();
        written.push_back(file.place);
    }
    const Tools tools = ToolsOf(session);
    const Path data = platform::UserDataFolder();
    anew = Update(tools, MimeUpdater(), {(data / OnDisk::MimeFolder).native()});
    // Without it the entry counts as soon as the desktop makes its lists itself.
    (void)Update(tools, EntryUpdater(), {(data / OnDisk::EntriesFolder).native()});
    (void)Update(
        tools, DefaultSetter(),
        {"default", std::string{OnDisk::ProgramEntry}, std::string{OnDisk::TypeOfArchives}});
    return written;
}

bool OffersFileTypes(Session& session)
{
    const Path own = InFolder(platform::UserDataFolder(), OnDisk::DirProgramData);
    return IsSameFolder(session.programFolder, own) && !AreFileTypesKnown() &&
           !FindTool(ToolsOf(session), MimeUpdater()).empty();
}

void TeachFileTypes(Session& session)
{
    bool anew = false;
    if (const auto done = RegisterFileTypes(session, anew); !done)
        TellFailure(session.host, GetMsg(Msg::FileTypesFailed), done.Error());
}

void OfferFileTypes(Session& session)
{
    if (OffersFileTypes(session) && session.host.AskYesNo(GetMsg(Msg::AskFileTypes)))
        TeachFileTypes(session);
}

} // namespace kestrova
