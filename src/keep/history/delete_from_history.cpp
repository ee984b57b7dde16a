#include "history/delete_from_history.h"

#include "core/text.h"
#include "history/history.h"
#include "words/history.h"

#include <algorithm>

namespace kestrova
{

Status DropUnnamed(const Folders& folders, std::set<std::string> hashes)
{
    const auto levels = LevelsWithHistory(folders);
    if (!levels)
        return levels.Error();
    for (const LevelCode code : *levels) {
        const auto index = ReadHistoryIndex(folders, code);
        if (!index)
            return index.Error();
        if (!index->strangeLines.empty()) // nobody knows what it names
            return InWords(ErrorCode::Refused,
                           GetMsg(Msg::HistoryContentStays, {ZeroPadded(code, 4)}));
        for (const HistoryEntry& entry : index->entries)
            hashes.erase(entry.hash);
    }
    Status done;
    for (const std::string& hash : hashes) {
        const Path content = HistoryContent(folders, hash);
        const auto failure = platform::Unlink(content);
        if (failure && failure != std::errc::no_such_file_or_directory && done)
            done = MakeFailure(ErrorCode::CannotDelete, TextOf(content), failure);
    }
    return done;
}

Status DeleteFromHistory(const Folders& folders, LevelCode code, const std::set<std::string>& ids)
{
    auto index = ReadHistoryIndex(folders, code);
    if (!index)
        return index.Error();
    const auto goes = [&](const HistoryEntry& entry) { return ids.contains(entry.id); };
    std::set<std::string> hashes;
    for (const HistoryEntry& entry : index->entries)
        if (goes(entry))
            hashes.insert(entry.hash);
    std::erase_if(index->entries, goes);
    // The entries first: a kill leaves a content without a name, and never a name without it.
    if (auto written = WriteHistoryIndex(folders, code, *index); !written)
        return written;
    return DropUnnamed(folders, std::move(hashes));
}

} // namespace kestrova
