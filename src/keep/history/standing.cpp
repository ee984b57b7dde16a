#include "history/standing.h"

#include "core/look.h"
#include "formats/marker.h"
#include "history/swap_journal_file.h"
#include "words/history.h"

namespace kestrova
{

namespace
{

/// True when the noted folder is the one that the archive in memory has for that level: by its
/// path, by its identity after a move, or, copied to another disk, by the level's name.
Result<bool> IsOfThisArchive(const Session& session, const OwnerRecord& record)
{
    const Path home = LevelHomeOf(session, *record.owner);
    if (*record.owner == originalCode || record.home.path.empty() || record.home.path == home)
        return true;
    const auto here = LookAt(home);
    if (!here)
        return here.Error();
    if (here->kind != platform::FileKind::Folder)
        return false;
    if (here->device == record.home.device && here->inode == record.home.inode)
        return true;
    const auto isThere = IsFolder(record.home.path);
    if (!isThere)
        return isThere.Error();
    return !*isThere && record.levelName == Readable(LevelNameOf(session, *record.owner));
}

Result<LevelPlace> PlaceOfOwner(const Session& session, const OwnerRecord& record)
{
    const auto ours = IsOfThisArchive(session, record);
    if (!ours)
        return ours.Error();
    return LevelPlace{*record.owner,
                      *ours ? LevelHomeOf(session, *record.owner) : Path{record.home.path}};
}

LevelCode CodeHere(const Session& session, const LevelPlace& level)
{
    const bool ours = level.home.empty() || level.home == LevelHomeOf(session, level.code);
    return ours ? level.code : foreignLevel;
}

} // namespace

Result<Standing> LookAtStanding(const Session& session)
{
    const auto bytes = ReadFileIfThere(session.MarkerPath());
    if (!bytes)
        return bytes.Error();
    auto owner = ReadOwner(session);
    if (!owner)
        return owner.Error();
    const std::string_view text = *bytes ? std::string_view{**bytes} : std::string_view{};
    const LevelCode code = LeadingNumber(MarkerValue(tagLevelCode, text));
    Standing standing{code, code, std::move(*owner)};
    if (!standing.owner || !standing.owner->owner)
        return standing;
    auto place = PlaceOfOwner(session, *standing.owner);
    if (!place)
        return place.Error();
    standing.state = std::move(*place);
    if (standing.state.code == code)
        standing.level = standing.state;
    return standing;
}

bool TellUnknown(Session& session, const Failure& failure)
{
    TellFailure(session, GetMsg(Msg::MarkerUnreadable, {failure.subject}), failure);
    return false;
}

Status KnowsStandingLevel(const Session& session)
{
    const auto standing = LookAtStanding(session);
    return standing ? Status{} : standing.Error();
}

bool TellUnlessKnown(Session& session)
{
    const auto known = KnowsStandingLevel(session);
    return known || TellUnknown(session, known.Error());
}

LevelPlace StandingLevel(const Session& session)
{
    const auto standing = LookAtStanding(session);
    return standing ? standing->level : LevelPlace{unknownLevel};
}

LevelPlace StateOwner(const Session& session)
{
    const auto standing = LookAtStanding(session);
    return standing ? standing->state : LevelPlace{unknownLevel};
}

LevelCode CurrentLevelCode(const Session& session)
{
    return CodeHere(session, StandingLevel(session));
}

bool LevelStands(const Session& session, LevelCode code)
{
    const auto standing = LookAtStanding(session);
    return standing && CodeHere(session, standing->level) == code &&
           CodeHere(session, standing->state) == code;
}

bool IsOriginals(const Session& session, const LevelPlace& level)
{
    return level.code == originalCode &&
           HomeOf(session, level) == LevelHomeOf(session, originalCode);
}

bool IsOriginalButForLeftovers(const Session& session, const Standing& standing)
{
    return standing.owner && (IsOriginals(session, standing.level) ||
                              (standing.owner->owner && IsOriginals(session, standing.state)));
}

Result<Path> LiveStateFolder(const Session& session, const LevelPlace& level)
{
    const auto standing = LookAtStanding(session);
    if (!standing)
        return standing.Error();
    const bool live = level.code == standing->state.code &&
                      HomeOf(session, level) == HomeOf(session, standing->state);
    return live ? session.TrleFolder() : StateStoreOf(session, level);
}

} // namespace kestrova
