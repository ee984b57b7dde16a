#include "library/library_levels.h"

#include "core/text.h"
#include "history/standing.h"
#include "words/library.h"

namespace kestrova
{

std::string_view NameOf(const LibraryLevel& level)
{
    std::string_view name = level.text;
    if (level.current)
        name.remove_suffix(Msg::CurrentLevelMark.text.size());
    return name;
}

std::vector<LibraryLevel> LibraryLevels(const Folders& folders, const Archive& archive,
                                        const NoteOfLevel& noteOf)
{
    const LevelCode current = CurrentLevelCode(folders, archive);
    std::vector<LibraryLevel> levels;
    levels.reserve(archive.levels.size());
    for (const LevelRecord& record : archive.levels) {
        LibraryLevel& level = levels.emplace_back();
        level.text = Readable(Trim(record.levelName));
        level.current = record.levelCode == current;
        if (level.current)
            level.text += Msg::CurrentLevelMark.text;
        level.author = Readable(Trim(record.authorName));
        level.note = Readable(Trim(record.levelNote));
        level.code = record.levelCode;
        level.cdNumber = record.cdNumber;
        level.size = std::int64_t{record.filesSize} + record.extrasSize;
        level.own = noteOf(record.levelCode);
    }
    return levels;
}

} // namespace kestrova
