#include "discs/disc_content.h"

#include "archive/level_folders.h"
#include "core/look.h"
#include "core/text.h"
#include "discs/disc_notes.h"
#include "discs/file_names.h"
#include "formats/level_folder.h"
#include "platform/file_content.h"
#include "words/disc_play.h"

#include <algorithm>
#include <map>

namespace kestrova
{

namespace
{

/// Where the number at the end of a name begins; its length when there is none.
std::size_t NumberAt(std::string_view name)
{
    const std::size_t last = name.find_last_not_of("0123456789");
    return last == std::string_view::npos ? 0 : last + 1;
}

bool HoldsLevel(const Path& folder)
{
    const auto folders = ListSubfolders(folder);
    if (!folders)
        return false; // nothing of an archive can be read there
    for (const Path& found : *folders)
        if (MatchesPattern(found.filename().native(), OnDisk::PatLevelFolders))
            return true;
    return false;
}

/// A link on a disc could lead to whatever lies on this computer.
Status IsNoLink(const Path& path)
{
    const auto failure = InWords(ErrorCode::Refused, GetMsg(Msg::DiscHoldsLink, {TextOf(path)}));
    return platform::FactsOfLink(path).kind == platform::FileKind::Link ? Status{failure}
                                                                        : Status{};
}

/// What lies in a level's `files` on a disc, where none of it is a link.
Result<std::vector<NotedFile>> FilesOnDisc(const Path& files)
{
    if (auto plain = IsNoLink(files); !plain)
        return plain.Error();
    auto found = ListFilesToNote(files);
    if (!found && found.Error().code == ErrorCode::Missing)
        return std::vector<NotedFile>{};
    if (!found && found.Error().code == ErrorCode::Refused)
        return InWords(ErrorCode::Refused, GetMsg(Msg::DiscHoldsLink, {found.Error().subject}));
    return found;
}

/// They are exactly what the note tells.
Status IsAsNoted(const std::vector<NotedFile>& files, const NotedLevel& noted)
{
    std::map<std::string, std::uint64_t> sizes; ///< by folded name
    for (const NotedFile& file : files)
        sizes.emplace(FoldCase(file.name), file.size);
    for (const NotedFile& file : noted.files) {
        const auto found = sizes.find(FoldCase(file.name));
        if (found == sizes.end() || found->second != file.size)
            return MakeFailure(ErrorCode::Damaged, file.name);
        sizes.erase(found);
    }
    return sizes.empty() ? Status{} : MakeFailure(ErrorCode::Damaged, sizes.begin()->first);
}

} // namespace

std::string NameOnDiscs(const ArchiveHeader& header)
{
    const auto last = [](std::string_view folder) {
        while (!folder.empty() && (folder.back() == '\\' || folder.back() == '/'))
            folder.remove_suffix(1);
        return FileNameOf(folder);
    };
    const std::string name = last(Trim(header.mainFolder));
    return name.empty() ? last(Trim(header.secondaryFolder)) : name;
}

std::string LabelOfDisc(std::int32_t number)
{
    return Filled(OnDisk::DiscLabel, {std::to_string(number)});
}

Status NoteLevels(const ArchiveHeader& header,
                  const std::vector<std::pair<std::int32_t, NotedLevel>>& levels)
{
    const Path folder = FolderFromText(Trim(header.secondaryFolder));
    auto note = ReadDiscNote(folder);
    if (!note)
        return note.Error();
    if (note->folder.empty())
        note->folder = NameOnDiscs(header);
    std::map<std::int32_t, NotedDisc> discs;
    for (const auto& [number, level] : levels) {
        NotedDisc& disc = discs[number];
        if (disc.number == 0)
            disc = note->Find(number) != nullptr
                       ? *note->Find(number)
                       : NotedDisc{number, LabelOfDisc(number), 0, {}, 0, {}};
        const auto old =
            std::find_if(disc.levels.begin(), disc.levels.end(),
                         [code = level.code](const NotedLevel& l) { return l.code == code; });
        if (old != disc.levels.end())
            *old = level;
        else
            disc.levels.push_back(level);
    }
    for (auto& [number, disc] : discs)
        note->Put(std::move(disc));
    return WriteDiscNote(folder, *note);
}

Result<std::vector<KnownDisc>> DiscsIn(const Path& root)
{
    const auto folders = ListSubfolders(root);
    if (!folders)
        return folders.Error();
    std::vector<KnownDisc> discs;
    for (const Path& folder : *folders) {
        const std::string name = folder.filename().native();
        const std::size_t at = NumberAt(name);
        const auto number = WholeNumber<std::int32_t>(std::string_view{name}.substr(at));
        if (number && *number > 0 && at > 0 && HoldsLevel(folder))
            discs.push_back({name.substr(0, at), *number});
    }
    return discs;
}

Status HoldsNotedContent(const Path& files, const NotedLevel& noted, const Heartbeat& beat)
{
    for (const NotedFile& file : noted.files) {
        if (!beat())
            return MakeFailure(ErrorCode::Stopped, file.name);
        std::string hash;
        const Path place = ResolvePath(files / file.name);
        if (const auto failure = platform::HashOfFile(place, hash))
            return MakeFailure(ErrorCode::Damaged, file.name, failure);
        if (!file.hash.empty() && hash != file.hash)
            return MakeFailure(ErrorCode::Damaged, file.name);
    }
    return {};
}

Result<std::optional<Path>> FindDiscFolder(const Path& root, const ArchiveHeader& header,
                                           const LevelRecord& level, const NotedLevel* noted)
{
    const std::string base = NameOnDiscs(header);
    if (base.empty() || !SafeName(base))
        return std::optional<Path>{};
    const auto folder = FindPath(root / (base + std::to_string(level.cdNumber)));
    if (!folder)
        return folder.Error();
    const auto home = FindPath(InFolder(*folder, LevelFolderName(level.levelCode)));
    const auto isThere = home ? IsFolder(*home) : Result<bool>{home.Error()};
    if (!isThere)
        return isThere.Error();
    if (!*isThere)
        return std::optional<Path>{};
    for (const Path& path : {*folder, *home})
        if (auto plain = IsNoLink(path); !plain)
            return plain.Error();
    const auto files = FilesOnDisc(ResolvePath(InFolder(*home, OnDisk::DirFiles)));
    if (!files)
        return files.Error();
    if (noted != nullptr)
        if (auto status = IsAsNoted(*files, *noted); !status)
            return status.Error();
    return std::optional<Path>{*folder};
}

} // namespace kestrova
