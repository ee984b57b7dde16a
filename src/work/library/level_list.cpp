#include "library/level_list.h"

#include "archive/level_folders.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "formats/level_folder.h"
#include "formats/trle_folder.h"
#include "history/standing.h"
#include "saves/archive_slots.h"
#include "saves/savegame_store.h"
#include "words/levels.h"
#include "words/library.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Only shown: a folder that cannot be read shows nothing of what it holds.
int Count(const Path& folder, std::string_view pattern)
{
    return static_cast<int>(ListFiles(folder, pattern).ValueOr({}).size());
}

bool TellUnknown(Host& host, LevelCode code)
{
    host.Tell(Tone::Error, GetMsg(Msg::UnknownCodeInList) + std::to_string(code));
    return false;
}

std::string InfoLine(const LevelFacts& facts)
{
    std::string path = "\"" + TextOf(facts.folder) + "\"";
    if (facts.record.cdNumber != 0)
        path += GetMsg(Msg::InfoCdNumber) + std::to_string(facts.record.cdNumber);
    path += GetMsg(Msg::InfoPathEnds);
    return GetMsg(Msg::InfoPathAndShots, {path, std::to_string(facts.screenshots)}) +
           std::to_string(facts.liveSavegames) + GetMsg(Msg::InfoArchivedSavegames) +
           std::to_string(facts.archivedSavegames);
}

/// The order of the list: by folded text, equal ones as the archive has them. Ten thousand rows are
/// sorted while a window opens, so keys lie in one piece of memory and are small.
class RowOrder
{
public:
    void Add(const std::string& text)
    {
        Key key{0, static_cast<std::uint32_t>(folded_.size()), 0,
                static_cast<std::uint32_t>(keys_.size())};
        folded_ += FoldCase(text);
        key.size = static_cast<std::uint32_t>(folded_.size()) - key.begin;
        for (std::uint32_t i = 0; i < sizeof key.first; ++i)
            key.first = key.first << 8 |
                        (i < key.size ? static_cast<unsigned char>(folded_[key.begin + i]) : 0U);
        keys_.push_back(key);
    }

    /// Numbers of the rows as they were added.
    std::vector<std::uint32_t> Sorted()
    {
        std::sort(keys_.begin(), keys_.end(), [this](const Key& a, const Key& b) {
            if (a.first != b.first)
                return a.first < b.first;
            const int order = TextOf(a).compare(TextOf(b));
            return order != 0 ? order < 0 : a.row < b.row;
        });
        std::vector<std::uint32_t> rows;
        rows.reserve(keys_.size());
        for (const Key& key : keys_)
            rows.push_back(key.row);
        return rows;
    }

private:
    struct Key {
        std::uint64_t first; ///< the first letters as a number, which decides nearly every time
        std::uint32_t begin;
        std::uint32_t size;
        std::uint32_t row;
    };
    [[nodiscard]] std::string_view TextOf(const Key& key) const
    {
        return std::string_view{folded_}.substr(key.begin, key.size);
    }

    std::string folded_;
    std::vector<Key> keys_;
};

LevelFacts FactsOfLevel(const Folders& folders, const Archive& archive, std::size_t index)
{
    LevelFacts facts;
    facts.index = index;
    facts.record = archive.levels[index];
    const LevelCode code = facts.record.levelCode;
    facts.folder = LevelHomeOf(folders, code);
    facts.current = CurrentLevelCode(folders, archive) == code;
    const Path shots = InFolder(facts.folder, OnDisk::DirScreenshots);
    facts.screenshots = Count(shots, OnDisk::PatBmp) + Count(shots, OnDisk::PatShotJpg);
    facts.liveSavegames =
        Count(LiveStateFolder(folders, archive, code).ValueOr(StateStoreOf(folders, code)),
              OnDisk::SavegamePattern);
    facts.archivedSavegames = CountArchivedSavegames(folders, code);
    facts.folderGone = !IsFolder(facts.folder).ValueOr(false);
    facts.info =
        facts.folderGone ? GetMsg(Msg::FolderNotThereNow, {TextOf(facts.folder)}) : InfoLine(facts);
    return facts;
}

} // namespace

std::optional<LevelFacts> SelectLevel(Session& session, LevelCode code)
{
    const std::ptrdiff_t index = FindLevel(session.archive, code);
    if (index < 0)
        return TellUnknown(session.host, code), std::nullopt;
    // Its records are made here where there are none; what cannot be read is told by who needs it.
    (void)LoadSavegameStore(session.Folders(), session.preferences, code);
    return FactsOfLevel(session.Folders(), session.archive, static_cast<std::size_t>(index));
}

std::optional<LevelFacts> LookAtLevel(Host& host, const Folders& folders, const Archive& archive,
                                      LevelCode code)
{
    const std::ptrdiff_t index = FindLevel(archive, code);
    if (index < 0)
        return TellUnknown(host, code), std::nullopt;
    return FactsOfLevel(folders, archive, static_cast<std::size_t>(index));
}

std::vector<ListRow> ListRows(const Folders& folders, const Archive& archive)
{
    const LevelCode current = CurrentLevelCode(folders, archive);
    std::vector<ListRow> unsorted;
    unsorted.reserve(archive.levels.size());
    RowOrder order;
    for (const LevelRecord& level : archive.levels) {
        std::string text = Readable(Trim(level.levelName));
        if (level.levelCode == current)
            text += Msg::CurrentLevelMark.text;
        order.Add(text);
        unsorted.push_back({std::move(text), level.levelCode});
    }
    std::vector<ListRow> rows;
    rows.reserve(unsorted.size());
    for (const std::uint32_t row : order.Sorted())
        rows.push_back(std::move(unsorted[row]));
    return rows;
}

std::string WindowTitle(const Archive& archive)
{
    return GetMsg(Msg::TitleLevels,
                  {TextOf(archive.file.filename()) + GetMsg(Msg::TitleCountOpens) +
                   std::to_string(archive.levels.size())});
}

std::ptrdiff_t FindRow(const std::vector<ListRow>& rows, std::string_view text, std::ptrdiff_t from,
                       int step)
{
    const std::string wanted = FoldCase(text);
    const bool plain = std::all_of(wanted.begin(), wanted.end(),
                                   [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    const auto holds = [&](const std::string& row) {
        // Plain letters need no folding of the row, which a list of thousands would feel.
        return plain ? FindFolded(row, wanted) != std::string::npos
                     : FoldCase(row).find(wanted) != std::string::npos;
    };
    const auto count = static_cast<std::ptrdiff_t>(rows.size());
    for (std::ptrdiff_t i = from; i >= 0 && i < count; i += step)
        if (text.empty() || holds(rows[static_cast<std::size_t>(i)].text))
            return i;
    return -1;
}

} // namespace kestrova
