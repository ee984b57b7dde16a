#include "formats/script_text.h"

#include "formats/language_text.h"
#include "formats/source_text.h"

#include <gtest/gtest.h>

namespace kestrova
{

namespace
{

std::vector<std::string> NamesOf(const ScriptText& script)
{
    std::vector<std::string> names;
    for (const ScriptLevel& level : script.levels)
        names.push_back(level.tr4Name + "|" + level.levelName);
    return names;
}

TEST(ScriptText, LevelsAreReadAndEveryByteIsWrittenBack)
{
    const std::string text =
        ";SCRIPT\r\n[Options]\r\nLoadSave= ENABLED\r\n\r\n"
        "[Level]\r\nName=   Tomb of X  \r\nLevel= DATA\\city,101\r\n\r\n"
        "[LEVEL]\r\nlevel=DATA\\x\r\n; a comment\r\nNAME=\t M\xFCnster, (1)\r\n";
    const auto script = ParseScriptText(text);
    ASSERT_TRUE(script);
    EXPECT_EQ(NamesOf(*script),
              (std::vector<std::string>{"city.tr4|Tomb of X  ", "x.tr4|M\xFCnster, (1)"}));
    EXPECT_EQ(script->header, ";SCRIPT\r\n[Options]\r\nLoadSave= ENABLED\r\n\r\n");
    EXPECT_EQ(FormatScriptText(*script), text);
}

TEST(ScriptText, LineEndsOfAnyKindBecomeThoseOfTheCompiler)
{
    const std::string tail = "[Level]\r\nName= A\r\nLevel= DATA\\a\r\n";
    for (const char* end : {"\n", "\r", "\r\n"}) {
        const std::string e = end;
        const auto script =
            ParseScriptText("head" + e + e + "\t[level] " + e + "Name= A" + e + "Level= DATA\\a");
        ASSERT_TRUE(script);
        EXPECT_EQ(FormatScriptText(*script), "head\r\n\r\n\t[level] \r\n" + tail.substr(9));
        EXPECT_EQ(NamesOf(*script), std::vector<std::string>{"a.tr4|A"});
    }
    const auto marked = ParseScriptText("\xEF\xBB\xBF" + tail);
    ASSERT_TRUE(marked);
    EXPECT_EQ(marked->header, "\xEF\xBB\xBF") << "a level put in front must not come before it";
    EXPECT_EQ(FormatScriptText(*marked), "\xEF\xBB\xBF" + tail);
}

TEST(ScriptText, AFileWithoutLevelsIsAllHeader)
{
    for (const std::string text : {"", "[Title]\r\nLevel= DATA\\title,104\r\n", ";[Level]\r\n"}) {
        const auto script = ParseScriptText(text);
        ASSERT_TRUE(script) << text;
        EXPECT_TRUE(script->levels.empty()) << text;
        EXPECT_EQ(script->header, text);
    }
}

TEST(ScriptText, ABlockThatLacksANameFailsTheWholeFile)
{
    const std::string whole = "[Level]\nName= A\nLevel= DATA\\a,1\n";
    for (const std::string block : {"[Level]\nName= B\n", "[Level]\nLevel= DATA\\b\n",
                                    "[Level]\nName= B\nLevel= b,1\n", "[Level]\n"})
        for (const std::string& text : {whole + block, block + whole}) {
            const auto script = ParseScriptText(text);
            ASSERT_FALSE(script) << text;
            EXPECT_EQ(script.Error().code, ErrorCode::Damaged);
            EXPECT_FALSE(script.Error().reason.empty());
        }
}

TEST(SourceTexts, WhatIsNoTextOfSingleBytesIsRefused)
{
    const std::string utf16{"[\0L\0e\0v\0e\0l\0]\0", 14};
    for (const std::string& bytes : {"\xFF\xFE" + utf16, "\xFE\xFF" + utf16, utf16, '\0' + utf16}) {
        const auto script = ParseScriptText(bytes);
        ASSERT_FALSE(script);
        EXPECT_NE(script.Error().reason.find("UTF-16"), std::string::npos);
        EXPECT_FALSE(ParseLanguageText(bytes));
    }
    const auto odd = ParseLanguageText(std::string_view{"[Strings]\r\na\0b", 14});
    ASSERT_FALSE(odd);
    EXPECT_EQ(odd.Error().reason.find("UTF-16"), std::string::npos);
}

TEST(SourceTexts, TenMegabytesAreNothing)
{
    const std::string block = "[Level]\nName= A\nLevel= DATA\\a,1\n" + std::string(500, 'x') + "\n";
    std::string script;
    std::string strings = "[Strings]\n";
    while (script.size() < 10'000'000)
        script += block;
    while (strings.size() < 10'000'000)
        strings += "a string of the game in some language\n";
    const auto levels = ParseScriptText(script);
    ASSERT_TRUE(levels);
    EXPECT_EQ(levels->levels.size(), script.size() / block.size());
    const auto language = ParseLanguageText(strings);
    ASSERT_TRUE(language);
    EXPECT_EQ(language->strings.size(), (strings.size() - 10) / 38 + 1);
    EXPECT_EQ(ParseScriptText(std::string(10'000'000, 'x'))->header.size(), 10'000'002u);
}

TEST(LanguageText, HasThreeZonesOfWhichTheMiddleLosesCommentsAndBlanks)
{
    const std::string before = "; by me\r\n\r\n[Other]\r\n";
    const std::string after = "[PSXSTRINGS]\r\n\r\n; kept\r\nX\r\n";
    const std::string text =
        before + "[strings]\r\nTomb\r\n\r\n;no string\r\n ;one\r\n\t\r\n" + after;
    const auto language = ParseLanguageText(text);
    ASSERT_TRUE(language);
    EXPECT_EQ(language->before, before);
    EXPECT_EQ(language->strings, (std::vector<std::string>{"[strings]", "Tomb", " ;one", "\t"}));
    EXPECT_EQ(language->after, after);
    EXPECT_EQ(FormatLanguageText(*language),
              before + "[strings]\r\nTomb\r\n ;one\r\n\t\r\n" + after);

    const auto none = ParseLanguageText("no heading\nat all");
    ASSERT_TRUE(none);
    EXPECT_TRUE(none->strings.empty());
    EXPECT_EQ(FormatLanguageText(*none), "no heading\r\nat all\r\n");
    const auto marked = ParseLanguageText("\xEF\xBB\xBF[Strings]\n\xC3\x9Cyou\n");
    ASSERT_TRUE(marked);
    EXPECT_EQ(FormatLanguageText(*marked), "\xEF\xBB\xBF[Strings]\r\n\xC3\x9Cyou\r\n");
}

TEST(SourceTexts, SayWhatTheyAreByTheirFirstHeading)
{
    EXPECT_EQ(KindOfSource("x\n[Level]\n[Strings]\n"), SourceKind::Script);
    EXPECT_EQ(KindOfSource("\xEF\xBB\xBF[STRINGS]\n[Level]\n"), SourceKind::Language);
    EXPECT_EQ(KindOfSource(""), SourceKind::Script);
}

} // namespace

} // namespace kestrova
