#include "formats/wine_registry.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{
namespace
{

const std::string head = "WINE REGISTRY Version 2\n;; All keys relative to \\\\Machine\n\n"
                         "#arch=win64\n\n";

/// The value of `App\x.exe` in a registry that has these lines.
std::string ValueAmong(const std::string& lines)
{
    return DefaultValueOf(head + lines, "App\\x.exe").value_or("none");
}

TEST(WineRegistry, TheValueOfAKeyIsReadWithWhatBackslashesMean)
{
    const struct {
        const char* line;
        const char* value;
    } cases[] = {
        {R"(@="C:\\Core Design\\trle\\x.exe")", "C:\\Core Design\\trle\\x.exe"},
        {R"(@="C:\\Stra\x00dfe \x20ac\\a\"b")", "C:\\Straße €\\a\"b"},
        {R"(@="\xd83c\xdfae\x00411")", "🎮A1"}, // a pair of halves; four digits at most
        {R"(@=str(2):"%ProgramFiles%\\x")", "%ProgramFiles%\\x"},
        {R"(@="a\tb\33c")", "a\tb\33c"},
        {R"(@="")", ""},
        {R"(@="never ended)", "none"},
        {R"(@="ends with \)", "none"},
        {R"(@="\xzz")", "none"},
        {R"(@=dword:00000001)", "none"},
        {R"("Path"="C:\\other")", "none"},
    };
    for (const auto& [line, value] : cases)
        EXPECT_EQ(ValueAmong("[App\\\\x.exe] 17\n#time=1\n" + std::string{line} + "\n"), value)
            << line;
}

TEST(WineRegistry, AValueBelongsToItsOwnKey)
{
    const std::string own = "[App\\\\x.exe] 17\n@=\"mine\"\n";
    const std::string other = "[App\\\\x.exe2] 17\n@=\"other\"\n";
    EXPECT_EQ(ValueAmong(other + own), "mine");
    EXPECT_EQ(ValueAmong("[App\\\\x.exe] 17\n\n" + other), "none");
    EXPECT_EQ(ValueAmong("[APP\\\\X.EXE]\r\n@=\"capitals\"\r\n"), "capitals");
    EXPECT_EQ(ValueAmong("[App\\\\x.exe\n@=\"no end\"\n"), "none");
    EXPECT_EQ(ValueAmong(R"([App\\x\[1\].exe] 17)"
                         "\n@=\"brackets\"\n" +
                         own),
              "mine");
    EXPECT_EQ(ValueAmong(std::string(5'000'000, '[') + own), "none"); // a line without an end
}

} // namespace
} // namespace kestrova::testing
