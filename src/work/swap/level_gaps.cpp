#include "swap/level_gaps.h"

#include "archive/level_folders.h"
#include "archive/tr4_index.h"
#include "core/file_kinds.h"
#include "core/size_words.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "words/swap.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

namespace kestrova
{

namespace
{

/// Scripts and language files change with a level's language, and nobody measures the level for
/// them; what is lost with a level's own file is more.
constexpr double measuredLoosely = 64 * 1024;
constexpr std::size_t indexNameWidth = 80;

/// A name as the fields of records hold it.
std::string AsNoted(const std::string& name)
{
    return FromWindows1252(ToWindows1252(name).substr(0, indexNameWidth));
}

struct Stored {
    std::string name; ///< as it is called in the Level Editor's folder
    std::uint64_t size = 0;
    bool plain = true;
};

Result<std::vector<Stored>> StoredFiles(const Path& folder)
{
    const auto listed = ListFiles(folder, OnDisk::PatAll);
    if (!listed)
        return listed.Error();
    std::vector<Stored> files;
    for (const Path& path : *listed) {
        const std::string name = path.filename().native();
        const bool deflated = EndsWithName(name, OnDisk::ZlExtension);
        files.push_back({deflated ? StripExtension(name) : name, FileSize(path), !deflated});
    }
    return files;
}

} // namespace

Result<LevelGaps> GapsOf(const Folders& folders, const LevelRecord& level)
{
    LevelGaps gaps;
    if (level.cdNumber != 0 || level.levelCode == originalCode)
        return gaps;
    const Path folder = InFolder(LevelHomeOf(folders, level.levelCode), OnDisk::DirFiles);
    const auto stored = StoredFiles(folder);
    if (!stored)
        return stored.Error();
    const std::vector<Stored>& files = *stored;
    std::unordered_map<std::string, const Stored*> byName; // folded, whole and as noted
    for (const Stored& file : files) {
        byName.emplace(FoldCase(Trim(file.name)), &file);
        byName.emplace(FoldCase(Trim(AsNoted(file.name))), &file);
    }
    const auto find = [&](const std::string& noted) {
        const auto found = byName.find(FoldCase(Trim(noted)));
        return found == byName.end() ? nullptr : found->second;
    };
    const auto index = ReadTr4InfOf(folders, level.levelCode);
    if (!index && index.Error().code == ErrorCode::CannotRead)
        return index.Error();
    if (index)
        for (const Tr4Entry& entry : *index) {
            const std::string name{Trim(entry.name)};
            const Stored* const file = find(name);
            const bool sizeIsKnown = entry.size < std::numeric_limits<std::int32_t>::max();
            if (file == nullptr)
                gaps.files.push_back(name);
            else if (file->plain && sizeIsKnown &&
                     file->size < static_cast<std::uint64_t>(std::max(entry.size, 0)))
                gaps.cut.push_back(name);
        }
    const std::string readme = FileNameOf(Trim(level.moreInfoFile));
    if (!readme.empty() && find(readme) == nullptr)
        gaps.texts.push_back(readme);
    double bytes = 0;
    for (const Stored& file : files)
        bytes += static_cast<double>(file.size);
    const double less = level.filesSize - bytes;
    if (gaps.files.empty() && gaps.cut.empty() && less > measuredLoosely &&
        level.filesSize < std::numeric_limits<std::int32_t>::max()) {
        gaps.bytes = less;
        gaps.noted = level.filesSize;
    }
    return gaps;
}

std::vector<std::string> PlayGaps(const LevelGaps& gaps)
{
    std::vector<std::string> names;
    for (const std::string& file : gaps.files)
        names.push_back(Readable(file));
    for (const std::string& file : gaps.cut)
        names.push_back(Readable(file));
    if (gaps.bytes > 0)
        names.push_back(GetMsg(Msg::LevelLacksBytes,
                               {SizeInWords(gaps.bytes), SizeInWords(gaps.noted - gaps.bytes),
                                SizeInWords(gaps.noted)}));
    return names;
}

std::vector<std::string> AllGaps(const LevelGaps& gaps)
{
    std::vector<std::string> names = PlayGaps(gaps);
    for (const std::string& text : gaps.texts)
        names.push_back(Readable(text));
    return names;
}

} // namespace kestrova
