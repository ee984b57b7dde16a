#include "app/level_commands.h"
#include "archive/level_folders.h"
#include "catalogue/message.h"
#include "saves/savegame_store.h"
#include "swap/marker.h"

#include <algorithm>

namespace kestrova
{

namespace
{

int Count(const Path& folder, Msg pattern)
{
    return static_cast<int>(ListFiles(folder, RowText(pattern)).size());
}

bool TellUnknown(Session& session, LevelCode code)
{
    session.host.Tell(Tone::Error, GetMsg(Msg::UnknownCodeInList) + std::to_string(code));
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

LevelFacts FactsOfLevel(Session& session, std::size_t index, int archivedSavegames)
{
    LevelFacts facts;
    facts.index = index;
    facts.record = session.levels[index];
    const LevelCode code = facts.record.levelCode;
    facts.folder = LevelHomeOf(session, code);
    facts.current = CurrentLevelCode(session) == code;
    const Path shots = InFolder(facts.folder, RowText(Msg::FragShots));
    facts.screenshots = Count(shots, Msg::PatShotBmp) + Count(shots, Msg::PatShotJpg);
    facts.liveSavegames = Count(facts.current ? session.TrleFolder() : StateStoreOf(session, code),
                                Msg::PatLiveSavegame);
    facts.archivedSavegames = archivedSavegames;
    facts.info = InfoLine(facts);
    return facts;
}

} // namespace

std::optional<LevelFacts> SelectLevel(Session& session, LevelCode code)
{
    const std::ptrdiff_t index = FindLevel(session, code);
    if (index < 0)
        return TellUnknown(session, code), std::nullopt;
    LoadSavegameStore(session, code);
    return FactsOfLevel(session, static_cast<std::size_t>(index),
                        session.savegameHeader.archivedCount);
}

std::optional<LevelFacts> LookAtLevel(Session& session, LevelCode code)
{
    const std::ptrdiff_t index = FindLevel(session, code);
    if (index < 0)
        return TellUnknown(session, code), std::nullopt;
    int archived = 0;
    const Path file = InFolder(LevelHomeOf(session, code), RowText(Msg::FragSavegameRecord));
    if (const auto bytes = ReadWholeFile(ResolvePath(file), savegameArchiveHeaderSize))
        if (const auto record = ParseSavegameArchiveHeader(*bytes))
            archived = record->archivedCount;
    return FactsOfLevel(session, static_cast<std::size_t>(index), archived);
}

std::vector<ListRow> ListRows(Session& session)
{
    const LevelCode current = CurrentLevelCode(session);
    struct Keyed {
        std::string key;
        ListRow row;
    };
    std::vector<Keyed> keyed;
    keyed.reserve(session.levels.size());
    for (const LevelRecord& level : session.levels) {
        std::string text = Readable(Trim(level.levelName));
        if (level.levelCode == current)
            text += RowText(Msg::CurrentLevelMark);
        std::string key = FoldCase(text);
        keyed.push_back({std::move(key), {std::move(text), level.levelCode}});
    }
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const Keyed& a, const Keyed& b) { return a.key < b.key; });
    std::vector<ListRow> rows;
    rows.reserve(keyed.size());
    for (Keyed& entry : keyed)
        rows.push_back(std::move(entry.row));
    return rows;
}

std::string WindowTitle(const Session& session)
{
    return GetMsg(Msg::TitleLevels,
                  {TextOf(session.ArchivePath().filename()) + GetMsg(Msg::TitleCountOpens) +
                   std::to_string(session.levels.size())});
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
