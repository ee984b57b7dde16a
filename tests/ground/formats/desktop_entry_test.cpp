#include "formats/desktop_entry.h"

#include "formats/setup_note.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{
namespace
{

TEST(DesktopEntry, NoLetterOfAPathMeansAnything)
{
    const DesktopEntry entry{.name = "a\nName=b",
                             .command = {"/o/50% \"of\" $x `y` \\z", "-setup"},
                             .folder = "/o/a\\b",
                             .icon = {},
                             .categories = "Game;"};
    EXPECT_EQ(FormatDesktopEntry(entry),
              "[Desktop Entry]\nType=Application\nVersion=1.4\nName=a\\nName=b\n"
              "Exec=\"/o/50%% \\\\\"of\\\\\" \\\\$x \\\\`y\\\\` \\\\\\\\z\" \"-setup\"\n"
              "Path=/o/a\\\\b\nCategories=Game;\nTerminal=false\n");
}

TEST(DesktopEntry, AnAddressIsOneOfTheWeb)
{
    const struct {
        const char* bytes;
        const char* address;
    } cases[] = {
        {"[InternetShortcut]\r\nURL=http://levels.example/a b\r\n", "http://levels.example/a b"},
        {"[InternetShortcut]\nurl=https://levels.example", "https://levels.example"},
        {"[InternetShortcut]\r\nBASEURL=http://x\r\nURL=file:///etc/passwd\r\n", ""},
        {"URL=/bin/sh", ""},
        {"", ""},
    };
    for (const auto& [bytes, address] : cases)
        EXPECT_EQ(AddressOfShortcut(bytes), address) << bytes;
    EXPECT_EQ(AddressOfShortcut("URL=http://" + std::string(100'000, 'x')), "");
}

TEST(SetupNote, ComesBackWholeOrNotAtAll)
{
    const SetupNote note{"/person/Spiele ü/trle", "german", 2049, 18446744073709551615U};
    const std::string text = FormatSetupNote(note);
    EXPECT_EQ(ParseSetupNote(text), note);
    for (std::size_t length = 0; length < text.size(); ++length)
        EXPECT_FALSE(ParseSetupNote(text.substr(0, length))) << length;
    EXPECT_FALSE(ParseSetupNote("relative\ngerman\n1 2\n"));
    EXPECT_FALSE(ParseSetupNote("/a\ngerman\n1 -2\n"));
}

} // namespace
} // namespace kestrova::testing
