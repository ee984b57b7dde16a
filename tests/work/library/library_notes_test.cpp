#include "app/library_findings.h"
#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "archive/level_token.h"
#include "archive/library_notes.h"
#include "history/undo_entries.h"
#include "levels/new_level.h"
#include "levels/remove_level.h"
#include "levels/undo_change.h"
#include "library/mark_levels.h"
#include "sandbox/faults.h"
#include "upkeep/move_archive.h"
#include "world/world.h"

#include <chrono>
#include <gtest/gtest.h>
#include <iostream>

namespace kestrova::testing
{

namespace
{

/// An archive whose levels come in as a person adds them.
class NotesWorld : public World
{
public:
    NotesWorld()
    {
        MakeTrle();
        MakeBackupAndArchive();
        host.AnswerAll(true);
    }

    LevelCode Add(const std::string& name)
    {
        LevelRecord level;
        EXPECT_TRUE(BeginNewLevel(session, level));
        level.levelName = name;
        Write("levels" + ToSlashes(LevelFolderName(level.levelCode)) + "/files/a.tr4", name);
        EXPECT_TRUE(FinishNewLevel(session, level)) << host.AllTold();
        return level.levelCode;
    }
    bool Mark(const std::vector<LevelCode>& codes, int stars, const std::string& ownNote = {})
    {
        LevelMarks marks;
        marks.stars = stars;
        if (!ownNote.empty())
            marks.ownNote = ownNote;
        return MarkLevels(session, codes, marks).has_value();
    }
    [[nodiscard]] LevelNote Note(LevelCode code) const
    {
        const auto note = NoteOf(session.Folders(), session.archive, code);
        EXPECT_TRUE(note) << code;
        LibraryNotes all;
        all.Follow(session.Folders(), session.archive);
        EXPECT_TRUE(note && all.Of(code) == *note) << "one and all are read alike";
        return all.Of(code);
    }
    bool Undo()
    {
        const auto head = NextToUndo(session.Folders(), session.archive, UndoWay::Undo);
        const auto entry = head ? ReadUndoEntry(session.Folders(), head->id) : Failure{};
        return entry && UndoChange(session, *entry);
    }
    void Rename(LevelCode code, const std::string& name)
    {
        session.archive.levels[static_cast<std::size_t>(FindLevel(session.archive, code))]
            .levelName = name;
        EXPECT_TRUE(SaveArchive(session));
    }

private:
    static std::string ToSlashes(std::string text) { return "/" + text.substr(1); }
};

std::string TextOfLibrary(const World& world)
{
    return world.Read("levels/library.json");
}

} // namespace

TEST(LibraryNotes, BelongToTheirLevelAndNeverShowOnAnotherOne)
{
    NotesWorld world;
    world.machine.now = INT64_C(1'800'000'000'000'000'000);
    const LevelCode first = world.Add("Dawn");
    const LevelCode second = world.Add("Dusk");
    EXPECT_EQ(world.Note(first).added, 1'800'000'000);
    ASSERT_TRUE(world.Mark({first, second}, 4, "good"));
    ASSERT_TRUE(world.Mark({second}, 2));

    world.Rename(second, "Dusk, the second part");
    EXPECT_EQ(world.Note(second).stars, 2) << "its folder is the same";

    ASSERT_TRUE(RemoveLevel(world.session, second, LevelFolders::Remove)) << world.host.AllTold();
    for (const char* name : {"Dusk, the second part", "Another"}) {
        const LevelCode next = world.Add(name);
        ASSERT_EQ(next, second) << "the number is used again";
        EXPECT_EQ(world.Note(next).stars, 0) << name;
        EXPECT_TRUE(world.Note(next).ownNote.empty());
        ASSERT_TRUE(world.Mark({next}, 5));
        ASSERT_TRUE(RemoveLevel(world.session, next, LevelFolders::Remove));
    }
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_EQ(world.Note(second).stars, 5) << "that is the last one removed";
    EXPECT_EQ(LevelNameOf(world.session.archive, second), "Another");
    ASSERT_TRUE(RemoveLevel(world.session, second, LevelFolders::Remove));
    EXPECT_EQ(world.Note(first).stars, 4);
    EXPECT_EQ(world.Note(first).ownNote, "good");
}

TEST(LibraryNotes, WhatWasSaidIsUndoneOfTheVeryLevelsThatItWasSaidOf)
{
    NotesWorld world;
    const LevelCode first = world.Add("Dawn");
    const LevelCode second = world.Add("Dusk");
    ASSERT_TRUE(world.Mark({first, second}, 4, "good"));
    const auto entry = NextToUndo(world.session.Folders(), world.session.archive, UndoWay::Undo);
    ASSERT_TRUE(entry);
    EXPECT_EQ(WhatWasDone(*entry), "marks of 2 levels") << "one entry for all";
    ASSERT_TRUE(world.Mark({first}, 4, "good"));
    ASSERT_TRUE(world.Mark({second}, 1));
    const auto several = ReadUndoEntry(world.session.Folders(), entry->id);
    ASSERT_TRUE(several);
    EXPECT_FALSE(UndoChange(world.session, *several)) << "other stars were given since";
    EXPECT_TRUE(world.host.WasTold("changed since"));
    EXPECT_EQ(world.Note(first).stars, 4);

    ASSERT_TRUE(RemoveLevel(world.session, second, LevelFolders::Remove));
    ASSERT_EQ(world.Add("Another"), second) << "the number is used again";
    const int count = std::exchange(world.session.settings.undoCount, 0);
    ASSERT_TRUE(world.Mark({second}, 4, "another's"));
    world.session.settings.undoCount = count;
    ASSERT_TRUE(UndoChange(world.session, *several)) << world.host.AllTold();
    EXPECT_EQ(world.Note(first).stars, 0);
    EXPECT_TRUE(world.Note(first).ownNote.empty());
    EXPECT_EQ(world.Note(second).ownNote, "another's") << "it was never said of this one";
    EXPECT_EQ(world.Note(second).stars, 4);
}

TEST(LibraryNotes, AreUndoneAsTheyWereTypedAndTakeNoOtherChangesPlace)
{
    NotesWorld world;
    const LevelCode code = world.Add("Dawn");
    const LevelCode other = world.Add("Dusk");
    const auto type = [&](const std::string& text, bool goesOn) {
        LevelMarks marks;
        marks.ownNote = text;
        marks.goesOn = goesOn;
        ASSERT_TRUE(MarkLevels(world.session, {code}, marks));
    };
    const auto entries = [&] {
        return ReadUndoList(world.session.Folders()).ValueOr({}).entries.size();
    };
    type("hard", false);
    type("hard j", true);
    type("hard jump", true);
    EXPECT_EQ(entries(), 1U);
    type("hard jump, and dark", false);
    EXPECT_EQ(entries(), 2U);
    type("hard jump", true);
    EXPECT_EQ(entries(), 1U) << "what was typed is gone again";
    ASSERT_TRUE(world.Undo());
    EXPECT_EQ(world.Note(code).ownNote, "");

    ASSERT_TRUE(RemoveLevel(world.session, other, LevelFolders::Remove));
    world.session.settings.undoCount = 2;
    for (int stars = 1; stars <= 5; ++stars)
        ASSERT_TRUE(world.Mark({code}, stars));
    EXPECT_EQ(entries(), 3U) << "two of marks, and the removal";
    ASSERT_TRUE(world.Undo());
    ASSERT_TRUE(world.Undo());
    EXPECT_EQ(world.Note(code).stars, 3);
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_EQ(LevelNameOf(world.session.archive, other), "Dusk");
}

TEST(LibraryNotes, ComeBackWithARemovedLevelWhoseNumberWasUsedMeanwhile)
{
    NotesWorld world;
    const LevelCode code = world.Add("Dawn");
    ASSERT_TRUE(world.Mark({code}, 3, "mine"));
    ASSERT_TRUE(RemoveLevel(world.session, code, LevelFolders::Remove));
    const std::string before = TextOfLibrary(world);
    // A program that knows nothing of the notes puts another level there.
    world.AddLevel("Dawn's twin", {{"b.tr4", "b"}});
    EXPECT_EQ(world.Note(code), LevelNote{});
    world.session.archive.levels.pop_back();
    std::filesystem::remove_all(world / "levels/LEVEL_0001");
    EXPECT_EQ(TextOfLibrary(world), before);
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_EQ(world.Note(code).ownNote, "mine");
}

TEST(LibraryNotes, GoWithTheArchiveAndWithACopyOfIt)
{
    NotesWorld world;
    const LevelCode code = world.Add("Dawn");
    ASSERT_TRUE(world.Mark({code}, 3));
    world.Write("levels/library.json.1", "a damaged one of before");
    std::filesystem::copy(world / "levels", world / "copy",
                          std::filesystem::copy_options::recursive);
    ASSERT_TRUE(MoveArchive(world.session, world / "moved")) << world.host.AllTold();
    EXPECT_FALSE(world.Has("levels/library.json"));
    EXPECT_EQ(world.Read("moved/library.json.1"), "a damaged one of before");
    EXPECT_EQ(world.Note(code).stars, 3);
    world.session.archive.header.secondaryFolder = (world / "copy").native();
    world.session.archive.header.mainFolder = (world / "copy").native();
    EXPECT_EQ(world.Note(code).stars, 3);
    ASSERT_TRUE(world.Mark({code}, 1));
    EXPECT_NE(world.Read("moved/library.json").find("\"stars\":3"), std::string::npos)
        << "the copy has notes of its own";
}

TEST(LibraryNotes, AreWholeOrAsTheyWereWhereverAWriteFailsOrIsKilled)
{
    int step = 1;
    for (bool reached = true; reached; ++step) {
        ASSERT_LT(step, 100);
        reached = false;
        for (const bool killed : {false, true}) {
            NotesWorld world;
            const LevelCode code = world.Add("Dawn");
            ASSERT_TRUE(world.Mark({code}, 3, "mine"));
            const std::string before = TextOfLibrary(world);
            const auto work = [&] { return world.Mark({code}, 4); };
            if (killed) {
                reached = WithKillAt(step, work).killed || reached;
            } else {
                const FaultRun run = WithFaultAt(step, work);
                reached = run.reached || reached;
                EXPECT_TRUE(run.answer || world.host.WasTold("library.json")) << run.call;
            }
            const LevelNote note = world.Note(code);
            EXPECT_EQ(note.ownNote, "mine") << step;
            EXPECT_TRUE(note.stars == 4 || TextOfLibrary(world) == before) << step;
        }
    }
    TellPoints(step, 4);
}

TEST(LibraryNotes, ADamagedFileIsSetAsideAndOneThatCannotBeReadIsLeftAlone)
{
    NotesWorld world;
    const LevelCode code = world.Add("Dawn");
    const auto findings = [&] {
        std::vector<Finding> found;
        LibraryFindings(world.session.Folders(), world.session.archive, found);
        return found;
    };
    EXPECT_TRUE(findings().empty());
    world.Write("levels/library.json", "{\"levels\":[{\"code\":1,");
    EXPECT_EQ(world.Note(code), LevelNote{});
    ASSERT_EQ(findings().size(), 1U);
    EXPECT_TRUE(world.Mark({code}, 2));
    EXPECT_TRUE(world.host.WasTold("library.json.1")) << world.host.AllTold();
    EXPECT_EQ(world.Read("levels/library.json.1"), "{\"levels\":[{\"code\":1,");
    EXPECT_EQ(world.Note(code).stars, 2);
    EXPECT_TRUE(findings().empty());

    world.Write("levels/library.json", "{\"levels\":[7,{\"code\":1,\"name\":\"Dawn\",\"new\":1}]}");
    EXPECT_EQ(findings().size(), 1U);
    EXPECT_TRUE(world.Mark({code}, 5));
    const auto kept = ParseLibrary(TextOfLibrary(world));
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->damaged, std::vector<std::string>{"7"});
    EXPECT_EQ(kept->levels.at(0).others, "{\"new\":1}");

    std::filesystem::remove(world / "levels/library.json");
    std::filesystem::create_directory(world / "levels/library.json");
    world.host.told.clear();
    EXPECT_FALSE(world.Mark({code}, 1));
    EXPECT_EQ(world.host.told.size(), 1U) << world.host.AllTold();
    EXPECT_EQ(findings().size(), 1U);
    EXPECT_EQ(world.Add("Dusk"), code + 1) << "a level comes in all the same";
    std::filesystem::remove(world / "levels/library.json");
    world.Write("elsewhere.json", "{\"levels\":[{\"code\":1,\"name\":\"Dawn\",\"stars\":2}]}");
    std::filesystem::create_symlink(world / "elsewhere.json", world / "levels/library.json");
    EXPECT_EQ(world.Note(code).stars, 2);
    EXPECT_TRUE(world.Mark({code}, 3));
    EXPECT_NE(world.Read("elsewhere.json").find("\"stars\":3"), std::string::npos)
        << "a link stays, and what it leads to is written";
    EXPECT_TRUE(std::filesystem::is_symlink(world / "levels/library.json"));
    EXPECT_EQ(world.Note(code).stars, 3);
    // A drive that is away takes nothing with it.
    std::filesystem::rename(world / "elsewhere.json", world / "away.json");
    EXPECT_FALSE(world.Mark({code}, 4));
    EXPECT_EQ(findings().size(), 1U);
    EXPECT_EQ(world.Add("Mist"), code + 2) << "a level comes in all the same";
    EXPECT_TRUE(std::filesystem::is_symlink(world / "levels/library.json"));
    EXPECT_FALSE(world.Has("elsewhere.json"));
    // What is no file of notes is somebody else's.
    world.Write("elsewhere.json", "alias ll='ls -l'");
    EXPECT_TRUE(world.Mark({code}, 5));
    EXPECT_EQ(world.Read("elsewhere.json"), "alias ll='ls -l'");
    EXPECT_FALSE(std::filesystem::is_symlink(world / "levels/library.json"));
}

TEST(LibraryNotes, MarksAreRefusedInWordsAndChangeNothingThen)
{
    NotesWorld world;
    const LevelCode code = world.Add("Dawn");
    world.Write("levels/LEVEL_0001/screenshots/two.jpg", "picture");
    const std::string before = TextOfLibrary(world);
    const auto refused = [&](const LevelMarks& marks, const std::vector<LevelCode>& codes) {
        world.host.told.clear();
        return !MarkLevels(world.session, codes, marks) && world.host.told.size() == 1 &&
               TextOfLibrary(world) == before;
    };
    LevelMarks marks;
    marks.stars = 1;
    EXPECT_TRUE(refused(marks, {code, 99}));
    LevelMarks cover;
    cover.cover = "one.jpg";
    EXPECT_TRUE(refused(cover, {code}));
    cover.cover = "../files/a.tr4";
    EXPECT_TRUE(refused(cover, {code}));
    LevelMarks tooLong;
    tooLong.addTags = {std::string(longestTag + 1, 'x')};
    EXPECT_TRUE(refused(tooLong, {code}));
    tooLong = {};
    tooLong.ownNote = std::string(longestOwnNote + 1, 'x');
    EXPECT_TRUE(refused(tooLong, {code}));

    cover.cover = "two.jpg";
    cover.addTags = {"dark", " DARK", "red"};
    const auto marked = MarkLevels(world.session, {code}, cover);
    ASSERT_TRUE(marked);
    EXPECT_EQ(marked->at(0).after.tags, (std::vector<std::string>{"dark", "red"}));
    EXPECT_EQ(marked->at(0).after.cover, "two.jpg");
    const std::string now = TextOfLibrary(world);
    EXPECT_TRUE(MarkLevels(world.session, {code}, cover));
    EXPECT_EQ(TextOfLibrary(world), now);
    cover.addTags.clear();
    cover.dropTags = {"Dark"};
    cover.cover = "";
    const auto dropped = MarkLevels(world.session, {code}, cover);
    ASSERT_TRUE(dropped);
    EXPECT_EQ(dropped->at(0).after.tags, std::vector<std::string>{"red"});
    EXPECT_EQ(dropped->at(0).before.cover, "two.jpg");
    LevelMarks many;
    for (std::size_t i = 0; i <= mostTags; ++i)
        many.addTags.push_back("tag " + std::to_string(i));
    world.host.told.clear();
    EXPECT_TRUE(MarkLevels(world.session, {code}, many));
    EXPECT_EQ(world.Note(code).tags, std::vector<std::string>{"red"});
    EXPECT_EQ(world.host.told.size(), 1U);
}

TEST(LibraryNotes, AreFollowedWhenFileOrListChanges)
{
    NotesWorld world;
    const LevelCode first = world.Add("Dawn");
    LibraryNotes notes;
    EXPECT_TRUE(notes.Follow(world.session.Folders(), world.session.archive));
    EXPECT_FALSE(notes.Follow(world.session.Folders(), world.session.archive));
    LevelMarks marks;
    marks.addTags = {"red", "Blue"};
    ASSERT_TRUE(MarkLevels(world.session, {first, originalCode}, marks));
    EXPECT_TRUE(notes.Follow(world.session.Folders(), world.session.archive));
    EXPECT_EQ(notes.Tags(), (std::vector<std::string>{"Blue", "red"}));
    EXPECT_EQ(notes.Of(originalCode).tags.size(), 2U) << "the original configuration too";
    EXPECT_EQ(notes.Of(77), LevelNote{});
    const LevelCode second = world.Add("Dusk");
    EXPECT_TRUE(notes.Follow(world.session.Folders(), world.session.archive));
    EXPECT_TRUE(notes.Of(second).added);
    EXPECT_EQ(notes.Of(second).tags.size(), 0U);
    world.session.archive.levels.pop_back();
    EXPECT_TRUE(notes.Follow(world.session.Folders(), world.session.archive));
    EXPECT_FALSE(notes.Of(second).added);
}

TEST(LibraryNotes, OfTwoThousandLevelsAreReadAtOnce)
{
    NotesWorld world;
    LibraryFile library;
    for (LevelCode code = 1; code <= 2000; ++code) {
        LevelRecord level;
        level.levelCode = code;
        level.levelName = "Level number " + std::to_string(code);
        world.session.archive.levels.push_back(level);
        LibraryEntry entry{code, std::string(32, 'a'), level.levelName, {}, {}};
        entry.note.added = 1'700'000'000 + code;
        entry.note.tags = {"dark", "jungle"};
        entry.note.stars = code % 6;
        library.levels.push_back(std::move(entry));
    }
    world.Write("levels/library.json", FormatLibrary(library));
    const auto begin = std::chrono::steady_clock::now();
    LibraryNotes notes;
    notes.Follow(world.session.Folders(), world.session.archive);
    const auto read = std::chrono::steady_clock::now();
    EXPECT_FALSE(notes.Follow(world.session.Folders(), world.session.archive));
    const auto again = std::chrono::steady_clock::now();
    using Ms = std::chrono::duration<double, std::milli>;
    std::cout << "read: " << Ms{read - begin}.count()
              << " ms, asked again: " << Ms{again - read}.count() << " ms\n";
    for (const LevelCode code : {1, 1000, 2000})
        EXPECT_EQ(notes.Of(code).stars, code % 6);
    EXPECT_EQ(notes.Tags().size(), 2U);
}

} // namespace kestrova::testing
