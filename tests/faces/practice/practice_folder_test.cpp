#include "practice/practice_folder.h"

#include "core/files.h"
#include "core/text.h"
#include "formats/installer_kind.h"
#include "formats/level_config.h"
#include "pictures/bitmap.h"
#include "pictures/picture.h"
#include "platform/file_content.h"
#include "platform/places.h"
#include "practice/game_data.h"
#include "practice/practice_script.h"
#include "world/world.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>

namespace kestrova
{
namespace
{

using testing::World;

constexpr PracticeOptions small{2'000'000};
const Path builtPrograms = platform::ExecutableFolder() / "../src/mains";

/// Those that were built beside this test, but for the game, which takes the windows' libraries.
PracticePrograms BuiltStandIns(const World& box)
{
    box.Write("game", "the game");
    PracticePrograms programs = StandInsIn(builtPrograms);
    programs.game = box / "game";
    return programs;
}

/// Made once, since every test looks at the same folder.
class PracticeFolder : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        box = new World;
        made = new Result<PracticeMade>(
            MakePracticeFolder(*box / "practice", BuiltStandIns(*box), {}, small));
    }
    static void TearDownTestSuite()
    {
        delete made;
        delete box;
    }
    void SetUp() override { ASSERT_TRUE(*made) << made->Error().reason; }

    static World* box;
    static Result<PracticeMade>* made;
};
World* PracticeFolder::box = nullptr;
Result<PracticeMade>* PracticeFolder::made = nullptr;

unsigned Number(std::string_view bytes, std::size_t at, std::size_t size)
{
    unsigned number = 0;
    for (std::size_t i = size; i-- > 0;)
        number = number << 8 | static_cast<std::uint8_t>(bytes[at + i]);
    return number;
}

std::string Bytes(const Path& file)
{
    const Result<std::string> bytes = ReadWholeFile(file);
    return bytes ? *bytes : std::string{};
}

