#include "editor/wad_links.h"

#include "sandbox/faults.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

class WadLinks : public ::testing::Test
{
protected:
    WadLinks()
    {
        for (const char* file : {"City.wad", "city.was", "CITY.SWD", "city.tom"})
            box.Write("trle/graphics/wads/" + std::string{file}, file);
        box.Write("level/mill.tom", "mill");
    }
    [[nodiscard]] Folders Places() const { return box.session.Folders(); }
    std::size_t Link(std::string_view pattern, std::string_view tom)
    {
        const auto linked = LinkWads(box.machine, Places(), box / "level", pattern, tom);
        copied = linked ? linked->copied : 0;
        return linked ? linked->matching : 999;
    }

    World box;
    std::size_t copied = 0;
};

TEST_F(WadLinks, DocumentsComeByKindWithoutTheGamesSources)
{
    for (const char* file : {"b.htm", "Readme.TXT", "ENGLISH.txt", "script.TXT", "c.html", "a.rtf",
                             "notes.doc", "a.pdf", "old.txt", "x.docx"})
        box.Write("level/" + std::string{file}, file);
    std::string names;
    const auto documents = ListDocFiles(box / "level");
    for (const Path& file : *documents)
        names += file.filename().native() + " ";
    EXPECT_EQ(names, "old.txt Readme.TXT notes.doc b.htm c.html a.rtf ");
    EXPECT_TRUE(ListDocFiles(box / "nowhere")->empty());
}

TEST_F(WadLinks, ATomFilesWadIsFoundInEitherFolderAndAnyCase)
{
    box.Write("level/TOWER.WAD", "beside it");
    EXPECT_TRUE(*TomHasWad(Places(), box / "level/tower.tom"));
    EXPECT_TRUE(*TomHasWad(Places(), box / "level/CITY.tom"));
    EXPECT_FALSE(*TomHasWad(Places(), box / "level/mill.tom"));
    EXPECT_FALSE(TomHasWadOrTold(box.host, Places(), box / "level/mill.tom"));
    EXPECT_EQ(box.host.told.back().text,
              "Source file 'mill.tom' has not .wad file to be converted\r\n"
              "Please, select wads to convert 'mill.tom'");
    EXPECT_TRUE(TomHasWadOrTold(box.host, Places(), box / "level/city.tom"));
    EXPECT_EQ(box.host.told.size(), 1U);
}

TEST_F(WadLinks, ThePrefixIsCountedInLettersWithoutTheirCase)
{
    EXPECT_EQ(CommonPrefixLength("CityB.wad", "cityb."), 6U);
    EXPECT_EQ(CommonPrefixLength("city.wad", "cityb."), 4U);
    EXPECT_EQ(CommonPrefixLength("city", "cityb"), 4U);
    EXPECT_EQ(CommonPrefixLength("", "x"), 0U);
    EXPECT_EQ(CommonPrefixLength("ÄÖa", "äöb"), 2U);
    EXPECT_EQ(CommonPrefixLength("é", "è"), 0U) << "one byte of two is no letter";
}

TEST_F(WadLinks, ASetIsCopiedUnderTheTomFilesStemWhereNothingStands)
{
    box.Write("level/mill.WAS", "the author's own");
    EXPECT_EQ(Link("CITY.*", "Mill.tom"), 4U);
    EXPECT_EQ(box.Snapshot("level"), (FileContents{{"mill.tom", "mill"},
                                                   {"mill.WAS", "the author's own"},
                                                   {"Mill.wad", "City.wad"},
                                                   {"Mill.SWD", "CITY.SWD"}}));
    EXPECT_EQ(Link("city.*", "mill.tom"), 4U) << "a second time is no failure";
    // The level's own wads serve where the Level Editor has none of that name.
    box.Write("level/desert.wad", "desert");
    EXPECT_EQ(Link("desert.*", "dunes"), 1U);
    EXPECT_EQ(box.Read("level/dunes.wad"), "desert");
    EXPECT_EQ(Link("lost.*", "mill"), 0U);
}

TEST_F(WadLinks, ASetThatWouldFillTheDiskIsNotCopied)
{
    box.machine.free = UINT64_C(64) << 20;
    EXPECT_EQ(Link("city.*", "mill"), 999U);
    EXPECT_EQ(box.Snapshot("level").size(), 1U);
    box.machine.free += 100;
    EXPECT_EQ(Link("city.*", "mill"), 4U);
    EXPECT_EQ(copied, 3U) << "the tom file is there";
    EXPECT_EQ(Link("city.*", "mill"), 4U);
    EXPECT_EQ(copied, 0U) << "they are all there";
}

TEST_F(WadLinks, AWishIsReadFromOneWord)
{
    const auto read = [](const std::string& word) {
        const auto link = WadLinkFromWord(word);
        return link ? link->tom + " " + link->wads : "none";
    };
    for (const char* word : {"mill=city", "mill.tom=city.wad", "mill=city.*"})
        EXPECT_EQ(read(word), "mill.tom city.*") << word;
    EXPECT_EQ(read("My.v2=city v1.2"), "My.v2.tom city v1.2.*");
    for (const char* word : {"", "mill", "=city", "mill=", "="})
        EXPECT_EQ(read(word), "none") << word;
}

TEST_F(WadLinks, ANameFromOutsideReachesNoOtherFolder)
{
    const FileContents before = box.Snapshot("");
    for (const char* pattern : {"../*", "..\\wads\\*", "/etc/*", "wads/city.*"})
        EXPECT_EQ(Link(pattern, "mill"), 0U) << pattern;
    EXPECT_EQ(box.Snapshot(""), before);
    for (const char* tom : {"", ".tom", " .tom", ".kv~x.tom", "a|\n.tom"})
        EXPECT_EQ(Link("city.*", tom), 999U) << tom;
    EXPECT_EQ(box.Snapshot(""), before);
    EXPECT_EQ(Link("city.*", "..\\..\\out.tom"), 4U);
    EXPECT_TRUE(box.Has("level/out.wad"));
}

TEST_F(WadLinks, AFailureLeavesNoHalfASet)
{
    for (int step = 1;; step = NextPoint(step)) {
        std::filesystem::remove_all(box / "level");
        box.Write("level/mill.tom", "mill");
        Result<LinkedSet> linked = LinkedSet{};
        const FaultRun run = WithFaultAt(step, [&] {
            linked = LinkWads(box.machine, Places(), box / "level", "city.*", "mill");
            return bool{linked};
        });
        SCOPED_TRACE("at step " + std::to_string(step) + ": " + run.call);
        EXPECT_EQ(run.answer, box.Has("level/mill.was")) << "the last one of the set";
        EXPECT_EQ(box.Snapshot("level").size(), run.answer ? 4U : 1U) << "mill.tom and its set";
        if (!run.reached)
            return;
        ASSERT_LT(step, 100);
    }
}

} // namespace

} // namespace kestrova::testing
