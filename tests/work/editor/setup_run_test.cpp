#include "editor/setup_run.h"

#include "core/leftovers.h"
#include "editor/folder_test.h"
#include "editor/setup_shortcuts.h"
#include "editor/setup_world.h"
#include "sandbox/faults.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{
namespace
{

constexpr const char* installed = "person/Spiele ü/trle";
constexpr const char* entries = "person/.local/share/applications/Core Design";

/// The labels in their order, each once.
std::vector<std::string> LabelsOf(const SetupWorld& box)
{
    std::vector<std::string> labels;
    for (const std::string& text : box.host.progressTexts)
        if (!text.empty() && (labels.empty() || labels.back() != text))
            labels.push_back(text);
    return labels;
}

TEST(LevelEditorSetup, GoesThroughAllPhasesInOrder)
{
    SetupWorld box;
    box.WantZips({box.Zip()});
    box.wish.language = FindSetupLanguage("german");
    ASSERT_TRUE(box.SetUp()) << box.host.AllTold();
    EXPECT_EQ(box.target, box / installed);
    const std::string place = (box / installed).native();
    const std::vector<std::string> wanted{
        "Verify source trle size in progress...",
        "Unzipping 'trle setup.zip' in progress",
        "Checking integrity source setup files",
        "Copying files from trle setup.zip",
        "Removing only read flag from " + place,
        "Creating link files in progress...",
        "Converting audio files in progress (AUDIO folder)",
        "Converting audio files in progress (SOUND\\SAMPLES folder)",
        "Creating .tr4 files (compiling .tom files)",
        "Creating register key",
        "Checking integrity target setup files",
        "Checking integrity target setup filesOK (No errors)",
        "Setup finished"};
    EXPECT_EQ(LabelsOf(box), wanted);
    ASSERT_EQ(box.host.told.size(), 2U) << box.host.AllTold();
    EXPECT_EQ(box.host.told[0].text.substr(0, 39), "Setup will last several minutes (about ");
    EXPECT_EQ(box.host.told[1].text, "Tomb Raider Level Editor correctly installed");

    const auto lacks = WhatTrleLacks(box / installed);
    EXPECT_TRUE(lacks && lacks->empty());
    FileContents files = box.Snapshot(installed);
    EXPECT_EQ(files["german.dat"], "german");
    EXPECT_EQ(files["script.dat"], "script");
    EXPECT_EQ(files["data/city.tr4"], "city source");
    EXPECT_EQ(files["load.bmp"].substr(0, 2), "BM");
    EXPECT_TRUE(files.contains("load_eng.jpg"));
    EXPECT_FALSE(files.contains("load_fr.jpg"));
    EXPECT_TRUE(files.contains("Manual/manual_ger.pdf"));
    EXPECT_FALSE(files.contains("Manual/manual_eng.pdf"));
    EXPECT_FALSE(std::filesystem::exists(box / "home/swap/setup"));
    EXPECT_NE(std::filesystem::status(box / installed / "list.txt").permissions() &
                  std::filesystem::perms::owner_write,
              std::filesystem::perms::none);
}

TEST(LevelEditorSetup, MakesShortcutsInTheLanguage)
{
    SetupWorld box;
    box.WantFolder();
    box.wish.language = FindSetupLanguage("german");
    ASSERT_TRUE(box.SetUp()) << box.host.AllTold();
    FileContents links = box.Snapshot(entries);
    const std::string group = "Tomb-Raider-Level-Editor/";
    std::vector<std::string> names;
    for (const auto& [name, text] : links)
        names.push_back(name);
    const std::vector<std::string> wanted{
        group + "Dokummentation/Handbuch.desktop", group + "Setup Tomb Raider.desktop",
        group + "Tomb Raider starten.desktop",     group + "Tools/Level-Konverter.desktop",
        group + "Tools/Zimmer-Editor.desktop",     group + "Weblinks/Core Design.desktop"};
    EXPECT_EQ(names, wanted);
    const std::string place = (box / installed).native();
    const std::string& game = links[group + "Setup Tomb Raider.desktop"];
    EXPECT_NE(game.find("\nExec=\"" + place + "/tomb4.exe\" \"-setup\"\n"), std::string::npos)
        << game;
    EXPECT_NE(game.find("\nPath=" + place + "\n"), std::string::npos) << game;
    EXPECT_NE(links[group + "Weblinks/Core Design.desktop"].find(
                  "Exec=\"xdg-open\" \"http://levels.example/\""),
              std::string::npos);

    // A second installation leaves the entries of the first one alone.
    box.wish.target = box / "second";
    ASSERT_TRUE(box.SetUp()) << box.host.AllTold();
    EXPECT_TRUE(box.Has(entries + std::string{"/Tomb-Raider-Level-Editor 2/"} +
                        "Tomb Raider starten.desktop"));
    EXPECT_EQ(box.Snapshot(entries + std::string{"/Tomb-Raider-Level-Editor"}).size(), 6U);

    // Those of one that is no more give way to the next one's.
    std::filesystem::remove_all(box / "second");
    box.wish.target = box / "third";
    ASSERT_TRUE(box.SetUp()) << box.host.AllTold();
    EXPECT_NE(box.Read(entries + std::string{"/Tomb-Raider-Level-Editor 2/Tomb Raider "
                                             "starten.desktop"})
                  .find("\nPath=" + (box / "third").native() + "\n"),
              std::string::npos);
    // A group in which a person keeps something stays.
    std::filesystem::remove_all(box / "third");
    box.Write(entries + std::string{"/Tomb-Raider-Level-Editor 2/mine.txt"}, "mine");
    box.wish.target = box / "fourth";
    ASSERT_TRUE(box.SetUp()) << box.host.AllTold();
    EXPECT_TRUE(box.Has(entries + std::string{"/Tomb-Raider-Level-Editor 2/mine.txt"}));
    EXPECT_TRUE(FolderExists(box / (entries + std::string{"/Tomb-Raider-Level-Editor 3"})));
}

TEST(LevelEditorSetup, AFolderThatHoldsSomethingIsRefused)
{
    SetupWorld box;
    box.WantFolder();
    box.Write("full/.hidden", "mine");
    box.Write("file", "mine");
    box.Write("other archive/level_0012/files/mine.tr4", "a level's");
    for (const char* place : {"full", "file", "source/trle/new", ".", "home/new", "home",
                              "other archive/level_0012/new/trle"}) {
        const auto before = box.Snapshot(".");
        box.wish.target = box / place;
        EXPECT_FALSE(box.SetUp()) << place;
        EXPECT_TRUE(box.host.WasTold("Setup from folder failed")) << place;
        EXPECT_EQ(box.Snapshot("."), before) << place;
    }
    box.wish.target = box.root / std::string(300, 'x');
    EXPECT_FALSE(box.SetUp());
    EXPECT_TRUE(box.host.WasTold("too long"));
    box.wish.target.clear();
    EXPECT_FALSE(box.SetUp());
}

TEST(LevelEditorSetup, ATargetOnALinkIsMadeBehindIt)
{
    SetupWorld box;
    box.WantFolder();
    std::filesystem::create_directories(box / "disk/empty");
    std::filesystem::create_directory_symlink(box / "disk/empty", box / "link");
    box.wish.target = box / "link";
    ASSERT_TRUE(box.SetUp()) << box.host.AllTold();
    EXPECT_TRUE(std::filesystem::is_symlink(box / "link"));
    EXPECT_TRUE(box.Has("disk/empty/tomb4.exe"));
    EXPECT_EQ(box.target, box / "disk/empty");
}

TEST(LevelEditorSetup, ASourceThatIsNoneLeavesNothing)
{
    SetupWorld box;
    box.Write("no zip.zip", "no zip at all");
    box.Write("other.zip", BuildZip({{"readme.txt", "not a Level Editor"}}));
    box.Write("evil.zip", BuildZip({{"trle/tomb4.exe", "game"}, {"../../evil", "outside"}}));
    const auto before = box.Snapshot(".");
    const struct {
        std::vector<Path> zips;
        const char* words;
    } cases[] = {
        {{}, "You must insert in list box full path of compress setup zip file/s"},
        {{box / "no zip.zip"}, "Error unzipping 'no zip.zip'"},
        {{box / "gone.zip"}, "Error unzipping 'gone.zip'"},
        {{box / "other.zip"}, "Folder other.zip is not TRLE folder"},
        {{box / "evil.zip"}, ""},
    };
    for (const auto& [zips, words] : cases) {
        box.host.told.clear();
        box.WantZips(zips);
        box.host.AnswerAll(false);
        EXPECT_FALSE(box.SetUp()) << words;
        EXPECT_TRUE(box.host.WasTold(words)) << words << "\n" << box.host.AllTold();
        EXPECT_EQ(box.Snapshot("."), before) << words;
        EXPECT_FALSE(std::filesystem::exists(box / "person/Spiele ü")) << words;
    }
}

TEST(LevelEditorSetup, WhatFailsIsToldAndThePersonSaysWhetherItGoesOn)
{
    SetupWorld box;
    box.WantFolder();
    box.AddProgram("source/trle/tom2pc.exe", "echo broken; exit 0");
    std::filesystem::remove(box / "source/trle/load_eng.jpg");
    std::filesystem::remove(box / "source/trle/script/Script.dat");
    box.host.WillAsk("Do you want continue?", true);
    box.host.WillAsk("Do you want continue?", true);
    box.host.WillAsk("Do you want continue?", true);
    ASSERT_TRUE(box.SetUp()) << box.host.AllTold();
    EXPECT_TRUE(box.host.WasTold("Error converting file : load_eng.jpg"));
    EXPECT_TRUE(box.host.WasTold("\\script\\script.dat"));
    EXPECT_TRUE(box.host.WasTold("Error compiling 'city.tom'"));

    box.wish.target = box / "other";
    box.host.WillAsk("Do you want continue?", false);
    EXPECT_FALSE(box.SetUp());
    EXPECT_FALSE(std::filesystem::exists(box / "other"));
    EXPECT_EQ(box.Snapshot(entries).size(), 6U); // those of the first one
}

TEST(LevelEditorSetup, FilesThatTheListNamesAreLookedFor)
{
    SetupWorld box;
    box.WantFolder();
    box.Write("source/trle/list.txt", "tomb4.exe\n..\\..\\secret\n\\gone.dat\n");
    box.host.WillAsk("Error. In setup files missing following files: \r\n\"..\\..\\secret\"\r\n"
                     "\"\\gone.dat\"\r\nDo you want continue?",
                     false);
    EXPECT_FALSE(box.SetUp());
    std::string many;
    for (int i = 0; i < 12; ++i)
        many += "gone" + std::to_string(i) + '\n';
    box.Write("source/trle/list.txt", many);
    box.host.WillAsk("\"gone9\"\r\nThere could be more missing files...\r\n", false);
    EXPECT_FALSE(box.SetUp());
    box.Write("source/trle/list.txt", std::string(10 << 20, 'x'));
    box.host.WillAsk("xxx\"\r\nDo you want continue?", false);
    EXPECT_FALSE(box.SetUp());
    std::filesystem::remove(box / "source/trle/list.txt");
    box.host.WillAsk("Warning: missing 'list.txt' file in folder '" +
                         (box / "source/trle").native() + "'\r\nI cann't check",
                     true);
    box.host.WillAsk("Warning: missing 'list.txt' file in folder '" + (box / installed).native(),
                     true);
    EXPECT_TRUE(box.SetUp()) << box.host.AllTold();
}

TEST(LevelEditorSetup, WithoutRoomAnotherDriveIsOffered)
{
    SetupWorld box;
    box.WantFolder();
    box.machine.free = UINT64_C(100) << 20;
    EXPECT_FALSE(box.SetUp());
    EXPECT_TRUE(box.host.WasTold("needs about 250 Mb of available space"));

    box.machine.free = UINT64_C(300) << 20;
    std::filesystem::resize_file(box / "source/trle/winroomedit.exe", UINT64_C(400) << 20);
    box.host.WillAsk("Warning. Unit [C:] has not enough free space", false);
    EXPECT_FALSE(box.SetUp());
    EXPECT_TRUE(box.host.WasTold("Tomb Raider Level Editor setup failed"));

    box.machine.drives = {{box / "disk", UINT64_C(350) << 20, true}};
    box.host.WillAsk("Do you want install program in other drive?", true);
    EXPECT_FALSE(box.SetUp());
    EXPECT_TRUE(box.host.WasTold("(Required space = 400."));

    box.machine.drives = {{box / "disk", UINT64_C(500) << 20, true}};
    box.host.WillAsk("Do you want install program in other drive?", true);
    std::filesystem::create_directories(box / "disk");
    EXPECT_TRUE(box.SetUp()) << box.host.AllTold();
    EXPECT_EQ(box.target, box / "disk/Core Design/trle");
}

TEST(LevelEditorSetup, StopLeavesNothing)
{
    for (int step = 1; step < 200; step += 7) {
        SetupWorld box;
        box.WantFolder();
        box.host.StopAtStep(step);
        box.host.AnswerAll(false);
        if (box.SetUp()) {
            EXPECT_GT(step, 50);
            return;
        }
        const bool isPlaced = std::filesystem::exists(box / installed);
        EXPECT_TRUE(box.host.WasTold("Setup stopped")) << step << box.host.AllTold();
        EXPECT_EQ(box.Snapshot("person").empty(), !isPlaced) << step;
    }
}

TEST(LevelEditorSetup, TheRegistryOfThePrefixIsWritten)
{
    SetupWorld box;
    box.WantFolder();
    box.Write("person/.wine/system.reg", "WINE REGISTRY Version 2\n");
    std::filesystem::create_directories(box / "person/.wine/drive_c");
    box.wish.target = box / "person/.wine/drive_c/Core Design/trle";
    const Path said = box / "said";
    const Path wine = box.AddTool("wine", "{ echo \"$WINEPREFIX\"; printf '%s\\n' \"$@\"; } >'" +
                                              said.native() + "'");
    const Path failing = box.AddTool("failing", "echo no registry; exit 3");
    box.session.settings.wineCommand = wine.native();
    ASSERT_TRUE(box.SetUp()) << box.host.AllTold();
    EXPECT_EQ(box.Read("said"),
              (box / "person/.wine").native() +
                  "\nreg\nadd\nHKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\"
                  "winroomedit.exe\n/ve\n/d\nC:\\Core Design\\trle\\winroomedit.exe\n/f\n");

    // Its failure ends nothing.
    box.session.settings.wineCommand = failing.native();
    box.wish.target = box / "person/.wine/drive_c/second";
    EXPECT_TRUE(box.SetUp());
    EXPECT_TRUE(box.host.WasTold("Warning: error creating register key"));
}

/// What a run that was killed, or failed, may leave: nothing, or a whole Level Editor.
void ExpectNothingOrAll(SetupWorld& box, const std::string& where)
{
    const FileContents files = box.Snapshot(installed);
    const auto lacks = WhatTrleLacks(box / installed);
    EXPECT_TRUE(files.empty() || (lacks && lacks->empty())) << where;
    EXPECT_EQ(box.Read("person/.local/share/applications/mine.desktop"), "mine") << where;
    EXPECT_EQ(box.Read("source/trle/tomb4.exe"), "the game") << where;
}

TEST(LevelEditorSetup, WhereverItIsKilledTheNextRunEndsIt)
{
    int points = 0;
    for (int n = 1; n < 2000; n = n < 20 ? n + 1 : NextPoint(n + 4)) {
        SetupWorld box;
        box.WantZips({box.Zip()});
        box.Write("person/.local/share/applications/mine.desktop", "mine");
        NotePlacesIn(box / "home/swap/work");
        const KillRun run = WithKillAt(n, [&] { return box.SetUp(); });
        if (!run.killed) {
            EXPECT_TRUE(run.answer);
            break;
        }
        ++points;
        ExpectNothingOrAll(box, run.call);
        const bool wasWhole = box.Has(installed + std::string{"/tomb4.exe"}) &&
                              !std::filesystem::exists(box / "home/swap/setup");
        EXPECT_NE(box.SetUp(), wasWhole) << run.call << "\n" << box.host.AllTold();
        ExpectNothingOrAll(box, run.call);
        EXPECT_EQ(box.Snapshot(entries).size(), 6U) << run.call;
        for (const auto& place : std::filesystem::recursive_directory_iterator(box / "person"))
            EXPECT_FALSE(place.path().filename().native().starts_with(stagedPrefix))
                << place.path() << " after " << run.call;
    }
    TellPoints(points, 20);
}

TEST(LevelEditorSetup, WhateverCallFailsNothingIsLost)
{
    int points = 0;
    for (int n = 1; n < 2000; n = n < 20 ? n + 1 : NextPoint(n + 4)) {
        SetupWorld box;
        box.WantFolder();
        box.Write("person/.local/share/applications/mine.desktop", "mine");
        box.host.AnswerAll(false);
        const FaultRun run = WithFaultAt(n, [&] { return box.SetUp(); });
        if (!run.reached)
            break;
        ++points;
        if (!run.answer) {
            ExpectNothingOrAll(box, run.call);
            EXPECT_FALSE(box.host.told.empty()) << run.call;
            EXPECT_TRUE(box.SetUp()) << run.call << "\n" << box.host.AllTold();
        }
        ExpectNothingOrAll(box, run.call);
    }
    TellPoints(points, 20);
}

} // namespace
} // namespace kestrova::testing
