#include "discs/part_of_level.h"

#include "core/file_kinds.h"
#include "core/look.h"
#include "core/text.h"
#include "discs/disc_notes.h"
#include "formats/trle_folder.h"

#include <set>

namespace kestrova
{

bool HasLevelFile(const Path& files)
{
    for (const std::string_view pattern : {OnDisk::PatTr4, OnDisk::PatTr4Zl})
        if (!ListFiles(files, pattern).ValueOr({}).empty())
            return true;
    return false;
}

bool IsPartOfLevel(const Path& files, const NotedLevel* noted, std::int32_t filesSize)
{
    if (!HasLevelFile(files))
        return true;
    const auto here = ListFilesToNote(files);
    if (!here)
        return false; // what a person put there is no part of what came from a disc
    if (noted == nullptr || noted->files.empty()) {
        double bytes = 0;
        for (const NotedFile& file : *here)
            bytes += static_cast<double>(file.size);
        return bytes < filesSize;
    }
    std::set<std::string> onDisc;
    for (const NotedFile& file : noted->files)
        onDisc.insert(FoldCase(file.name));
    for (const NotedFile& file : *here)
        if (onDisc.erase(FoldCase(file.name)) == 0)
            return false;
    return !onDisc.empty();
}

} // namespace kestrova
