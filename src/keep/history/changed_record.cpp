#include "history/changed_record.h"

#include "core/staged_file.h"

#include <algorithm>
#include <utility>

namespace kestrova
{

namespace
{

std::string BytesOf(LevelRecord record)
{
    record.extrasSize = 0;
    record.extrasDirty = false;
    return FormatArchive({}, {std::move(record)}).substr(archiveHeaderSize);
}

LevelCode CodeOf(const ChangedRecord& change)
{
    return change.before ? change.before->levelCode : change.after->levelCode;
}

std::vector<LevelRecord>::const_iterator Find(const std::vector<LevelRecord>& levels,
                                              LevelCode code)
{
    return std::find_if(levels.begin(), levels.end(),
                        [&](const LevelRecord& level) { return level.levelCode == code; });
}

} // namespace

bool IsSameRecord(const LevelRecord& one, const LevelRecord& other)
{
    return BytesOf(one) == BytesOf(other);
}

RecordState StateOf(const std::vector<LevelRecord>& levels, const ChangedRecord& change)
{
    if (!change.before && !change.after)
        return RecordState::After;
    const auto now = Find(levels, CodeOf(change));
    const auto is = [&](const std::optional<LevelRecord>& record) {
        return now == levels.end() ? !record : record && IsSameRecord(*now, *record);
    };
    if (is(change.after))
        return RecordState::After;
    return is(change.before) ? RecordState::Before : RecordState::Other;
}

void PutRecord(std::vector<LevelRecord>& levels, const ChangedRecord& change)
{
    if (!change.before && !change.after)
        return;
    const auto place = static_cast<std::size_t>(Find(levels, CodeOf(change)) - levels.cbegin());
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

Status PutRecordInFile(const ChangedRecord& change)
{
    auto archive = ReadArchiveFile(change.archive);
    if (!archive)
        return archive.Error();
    if (StateOf(archive->levels, change) == RecordState::After)
        return {};
    if (change.before && change.after && change.after->levelCode != originalCode)
        archive->header.mainFolderSize +=
            static_cast<double>(change.after->filesSize) - change.before->filesSize;
    PutRecord(archive->levels, change);
    return WriteDocument(change.archive, FormatArchive(*archive));
}

} // namespace kestrova
