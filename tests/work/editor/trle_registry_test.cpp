#include "editor/trle_registry.h"

#include "editor/find_trle.h"
#include "editor/usual_places.h"
#include "editor/wine_prefixes.h"
#include "tools/wine_paths.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{
namespace
{

/// A person with Wine prefixes in the home folder.
class PrefixWorld : public World
{
public:
    PrefixWorld()
    {
        MakeTrle();
        session.preferences.trlePath = "   ";
    }
    void AddPrefix(const std::string& place, const std::string& value = {},
                   const std::string& key = "Software\\\\Microsoft\\\\Windows\\\\CurrentVersion")
    {
        std::filesystem::create_directories(root / place / "drive_c");
        std::filesystem::create_directories(root / place / "dosdevices");
        std::filesystem::create_directory_symlink("../drive_c", root / place / "dosdevices/c:");
        std::filesystem::create_directory_symlink("/", root / place / "dosdevices/z:");
        Write(place + "/user.reg", "WINE REGISTRY Version 2\n");
        Write(place + "/system.reg", "WINE REGISTRY Version 2\n\n[" + key +
                                         "\\\\App Paths\\\\winroomedit.exe] 17\n@=\"" + value +
                                         "\"\n");
    }
    Path Found() { return TrlePathFromRegistry(session.Folders()); }
};

TEST(TrlePathFromRegistry, TakesAProgramsFolderOrTheFolderItself)
{
    PrefixWorld box;
    EXPECT_EQ(box.Found(), "");
    const Path onC = box / "person/.wine/drive_c";
    const struct {
        const char* value;
        Path folder;
    } cases[] = {
        {R"(C:\\Core Design\\trle\\winroomedit.exe)", onC / "Core Design/trle"},
        {R"(c:/Spiele \xfc/trle/WINROOMEDIT.EXE)", onC / "Spiele ü/trle"},
        {R"(C:\\trle)", onC / "trle"},
        {R"(C:\\trle\\)", onC / "trle"},
        {R"(Z:\\opt\\trle)", "/opt/trle"},
        {R"(C:\\..\\..\\trle)", ""},
        {R"(Q:\\trle)", ""},
        {R"(trle)", ""},
        {"", ""},
    };
    for (const auto& [value, folder] : cases) {
        std::filesystem::remove_all(box / "person");
        box.AddPrefix("person/.wine", value);
        EXPECT_EQ(box.Found(), folder) << value;
    }
}

TEST(TrlePathFromRegistry, OfAllPrefixesTheOneWithAWholeEditorGoesFirst)
{
    PrefixWorld box;
    box.AddPrefix("person/.wine", R"(C:\\gone\\winroomedit.exe)");
    EXPECT_EQ(box.Found(), box / "person/.wine/drive_c/gone");
    const std::string place = ".local/share/wineprefixes/level editor";
    box.AddPrefix("person/" + place, R"(C:\\TRLE\\winroomedit.exe)",
                  "Software\\\\Wow6432Node\\\\Microsoft\\\\Windows\\\\CurrentVersion");
    std::filesystem::rename(box / "trle", box / ("person/" + place + "/drive_c/trle"));
    const Path whole = box / ("person/" + place + "/drive_c/trle");
    EXPECT_EQ(box.Found(), whole);
    EXPECT_EQ(RegisteredEditors(box.session.Folders()).size(), 2U);
    ASSERT_EQ(::setenv("WINEPREFIX", (box / "person/.wine").c_str(), 1), 0); // the same one again
    EXPECT_EQ(KnownPrefixes(box.session.Folders()).size(), 2U);

    // It stands in the window, and counts once the person accepts it.
    TrleFinder finder{box.session};
    EXPECT_FALSE(finder.Prepare());
    EXPECT_EQ(finder.Folder(), whole);
    EXPECT_EQ(box.session.TrleFolder(), "");
    EXPECT_TRUE(finder.Accept());
    EXPECT_EQ(box.session.TrleFolder(), whole);
}

TEST(TrlePathFromRegistry, PathsOfAPrefixComeBackTheSame)
{
    PrefixWorld box;
    box.AddPrefix("person/.wine");
    const Path prefix = box / "person/.wine";
    for (const Path& path : {prefix / "drive_c/Core Design/trle", box / "ü b/x.exe"})
        EXPECT_EQ(PathInPrefix(prefix, WindowsPath(prefix, path)), path);
    EXPECT_EQ(WindowsPath(prefix, prefix / "drive_c/Core Design/trle"), "C:\\Core Design\\trle");
}

TEST(FoundEditors, AreTheWholeOnesOfRegistriesAndUsualPlacesEachOnce)
{
    PrefixWorld box;
    EXPECT_TRUE(FoundEditors(box.session.Folders()).empty());
    const auto put = [&](const std::string& place) {
        std::filesystem::create_directories((box / place).parent_path());
        std::filesystem::copy(box / "trle", box / place, std::filesystem::copy_options::recursive);
    };
    const std::string usual = "person/.wine/drive_c/Program Files/Core Design/trle";
    box.AddPrefix("person/.wine", R"(C:\\Program Files\\Core Design\\trle\\winroomedit.exe)");
    box.AddPrefix("person/Games/bottle", R"(C:\\mine\\winroomedit.exe)");
    EXPECT_TRUE(FoundEditors(box.session.Folders()).empty()) << "what is named is gone";
    put(usual);
    put("person/Games/bottle/drive_c/mine");
    put("person/TRLE");
    put("person/.local/share/Core Design/trle");
    std::filesystem::remove(box / "person/.local/share/Core Design/trle/tomb4.exe");
    EXPECT_EQ(FoundEditors(box.session.Folders()),
              (std::vector<Path>{box / usual, box / "person/Games/bottle/drive_c/mine",
                                 box / "person/TRLE"}));
}

} // namespace
} // namespace kestrova::testing
