#include "upkeep/disc_sources.h"

#include "archive/level_folders.h"
#include "core/file_kinds.h"
#include "core/text.h"
#include "discs/disc_content.h"
#include "discs/disc_notes.h"
#include "formats/level_folder.h"
#include "platform/file_content.h"
#include "session/disc_reader.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// The noted file that the fault is about, which may be known by its game's name alone.
const NotedFile* FileOf(const NotedLevel& noted, const LevelFault& fault)
{
    const std::string deflated = fault.file + std::string{OnDisk::ZlExtension};
    const auto isIt = [&](const NotedFile& file) {
        return fault.stored.empty()
                   ? EqualNames(file.name, fault.file) || EqualNames(file.name, deflated)
                   : file.name == fault.stored;
    };
    const auto found = std::find_if(noted.files.begin(), noted.files.end(), isIt);
    return found == noted.files.end() ? nullptr : &*found;
}

} // namespace

void DiscSources::Read()
{
    if (isRead_)
        return;
    isRead_ = true;
    // One that cannot be read tells of no disc.
    note_ = ReadDiscNote(folders_.levels).ValueOr({});
    for (const NotedDisc& disc : note_.discs)
        for (const NotedLevel& level : disc.levels)
            for (const NotedFile& file : level.files)
                byHash_.emplace(file.hash, Place{disc.number, level.code, file.name});
}

const Path& DiscSources::FilesOn(std::int32_t disc, LevelCode code)
{
    const auto [place, isNew] = found_.try_emplace({disc, code});
    if (!isNew || folders_.discs == nullptr)
        return place->second;
    // The list may say that the level lies on the hard disk, and so it does.
    Archive archive{archive_.header, {}, archive_.file};
    if (!note_.folder.empty())
        archive.header.mainFolder = note_.folder;
    LevelRecord level;
    if (const LevelRecord* const known = archive_.Find(code))
        level = *known;
    level.levelCode = code;
    level.cdNumber = disc;
    if (const auto folder = folders_.discs->FolderOfDisc(archive, level, DiscWish::Look))
        place->second =
            ResolvePath(InFolder(InFolder(*folder, LevelFolderName(code)), OnDisk::DirFiles));
    return place->second;
}

std::vector<DiscSources::OnDisc> DiscSources::Holding(LevelCode code, const std::string& hash)
{
    Read();
    const auto [first, last] = byHash_.equal_range(hash);
    std::vector<const Place*> places;
    for (auto each = first; each != last; ++each)
        places.push_back(&each->second);
    std::stable_partition(places.begin(), places.end(),
                          [&](const Place* place) { return place->code == code; });
    std::vector<OnDisc> files;
    for (const Place* place : places)
        if (const Path& folder = FilesOn(place->disc, place->code); !folder.empty())
            files.push_back({ResolvePath(folder / place->name), LabelOfDisc(place->disc)});
    return files;
}

bool DiscSources::StandsAsNoted(LevelCode code, const std::set<std::string>& faulty,
                                const NotedLevel& noted)
{
    const Path files = ResolvePath(InFolder(LevelHomeOf(folders_, code), OnDisk::DirFiles));
    bool any = false;
    for (const NotedFile& file : noted.files) {
        if (faulty.contains(file.name))
            continue;
        std::string hash;
        if (platform::HashOfFile(files / file.name, hash))
            continue; // it is gone
        if (hash != file.hash)
            return false;
        any = true;
    }
    return any;
}

void DiscSources::NoteFault(LevelCode code, const std::set<std::string>& faulty, LevelFault& fault)
{
    Read();
    // The last one that was made counts.
    for (auto disc = note_.discs.rbegin(); disc != note_.discs.rend(); ++disc) {
        const NotedLevel* const noted = disc->Find(code);
        const NotedFile* const file = noted == nullptr ? nullptr : FileOf(*noted, fault);
        if (file == nullptr || file->name.find('/') != std::string::npos ||
            !StandsAsNoted(code, faulty, *noted))
            continue;
        fault.stored = file->name;
        fault.noted = StoredEntry{file->name, file->size, 0, file->hash, {}};
        return;
    }
}

} // namespace kestrova
