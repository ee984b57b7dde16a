#include "formats/drive_setting.h"

#include "formats/seen_note.h"

#include <gtest/gtest.h>

namespace kestrova
{

TEST(DriveSetting, EveryPathComesBackAndNonsenseNamesNoDrive)
{
    for (const std::string& path :
         {std::string{"/a b/c%7C|d;e=f\n\t.iso"}, std::string{"r\xe9lative/\xff"}, std::string{},
          std::string{"/Zażółć/#1.iso"}, std::string{" blanks "}, std::string{"%zz%4"}}) {
        const DriveSetting drive{"toy-1", path, "seen" + path, 650, true};
        const std::string text = FormatDriveSetting(drive);
        EXPECT_EQ(text.find('\n'), std::string::npos);
        ASSERT_TRUE(ParseDriveSetting("toy-1", text)) << text;
        EXPECT_EQ(*ParseDriveSetting("toy-1", text), drive) << text;
    }
    EXPECT_EQ(*ParseDriveSetting("a", " m.iso | seen "), (DriveSetting{"a", "m.iso", "seen"}));
    EXPECT_EQ(*ParseDriveSetting("a", "|seen|99999999999999999999|WRITES|more"),
              (DriveSetting{"a", "", "seen", 0, true}));
    EXPECT_EQ(ParseDriveSetting("a", "|seen|99999999999|")->megabytes, 1'000'000U);
    EXPECT_FALSE(ParseDriveSetting("a", ""));
    EXPECT_FALSE(ParseDriveSetting("a", "m.iso"));
    EXPECT_FALSE(ParseDriveSetting("a", "m.iso| "));
    EXPECT_FALSE(ParseDriveSetting("a", "%00|seen"));
    EXPECT_FALSE(ParseDriveSetting("a", "|" + std::string(5000, 'x')));
    for (const char* name : {"", "../a", ".a", "a/b", "a b", "a=b", "\xc3\xa4"})
        EXPECT_FALSE(ParseDriveSetting(name, "|seen")) << name;
}

TEST(SeenNote, CountsOnlyAsAWhole)
{
    const SeenNote note{SeenNote::Way::Loop, "/a\nb", "/dev/loop0", "/c.iso", 5, -7, 8, 9, "ff"};
    const std::string text = FormatSeenNote(note);
    ASSERT_TRUE(ParseSeenNote(text));
    EXPECT_EQ(*ParseSeenNote(text), note);
    for (std::size_t length = 0; length < text.size(); ++length)
        EXPECT_FALSE(ParseSeenNote(std::string_view{text}.substr(0, length))) << length;
    EXPECT_FALSE(ParseSeenNote(text + "x"));
}

} // namespace kestrova
