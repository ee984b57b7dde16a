#include "history/history_bounds.h"

#include "archive/level_folders.h"
#include "history/delete_from_history.h"
#include "history/players_files.h"
#include "platform/file_content.h"

namespace kestrova
{

namespace
{

/// Hashes of what the level's own folder holds: its store and its archive slots. The live slots do
/// not count, since the game writes over them whenever it likes.
std::set<std::string> HashesElsewhere(const Folders& folders, const LevelPlace& level)
{
    std::set<std::string> hashes;
    // What cannot be listed is held nowhere, so that more stays in the history.
    if (const auto tree = ScanTree(HomeOf(folders, level)))
        for (const Path& file : tree->files)
            if (std::string hash;
                IsPlayersFile(file.filename().native()) && !platform::HashOfFile(file, hash))
                hashes.insert(hash);
    return hashes;
}

} // namespace

void BoundHistory(const Folders& folders, const ProgramSettings& settings, const LevelPlace& level,
                  const std::set<std::string>& fresh)
{
    const LevelCode code = level.code;
    auto index = ReadHistoryIndex(folders, code);
    if (!index)
        return;
    const std::vector<HistoryEntry> entries = index->entries;
    std::uint64_t bytes = 0;
    for (const HistoryEntry& entry : entries)
        bytes += entry.size;
    std::size_t count = entries.size();
    const auto mostCount = static_cast<std::size_t>(settings.historyCount);
    const std::uint64_t mostBytes = static_cast<std::uint64_t>(settings.historyMegabytes) << 20;
    if (count <= mostCount && bytes <= mostBytes)
        return;

    const std::set<std::string> elsewhere = HashesElsewhere(folders, level);
    std::vector<HistoryEntry> stay;
    std::set<std::string> dropped;
    for (const HistoryEntry& entry : entries) {
        const bool over = count > mostCount || bytes > mostBytes;
        if (over && !fresh.contains(entry.hash) && elsewhere.contains(entry.hash)) {
            --count;
            bytes -= entry.size;
            dropped.insert(entry.hash);
        } else {
            stay.push_back(entry);
        }
    }
    index->entries = std::move(stay);
    if (dropped.empty() || !WriteHistoryIndex(folders, code, *index))
        return;
    (void)DropUnnamed(folders, std::move(dropped)); // unnamed content does no harm
}

} // namespace kestrova
