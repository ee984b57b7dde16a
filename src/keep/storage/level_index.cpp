#include "storage/level_index.h"

#include "archive/tr4_index.h"
#include "core/file_kinds.h"
#include "core/text.h"
#include "formats/trle_folder.h"

#include <unordered_map>

namespace kestrova
{

Status WriteLevelIndex(const Folders& folders, LevelCode code, const std::vector<LevelFile>& files)
{
    std::vector<Tr4Entry> entries;
    std::vector<Tr4Entry> stored;
    const auto known = ReadTr4InfOf(folders, code);
    if (!known && known.Error().code == ErrorCode::CannotRead)
        return known.Error(); // it alone knows what the compressed files were
    std::unordered_map<std::string, Tr4Entry> knownByName; // folded
    if (known)
        for (const Tr4Entry& entry : *known)
            knownByName.emplace(FoldCase(Trim(entry.name)), entry);
    for (const LevelFile& file : files) {
        if (MatchesPattern(file.name, OnDisk::PatTr4))
            entries.push_back(Tr4EntryOf(file.name, file.path));
        else if (known && MatchesPattern(file.name, OnDisk::PatTr4Zl)) // compressed already
            if (const auto entry = knownByName.find(FoldCase(Trim(StripExtension(file.name))));
                entry != knownByName.end())
                stored.push_back(entry->second);
    }
    // An index that still fits stays; one that names files which are gone by now does not.
    if (entries.empty() && (!known || known->size() == stored.size()))
        return {};
    entries.insert(entries.end(), stored.begin(), stored.end());
    return WriteTr4InfOf(folders, code, entries);
}

} // namespace kestrova