TEST_F(PracticeFolder, PassesForALevelEditorsFolder)
{
    const Path trle = (*made)->trle;
    const Path game = trle / "tomb4.exe";
    EXPECT_EQ(Bytes(game), "the game");
    EXPECT_EQ(platform::FactsOf(game).mode & 0777U, 0755U);
    EXPECT_GE(ListFiles(trle / "data", "*.tr4")->size(), 2U);
    EXPECT_GE(ListFiles(trle, "*.dat")->size(), 2U);
    for (const char* file : {"script.dat", "english.dat", "load.bmp", "script/script.txt"})
        EXPECT_TRUE(FileExists(trle / file)) << file;
    for (const char* folder : {"manual", "script", "graphics/wads", "sound/samples"})
        EXPECT_FALSE(ListFiles(ResolvePath(trle / folder), "*.*")->empty()) << folder;

    const std::vector<Path> waves = *ListFiles(trle / "audio", "*.wav");
    EXPECT_EQ(waves.size(), 54U);
    std::set<std::string> different;
    for (const Path& wave : waves) {
        const std::string bytes = Bytes(wave);
        ASSERT_GT(bytes.size(), 10'000U) << wave;
        EXPECT_EQ(Number(bytes, 20, 2), 2U) << wave;
        EXPECT_EQ(Number(bytes, 22, 2), 2U) << wave;
        EXPECT_EQ(Number(bytes, 24, 4), 44100U) << wave;
        EXPECT_EQ(Number(bytes, 34, 2), 4U) << wave;
        different.insert(bytes);
    }
    EXPECT_EQ(different.size(), waves.size());
    EXPECT_EQ(PracticeTitle(Bytes(trle / "Script.dat")), "TRLE");
    EXPECT_TRUE(ListFiles(trle, "savegame.*")->empty());
}

TEST_F(PracticeFolder, BringsADriveThatWritesAndThreeBlankDiscs)
{
    const auto drive = PracticeDrive((*made)->trle);
    ASSERT_TRUE(drive);
    EXPECT_TRUE(drive->writes);
    EXPECT_EQ(drive->medium, (*made)->discs / "disc1.iso");
    EXPECT_TRUE(FolderExists(drive->folder));
    EXPECT_EQ(ListFiles((*made)->discs, "*.iso")->size(), 3U);
    EXPECT_EQ(FileSize(drive->medium), 0U);
    EXPECT_FALSE(PracticeDrive((*made)->levels)); // of no other folder
    EXPECT_FALSE(PracticeDrive((*made)->trle / "trle"));
}

TEST_F(PracticeFolder, NamesAreInMixedCase)
{
    const Result<Tree> tree = ScanTree((*made)->trle);
    ASSERT_TRUE(tree);
    const auto count = [&](auto shaped) {
        return std::count_if(tree->files.begin(), tree->files.end(), [&](const Path& file) {
            const std::string name = file.filename();
            return std::any_of(name.begin(), name.end(), shaped);
        });
    };
    EXPECT_GT(count([](char c) { return c >= 'A' && c <= 'Z'; }), 15);
    EXPECT_GT(count([](char c) { return c >= 'a' && c <= 'z'; }), 15);
    EXPECT_FALSE(std::filesystem::exists((*made)->trle / "data")); // as DATA only
    EXPECT_FALSE(std::filesystem::exists((*made)->trle / "load.bmp"));
}

TEST_F(PracticeFolder, HasFiveLevelsOfTheirOwnKinds)
{
    const std::vector<Path> levels = *ListSubfolders((*made)->levels);
    ASSERT_EQ(levels.size(), 5U);
    std::set<std::string> pictures;
    int italian = 0;
    int readme = 0;
    int nested = 0;
    int lettered = 0;
    double largest = 0;
    for (const Path& level : levels) {
        const Result<Tree> tree = ScanTree(level);
        ASSERT_TRUE(tree);
        std::set<std::string> endings;
        std::string title;
        for (const Path& file : tree->files) {
            const std::string name = FoldCase(file.filename().native());
            endings.insert(ExtensionOf(name));
            if (name == "script.dat")
                title = FromWindows1252(PracticeTitle(Bytes(file)));
            if (name == "load.bmp") {
                pictures.insert(Bytes(file));
                const Result<Picture> picture = DecodeBitmap(Bytes(file));
                ASSERT_TRUE(picture) << file;
                EXPECT_EQ(picture->width, 640);
            }
            if (name.ends_with(".jpg")) {
                EXPECT_TRUE(DecodePicture(Bytes(file))) << file;
            }
            italian += name == "italian.dat" ? 1 : 0;
            readme += name == "readme.txt" ? 1 : 0;
            lettered += ToWindows1252(name).size() < name.size() ? 1 : 0;
            EXPECT_TRUE(FitsWindows1252(name)) << name;
        }
        EXPECT_EQ(title, level.filename()); // what the game finds is the folder's name
        EXPECT_TRUE(endings.contains(".tr4") && endings.contains(".dat")) << level;
        nested += tree->folders.size() > 3 ? 1 : 0;
        largest = std::max(largest, *FolderSize(level));
    }
    EXPECT_EQ(pictures.size(), 5U);
    EXPECT_EQ(italian, 1);
    EXPECT_EQ(readme, 1);
    EXPECT_EQ(nested, 1);
    EXPECT_EQ(lettered, 4);
    EXPECT_GT(largest, 2'000'000);

    if (platform::FindOnPath("zip").empty()) {
        EXPECT_FALSE((*made)->remark.empty());
        return;
    }
    EXPECT_EQ((*made)->remark, "");
    ASSERT_EQ((*made)->zips.size(), 2U);
    for (const Path& zip : (*made)->zips) {
        EXPECT_TRUE(Bytes(zip).starts_with("PK\3\4")) << zip;
        EXPECT_TRUE(FolderExists(StripExtension(zip.native()))) << zip;
    }
}

TEST_F(PracticeFolder, NeverTouchesWhatIsThere)
{
    const auto before = box->Snapshot("practice");
    const Result<PracticeMade> again =
        MakePracticeFolder(*box / "practice", BuiltStandIns(*box), {});
    ASSERT_FALSE(again);
    EXPECT_EQ(again.Error().code, ErrorCode::Refused);
    EXPECT_NE(again.Error().reason.find("nothing was changed"), std::string::npos);
    EXPECT_TRUE(box->Snapshot("practice") == before);

    box->Write("other/TRLE", "a file of the person's own");
    EXPECT_FALSE(MakePracticeFolder(*box / "other", BuiltStandIns(*box), {}, small));
    EXPECT_EQ(box->Snapshot("other").size(), 1U);
}

TEST(Practice, StoppedOrFailedItLeavesNothing)
{
    World box;
    const PracticePrograms programs = BuiltStandIns(box);
    for (Path PracticePrograms::*program :
         {&PracticePrograms::game, &PracticePrograms::compiler, &PracticePrograms::scriptCompiler,
          &PracticePrograms::setup}) {
        PracticePrograms lacking = programs;
        lacking.*program = box / "absent";
        const auto made = MakePracticeFolder(box / "one", lacking, {}, small);
        ASSERT_FALSE(made);
        EXPECT_EQ(made.Error().code, ErrorCode::Missing);
        EXPECT_FALSE(box.Has("one"));
    }

    const auto stop = [](int, int total, const std::string&) {
        EXPECT_GT(total, 90);
        return false;
    };
    const Result<PracticeMade> stopped = MakePracticeFolder(box / "two", programs, stop, {});
    ASSERT_FALSE(stopped);
    EXPECT_EQ(stopped.Error().code, ErrorCode::Stopped);
    EXPECT_TRUE(std::filesystem::is_empty(box / "two"));
}

TEST(Practice, TheSameSeedGivesTheSameBytesOnEveryMachine)
{
    const std::string bytes = MakeGameData(7, 300'001);
    EXPECT_EQ(platform::HashOf(std::as_bytes(std::span(bytes))),
              "c7348ce1936a9aecee8548d95773638c");
    EXPECT_NE(bytes.substr(0, 1000), MakeGameData(8, 1000));
    EXPECT_EQ(MakeGameData(7, 2), "TR");
}

/// The exit code of a shell's words, which work in `folder`; `output` gets what they wrote.
int ShellIn(const Path& folder, const std::string& words, std::string* output = nullptr)
{
    FILE* pipe = ::popen(("cd '" + folder.native() + "' && " + words).c_str(), "r");
    for (int byte = 0; (byte = std::fgetc(pipe)) != EOF;)
        if (output)
            *output += static_cast<char>(byte);
    return ::pclose(pipe);
}

/// The stand-ins for the Level Editor's compilers work on what the folder brings.
TEST_F(PracticeFolder, CompilesItsOwnSources)
{
    const Path trle = (*made)->trle;
    const auto titleOf = [](const Path& level) {
        const std::string bytes = Bytes(level);
        return bytes.substr(std::min<std::size_t>(4, bytes.size())).substr(0, bytes.find('\n') - 4);
    };
    std::string said;
    EXPECT_EQ(ShellIn("/",
                      "'" + (trle / "tom2pc.exe").native() + "' '" +
                          ResolvePath(trle / "graphics/wads/practice.tom").native() + "'",
                      &said),
              0);
    EXPECT_NE(said.find("*** Build all complete ***"), std::string::npos) << said;
    const Path level = trle / "DATA/Practice.tr4";
    EXPECT_EQ(titleOf(level), "Practice");
    EXPECT_GT(Bytes(level).size(), Bytes(ResolvePath(trle / "graphics/wads/practice.wad")).size());
    std::filesystem::remove(level);

    box->Write("lonely.tom", "name=Lonely\n");
    EXPECT_NE(
        ShellIn("/",
                "'" + (trle / "tom2pc.exe").native() + "' '" + (*box / "lonely.tom").native() + "'",
                &said),
        0);
    EXPECT_NE(said.find("lonely.wad"), std::string::npos) << said;
    EXPECT_FALSE(FileExists(trle / "data/lonely.tr4"));

    const Path script = trle / "Script";
    std::vector<std::string> brought;
    for (const char* result : {"script.dat", "english.dat", "italian.dat"}) {
        brought.push_back(Bytes(script / result));
        std::filesystem::remove(script / result);
    }
    EXPECT_EQ(ShellIn(script, "./script.exe 'script.txt '"), 0);
    for (std::size_t i = 0; const char* result : {"script.dat", "english.dat", "italian.dat"})
        EXPECT_EQ(Bytes(script / result), brought[i++]) << result;
    EXPECT_EQ(Bytes(trle / "Script.dat"), brought.front());
    EXPECT_EQ(Bytes(trle / "ENGLISH.DAT"), brought[1]);
}

TEST_F(PracticeFolder, PackagesNeedEachKindOfWork)
{
    const Path packages = (*made)->packages;
    for (const char* zipped : {"The Salt Mine", "Two Wells", "Seven Doors", "lagoon_wads"}) {
        EXPECT_FALSE(ListFiles(packages / zipped, "*.tom")->empty()) << zipped;
        if (!platform::FindOnPath("zip").empty()) {
            EXPECT_TRUE(FileExists(packages / (std::string{zipped} + ".zip"))) << zipped;
        }
    }
    EXPECT_TRUE(ListFiles(packages / "Two Wells", "*.wad")->empty());
    const auto config = ParseLevelConfig(Bytes(packages / "Seven Doors/kestrova.cfg"));
    ASSERT_TRUE(config);
    for (const std::string* asked : {&config->importWads, &config->duplicates, &config->externWaves,
                                     &config->tomWads, &config->moreInfo})
        EXPECT_FALSE(asked->empty());
    EXPECT_EQ(config->files.size() + 1, ListFiles(packages / "Seven Doors", "*.*")->size());
    for (const ConfigFile& file : config->files)
        EXPECT_EQ(static_cast<std::size_t>(file.size),
                  Bytes(packages / "Seven Doors" / file.name).size());
    const Path editor = packages / "Level Editor setup/trle";
    for (const std::string& line : Split(Bytes(editor / "list.txt"), '\n')) {
        const std::string name = ReplaceAll(ReplaceAll(line, "\r", ""), "\\", "/");
        EXPECT_TRUE(name.empty() || FileExists(editor / name)) << name;
    }
    EXPECT_EQ(ListFiles(editor / "audio", "*.mp3")->size(), 54U);
}

TEST_F(PracticeFolder, SetupProgramsAreToldApartAndInstall)
{
    std::multiset<std::string> codes;
    const std::vector<Path> packages = *ListSubfolders((*made)->packages);
    for (const Path& folder : packages) {
        const std::vector<Path> programs = *ListFiles(folder, "*.exe");
        for (const Path& program : programs) {
            const std::string bytes = Bytes(program);
            const auto kind = DetectInstaller(program.filename().native(), InstallerBytesOf(bytes));
            codes.emplace(kind.code);
            std::string said;
            const Path work = *box / "installing" / folder.filename();
            std::filesystem::create_directories(work / "trle");
            std::ofstream{work / "trle/tomb4.exe"} << "the game";
            EXPECT_EQ(ShellIn(work, "'" + program.native() + "'", &said), 0) << said;
            const Path into = work / (kind.code == "ZIP" ? "Saltgate" : "trle");
            EXPECT_EQ(Bytes(into / "data/saltgate.tr4").size(), 350'000U) << said;
            EXPECT_TRUE(FileExists(into / "script.dat"));
        }
    }
    EXPECT_EQ(codes, (std::multiset<std::string>{"", "FLYDRIVE", "FLYDRIVE", "ZIP", "ZIP"}));
}

/// The stand-in game itself, as it was built beside this test.
class StandIn : public ::testing::Test
{
protected:
    Path game = builtPrograms / "kestrova-practice-game";
    void SetUp() override
    {
        if (!FileExists(game))
            GTEST_SKIP() << "built without windows";
    }
    /// Its standard output, started in `folder`.
    [[nodiscard]] std::string Run(const Path& folder, const std::string& argument) const
    {
        std::string output;
        EXPECT_EQ(ShellIn(folder,
                          "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM '" + game.native() +
                              "' " + argument,
                          &output),
                  0);
        return output;
    }
};

TEST_F(StandIn, SavesIntoTheFirstFreeSlotAndThenOverTheOldest)
{
    const World box;
    box.Write("trle/SCRIPT.DAT", PracticeScript(ToWindows1252("Schloß Grünfels")));
    EXPECT_EQ(Run(box / "trle", ""), "Schloß Grünfels\n");
    EXPECT_EQ(box.Snapshot("trle").size(), 1U);

    box.Write("trle/SAVEGAME.3", testing::SavegameBytes("from elsewhere", 40));
    for (int i = 0; i < 15; ++i)
        EXPECT_TRUE(Run(box / "trle", "--save-once").starts_with("Saved in slot ")) << i;
    const auto numberIn = [&](const std::string& name) {
        return Number(box.Read("trle/" + name), 75, 2);
    };
    EXPECT_EQ(numberIn("savegame.0"), 41U);
    EXPECT_EQ(numberIn("savegame.2"), 43U);
    EXPECT_EQ(numberIn("savegame.14"), 54U);
    EXPECT_EQ(numberIn("SAVEGAME.3"), 55U); // 40 was the oldest; its spelling stays
    EXPECT_FALSE(box.Has("trle/savegame.3"));
    const std::string saved = box.Read("trle/savegame.0");
    EXPECT_EQ(FromWindows1252(saved.substr(0, saved.find('\0'))), "Schloß Grünfels");
    EXPECT_EQ(saved.size(), 40U * 1024);
    EXPECT_NE(saved, box.Read("trle/savegame.1"));
}

} // namespace
} // namespace kestrova
