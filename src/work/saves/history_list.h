#pragma once

#include "archive/archive_parts.h"
#include "history/history.h"

namespace kestrova
{

/// The rules of the window that shows what was kept of a level's savegames, newest first.
class HistoryList
{
public:
    HistoryList(const ArchiveParts& parts, LevelCode code);

    void Load();
    [[nodiscard]] std::string LevelName() const;
    [[nodiscard]] const std::vector<HistoryEntry>& Entries() const { return entries_; }
    /// Puts a kept file into a free slot of the level, says where, or why not. Without a free slot
    /// it offers to archive what stands there.
    bool BringBack(const std::string& id);
    /// Deletes kept files for good, after a question. False when none went.
    bool Delete(const std::vector<std::string>& ids);

private:
    [[nodiscard]] Result<Path> Place(const std::string& id);
    [[nodiscard]] bool SlotsAreTaken() const;

    ArchiveParts parts_;
    LevelCode code_;
    std::vector<HistoryEntry> entries_;
};

} // namespace kestrova
