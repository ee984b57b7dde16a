#include "history/standing.h"

#include "archive/level_token.h"
#include "core/look.h"
#include "formats/marker.h"
#include "history/swap_journal_file.h"
#include "session/telling.h"
#include "words/history.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// A place beside the level's folder, named for another level that has its number.
Path HomeOfOther(const Folders& folders, LevelCode code, std::string_view levelName)
{
    std::string name = " (" + Readable(levelName) + ")";
    std::replace(name.begin(), name.end(), '/', '_');
    return LevelHomeOf(folders, code) += name;
}

/// The folder that stands at the noted path: the token tells whether it is the noted one, where
/// both have one; the level's name otherwise.
Result<bool> IsNotedLevel(const Path& home, std::string_view name, const OwnerRecord& record)
{
    if (record.token.empty())
        return true;
    const auto token = KnownTokenOfLevel(home);
    if (!token)
        return token.Error();
    return token->empty() ? record.levelName == name : *token == record.token;
}

/// True when the noted folder is the one that the archive in memory has for that level: by its
/// identity, or by the path, unless another archive's folder came to it; copied to another disk, by
/// the level's name.
Result<bool> IsOfThisArchive(const Folders& folders, const Archive& archive,
                             const OwnerRecord& record)
{
    const Path home = LevelHomeOf(folders, *record.owner);
    if (*record.owner == originalCode || record.home.path.empty())
        return true;
    const bool isSamePath = record.home.path == home;
    const auto here = LookAt(home);
    if (!here && !isSamePath)
        return here.Error();
    if (!here || here->kind != platform::FileKind::Folder)
        return isSamePath;
    if (here->device == record.home.device && here->inode == record.home.inode)
        return true;
    const std::string name = Readable(LevelNameOf(archive, *record.owner));
    if (isSamePath)
        return IsNotedLevel(home, name, record);
    const auto isThere = IsFolder(record.home.path);
    if (!isThere)
        return isThere.Error();
    return !*isThere && record.levelName == name;
}

Result<LevelPlace> PlaceOfOwner(const Folders& folders, const Archive& archive,
                                const OwnerRecord& record)
{
    const auto ours = IsOfThisArchive(folders, archive, record);
    if (!ours)
        return ours.Error();
    const Path home = LevelHomeOf(folders, *record.owner);
    if (*ours)
        return LevelPlace{*record.owner, home};
    return LevelPlace{*record.owner, record.home.path == home
                                         ? HomeOfOther(folders, *record.owner, record.levelName)
                                         : Path{record.home.path}};
}

/// Where a level of another program's folder would lie that the marker names: no record tells of
/// it, and the archive in memory calls its level of that number by another name. Empty when it is
/// the archive's own.
Path HomeOfStranger(const Folders& folders, const Archive& archive, LevelCode code,
                    std::string_view marker)
{
    const std::string theirs = MarkerValue(tagLevelName, marker);
    const std::string ours = LevelNameOf(archive, code);
    if (code <= originalCode || theirs.empty() || ours.empty() ||
        theirs == MarkerValue(tagLevelName, MarkerHead(code, ours)))
        return {};
    return HomeOfOther(folders, code, theirs);
}

LevelCode CodeHere(const Folders& folders, const LevelPlace& level)
{
    const bool ours = level.home.empty() || level.home == LevelHomeOf(folders, level.code);
    return ours ? level.code : foreignLevel;
}

} // namespace

Result<Standing> LookAtStanding(const Folders& folders, const Archive& archive)
{
    const auto bytes = ReadFileIfThere(folders.Marker());
    if (!bytes)
        return bytes.Error();
    auto owner = ReadOwner(folders);
    if (!owner)
        return owner.Error();
    const std::string_view text = *bytes ? std::string_view{**bytes} : std::string_view{};
    const LevelCode code = LeadingNumber(MarkerValue(tagLevelCode, text));
    Standing standing{code, code, std::move(*owner)};
    if (!standing.owner) {
        standing.level.home = HomeOfStranger(folders, archive, code, text);
        standing.state.home = standing.level.home;
    }
    if (!standing.owner || !standing.owner->owner)
        return standing;
    auto place = PlaceOfOwner(folders, archive, *standing.owner);
    if (!place)
        return place.Error();
    standing.state = std::move(*place);
    if (standing.state.code == code)
        standing.level = standing.state;
    return standing;
}

bool TellUnknown(Host& host, const Failure& failure)
{
    TellFailure(host, GetMsg(Msg::MarkerUnreadable, {failure.subject}), failure);
    return false;
}

Status KnowsStandingLevel(const Folders& folders, const Archive& archive)
{
    const auto standing = LookAtStanding(folders, archive);
    return standing ? Status{} : standing.Error();
}

bool TellUnlessKnown(Host& host, const Folders& folders, const Archive& archive)
{
    const auto known = KnowsStandingLevel(folders, archive);
    return known || TellUnknown(host, known.Error());
}

LevelPlace StandingLevel(const Folders& folders, const Archive& archive)
{
    const auto standing = LookAtStanding(folders, archive);
    return standing ? standing->level : LevelPlace{unknownLevel};
}

LevelPlace StateOwner(const Folders& folders, const Archive& archive)
{
    const auto standing = LookAtStanding(folders, archive);
    return standing ? standing->state : LevelPlace{unknownLevel};
}

LevelCode CurrentLevelCode(const Folders& folders, const Archive& archive)
{
    return CodeHere(folders, StandingLevel(folders, archive));
}

bool LevelStands(const Folders& folders, const Archive& archive, LevelCode code)
{
    const auto standing = LookAtStanding(folders, archive);
    return standing && CodeHere(folders, standing->level) == code &&
           CodeHere(folders, standing->state) == code;
}

bool IsOriginals(const Folders& folders, const LevelPlace& level)
{
    return level.code == originalCode &&
           HomeOf(folders, level) == LevelHomeOf(folders, originalCode);
}

bool IsOriginalButForLeftovers(const Folders& folders, const Standing& standing)
{
    return standing.owner && (IsOriginals(folders, standing.level) ||
                              (standing.owner->owner && IsOriginals(folders, standing.state)));
}

Result<Path> LiveStateFolder(const Folders& folders, const Archive& archive,
                             const LevelPlace& level)
{
    const auto standing = LookAtStanding(folders, archive);
    if (!standing)
        return standing.Error();
    const bool live = level.code == standing->state.code &&
                      HomeOf(folders, level) == HomeOf(folders, standing->state);
    return live ? folders.trle : StateStoreOf(folders, level);
}

} // namespace kestrova
