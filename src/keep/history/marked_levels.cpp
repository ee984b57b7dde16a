#include "history/marked_levels.h"

#include "archive/level_token.h"

#include <map>

namespace kestrova
{

namespace
{

/// By their codes.
std::map<LevelCode, const MarkedLevel*>
LevelsStillThere(const Folders& folders, const Archive& archive, const Change& change)
{
    std::map<LevelCode, const MarkedLevel*> levels;
    for (const MarkedLevel& level : change.marks)
        if (archive.Find(level.code) != nullptr &&
            KnownTokenOfLevel(LevelHomeOf(folders, level.code)).ValueOr({}) == level.token)
            levels.emplace(level.code, &level);
    return levels;
}

} // namespace

std::optional<Change> MarkingOf(const ChangeParts& parts, const std::vector<ChangedNote>& changed)
{
    std::vector<MarkedLevel> marks;
    for (const ChangedNote& level : changed) {
        MarkedLevel marked = MarkedBetween(level.code, level.before, level.after);
        if (marked.before == marked.after)
            continue;
        // A level whose folder can bear no token cannot be told from another one later.
        marked.token = TokenOfLevel(LevelHomeOf(parts.folders, level.code), false).ValueOr({});
        if (!marked.token.empty())
            marks.push_back(std::move(marked));
    }
    if (marks.empty())
        return std::nullopt;
    const bool one = marks.size() == 1;
    Change change = NewChange(parts, one ? ChangeKind::LevelMarked : ChangeKind::LevelsMarked,
                              marks.front().code);
    change.subject =
        one ? std::string{OnlyMarkOf(marks.front().after)} : std::to_string(marks.size());
    change.marks = std::move(marks);
    return change;
}

Result<std::optional<LevelCode>> OtherwiseMarked(const Folders& folders, const Archive& archive,
                                                 const Change& change)
{
    LibraryNotes notes;
    notes.Follow(folders, archive);
    if (notes.Trouble())
        return *notes.Trouble();
    for (const auto& [code, level] : LevelsStillThere(folders, archive, change))
        if (const LevelNote& now = notes.Of(code);
            !Says(now, level->after) && !Says(now, level->before))
            return std::optional{code};
    return std::optional<LevelCode>{};
}

Status FollowRenamedCover(const Folders& folders, const Archive& archive, const Change& change)
{
    if (change.kind != ChangeKind::ShotRenamed || change.folders.size() != 1)
        return {};
    const ChangedFolder& renamed = change.folders.front();
    if (renamed.before.size() != 1 || renamed.after.size() != 1)
        return {};
    return CoverFollows(folders, archive, change.code, renamed.before.front().name,
                        renamed.after.front().name);
}

Status MarkAsSaid(const Folders& folders, const Archive& archive, const Change& change)
{
    const auto levels = LevelsStillThere(folders, archive, change);
    std::vector<LevelCode> codes;
    for (const auto& [code, level] : levels)
        codes.push_back(code);
    const auto changed = ChangeNotes(folders, archive, codes, [&](LevelCode code, LevelNote& note) {
        PutMarks(note, levels.at(code)->after);
    });
    return changed ? Status{} : Status{changed.Error()};
}

} // namespace kestrova
