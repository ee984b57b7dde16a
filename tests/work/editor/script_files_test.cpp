#include "editor/script_files.h"
#include "sandbox/faults.h"
#include "sandbox/sandbox.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{
namespace
{

TEST(ScriptFiles, ComeBackFromTheDiskAsTheyWere)
{
    const Sandbox box;
    const std::string text = "head\r\n[Level]\r\nName= A\r\nLevel= DATA\\a,1\r\n";
    box.Write("script/Script.TXT", text);
    const auto script = ReadScriptFile(box / "script/script.txt");
    ASSERT_TRUE(script);
    ASSERT_TRUE(WriteScriptFile(box / "script/script.txt", *script));
    EXPECT_EQ(box.Snapshot("script"), (FileContents{{"Script.TXT", text}}));

    box.Write("script/english.txt", "[Strings]\nA\n");
    const auto language = ReadLanguageFile(box / "script/english.txt");
    ASSERT_TRUE(language);
    ASSERT_TRUE(WriteLanguageFile(box / "script/english.txt", *language));
    EXPECT_EQ(box.Read("script/english.txt"), "[Strings]\r\nA\r\n");
}

TEST(ScriptFiles, AFailureNamesTheFileAndLeavesTheOldOne)
{
    const Sandbox box;
    const auto none = ReadScriptFile(box / "none.txt");
    ASSERT_FALSE(none);
    EXPECT_EQ(none.Error().code, ErrorCode::Missing);
    EXPECT_NE(none.Error().sentence.find("none.txt"), std::string::npos);

    box.Write("script.txt", std::string_view{"\xFF\xFE[\0", 4});
    const auto wide = ReadScriptFile(box / "script.txt");
    ASSERT_FALSE(wide);
    EXPECT_NE(wide.Error().reason.find("UTF-16"), std::string::npos);
    EXPECT_NE(wide.Error().sentence.find("script.txt"), std::string::npos);

    box.Write("english.txt", "[Strings]\r\nold\r\n");
    int points = 0;
    for (FaultRun run{.reached = true}; run.reached; ++points) {
        run = WithFaultAt(points + 1, [&] {
            return static_cast<bool>(
                WriteLanguageFile(box / "english.txt", {"", {"[Strings]", "new"}, ""}));
        });
        if (run.reached && !run.answer) {
            const std::string text = box.Read("english.txt");
            EXPECT_TRUE(text == "[Strings]\r\nold\r\n" || text == "[Strings]\r\nnew\r\n")
                << run.call << ": " << text;
        }
    }
    TellPoints(points - 1, 3);
    EXPECT_EQ(box.Read("english.txt"), "[Strings]\r\nnew\r\n");
    EXPECT_EQ(box.Snapshot(".").size(), 2u);
}

} // namespace
} // namespace kestrova::testing
