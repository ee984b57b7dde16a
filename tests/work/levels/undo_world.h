#pragma once

#include "archive/archive_saving.h"
#include "archive/stored_notes.h"
#include "history/undo_entries.h"
#include "intake/draft_files.h"
#include "intake/draft_sources.h"
#include "intake/edit_level.h"
#include "levels/level_language.h"
#include "levels/remove_level.h"
#include "levels/undo_change.h"
#include "library/mark_levels.h"
#include "publish/author_infos.h"
#include "saves/bring_back.h"
#include "saves/delete_savegames.h"
#include "saves/savegame_transfer.h"
#include "saves/saves_world.h"
#include "shots/shot_capture.h"
#include "shots/shot_commands.h"
#include "shots/shot_files.h"
#include "shots/shot_import.h"
#include "shots/shot_resize.h"
#include "storage/stored_hashes.h"
#include "swap/recovery.h"
#include "upkeep/level_checks.h"
#include "world/pixel.h"

namespace kestrova::testing
{

/// A level that is played, whose savegames are live, and a level that rests, each with all that a
/// player can have, in a Level Editor that speaks Italian.
class UndoWorld : public SavesWorld
{
public:
    static constexpr const char* rested = "levels/LEVEL_0002/";

    UndoWorld()
    {
        std::filesystem::rename(root / "home/backup_trle/English.DAT",
                                root / "home/backup_trle/Italiano.dat");
        Write("home/backup_trle/Italiano.dat", "testi italiani");
        Live("0", 12);
        Write("trle/note0.txt", "note of twelve");
        Live("3", 14);
        Live("4", 9, "nine, live");
        Archived(1, "5", 9, "nine, archived");
        Archived(1, "6", 20);
        Write(store + std::string{"slot1/shot6.jpg"}, Pixel(60));
        Write(Rested("files/a.tr4"), "old level");
        Write(Rested("files/sound.wav"), "sound");
        Write(Rested("files/English.dat"), "english texts");
        Write(Rested("tr4.inf"), "index");
        Write(Rested("backup_savegames/savegame.1"), SavegameBytes("Resting", 5));
        Write(Rested("screenshots/one.bmp"), Pixel(1));
        Write(Rested("screenshots/two.bmp"), Pixel(2));
        Write(Rested("screenshots/old.jpg"), "an old picture");
        Write("from/a.tr4", "newer level");
        Write("from/more.txt", "more");
        Write("from/savegame.7", SavegameBytes("From elsewhere", 77));
        Write("from/one.bmp", Pixel(100));
        Write("from/three.bmp", Pixel(3));
        session.archive.levels[2].filesSize = 100;
        session.archive.header.mainFolderSize = 100;
        EXPECT_TRUE(WriteArchive(session, session.ArchivePath()));
        for (const LevelCode code : {resting, played})
            EXPECT_TRUE(LoadSavegameStore(session.Folders(), session.preferences, code));
        // Both have notes already, and tokens; that leads nowhere back.
        const int count = std::exchange(session.settings.undoCount, 0);
        EXPECT_TRUE(Mark({played, resting}, 2, LevelStatus::Playing));
        session.settings.undoCount = count;
    }
    bool Mark(const std::vector<LevelCode>& codes, int stars, LevelStatus status)
    {
        LevelMarks marks;
        marks.stars = stars;
        marks.status = status;
        return MarkLevels(session, codes, marks).has_value();
    }
    static std::string Rested(const std::string& name) { return rested + name; }

