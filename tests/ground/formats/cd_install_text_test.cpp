#include "formats/cd_install_text.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

TEST(CdInstallText, HasItsExactBytesAndReadsWhatOthersWrite)
{
    const CdInstall all{"TRLE", "\\Kestrova\\Setup.exe", "\\Cd_Archive.kva"};
    const std::string text =
        "#TRLE_SETUP# \r\nTRLE\r\n#KESTROVA_SETUP# \r\n\\Kestrova\\Setup.exe\r\n"
        "#ARCHIVE_PATH# \r\n\\Cd_Archive.kva\r\n";
    EXPECT_EQ(FormatCdInstall(all), text);
    EXPECT_EQ(FormatCdInstall({}), "");
    EXPECT_EQ(FormatCdInstall({{}, {}, "\\a.kva"}), "#ARCHIVE_PATH# \r\n\\a.kva\r\n");
    const std::pair<std::string_view, CdInstall> readable[] = {
        {text, all},
        {"#archive_path#\n\\a.kva", {{}, {}, "\\a.kva"}},
        {"junk\n#ARCHIVE_PATH# \r\n#TRLE_SETUP# \r\nTRLE\r\n", {"TRLE", {}, {}}},
        {"#ARCHIVE_PATH# \n\\a.kva\n#ARCHIVE_PATH# \n\\b.kva\n", {{}, {}, "\\a.kva"}},
        {"  #ARCHIVE_PATH# \n\\a.kva\n", {}},
        {"#ARCHIVE_PATH# \n\\a.kva\x01 \x02\r\n#TRLE_SETUP# \x01\nTRLE\n", {"TRLE", {}, "\\a.kva"}},
        {"#ARCHIVE_PATH# \n\\\xC4.kva\n", {{}, {}, "\\Ä.kva"}},
        {"", {}}};
    for (const auto& [bytes, install] : readable) {
        const auto parsed = ParseCdInstall(bytes);
        ASSERT_TRUE(parsed) << bytes;
        EXPECT_EQ(*parsed, install) << bytes;
    }
    for (const std::string_view path : {"\\..\\a.kva", "C:\\a.kva", "\\\\host\\a.kva", "\\a\\"})
        EXPECT_FALSE(ParseCdInstall("#ARCHIVE_PATH# \n" + std::string{path} + "\n")) << path;
}

} // namespace kestrova::testing
