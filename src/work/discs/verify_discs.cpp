#include "discs/verify_discs.h"

#include "archive/level_folders.h"
#include "discs/disc_content.h"
#include "discs/part_of_level.h"
#include "formats/level_folder.h"
#include "words/disc_creation.h"

#include <algorithm>

namespace kestrova
{

namespace
{

class DiscVerifying
{
public:
    DiscVerifying(const DiscParts& parts, Verifying verifying)
        : parts_(parts), archive_(parts.archive.archive), verifying_(verifying)
    {
    }

    Result<std::vector<VerifiedLevel>> Run()
    {
        auto note = ReadDiscNote(parts_.folders.levels);
        if (!note)
            return note.Error();
        note_ = std::move(note).Value();
        parts_.progress.SetLabel(GetMsg(Msg::VerifyingDiscs));
        parts_.progress.AllowStop();
        const std::vector<const LevelRecord*> levels = LevelsByDisc();
        std::vector<VerifiedLevel> found;
        for (std::size_t i = 0; i < levels.size(); ++i) {
            parts_.progress.SetBar(i, levels.size());
            const Status good = VerifyLevel(*levels[i]);
            if (!good && good.Error().code == ErrorCode::Stopped)
                return good.Error();
            found.push_back({levels[i]->cdNumber, levels[i]->levelCode, bool{good},
                             good ? std::string{} : FaultOf(*levels[i], good.Error())});
        }
        if (const auto written = found_.empty() ? Status{} : NoteLevels(archive_.header, found_);
            !written)
            return written.Error();
        return found;
    }

private:
    [[nodiscard]] std::vector<const LevelRecord*> LevelsByDisc() const
    {
        std::vector<const LevelRecord*> levels;
        for (const LevelRecord& level : archive_.levels)
            if (level.cdNumber != 0)
                levels.push_back(&level);
        std::stable_sort(
            levels.begin(), levels.end(),
            [](const LevelRecord* a, const LevelRecord* b) { return a->cdNumber < b->cdNumber; });
        return levels;
    }

    Status VerifyLevel(const LevelRecord& level)
    {
        const auto step = [this] { return parts_.progress.Step(); };
        // One that lies there is looked at, damaged or not; it is asked for when it lies nowhere.
        auto files = FilesFolderOf(parts_.folders, archive_, level.levelCode, DiscWish::Look);
        if (!files)
            files = FilesFolderOf(parts_.folders, archive_, level.levelCode);
        if (!files)
            return files.Error();
        if (verifying_ == Verifying::Fast)
            return StatusOf(ListFilesToNote(*files, step));
        auto noted = NotedFor(level, step);
        if (!noted)
            return noted.Error();
        const Status same = HoldsNotedFiles(*files, *noted, step);
        if (!same && same.Error().code == ErrorCode::Stopped)
            return same;
        noted->verified = bool{same};
        const NotedLevel* before = FindNoted(note_, level.cdNumber, level.levelCode);
        if (before == nullptr || *before != *noted)
            found_.emplace_back(level.cdNumber, std::move(*noted));
        return same;
    }

    /// What the disc has to hold: as it was proved once, or what lies on the hard disk now.
    Result<NotedLevel> NotedFor(const LevelRecord& level, const Heartbeat& step) const
    {
        const NotedLevel* known = FindNoted(note_, level.cdNumber, level.levelCode);
        if (known != nullptr && known->verified)
            return *known;
        const Path here = InFolder(LevelHomeOf(parts_.folders, level.levelCode), OnDisk::DirFiles);
        if (IsPartOfLevel(here, known, level.filesSize)) {
            if (known != nullptr && !known->files.empty())
                return *known;
            return InWords(
                ErrorCode::Missing,
                GetMsg(Msg::LevelNotNoted, {level.levelName, LabelOfDisc(level.cdNumber)}));
        }
        auto now = NoteFilesOf(here, step);
        if (!now)
            return now.Error();
        return NotedLevel{level.levelCode, false, std::move(now).Value()};
    }

    static std::string FaultOf(const LevelRecord& level, const Failure& failure)
    {
        if (!failure.sentence.empty())
            return GetMsg(Msg::LevelLine, {level.levelName, std::to_string(level.levelCode),
                                           failure.sentence + (failure.reason.empty() ? "" : "\n") +
                                               failure.reason});
        return GetMsg(Msg::LevelOnDiscDiffers,
                      {level.levelName, LabelOfDisc(level.cdNumber), failure.subject});
    }

    const DiscParts& parts_;
    const Archive& archive_;
    Verifying verifying_;
    DiscNote note_;
    std::vector<std::pair<std::int32_t, NotedLevel>> found_; ///< to be noted, by their discs
};

} // namespace

Result<std::vector<VerifiedLevel>> VerifyDiscs(const DiscParts& parts, Verifying verifying)
{
    return DiscVerifying{parts, verifying}.Run();
}

} // namespace kestrova
