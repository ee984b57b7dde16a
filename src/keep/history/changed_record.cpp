#include "history/changed_record.h"

#include "archive/level_folders.h"
#include "core/staged_file.h"

#include <algorithm>
#include <utility>

namespace kestrova
{

namespace
{

LevelCode CodeOf(const ChangedRecord& change)
{
    return change.before ? change.before->levelCode : change.after->levelCode;
}

} // namespace

std::string BytesOfRecord(LevelRecord record)
{
    record.extrasSize = 0;
    record.extrasDirty = false;
    return FormatArchive({}, {std::move(record)}).substr(archiveHeaderSize);
}

bool IsSameRecord(const LevelRecord& one, const LevelRecord& other)
{
    return BytesOfRecord(one) == BytesOfRecord(other);
}

RecordState StateOf(const std::vector<LevelRecord>& levels, const ChangedRecord& change)
{
    if (!change.before && !change.after)
        return RecordState::After;
    const std::ptrdiff_t now = FindLevel(levels, CodeOf(change));
    const auto is = [&](const std::optional<LevelRecord>& record) {
        return now < 0 ? !record
                       : record && IsSameRecord(levels[static_cast<std::size_t>(now)], *record);
    };
    if (is(change.after))
        return RecordState::After;
    return is(change.before) ? RecordState::Before : RecordState::Other;
}

void PutRecord(std::vector<LevelRecord>& levels, const ChangedRecord& change)
{
    if (!change.before && !change.after)
        return;
    const std::ptrdiff_t found = FindLevel(levels, CodeOf(change));
    const std::size_t place = found < 0 ? levels.size() : static_cast<std::size_t>(found);
    if (!change.after) {
        if (place == levels.size())
            return;
        // The last record takes the place of the one that goes.
        levels[place] = levels.back();
        levels.pop_back();
    } else if (place < levels.size()) {
        const LevelRecord now = std::exchange(levels[place], *change.after);
        if (change.before) // pictures may have come since
            levels[place].extrasSize += now.extrasSize - change.before->extrasSize;
    } else if (change.place < levels.size()) {
        levels.push_back(std::exchange(levels[change.place], *change.after));
    } else {
        levels.push_back(*change.after);
    }
}

bool CountOnce(ArchiveHeader& header, std::vector<LevelRecord>& levels, const Change& change)
{
    const bool leaves = change.moved && change.record && !change.record->after;
    if (leaves && header.mainFolderSize == change.sizes.files &&
        header.secondaryFolderSize == change.sizes.extras) {
        header.mainFolderSize -= change.record->before->filesSize;
        header.secondaryFolderSize -= change.record->before->extrasSize;
        return true;
    }
    const std::ptrdiff_t place = FindLevel(levels, change.code);
    if (change.extraBytes == 0 || place < 0)
        return false;
    std::int32_t& extras = levels[static_cast<std::size_t>(place)].extrasSize;
    if (extras != change.sizes.extrasOfLevel)
        return false;
    extras += change.extraBytes;
    if (place > 0)
        header.secondaryFolderSize += change.extraBytes;
    return true;
}

Status PutRecordInFile(const Change& change)
{
    auto archive = ReadArchiveFile(change.archive);
    if (!archive)
        return archive.Error();
    bool differs = false;
    if (change.record && StateOf(archive->levels, *change.record) != RecordState::After) {
        const ChangedRecord& record = *change.record;
        if (record.before && record.after && change.code != originalCode)
            archive->header.mainFolderSize +=
                static_cast<double>(record.after->filesSize) - record.before->filesSize;
        PutRecord(archive->levels, record);
        differs = true;
    }
    differs = CountOnce(archive->header, archive->levels, change) || differs;
    return differs ? WriteDocument(change.archive, FormatArchive(*archive)) : Status{};
}

} // namespace kestrova
