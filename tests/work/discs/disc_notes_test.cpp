#include "discs/disc_notes.h"
#include "sandbox/sandbox.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

TEST(DiscNotes, ProveThatAFolderIsWhatWasNoted)
{
    Sandbox box;
    box.Write("files/data/level1.tr4", "one");
    box.Write("files/readme.txt", "two");
    std::filesystem::create_directories(box / "files" / "empty");
    const auto noted = NoteFilesOf(box / "files");
    ASSERT_TRUE(noted);
    ASSERT_EQ(noted->size(), 2U);
    EXPECT_EQ((*noted)[0].name, "data/level1.tr4");
    const NotedLevel level{7, true, *noted};
    EXPECT_TRUE(HoldsNotedFiles(box / "files", level));
    box.Write("files/readme.txt", "twO");
    EXPECT_EQ(HoldsNotedFiles(box / "files", level).Error().subject, "readme.txt");
    box.Write("files/readme.txt", "two");
    box.Write("files/data/more", "");
    EXPECT_EQ(HoldsNotedFiles(box / "files", level).Error().subject, "data/more");
    std::filesystem::remove(box / "files/data/more");
    std::filesystem::remove(box / "files/data/level1.tr4");
    EXPECT_EQ(HoldsNotedFiles(box / "files", level).Error().subject, "data/level1.tr4");
    EXPECT_EQ(HoldsNotedFiles(box / "nowhere", level).Error().code, ErrorCode::Missing);
    std::filesystem::create_symlink("readme.txt", box / "files/link");
    EXPECT_EQ(NoteFilesOf(box / "files").Error().code, ErrorCode::Refused);
}

TEST(DiscNotes, AreWrittenBesideTheLevelsAndADamagedOneIsNotTakenForNone)
{
    Sandbox box;
    EXPECT_TRUE(ReadDiscNote(box.root).Value().discs.empty());
    DiscNote note;
    note.Put({3, "Kestrova #3", 1, {}, 2, {{7, true, {}}}});
    ASSERT_TRUE(WriteDiscNote(box.root, note));
    EXPECT_EQ(ReadDiscNote(box.root).Value(), note);
    EXPECT_NE(FindNoted(note, 3, 7), nullptr);
    EXPECT_EQ(FindNoted(note, 3, 8), nullptr);
    EXPECT_EQ(FindNoted(note, 4, 7), nullptr);
    box.Write("discs.json", "{}");
    EXPECT_EQ(ReadDiscNote(box.root).Error().code, ErrorCode::Damaged);
    ASSERT_TRUE(WriteDiscNote(box.root, {}));
    EXPECT_FALSE(FileExists(DiscNoteOf(box.root)));
}

} // namespace kestrova::testing
