#include "intake/add_level.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "intake/file_names.h"
#include "intake/unpacking_place.h"
#include "levels/level_life.h"
#include "packages/unpacked_files.h"
#include "words/intake.h"
#include "words/levels.h"
#include "words/swap.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// The folder of the level that is coming in, for the start after a run that was killed.
class IntakeNote
{
public:
    explicit IntakeNote(const Session& session)
        : file_(InFolder(session.programFolder, OnDisk::IntakeNote))
    {
    }

    /// Without it only the offer at the next start would lack.
    void Write(const Path& levelFolder) const
    {
        (void)WriteRecordFile(file_, levelFolder.native());
    }
    void Drop() const { (void)DeleteFile(file_); }
    /// Empty when there is none.
    [[nodiscard]] Path LevelFolder() const
    {
        constexpr std::uint64_t longestPath = 65536;
        const auto text = ReadWholeFile(file_, longestPath);
        return text ? Path{*text} : Path{};
    }

private:
    Path file_;
};

bool IsLevelOfArchive(const Session& session, const Path& folder)
{
    return std::any_of(
        session.archive.levels.begin(), session.archive.levels.end(),
        [&](const LevelRecord& level) { return LevelHomeOf(session, level.levelCode) == folder; });
}

} // namespace

bool AddLevel(Session& session, ProgressScope& progress, const ShowLevel& show, LevelCode& code)
{
    LevelRecord record;
    if (!BeginNewLevel(session, record))
        return false;
    const IntakeNote note{session};
    note.Write(LevelHomeOf(session, record.levelCode));
    bool added = false;
    {
        NewLevel level{session, record, LevelMode::New, progress};
        added = level.Open() && show(level);
    }
    added = added && FinishNewLevel(session, record);
    if (!added)
        DropNewLevel(session, record);
    note.Drop();
    code = record.levelCode;
    return added;
}

bool EditLevel(Session& session, ProgressScope& progress, LevelCode code, const ShowLevel& show)
{
    if (!HasArchive(session))
        return false;
    const std::ptrdiff_t index = FindLevel(session, code);
    if (index < 0) {
        session.host.Tell(Tone::Error, GetMsg(Msg::UnknownLevelCode, {std::to_string(code)}));
        return false;
    }
    if (code != originalCode && !IsArchiveFolderThere(session))
        return false;
    const LevelRecord& current = session.archive.levels[static_cast<std::size_t>(index)];
    const Path home = LevelHomeOf(session, code);
    const auto isThere = IsFolder(home);
    if (!isThere)
        return TellFolderNotRead(session, isThere.Error());
    if (!*isThere && current.cdNumber == 0) {
        session.host.Tell(Tone::Error, GetMsg(Msg::LevelFolderGone, {TextOf(home)}));
        return false;
    }
    LevelRecord record = current;
    const std::int32_t extrasBefore = record.extrasSize;
    NewLevel level{session, record, LevelMode::Properties, progress};
    if (!level.Open() || !show(level)) {
        level.PutBack();
        return false;
    }
    // A picture may have been taken meanwhile.
    if (record.extrasSize == extrasBefore)
        record.extrasSize = current.extrasSize;
    if (ReplaceLevel(session, record))
        return true;
    level.PutBack();
    return false;
}

void OfferLeftIntake(Session& session)
{
    const IntakeNote note{session};
    const Path folder = note.LevelFolder();
    if (folder.empty() || !session.archive.Loaded())
        return;
    (void)ClearPlace(UnpackingFolder(session)); // the next package clears what stays
    const auto isThere = IsFolder(folder);
    if (!isThere)
        return; // the next start asks
    if (*isThere && !IsLevelOfArchive(session, folder)) {
        // It may belong to another archive; that one's next start asks.
        if (folder.parent_path() != Path{Trim(session.archive.header.secondaryFolder)})
            return;
        if (session.host.AskYesNo(
                GetMsg(Msg::AskLeftIntake,
                       {TextOf(folder), std::string{lineBreak} + std::string{lineBreak}}))) {
            const auto wait = session.host.BeginProgress(ProgressWindow::Wait,
                                                         GetMsg(Msg::RemovingNewLevelFolder));
            RemoveTreeWithProgress(session, folder, *wait);
        }
    }
    note.Drop();
}

} // namespace kestrova
