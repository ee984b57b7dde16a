#include "formats/change_note.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

std::string Hash(char digit)
{
    return std::string(32, digit);
}

/// A change with all that one can have.
Change Whole()
{
    Change change;
    change.code = 7;
    change.reason = "replaced";
    change.header = "/levels \xFF/LEVEL_0007/savegames/savegames.bva";
    change.archivedCount = 3;
    change.folders = {{"/trle %41",
                       true,
                       {{"savegame.0", Hash('a')}, {"savegame.1", Hash('b')}},
                       {{"note0.txt", Hash('b'), "/levels/a\xFE/note3.txt"}}}};
    change.id = 12;
    change.madeNs = 1'700'000'000'000'000'000;
    change.subject = "1) a.jpg";
    change.levelName = "Dawn \xFF";
    change.home = "/levels \xFF/LEVEL_0007";
    change.level = Hash('1');
    change.maker = Hash('2');
    change.archive = "/home/my.kva";
    change.live = "/trle %41";
    change.kept = "/home/history/undo/000012";
    change.archivedBefore = -2;
    change.extraBytes = 99;
    LevelRecord level;
    level.levelCode = 7;
    level.levelName = "Żółw";
    level.authorEmails = std::string("a@b\0c@d", 7);
    level.filesSize = 1234;
    change.record = ChangedRecord{5, level, std::nullopt};
    change.kind = ChangeKind::LevelRemoved;
    change.moved = MovedFolder{change.home, change.home + ".set-aside-2026", 4711, Hash('d')};
    return change;
}

} // namespace

TEST(ChangeNote, OfAnEntryComesBackAsItWasWrittenOrNotAtAll)
{
    const std::string text = FormatChange(Whole());
    const auto back = ParseChange(text);
    ASSERT_TRUE(back);
    EXPECT_EQ(FormatChange(*back), text);
    EXPECT_EQ(back->record->before->levelName, "Żółw");
    EXPECT_EQ(back->record->before->authorEmails, std::string("a@b\0c@d", 7));
    EXPECT_FALSE(back->record->after);
    EXPECT_EQ(back->levelName, "Dawn \xFF");
    for (std::size_t length = 0; length + 2 < text.size(); ++length)
        EXPECT_FALSE(ParseChange(std::string_view{text}.substr(0, length))) << length;
    void (*const spoils[])(Change&) = {
        [](Change& c) { c.home = "levels"; },
        [](Change& c) { c.home = "/levels/../LEVEL_0007"; },
        [](Change& c) { c.live = "trle"; },
        [](Change& c) { c.live = "/elsewhere"; },
        [](Change& c) { c.header = "/etc/savegames.bva"; },
        [](Change& c) { c.level = ""; },
        [](Change& c) { c.maker = "../.."; },
        [](Change& c) { c.id = undoIdLimit; },
        [](Change& c) { c.archive = "my.kva"; },
        [](Change& c) { c.record->before->levelCode = 8; },
        [](Change& c) { c.moved->from = "LEVEL_0007"; },
        [](Change& c) { c.moved->from = "/levels/LEVEL_0008"; },
        [](Change& c) { c.moved->to = ""; },
        [](Change& c) { c.moved->to = "/home/documents"; },
        [](Change& c) { c.moved->to = c.home + ".set-aside-2026/../../x"; },
        [](Change& c) { c.kind = ChangeKind::ShotAdded; },
        [](Change& c) { c.folders[0].folder = "/home/documents"; },
        [](Change& c) { c.folders[0].folder = c.home + "/../LEVEL_0008"; },
        [](Change& c) { c.folders[0].before[0].name = "../savegame.0"; },
        [](Change& c) { c.folders[0].before[0].name = ".."; },
        [](Change& c) { c.folders[0].after[0].hash = "../../../etc"; },
    };
    for (const auto spoil : spoils) {
        Change change = Whole();
        spoil(change);
        EXPECT_FALSE(ParseChange(FormatChange(change))) << FormatChange(change);
    }
}

TEST(ChangeNote, TakesEveryNameThatAFileCanHave)
{
    for (const char* name : {"a\nb.bmp", "a:b.jpg", "a\\b.jpg", "...", "\xFF\x01", " "}) {
        Change change = Whole();
        change.subject = name;
        change.folders[0].before[0].name = name;
        change.folders[0].after[0].name = name;
        const auto back = ParseChange(FormatChange(change));
        ASSERT_TRUE(back) << name;
        EXPECT_EQ(back->folders[0].after[0].name, name);
        EXPECT_EQ(back->subject, name);
    }
}

TEST(ChangeNote, LeadsBackByItsInverse)
{
    const Change change = Whole();
    Change back = Inverse(change);
    EXPECT_EQ(back.undoes, 12);
    EXPECT_TRUE(back.isUndone);
    EXPECT_EQ(back.archivedCount, -2);
    EXPECT_EQ(back.extraBytes, -99);
    EXPECT_EQ(back.moved->to, change.moved->from);
    EXPECT_TRUE(back.record->after && !back.record->before);
    const ChangedFolder& folder = back.folders[0];
    EXPECT_TRUE(folder.goes && !folder.made);
    ASSERT_EQ(folder.before.size(), 1U);
    EXPECT_EQ(folder.before[0].name, "note0.txt");
    ASSERT_EQ(folder.after.size(), 2U);
    EXPECT_EQ(folder.after[0].source, change.kept + "/" + Hash('a'));
    EXPECT_EQ(folder.after[1].source, "/trle %41/note0.txt") << "where the change left it";

    // And once more it is the change again, but for its own number.
    back.id = 13;
    back.kept = change.kept;
    const Change again = Inverse(back);
    EXPECT_FALSE(again.isUndone);
    EXPECT_EQ(again.folders[0].before.size(), change.folders[0].before.size());
    EXPECT_EQ(again.folders[0].after[0].name, "note0.txt");
    EXPECT_EQ(again.moved->to, change.moved->to);
}

} // namespace kestrova::testing
