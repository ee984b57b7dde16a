#include "editor/wad_scripts.h"

#include "editor/script_files.h"

#include <chrono>
#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

OwnScripts OwnOf(const std::string& script, const std::string& language)
{
    return {*ParseScriptText(script), *ParseLanguageText(language), {}};
}

TEST(WadScripts, ALevelClaimsItsPositionInEveryLanguage)
{
    const auto newScript =
        *ParseScriptText("; new\n[Level]\n\tName=\tCity of Rain\n\tLevel=\tDATA\\City,102\n");
    const auto newStrings =
        *ParseLanguageText("[Strings]\nOne\n; no position\n\ncity of rain\nThree\n[PSXStrings]\n");
    OwnScripts own = OwnOf("\xEF\xBB\xBF; own\n[Level]\nName= A\nLevel= DATA\\a,1\n",
                           "\xEF\xBB\xBF[Strings]\nEins\nZwei\nDrei\n[PSXStrings]\nx\n");
    own.english = *ParseLanguageText("[Strings]\nOne\n");
    const auto report = MergeNewLevels(
        newScript, newStrings, {"CITY.TR4", "none.tr4"},
        [](const std::string& original) { return original + " \xC3\xBC"; }, own);
    EXPECT_EQ(report.withoutLevel, std::vector<std::string>{"none.tr4"});
    EXPECT_EQ(FormatScriptText(own.script),
              "\xEF\xBB\xBF; own\r\n[Level]\r\nName= A\r\nLevel= DATA\\a,1\r\n"
              "[Level]\r\n\tName=\tCity of Rain\r\n\tLevel=\tDATA\\City,102\r\n");
    EXPECT_EQ(FormatLanguageText(own.language),
              "\xEF\xBB\xBF[Strings]\r\nEins\r\nCity of Rain \xC3\xBC\r\nDrei\r\n"
              "[PSXStrings]\r\nx\r\n");
    EXPECT_EQ(FormatLanguageText(*own.english), "[Strings]\r\nOne\r\nCity of Rain\r\n")
        << "a file that is shorter grows to the position";
    MergeNewLevels(newScript, newStrings, {"city.tr4"}, {}, own);
    EXPECT_EQ(own.script.levels.size(), 2u) << "the same level comes once";
    EXPECT_TRUE(report.twice.empty());
    const auto taken = MergeNewLevels(
        newScript, newStrings, {"city.tr4"}, [](const std::string&) { return "drei"; }, own);
    EXPECT_EQ(taken.twice, std::vector<std::string>{"drei"});
}

TEST(WadScripts, NoLevelTakesThePlaceOfAHeading)
{
    const auto newScript = *ParseScriptText("[Level]\nName= [Strings]\nLevel= DATA\\k,1\n");
    const auto newStrings = *ParseLanguageText("[Strings]\nA\n [strings]\n");
    OwnScripts own = OwnOf("", "[Strings]\nold\n");
    const auto report = MergeNewLevels(
        newScript, newStrings, {"k.tr4"}, [](const std::string&) { return "New"; }, own);
    EXPECT_EQ(report.withoutName, std::vector<std::string>{"[Strings]"});
    EXPECT_EQ(FormatLanguageText(own.language), "[Strings]\r\nold\r\n");
}

TEST(WadScripts, WhatIsNoLineOfTheFileIsNoName)
{
    const auto newScript = *ParseScriptText("[Level]\nName= K\xF6ln\nLevel= DATA\\k,1\n");
    const auto newStrings = *ParseLanguageText("[Strings]\nK\xF6ln\n");
    for (const auto& [answer, line] :
         std::map<std::string, std::string>{{"Stra\xC3\x9F"
                                             "e",
                                             "Stra\xDF"
                                             "e"},
                                            {"K\xC3\xB6ln", "K\xF6ln"},
                                            {"", "K\xF6ln"},
                                            {" \r\n ", "K\xF6ln"},
                                            {";x", "K\xF6ln"},
                                            {"[PSXStrings]", "K\xF6ln"},
                                            {"two\r\nlines", "two  lines"}}) {
        OwnScripts own = OwnOf("", "[Strings]\nold\n");
        MergeNewLevels(
            newScript, newStrings, {"k.tr4"},
            [&answer = answer](const std::string&) { return answer; }, own);
        EXPECT_EQ(own.language.strings.at(1), line) << answer;
        EXPECT_EQ(CanBeLevelName(answer), !line.starts_with('K') || answer.starts_with('K'))
            << answer;
    }
}

} // namespace

} // namespace kestrova::testing
