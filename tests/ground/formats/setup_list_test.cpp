#include "formats/setup_list.h"

#include <gtest/gtest.h>
#include <vector>

namespace kestrova::testing
{
namespace
{

std::vector<std::string> NamesIn(std::string_view list)
{
    std::vector<std::string> names;
    for (std::string_view name = NextSetupName(list); !name.empty(); name = NextSetupName(list))
        names.emplace_back(name);
    return names;
}

TEST(SetupList, HasANameALine)
{
    const std::vector<std::string> names{"trle\\tomb4.exe", "\\audio\\000.mp3", "a b.txt"};
    EXPECT_EQ(NamesIn("trle\\tomb4.exe\r\n\r\n\\audio\\000.mp3\n\n  a b.txt "), names);
    EXPECT_EQ(NamesIn("\r\n \n "), std::vector<std::string>{});
    EXPECT_EQ(NamesIn(std::string(10 << 20, 'x')).size(), 1U);
}

TEST(SetupList, ANameThatLeadsOutHasNoKey)
{
    EXPECT_EQ(SetupKey("\\Audio\\000.MP3"), "audio/000.mp3");
    EXPECT_EQ(SetupKey("manual/Über.pdf"), "manual/über.pdf");
    EXPECT_EQ(SetupKey("manual\\\xdc"
                       "ber.pdf"),
              "manual/über.pdf"); // of the older code page
    for (const char* name : {"..", "..\\x", "a\\..\\..\\x", "C:\\x", "//x", "a\\\\b", "a\001"})
        EXPECT_EQ(SetupKey(name), "") << name;
    EXPECT_EQ(SetupKey(std::string(10 << 20, 'x')), "");
}

} // namespace
} // namespace kestrova::testing