    /// All that a player has: files, and the list of levels in memory.
    [[nodiscard]] FileContents Things() const
    {
        FileContents things = Held();
        things["list"] = FormatArchive(session.archive.header, session.archive.levels);
        things["count"] = std::to_string(Count());
        return things;
    }
    /// The same without the numbers that are shown, which a kill may leave as they were.
    [[nodiscard]] FileContents Held() const
    {
        FileContents things;
        for (const char* folder : {"trle", "levels", "out"})
            for (auto& [name, content] : Snapshot(folder))
                if (name.find("undo/") == std::string::npos &&
                    name.find(".set-aside-") == std::string::npos &&
                    !name.ends_with("savegames.bva"))
                    things[folder + ("/" + name)] = content;
        std::vector<LevelRecord> levels = session.archive.levels;
        for (LevelRecord& level : levels)
            level.extrasSize = 0;
        things["list"] = FormatArchive({}, levels);
        return things;
    }
    [[nodiscard]] std::optional<Change> Next(UndoWay way = UndoWay::Undo) const
    {
        const auto head = NextToUndo(session.Folders(), session.archive, way);
        auto entry = head ? ReadUndoEntry(session.Folders(), head->id) : Failure{};
        return entry ? std::optional{std::move(entry).Value()} : std::nullopt;
    }
    /// Oldest first.
    [[nodiscard]] std::vector<ChangeHead> Entries() const
    {
        return ReadUndoList(session.Folders()).ValueOr({}).entries;
    }
    bool Undo()
    {
        const auto next = Next();
        return next && UndoChange(session, *next);
    }
    bool Redo()
    {
        const auto next = Next(UndoWay::Redo);
        return next && UndoChange(session, *next);
    }
    /// The program starts anew: what was cut short is mended, and the list is read from its file.
    void Restart()
    {
        session.running.operations = 0;
        const auto read = ReadArchiveFile(session.ArchivePath());
        ASSERT_TRUE(read);
        session.archive.header = read->header;
        session.archive.levels = read->levels;
        ASSERT_TRUE(RecoverInterruptedWork(session)) << host.AllTold();
    }
    [[nodiscard]] ShotList Shots(const std::string& aim)
    {
        ShotList shots;
        EXPECT_TRUE(shots.Load(session.Folders(), resting));
        shots.SetTarget(shots.Find(aim));
        return shots;
    }
};

/// One thing that a person does.
struct Doing {
    const char* name;
    ChangeKind kind;
    bool (*run)(UndoWorld&);
    /// A kill in the middle of it may leave what it did so far, as ever.
    bool isWhole = true;
};
inline void PrintTo(const Doing& doing, std::ostream* out)
{
    *out << doing.name;
}

inline std::vector<Path> LiveOnes(const UndoWorld& world)
{
    return {world / "trle/savegame.0", world / "trle/savegame.4"};
}

inline bool EditResting(UndoWorld& world)
{
    world.host.AnswerAll(true);
    const auto progress = world.host.BeginProgress(ProgressWindow::Progress, {});
    return EditLevel(world.session, *progress, world.resting, [&](Intake& level) {
        if (!AddSources(level, {world / "from/a.tr4", world / "from/more.txt"}))
            return false;
        for (const Path& file : std::vector<Path>{level.draft.files})
            if (file.filename() == "sound.wav" && !RemoveFile(level, file))
                return false;
        level.draft.name = "Renamed";
        return Accept(level);
    });
}

/// Another content was noted of a file than stands there, and is offered.
inline bool RepairResting(UndoWorld& world)
{
    const auto entry = EntryOfStored(world / "from/a.tr4");
    if (!entry || !WriteStoredNote(world / "levels/LEVEL_0002", {false, false, {*entry}}))
        return false;
    LevelChecks checks{world.session};
    return checks.Check({world.resting}) && checks.Repair(world / "from/a.tr4") &&
           checks.Harmed() == 0;
}

inline const Doing doings[] = {
    {"SlotsFreed", ChangeKind::SlotsFreed,
     [](UndoWorld& w) { return bool(ArchiveSavegamesOf(w.session, w.played)); }},
    {"SlotsFilled", ChangeKind::SlotsFilled,
     [](UndoWorld& w) { return bool(RestoreSavegamesOf(w.session, w.played)); }},
    {"Import", ChangeKind::SavegamesImported,
     [](UndoWorld& w) {
         return CopyIntoSlots(w.session, w.played, {w / "from/savegame.7"}).empty();
     },
     false},
    {"ExportWithDelete", ChangeKind::SavegamesExported,
     [](UndoWorld& w) {
         w.Write("out/kept", "");
         return ExportSavegames(w.session, w.played, LiveOnes(w), w / "out", true).empty();
     },
     false},
    {"SavegamesDeleted", ChangeKind::SavegamesDeleted,
     [](UndoWorld& w) {
         const auto all = SavegamesOfLevel(w.session.Folders(), w.session.archive, w.played);
         return all && bool{DeleteSavegames(w.session, w.played, *all)};
     }},
    {"ShotAdded", ChangeKind::ShotAdded,
     [](UndoWorld& w) {
         ShotList shots = w.Shots("one.bmp");
         return AddShotFile(w.session, shots, w / "from/three.bmp");
     },
     false},
    {"ShotReplaced", ChangeKind::ShotReplaced,
     [](UndoWorld& w) {
         ShotList shots = w.Shots("one.bmp");
         w.host.AnswerAll(true);
         return AddShotFile(w.session, shots, w / "from/one.bmp");
     }},
    {"ShotDeleted", ChangeKind::ShotDeleted,
     [](UndoWorld& w) {
         ShotList shots = w.Shots("one.bmp");
         w.host.AnswerAll(true);
         return DeleteShot(w.session, shots);
     }},
    {"ShotRenamed", ChangeKind::ShotRenamed,
     [](UndoWorld& w) {
         ShotList shots = w.Shots("one.bmp");
         return RenameShotTo(w.session, shots, w / w.Rested("screenshots/one.bmp"), "new.bmp");
     },
     false},
    {"ShotCaptured", ChangeKind::ShotCaptured,
     [](UndoWorld& w) {
         const Path folder = ShotFolderOf(w.session.Folders(), w.resting);
         return bool(SaveCapturedShot(w.session,
                                      {{1, 1, std::vector<std::uint8_t>(3, 9)}, 2, folder},
                                      folder / "taken.jpg"));
     },
     false},
    {"ShotCapturedOver", ChangeKind::ShotReplaced,
     [](UndoWorld& w) {
         const Path folder = ShotFolderOf(w.session.Folders(), w.resting);
         return bool(SaveCapturedShot(
             w.session, {{1, 1, std::vector<std::uint8_t>(3, 9)}, 2, folder}, folder / "old.jpg"));
     }},
    {"ShotResized", ChangeKind::ShotReplaced,
     [](UndoWorld& w) {
         const Path shot = w / w.Rested("screenshots/two.bmp");
         w.host.WillChoose("Save resized", shot);
         return SaveResizedShot(w.host, w.session, w.resting,
                                {2, 1, std::vector<std::uint8_t>(6, 9)}, shot);
     }},
    {"AuthorChanged", ChangeKind::LevelEdited,
     [](UndoWorld& w) {
         AuthorInfos infos{w.session, 2};
         infos.name = "Somebody";
         return infos.Store();
     }},
    {"ShotsImported", ChangeKind::ShotsImported,
     [](UndoWorld& w) {
         const auto progress = w.host.BeginProgress(ProgressWindow::Progress, {});
         return ImportShots(w.host, w.session, 1, *progress).all;
     },
     false},
    {"LevelEdited", ChangeKind::LevelEdited, EditResting, false},
    {"LevelRemoved", ChangeKind::LevelRemoved,
     [](UndoWorld& w) {
         w.host.AnswerAll(true);
         return RemoveLevel(w.session, w.resting, LevelFolders::Remove);
     },
     false},
    {"LevelTakenOffTheList", ChangeKind::LevelRemoved,
     [](UndoWorld& w) {
         w.host.AnswerAll(true);
         return RemoveLevel(w.session, w.resting, LevelFolders::Keep);
     }},
    {"Marked", ChangeKind::LevelMarked,
     [](UndoWorld& w) { return w.Mark({w.resting}, 5, LevelStatus::Finished); }, false},
    {"SeveralMarked", ChangeKind::LevelsMarked,
     [](UndoWorld& w) {
         return w.Mark({w.resting, w.played}, 2, LevelStatus::GivenUp);
     },
     false},
    {"Repaired", ChangeKind::LevelRepaired, RepairResting},
    {"Language", ChangeKind::LanguageChanged,
     [](UndoWorld& w) {
         return ChangeLanguageOfLevel(w.session, w.resting, LanguageChange::Mine, true);
     },
     false},
};

} // namespace kestrova::testing
