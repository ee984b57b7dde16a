#include "archive/tr4_index.h"

#include "archive/level_folders.h"
#include "core/dates.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "formats/trle_folder.h"

#include <algorithm>
#include <limits>

namespace kestrova
{

namespace
{

constexpr std::size_t nameWidth = 80;

Path Tr4InfPathOf(const Folders& folders, LevelCode code)
{
    return InFolder(LevelHomeOf(folders, code), OnDisk::FragTr4Inf);
}

} // namespace

Tr4Entry Tr4EntryOf(const std::string& name, const Path& file)
{
    const platform::FileFacts facts = platform::FactsOf(file);
    constexpr std::uint64_t most = std::numeric_limits<std::int32_t>::max();
    return {FromWindows1252(ToWindows1252(name).substr(0, nameWidth)),
            DateSerialOf(facts.modifiedNs),
            static_cast<std::int32_t>(std::min<std::uint64_t>(facts.size, most))};
}

Result<std::vector<Tr4Entry>> ScanTr4Files(const Path& folder)
{
    const auto files = ListFiles(folder, OnDisk::PatTr4);
    if (!files)
        return files.Error();
    std::vector<Tr4Entry> entries;
    for (const Path& file : *files)
        entries.push_back(Tr4EntryOf(file.filename().native(), file));
    return entries;
}

Path Tr4InfPath(const Folders& folders, const Archive& archive, std::size_t index)
{
    return Tr4InfPathOf(folders, archive.levels[index].levelCode);
}

Status WriteTr4InfOf(const Folders& folders, LevelCode code, const std::vector<Tr4Entry>& entries)
{
    return WriteRecordFile(Tr4InfPathOf(folders, code), FormatTr4Inf(entries));
}

Status WriteTr4Inf(const Folders& folders, const Archive& archive, std::size_t index,
                   const std::vector<Tr4Entry>& entries)
{
    return WriteTr4InfOf(folders, archive.levels[index].levelCode, entries);
}

Result<std::vector<Tr4Entry>> ReadTr4Inf(const Folders& folders, const Archive& archive,
                                         std::size_t index)
{
    return ReadTr4InfOf(folders, archive.levels[index].levelCode);
}

Result<std::vector<Tr4Entry>> ReadTr4InfOf(const Folders& folders, LevelCode code)
{
    const Path file = Tr4InfPathOf(folders, code);
    const auto bytes = ReadFileIfThere(file);
    if (!bytes)
        return bytes.Error();
    if (!*bytes)
        return MakeFailure(ErrorCode::Missing, TextOf(file));
    auto entries = ParseTr4Inf(**bytes);
    if (!entries)
        return MakeFailure(entries.Error().code, TextOf(file));
    return entries;
}

} // namespace kestrova
