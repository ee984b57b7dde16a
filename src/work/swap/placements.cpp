#include "swap/placements.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "formats/trle_folder.h"
#include "history/players_files.h"
#include "storage/game_files.h"
#include "swap/file_names.h"

#include <algorithm>

namespace kestrova
{

namespace
{

struct FileClass {
    std::string_view pattern;
    std::string_view folder;
};

} // namespace

constexpr FileClass scripts[] = {{OnDisk::PatDat, OnDisk::FragRoot},
                                 {OnDisk::PatH, OnDisk::FragRoot}};
constexpr FileClass levelData[] = {{OnDisk::PatTr4, OnDisk::FragData},
                                   {OnDisk::PatPak, OnDisk::FragData},
                                   {OnDisk::PatWav, OnDisk::FragAudio}};

std::vector<Placement> PlaceFiles(const std::vector<ReadyFile>& files,
                                  std::vector<std::string>& refused)
{
    std::vector<Placement> placements;
    const auto place = [&](const ReadyFile& file, std::string_view folder) {
        Placement placement{file, std::string{folder} + file.name, {}};
        const auto relative = SafeRelative(placement.target);
        if (!SafeName(file.name) || !relative || ListableName(file.name) != Readable(file.name)) {
            refused.push_back(Readable(file.name));
            return;
        }
        placement.relative = *relative;
        placements.push_back(std::move(placement));
    };
    const auto placeClass = [&](const FileClass& kind) {
        for (const ReadyFile& file : files)
            if (MatchesPattern(file.name, kind.pattern))
                place(file, kind.folder);
    };
    for (const FileClass& kind : scripts)
        placeClass(kind);
    for (const std::string& loose : Split(OnDisk::LooseFiles, '|'))
        for (const ReadyFile& file : files)
            if (EqualNames(file.name, loose))
                place(file, OnDisk::FragRoot);
    for (const FileClass& kind : levelData)
        placeClass(kind);
    return placements;
}

std::string LanguageFileToRemove(const std::vector<Path>& present,
                                 const std::vector<Placement>& placements)
{
    const std::string_view script = OnDisk::ScriptDat;
    const auto installed = std::find_if(present.begin(), present.end(), [&](const Path& file) {
        return !EqualNames(file.filename().native(), script);
    });
    if (installed == present.end())
        return {};
    std::string name = installed->filename().native();
    const bool replaced =
        std::any_of(placements.begin(), placements.end(), [&](const Placement& placement) {
            return EqualNames(placement.target, std::string{OnDisk::FragRoot} + name);
        });
    const bool another =
        std::any_of(placements.begin(), placements.end(), [&](const Placement& placement) {
            return EndsWithName(placement.file.name, OnDisk::EndingDat) &&
                   !EqualNames(placement.file.name, script);
        });
    return !replaced && another ? name : std::string{};
}

Belongings BelongingsOf(const MarkerContent& marker, const std::optional<OwnerRecord>& owner)
{
    Belongings belongings;
    if (owner) {
        const auto usable = [](const std::string& name) {
            const auto relative = SafeRelative(name);
            return relative && !IsPlayersPlace(*relative);
        };
        for (const OwnedFile& file : owner->added)
            if (usable(file.name))
                belongings.added.push_back(file);
        for (const std::string& name : owner->overwritten)
            if (usable(name))
                belongings.overwritten.push_back(name);
        return belongings;
    }
    const auto usable = [&](const std::string& entry) {
        const auto relative = SafeRelative(entry);
        if (relative && IsLevelPlace(*relative))
            return true;
        if (!entry.empty())
            belongings.refused.push_back(Readable(entry));
        return false;
    };
    for (const std::string& entry : marker.copied)
        if (usable(entry))
            belongings.added.push_back({entry});
    for (const std::string& entry : marker.overwritten)
        if (usable(entry))
            belongings.overwritten.push_back(entry);
    return belongings;
}

bool IsLevelPlace(const Path& relative)
{
    std::vector<std::string> refused;
    ReadyFile file;
    file.name = relative.filename().native();
    const auto placed = PlaceFiles({file}, refused);
    return std::any_of(placed.begin(), placed.end(), [&](const Placement& placement) {
        return EqualNames(placement.relative.native(), relative.native());
    });
}

Path PlaceOfOriginal(const Folders& folders, const Path& relative)
{
    const Path source = ResolvePath(folders.Backup() / relative);
    const Path place = relative.parent_path() / source.filename();
    const auto found = [&](const Path& name) { return ResolvePath(folders.trle / name); };
    return found(place) == found(relative) ? relative
                                           : relative.parent_path() / found(place).filename();
}

Status RestoreOriginal(const Folders& folders, const Path& relative)
{
    const Path source = ResolvePath(folders.Backup() / relative);
    const Path existing = ResolvePath(folders.trle / PlaceOfOriginal(folders, relative));
    const Path folder = existing.parent_path();
    const Path wanted = folder / source.filename();
    if (auto status = MakeFolders(folder); !status)
        return status;
    if (auto status = CopyFileOver(source, existing); !status)
        return status;
    if (existing != wanted) // the backup's spelling is the original one
        if (const auto failure = platform::Rename(existing, wanted))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(wanted), failure);
    return {};
}

Result<Belongings> StandingBelongings(const Folders& folders, const Standing& standing)
{
    const auto bytes = ReadFileIfThere(folders.Marker());
    if (!bytes)
        return bytes.Error();
    return BelongingsOf(ParseMarker(bytes->value_or(std::string{})), standing.owner);
}

} // namespace kestrova
