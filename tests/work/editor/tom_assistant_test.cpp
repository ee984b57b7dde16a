#include "editor/tom_assistant.h"

#include "session/operation.h"
#include "world/tool_box.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

class Assistant : public ::testing::Test
{
protected:
    Assistant()
    {
        box.MakeTrle();
        for (const char* file : {"City.wad", "city.was", "angkor.wad", "angkor.swd"})
            box.Write("trle/graphics/wads/" + std::string{file}, file);
        box.Write("level/mill.tom", "mill");
        box.Write("level/tower.v2.tom", "tower");
        box.Write("level/own.tom", "own");
        box.Write("level/own.wad", "own wads");
        box.Write("level/a note.txt", "Nothing of interest");
        box.Write("level/readme.txt", "MILL.TOM needs city.wad." + std::string(90, ' ') +
                                          "Convert tower.v2.tom using angkor.wad");
    }
    TomAssistant& Open(bool opens = true)
    {
        assistant.emplace(
            AssistantParts{box.host, box.machine, box.session.Folders(), ToolsOf(box.session)},
            box / "level");
        EXPECT_EQ(assistant->Open(), opens) << box.host.AllTold();
        return *assistant;
    }
    static std::string NamesOf(const std::vector<Path>& files)
    {
        std::string names;
        for (const Path& file : files)
            names += file.filename().native() + " ";
        return names;
    }
    std::string Last() { return box.host.told.empty() ? "" : box.host.told.back().text; }

    ToolBox box;
    std::optional<TomAssistant> assistant;
};

TEST_F(Assistant, ShowsWhatNeedsWorkAndTheLikeliestReadme)
{
    TomAssistant& shown = Open();
    EXPECT_EQ(NamesOf(shown.Toms()), "mill.tom tower.v2.tom ");
    EXPECT_EQ(NamesOf(shown.Wads()), "angkor.wad City.wad ");
    EXPECT_EQ(TomAssistant::SetOf(shown.Wads()[1]), "City.*");
    EXPECT_EQ(shown.tom, 0U);
    EXPECT_FALSE(shown.wads);
    shown.ShowEssential(false);
    EXPECT_EQ(NamesOf(shown.Toms()), "mill.tom own.tom tower.v2.tom ");
    EXPECT_EQ(NamesOf(shown.Wads()), "angkor.wad City.wad own.wad ");
    EXPECT_EQ(shown.HelpText().find('~'), std::string::npos);
    EXPECT_NE(shown.HelpText().find("\r\n3) When you"), std::string::npos);

    // The topmost with any of the words, unless one tells of an installation.
    EXPECT_EQ(shown.document, 0U);
    box.Write("level/zz Install.rtf", "x");
    EXPECT_EQ(Open().Documents()[*assistant->document].filename(), "zz Install.rtf");
    EXPECT_EQ(NamesOf(assistant->Documents()), "a note.txt readme.txt zz Install.rtf ");
    std::filesystem::remove_all(box / "level");
    box.Write("level/mill.tom", "mill");
    box.Write("level/words.txt", "x");
    EXPECT_FALSE(Open().document);
    assistant->Analyse();
    EXPECT_EQ(Last(), "You must select (highlight) 'readme_file' to scan in automatic analyse");
}

TEST_F(Assistant, ThePersonLinksOneByOne)
{
    TomAssistant& shown = Open();
    shown.Finish();
    EXPECT_TRUE(box.host.WasTold("You have performed no operations."));
    shown.Perform();
    EXPECT_EQ(Last(), "You must select wads used from source files: mill.tom");
    shown.wads = 1;
    shown.Perform();
    EXPECT_EQ(Last(), "Source file 'mill.tom' linked with wads files 'City.*'");
    EXPECT_EQ(NamesOf(shown.Toms()), "tower.v2.tom ");
    EXPECT_FALSE(shown.wads) << "nothing is linked by a second press";
    shown.Finish();
    EXPECT_NE(Last().find("Source file 'tower.v2.tom' has not .wad file"), std::string::npos);
    EXPECT_FALSE(shown.IsOver());
    shown.wads = 0;
    shown.Perform();
    EXPECT_EQ(Last(), "All .tom files of current level, have their source files to be converted.");
    EXPECT_TRUE(shown.IsOver());
    EXPECT_TRUE(shown.IsDone());
    EXPECT_EQ(box.Read("level/mill.was"), "city.was");
    EXPECT_EQ(box.Read("level/tower.v2.swd"), "angkor.swd");
    EXPECT_FALSE(box.Has("level/tower.swd"));

    Open(false);
    EXPECT_FALSE(assistant->IsDone()) << "nobody did anything";
}

