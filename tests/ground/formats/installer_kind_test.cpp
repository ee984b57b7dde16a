#include "formats/installer_kind.h"

#include "words/installers.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

const std::string indigo{"I\0n\0d\0i\0g\0o\0", 12};

std::string Program(std::size_t size, std::size_t place = 0, const std::string& mark = {})
{
    std::string program(size, '\0');
    return program.replace(place, mark.size(), mark);
}

TEST(InstallerKind, IsToldByItsMarks)
{
    const std::string ends{"\x80\x80\x80\0\0\0\0\0", 8};
    const struct {
        const char* name;
        std::string program;
        std::string_view code;
        Message installer;
    } cases[] = {
        {"Setup.EXE", Program(40'001, 30'272, indigo), "FLYDRIVE", Msg::InstallerFlyDrive},
        {"setup.exe", Program(40'001, 30'272 + 196, indigo), "FLYDRIVE", Msg::InstallerFlyDrive},
        {"setup.exe", Program(40'001, 30'272 + 197, indigo), "", Msg::InstallerUnknown},
        {"setup.exe", Program(40'001, 30'271, indigo), "", Msg::InstallerUnknown},
        {"setup.exe", Program(40'000, 30'272, indigo), "", Msg::InstallerUnknown},
        {"setup.exe", Program(40'001, 30'272, "Indigo"), "", Msg::InstallerUnknown},
        {"level.exe", Program(50'000, 30'272, indigo), "", Msg::InstallerUnknown},
        {"setup.exe", Program(40'001, 39'993, ends), "FLYDRIVE", Msg::InstallerFlyDrive},
        {"setup.exe", Program(40'000, 39'992, ends), "", Msg::InstallerUnknown},
        {"setup.exe", Program(40'001, 39'992, ends), "", Msg::InstallerUnknown},
        {"setup.exe", Program(40'000, 90, "WINZIP"), "ZIP", Msg::InstallerWinZip},
        {"level.exe", Program(9'000, 618, "winzip"), "ZIP", Msg::InstallerWinZip},
        {"level.exe", Program(9'000, 619, "winzip"), "", Msg::InstallerUnknown},
        {"level.exe", "winzip, compressed by petite", "ZIP", Msg::InstallerWinAce},
        {"setup.exe", Program(50'000, 30'272, indigo).replace(0, 6, "winzip"), "FLYDRIVE",
         Msg::InstallerFlyDrive},
        {"setup.exe", "", "", Msg::InstallerUnknown},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const InstallerKind kind =
            DetectInstaller(cases[i].name, InstallerBytesOf(cases[i].program));
        EXPECT_EQ(kind.code, cases[i].code) << i;
        EXPECT_EQ(kind.name, cases[i].installer) << i;
    }
}

} // namespace

} // namespace kestrova::testing
