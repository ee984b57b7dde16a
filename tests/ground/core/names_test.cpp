#include "core/names.h"
#include "core/text.h"

#include <gtest/gtest.h>

namespace kestrova
{

namespace
{

TEST(Patterns, MatchAsTheSystemsProgramsMeanThem)
{
    const struct {
        const char* name;
        const char* pattern;
        bool matches;
    } rows[] = {
        {"SCRIPT.DAT", "*.dat", true},
        {"a.html", "*.htm", false},
        {"noextension", "*.*", true},
        {"noextension", "*", true},
        {"savegame", "savegame.*", true},
        {"savegame.12", "savegame.*", true},
        {"savegames.1", "savegame.*", false},
        {"shot1.jpg", "shot*.jpg", true},
        {"shot.jpg", "shot*.jpg", true},
        {"a.jpg.txt", "*.jpg", false},
        {"aXbXc", "a*b*c", true},
        {"aaab", "*a?", true},
        {"ab", "a?b", false},
        {"LEVEL_0012", "level_????", true},
        {"LEVEL_00123", "level_????", false},
        {"GRÜN.tr4", "grün.*", true},
        {"Straße", "STRASSE", false},
        {"[1].txt", "[1].*", true},
        {"", "*", true},
        {"a", "", false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(MatchesPattern(row.name, row.pattern), row.matches)
            << row.name << " against " << row.pattern;
}

TEST(SafeRelative, NeverLeavesItsFolder)
{
    for (const char* name : {"",
                             "\\",
                             "/",
                             ".",
                             "..",
                             "\\..",
                             "..\\x",
                             "\\data\\..\\..\\x",
                             "a\\..",
                             "a/../b",
                             "C:\\x",
                             "c:x",
                             "\\C:\\x",
                             "\\\\server\\share",
                             "//etc/passwd",
                             "a\\\\b",
                             "a\\",
                             "a/",
                             "\\.\\x",
                             "file:stream",
                             "a\nb",
                             "data\\\x01"})
        EXPECT_FALSE(SafeRelative(name)) << name;
    EXPECT_FALSE(SafeRelative(std::string_view{"a\0b", 3}));
    const struct {
        const char* name;
        const char* path;
    } rows[] = {
        {"\\data\\level1.tr4", "data/level1.tr4"},
        {"/data/level1.tr4", "data/level1.tr4"},
        {"script.dat", "script.dat"},
        {"\\...\\..x", ".../..x"},
        {"\\a*?[1]", "a*?[1]"},
        {"Grün und Blau.dat", "Grün und Blau.dat"},
    };
    for (const auto& row : rows) {
        const auto path = SafeRelative(row.name);
        ASSERT_TRUE(path) << row.name;
        EXPECT_EQ(path->native(), row.path);
        EXPECT_FALSE(path->is_absolute());
    }
    EXPECT_EQ(ToBackslashes("data/level1.tr4"), "\\data\\level1.tr4");
    EXPECT_FALSE(SafeName("data\\x"));
    EXPECT_TRUE(SafeName("x"));
}

TEST(Names, AreTakenApartAtTheirLastMarks)
{
    EXPECT_EQ(FileNameOf("C:file"), "file");
    EXPECT_EQ(FileNameOf("a\\b/c.txt"), "c.txt");
    EXPECT_EQ(FileNameOf("plain"), "plain");
    EXPECT_EQ(ExtensionOf("level1.tr4.zl"), ".zl");
    EXPECT_EQ(ExtensionOf("plain"), "");
    EXPECT_EQ(StripExtension("level1.tr4.zl"), "level1.tr4");
    EXPECT_EQ(BaseNameOf("x\\Winds.of.zip"), "Winds.of");
    EXPECT_EQ(ReplaceForbiddenChars("a/b\\c<d>e:f?g|h\"i*"), "a b c d e f g h i*");
    EXPECT_EQ(FolderFromText("/a/b//").native(), "/a/b");
    EXPECT_EQ(FolderFromText("/").native(), "/");
    EXPECT_EQ(InFolder("/", "\\levels").native(), "/levels");
    EXPECT_EQ(InFolder("/a", "\\data\\x").native(), "/a/data/x");
}

TEST(CodePage, EveryByteComesBackAndWhatHasNoPlaceBecomesAQuestionMark)
{
    for (int byte = 0; byte < 256; ++byte) {
        const std::string bytes(3, static_cast<char>(byte)); // beside itself, and in long runs
        const std::string longer = std::string(20, 'a') + bytes + std::string(9, 'b');
        EXPECT_EQ(ToWindows1252(FromWindows1252(bytes)), bytes) << byte;
        EXPECT_EQ(ToWindows1252(FromWindows1252(longer)), longer) << byte;
        EXPECT_TRUE(IsUtf8(FromWindows1252(bytes))) << byte;
    }
    EXPECT_EQ(FromWindows1252("\x80\x99\xFC"), "€™ü");
    EXPECT_EQ(ToWindows1252("Łódź – 日本"), "?\xF3"
                                            "d? \x96 ??");
    EXPECT_EQ(ToWindows1252("\xFFz"), "?z") << "a byte that is no UTF-8";
    EXPECT_TRUE(FitsWindows1252("Schloß Grünfels"));
    EXPECT_FALSE(FitsWindows1252("Łódź"));
    EXPECT_EQ(Readable("Gr\xFCn"), "Grün");
}

TEST(Text, IsTrimmedOfBlanksAlone)
{
    for (std::size_t blanks = 0; blanks < 40; ++blanks)
        for (std::size_t letters = 0; letters < 20; ++letters) {
            const std::string text(letters, 'x');
            EXPECT_EQ(TrimEnd(text + std::string(blanks, ' ')), text);
            EXPECT_EQ(Trim(std::string(blanks, ' ') + text + std::string(blanks, ' ')), text);
        }
    EXPECT_EQ(TrimEnd("a \t"), "a \t");
    EXPECT_EQ(TrimEnd(std::string_view{"a\0 ", 3}), (std::string_view{"a\0", 2}));
}

TEST(Text, ComparesWithoutCaseAndLocale)
{
    EXPECT_TRUE(EqualNames("ÄÖÜ.DAT", "äöü.dat"));
    EXPECT_TRUE(EqualNames("I.dat", "i.DAT"));
    EXPECT_FALSE(EqualNames("ı.dat", "i.dat"));
    EXPECT_TRUE(EndsWithName("level.TR4", ".tr4"));
    EXPECT_FALSE(EndsWithName("tr4", ".tr4"));
    EXPECT_EQ(FindFolded("..#Level_Code=", "#LEVEL_CODE="), 2U);
    EXPECT_EQ(FindFolded("abc", "d"), std::string_view::npos);
    EXPECT_EQ(LeadingNumber(" 0012#"), 12);
    EXPECT_EQ(LeadingNumber("-7"), -7);
    EXPECT_EQ(LeadingNumber("x"), 0);
    EXPECT_EQ(LeadingNumber("99999999999"), 0);
    EXPECT_EQ(WholeNumber<int>("0012"), 12);
    EXPECT_EQ(WholeNumber<int>("-7"), -7);
    for (const char* word : {"", " 1", "1 ", "+1", "1a", "0x1", "-", "2147483648"})
        EXPECT_EQ(WholeNumber<int>(word), std::nullopt) << word;
    EXPECT_EQ(WholeNumber<std::uint32_t>("-7"), std::nullopt);
    EXPECT_EQ(ZeroPadded(12, 4), "0012");
    EXPECT_EQ(ZeroPadded(10000, 4), "10000");
}

} // namespace

} // namespace kestrova