TEST_F(Assistant, GivingUpIsAskedAboutAndKeepsWhatWasCopied)
{
    TomAssistant& shown = Open();
    box.host.WillAsk("Before giving out", true);
    box.host.WillAsk("Now I will scan text file 'a note.txt'", false);
    shown.Cancel();
    EXPECT_FALSE(shown.IsOver());
    shown.wads = 1;
    shown.Perform();
    box.host.WillAsk("cancel all operations", false);
    shown.Cancel();
    EXPECT_FALSE(shown.IsOver());
    box.host.WillAsk("cancel all operations", true);
    box.host.WillAsk("Before giving out", false);
    shown.Cancel();
    EXPECT_TRUE(shown.IsOver());
    EXPECT_FALSE(shown.IsDone());
    EXPECT_TRUE(box.Has("level/mill.wad"));
}

TEST_F(Assistant, TheReadmeTellsAllLinksOrNone)
{
    TomAssistant& shown = Open();
    box.host.WillAsk("a note.txt", true);
    shown.Analyse();
    EXPECT_EQ(Last(), "Sorry, I'm not been able to find a solution\r\nYou could trying to choose a "
                      "different 'readme' file to scan in automatic analyse.");
    shown.document = 1;
    const std::string question = "Pheraps solution is: \r\nmill.tom  should use -> City.*\r\n"
                                 "tower.v2.tom  should use -> angkor.*\r\nDo you want";
    box.host.WillAsk("readme.txt", true);
    box.host.WillAsk(question, false);
    shown.Analyse();
    EXPECT_FALSE(box.Has("level/mill.wad"));
    // It was tried, so that giving up asks no more.
    shown.Cancel();
    EXPECT_TRUE(shown.IsOver());

    TomAssistant& again = Open();
    again.document = 1;
    box.host.WillAsk("readme.txt", true);
    box.host.WillAsk(question, true);
    again.Analyse();
    EXPECT_TRUE(again.IsDone()) << box.host.AllTold();
    EXPECT_EQ(box.Read("level/tower.v2.wad"), "angkor.wad");
}

TEST_F(Assistant, APdfIsAReadmeWhereATextCanBeMadeOfIt)
{
    box.Write("level/manual.pdf", "%PDF-1.4");
    EXPECT_EQ(NamesOf(Open().Documents()), "a note.txt readme.txt ");
    box.AddTool("pdftotext", "echo 'mill.tom city.wad'; seq 40; echo 'tower.v2.tom angkor.wad'");
    TomAssistant& shown = Open();
    ASSERT_EQ(NamesOf(shown.Documents()), "a note.txt readme.txt manual.pdf ");
    shown.document = 2;
    box.host.WillAsk("manual.pdf", true);
    box.host.WillAsk("mill.tom  should use -> City.*", true);
    shown.Analyse();
    EXPECT_TRUE(shown.IsDone()) << box.host.AllTold();
    box.AddTool("pdftotext", "exit 1");
    std::filesystem::remove(box / "level/mill.wad");
    Open().AnalyseDocument(box / "level/manual.pdf");
    EXPECT_EQ(Last(), "The text of 'manual.pdf' could not be read.");
}

TEST_F(Assistant, ThreeHundredTomFilesAreLinkedInOneWalk)
{
    std::filesystem::remove_all(box / "level");
    std::string readme;
    for (int i = 0; i < 300; ++i) {
        const std::string tom = "part" + std::to_string(i) + ".tom";
        box.Write("level/" + tom, "tom");
        readme += tom + (i % 2 == 0 ? " city.wad" : " angkor.wad") + std::string(60, '.') + "\r\n";
    }
    box.Write("level/install.txt", readme);
    const Operation operation{box.session};
    TomAssistant& shown = Open();
    EXPECT_EQ(shown.Toms().size(), 300U);
    box.host.AnswerAll(true);
    const auto begin = std::chrono::steady_clock::now();
    shown.Analyse();
    EXPECT_TRUE(shown.IsDone()) << box.host.AllTold();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds{20});
    EXPECT_EQ(box.Read("level/part299.swd"), "angkor.swd");
}

} // namespace

} // namespace kestrova::testing
