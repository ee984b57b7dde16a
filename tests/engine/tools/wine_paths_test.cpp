#include "tools/wine_paths.h"

#include "platform/locale.h"
#include "world/tool_box.h"
#include "world/windows_program.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;

class WinePaths : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fs::create_directories(drives);
        fs::create_directories(box / "prefix/drive_c/Games");
        fs::create_directories(box / "elsewhere/trle");
        fs::create_directory_symlink("../drive_c", drives / "c:");
        fs::create_directory_symlink(box / "elsewhere", drives / "f:");
        fs::create_directory_symlink(box / "elsewhere/trle", drives / "d:");
        fs::create_directory_symlink(box / "gone", drives / "e:");
    }
    ToolBox box;
    const Path prefix = box / "prefix";
    const Path drives = box / "prefix/dosdevices";
};

TEST_F(WinePaths, LieOnTheDriveThatReachesFurthest)
{
    EXPECT_EQ(WindowsPath(prefix, box / "prefix/drive_c/Games/ü b.tom"), "C:\\Games\\ü b.tom");
    EXPECT_EQ(WindowsPath(prefix, box / "elsewhere/trle/a/b.tom"), "D:\\a\\b.tom");
    EXPECT_EQ(WindowsPath(prefix, box / "elsewhere/b.tom"), "F:\\b.tom");
    EXPECT_EQ(WindowsPath(prefix, box / "elsewhere/trle"), "D:\\");
    const std::string none = WindowsPath(prefix, box / "level/b.tom");
    EXPECT_EQ(none, "\\\\?\\unix" + ReplaceAll((box / "level/b.tom").native(), "/", "\\"))
        << "a prefix whose drive Z was taken away";
    fs::create_directory_symlink("/", drives / "z:");
    EXPECT_EQ(WindowsPath(prefix, "/nowhere/b c.tom"), "Z:\\nowhere\\b c.tom");
    EXPECT_EQ(WindowsPath(prefix, box / "elsewhere/trle/a/b.tom"), "D:\\a\\b.tom");

    const Path fresh = box / "none yet";
    EXPECT_EQ(WindowsPath(fresh, "/nowhere/b.tom"), "Z:\\nowhere\\b.tom");
    EXPECT_EQ(WindowsPath(fresh, fresh / "drive_c/b.tom"), "C:\\b.tom");
}

TEST_F(WinePaths, OfWhatIsNotPlainWineIsAskedForAShortForm)
{
    const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
    const Path program = box / "prefix/drive_c/tom2pc.exe";
    const auto said = [&](const Path& file) {
        return ShortPathForProgram(ToolsOf(box.session), program, file, *progress);
    };
    fs::create_directory_symlink("/", drives / "z:");
    box.Write("prefix/drive_c/tom2pc.exe", "#!/bin/sh");
    EXPECT_EQ(said("/a b/ü.tom"), "/a b/ü.tom") << "no Windows program";
    box.Write("prefix/drive_c/tom2pc.exe", WindowsProgram(machine64));
    box.machine.tools["wine"] =
        box.AddTool("wine", "printf '%s %s\\n' \"$WINEPREFIX\" \"$*\" >>'" +
                                (box / "asked").native() + "'; printf 'Z:\\\\SHORT~1\\r\\n'");
    EXPECT_EQ(said("/plain/name of a file ü.tom"), "Z:\\plain\\name of a file ü.tom");
    EXPECT_FALSE(box.Has("asked"));
    EXPECT_EQ(said("/a b/ü.tom"), "Z:\\SHORT~1\\ü.tom");
    EXPECT_EQ(box.Read("asked"), prefix.native() + " winepath -s Z:\\a b\n");

    for (const char* script : {"exit 0", "exit 1", "echo 'no short form'", "kill -9 $$"}) {
        box.machine.tools["wine"] = box.AddTool("wine", script);
        EXPECT_EQ(said("/a b/ü.tom"), "Z:\\a b\\ü.tom") << script;
    }
    box.machine.tools.erase("wine");
    EXPECT_EQ(said("/a b/ü.tom"), "Z:\\a b\\ü.tom");
}

TEST(Locale, IsThatOfTheSurroundings)
{
    const char* given = std::getenv("LC_ALL");
    const std::string before = given == nullptr ? "" : given;
    ::setenv("LC_ALL", "C.UTF-8", 1);
    EXPECT_TRUE(platform::UsesUtf8());
    for (const char* other : {"C", "POSIX", "xx_YY.UTF-8"}) {
        ::setenv("LC_ALL", other, 1);
        EXPECT_FALSE(platform::UsesUtf8()) << other;
    }
    if (given == nullptr)
        ::unsetenv("LC_ALL");
    else
        ::setenv("LC_ALL", before.c_str(), 1);
}

} // namespace

} // namespace kestrova::testing
