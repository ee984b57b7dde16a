#include "formats/zip_directory.h"
#include "intake/add_level.h"
#include "intake/draft_sources.h"
#include "packages/level_config_file.h"
#include "packages/unzip.h"
#include "pictures/convert.h"
#include "publish/finish_upload.h"
#include "publish/upload_files.h"
#include "publish/upload_lists.h"
#include "publish/upload_sounds.h"
#include "publish/upload_steps.h"
#include "publish/upload_texts.h"
#include "sandbox/faults.h"
#include "sandbox/sound_files.h"
#include "world/tool_box.h"
#include "world/zip_builder.h"

#include <gtest/gtest.h>
#include <set>

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;
using namespace std::string_literals;

/// An author's folder, a wizard on it, and another home where its package is added.
class UploadTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        box.UseRealTools();
        const Path link = box / "home";
        fs::remove(link);
        fs::create_directory_symlink(box.session.programFolder, link);
        box.MakeTrle();
        box.MakeBackupAndArchive();
        box.Write("author/level.tr4", "level");
        box.Write("author/read me.txt", "text");
        box.Write("author/script.dat", "script");
        progress = box.host.BeginProgress(ProgressWindow::Progress, {});
    }
    std::unique_ptr<UploadWizard> Wizard()
    {
        auto wizard = std::make_unique<UploadWizard>(box.session, *progress);
        EXPECT_TRUE(OpenWizard(*wizard));
        wizard->asksForDocument = false;
        return wizard;
    }
    /// The wizard at its last step.
    std::unique_ptr<UploadWizard> Filled()
    {
        auto wizard = Wizard();
        EXPECT_TRUE(AddSources(*wizard, {box / "author"}, Subfolders::Take)) << box.host.AllTold();
        wizard->name = "Level";
        WalkToEnd(*wizard);
        return wizard;
    }
    void WalkToEnd(UploadWizard& wizard)
    {
        while (wizard.step != UploadStep::End)
            ASSERT_TRUE(NextStep(wizard)) << box.host.AllTold();
    }
    /// What a player's archive has of the package.
    LevelRecord AddedOnAnotherHome(const Path& zip)
    {
        LevelCode code = 0;
        EXPECT_TRUE(AddLevel(
            box.session, *progress,
            [&](Intake& level) {
                return AddSources(level, {zip}, Subfolders::Take) && Accept(level);
            },
            code))
            << box.host.AllTold();
        added = "levels/LEVEL_" + ZeroPadded(code, 4) + "/files";
        return box.session.archive.levels.back();
    }
    LevelConfig ConfigIn(const Path& zip)
    {
        ToolWatch state;
        fs::remove_all(box / "out");
        EXPECT_TRUE(
            state.Done(UnzipWithProgress(ToolsOf(box.session), zip, box / "out", {}, state)))
            << state.error << state.details;
        auto config = ReadLevelConfig(box / "out/kestrova.cfg");
        return config ? *config : LevelConfig{};
    }

    ToolBox box;
    std::unique_ptr<ProgressScope> progress;
    std::string added;
};

TEST_F(UploadTest, WhatItWritesInstallsItself)
{
    box.Write("author/Łódź 日本.wad", std::string(70000, 'w'));
    box.Write("author/data/" + std::string(200, 'n') + ".wad", "long");
    box.Write("author/old/KESTROVA.cfg", "no configuration");
    fs::remove_all(box / "author/old");
    fs::create_symlink(box / "trle", box / "author/link");
    const auto before = box.Snapshot("author");
    {
        auto wizard = Wizard();
        ASSERT_TRUE(AddSources(*wizard, {box / "author"}, Subfolders::Take)) << box.host.AllTold();
        wizard->name = "My | Łevel";
        wizard->note = "a note";
        wizard->author = "Łukasz";
        wizard->authorNote = "first line\r\nsecond | line";
        wizard->emails.items = {"a@b", "c@d"};
        wizard->sites.items = {"http://s"};
        wizard->moreInfo = "read me.txt";
        WalkToEnd(*wizard);
        box.host.WillChoose("Save upload zip file", box / "my level");
        ASSERT_TRUE(FinishUpload(*wizard)) << box.host.AllTold();
    }
    EXPECT_TRUE(box.host.WasTold("Create zip file in: " + (box / "my level.zip").native()));
    EXPECT_EQ(box.Snapshot("author"), before);
    EXPECT_FALSE(fs::exists(box / "home/_temp_config"));

    const LevelRecord level = AddedOnAnotherHome(box / "my level.zip");
    EXPECT_EQ(level.levelName, "My | Łevel");
    EXPECT_EQ(level.levelNote, "a note");
    EXPECT_EQ(level.authorName, "Łukasz");
    EXPECT_EQ(level.authorNote, "first line\r\nsecond | line");
    EXPECT_EQ(level.authorEmails, "a@b\0c@d"s);
    EXPECT_EQ(level.authorSites, "http://s");
    EXPECT_EQ(level.moreInfoFile, "read me.txt");
    FileContents flat;
    for (const auto& [name, content] : before)
        if (!name.ends_with("link"))
            flat[Path{name}.filename()] = content;
    EXPECT_EQ(box.Snapshot(added), flat);
}

TEST_F(UploadTest, EachStepRefusesInItsOwnWords)
{
    auto wizard = Wizard();
    wizard->asksForDocument = true;
    const auto refuses = [&](const std::string& words) {
        const UploadStep before = wizard->step;
        box.host.told.clear();
        EXPECT_FALSE(NextStep(*wizard)) << words;
        EXPECT_TRUE(box.host.WasTold(words)) << words << " / " << box.host.AllTold();
        EXPECT_EQ(wizard->step, before);
    };
    BackStep(*wizard);
    EXPECT_EQ(StepTitle(wizard->step), "Upload wizard - Step 1 : Overwiev");
    EXPECT_TRUE(NextStep(*wizard));
    refuses("You must insert your level files");
    ASSERT_TRUE(AddSources(*wizard, {box / "author"}));
    EXPECT_EQ(wizard->FilesText(), "3 files (15)");
    box.host.WillAsk("press [NO] button.\r\n\r\nHave you a documentation file?", true);
    EXPECT_FALSE(NextStep(*wizard));
    box.host.WillAsk("You have not selected any file as [more info]\r\nIf exits", false);
    EXPECT_TRUE(NextStep(*wizard));

    wizard->author = std::string(80, 'a');
    refuses("Please reduce size to max 80 characters");
    wizard->author.pop_back();
    wizard->authorNote = std::string(256, 'n');
    refuses("A message to readers field is too long");
    wizard->authorNote.pop_back();
    wizard->emails.items = {std::string(127, 'm'), std::string(128, 'm')};
    refuses("Please, remove any email address");
    wizard->emails.items.pop_back();
    wizard->sites.items = {std::string(256, 's')};
    refuses("Please, remove any url address");
    wizard->sites.items = {std::string(255, 's')};
    EXPECT_TRUE(NextStep(*wizard));
    EXPECT_EQ(wizard->config.author.size(), 79U);

    refuses("You must type level name");
    wizard->name = std::string(256, 'l');
    refuses("Level name is too long");
    wizard->name = "Level";
    wizard->note = std::string(256, 'n');
    refuses("Single row note is too long");
    wizard->note = std::string(255, 'n');
    wizard->exeFormat = 4;
    EXPECT_TRUE(NextStep(*wizard));
    EXPECT_EQ(wizard->config.exeFormat, "FLYDRIVE");

    // A row that was typed and not stored counts too; one that holds nothing does not.
    EXPECT_TRUE(AddRow(*wizard, RowKind::ImportWads));
    wizard->importWads.edit = {"new.wad", ""};
    refuses("You must insert url where download file");
    wizard->importWads.edit[1] = "http://a/b.zip";
    refuses("Please, insert a description for files to download");
    wizard->importNotes = "notes";
    EXPECT_TRUE(AddRow(*wizard, RowKind::ImportWads));
    EXPECT_TRUE(NextStep(*wizard));
    EXPECT_EQ(wizard->config.importWads, "new.wad\0http://a/b.zip"s);
}

TEST_F(UploadTest, RowsTakeOnlyWhatAnInstallerCanUse)
{
    auto wizard = Wizard();
    const auto updates = [&](RowKind kind, auto& list, auto row, const std::string& words) {
        list.edit = row;
        box.host.told.clear();
        EXPECT_EQ(UpdateRow(*wizard, kind), words.empty()) << words;
        EXPECT_EQ(box.host.AllTold().empty(), words.empty()) << box.host.AllTold();
        EXPECT_TRUE(words.empty() || box.host.WasTold(words)) << box.host.AllTold();
    };
    using Pair = std::array<std::string, 2>;
    using Wave = std::array<std::string, 4>;
    auto& wads = wizard->importWads;
    updates(RowKind::ImportWads, wads, Pair{"a.wad", "u"}, "No item selected");
    ASSERT_TRUE(AddRow(*wizard, RowKind::ImportWads));
    updates(RowKind::ImportWads, wads, Pair{"", "u"}, "Value missing");
    updates(RowKind::ImportWads, wads, Pair{"a", "u"}, "Please specifiy an extension for file: a");
    updates(RowKind::ImportWads, wads, Pair{"w\\a.wad", "u"}, "Please don't insert any path");
    updates(RowKind::ImportWads, wads, Pair{"Łódź.wad", "u"}, "cannot hold these letters: Łódź");
    updates(RowKind::ImportWads, wads, Pair{" a.wad ", "u"}, "");
    EXPECT_EQ(RowTexts(*wizard, RowKind::ImportWads),
              (std::vector<std::string>{"CHECK: a.wad  URL: u"}));

    auto& waves = wizard->externWaves;
    ASSERT_TRUE(AddRow(*wizard, RowKind::ExternWaves));
    updates(RowKind::ExternWaves, waves, Wave{"", "a", "b", "c"}, "You must select orginal Tomb");
    updates(RowKind::ExternWaves, waves, Wave{"TR4", "", "b", "c"},
            "You must type a source file for target file 'b.wav'");
    updates(RowKind::ExternWaves, waves, Wave{"TR4", "a", "", "c"},
            "You must type a target file for source file 'a.wav'");
    updates(RowKind::ExternWaves, waves, Wave{"TR4", "c:\\x\\a.mp3", "b.WAV", "/y/c"}, "");
    EXPECT_EQ(RowTexts(*wizard, RowKind::ExternWaves),
              (std::vector<std::string>{"a.wav FROM Tr4 The Last Revelation OR c.wav -> b.WAV"}));
    updates(RowKind::ExternWaves, waves, Wave{"TR5", "", "", ""}, "");

    auto& toms = wizard->tomWads;
    ASSERT_TRUE(AddRow(*wizard, RowKind::TomWads));
    updates(RowKind::TomWads, toms, Pair{"", "city.*"}, "You must select tom file name");
    updates(RowKind::TomWads, toms, Pair{"t", ""}, "You must select wad files used to convert");
    updates(RowKind::TomWads, toms, Pair{"t", "city.*"}, "");
    // What was typed is not lost by a look at another row.
    ASSERT_TRUE(AddRow(*wizard, RowKind::TomWads));
    toms.edit = {"u", ""};
    EXPECT_FALSE(SelectRow(*wizard, RowKind::TomWads, 0));
    toms.edit = {"u", "karnak.*"};
    EXPECT_TRUE(SelectRow(*wizard, RowKind::TomWads, 0));
    EXPECT_EQ(toms.edit[0], "t");
    RemoveRow(*wizard, RowKind::TomWads);
    EXPECT_EQ(RowTexts(*wizard, RowKind::TomWads),
              (std::vector<std::string>{"u CONVERT USING -> karnak.*"}));

    box.host.WillAskText("Insert new email address", " a@b ");
    AddAddress(*wizard, AddressKind::Email);
    box.host.WillAskText("Change current email adresss", "c@d");
    ChangeAddress(*wizard, AddressKind::Email);
    EXPECT_EQ(wizard->emails.items, (std::vector<std::string>{"c@d"}));
    RemoveAddress(*wizard, AddressKind::Email);
    RemoveAddress(*wizard, AddressKind::Site);
    EXPECT_TRUE(box.host.WasTold("No item selected"));
    EXPECT_TRUE(wizard->emails.items.empty());
}

TEST_F(UploadTest, AnEarlierConfigurationComesBackInWithoutItsDuplicates)
{
    LevelConfig old;
    old.name = "My level";
    old.author = "Author";
    old.moreInfo = "READ ME.txt";
    old.exeFormat = "TRLE";
    old.importNotes = "notes";
    old.importWads = "a.wad\0http://a"s;
    old.externWaves = "TR4\0a.wav\0b.wav\0c.wav"s;
    old.tomWads = "t\0city.*"s;
    old.duplicates = "a.*\0b"s;
    old.files = {{"gone.tr4", 7}};
    ASSERT_TRUE(WriteLevelConfig(box / "author/Kestrova.CFG", old));
    {
        auto wizard = Filled();
        EXPECT_TRUE(box.host.WasTold("names files to duplicate"));
        EXPECT_EQ(wizard->files.size(), 3U);
        EXPECT_EQ(wizard->moreInfo, "read me.txt");
        wizard->name = "My level";
        wizard->step = UploadStep::Level;
        WalkToEnd(*wizard);
        EXPECT_EQ(UploadNameFor(*wizard), "My level.zip");
        wizard->configOnly = true;
        EXPECT_EQ(UploadNameFor(*wizard), "Config_My level.zip");
        // Whoever cancels goes on with all that was there.
        box.host.WillChoose("Save upload zip file", std::nullopt);
        EXPECT_FALSE(FinishUpload(*wizard));
        EXPECT_TRUE(FinishUpload(*wizard, box / "config.zip")) << box.host.AllTold();
    }
    LevelConfig config = ConfigIn(box / "config.zip");
    EXPECT_EQ(box.Snapshot("out").size(), 1U);
    EXPECT_EQ(config.duplicates, "");
    ASSERT_EQ(config.files.size(), 3U);
    EXPECT_EQ(config.files[0].name + std::to_string(config.files[0].size), "level.tr45");
    EXPECT_EQ(config.moreInfo, "read me.txt");
    EXPECT_EQ(config.externWaves, old.externWaves);
    EXPECT_EQ(config.importWads + config.tomWads, old.importWads + old.tomWads);
    EXPECT_EQ(config.exeFormat + config.author, "TRLEAuthor");
    // One that cannot be read is told, and is no file of the level.
    box.Write("author/Kestrova.CFG", "cut");
    auto wizard = Wizard();
    EXPECT_TRUE(AddSources(*wizard, {box / "author"}));
    EXPECT_TRUE(box.host.WasTold("Error reading config file: "));
    EXPECT_EQ(wizard->files.size(), 3U);
}

TEST_F(UploadTest, AnOlderPackageAmongTheFilesIsReplacedAndIsNoneOfThem)
{
    const Path zip = box / "author/Level.zip";
    LevelConfig old;
    old.name = "Old";
    old.note = "old note";
    box.Write("author/Level.zip",
              BuildZip({{"kestrova.cfg", *FormatLevelConfig(old)}, {"gone.txt", "long gone"}}));
    box.Write("author/tools.zip", BuildZip({{"more.txt", "more"}}));
    auto wizard = Wizard();
    ASSERT_TRUE(AddSources(*wizard, {box / "author"}, Subfolders::Take, zip)) << box.host.AllTold();
    wizard->name = "Level";
    WalkToEnd(*wizard);
    EXPECT_TRUE(FinishUpload(*wizard, zip)) << box.host.AllTold();
    const LevelConfig made = ConfigIn(zip);
    EXPECT_EQ(made.name + made.note, "Level");
    EXPECT_FALSE(box.Has("out/gone.txt"));
    EXPECT_TRUE(box.Has("out/more.txt"));
}

TEST_F(UploadTest, SoundsAndPictureBecomeSmallerInThePackageAlone)
{
    box.Write("author/100.wav", ToneWave({}, 44100));
    ASSERT_TRUE(
        SaveAsBitmap({8, 8, std::vector<std::uint8_t>(8 * 8 * 3, 77)}, box / "author/LOAD.bmp"));
    const auto before = box.Snapshot("author");
    auto wizard = Wizard();
    EXPECT_FALSE(CompressLoadPicture(*wizard));
    EXPECT_TRUE(box.host.WasTold("load.bmp not found"));
    EXPECT_FALSE(CompressSounds(*wizard, true));
    EXPECT_TRUE(box.host.WasTold("Found no wav files."));
    ASSERT_TRUE(AddSources(*wizard, {box / "author"}));
    EXPECT_TRUE(CompressLoadPicture(*wizard)) << box.host.AllTold();
    box.Write("home/madplay.exe", "MZ");
    EXPECT_FALSE(HasDecoderUtilities(box.session.programFolder));
    EXPECT_TRUE(CompressSounds(*wizard, true)) << box.host.AllTold();
    EXPECT_TRUE(box.host.WasTold("The package goes without start_me.exe"));
    std::set<std::string> names;
    for (const UploadFile& file : wizard->files)
        names.insert(file.path.filename());
    EXPECT_EQ(names, (std::set<std::string>{"100.mp3", "level.tr4", "load.jpg", "madplay.exe",
                                            "read me.txt", "script.dat"}));
    EXPECT_EQ(box.Snapshot("author"), before);
    EXPECT_FALSE(fs::exists(box / "home/_temp_mp3"));
}

TEST_F(UploadTest, AKillOrAFailureLeavesFolderAndOldPackage)
{
    box.host.AnswerAll(false);
    box.Write("old.zip", "an old zip");
    const auto before = box.Snapshot("author");
    const auto publish = [&] {
        UploadWizard wizard{box.session, *progress};
        wizard.asksForDocument = false;
        if (!OpenWizard(wizard) || !AddSources(wizard, {box / "author"}, Subfolders::Take))
            return false;
        wizard.name = "Level";
        while (wizard.step != UploadStep::End)
            if (!NextStep(wizard))
                return false;
        return FinishUpload(wizard, box / "old.zip");
    };
    const auto judge = [&](const std::string& call, bool done) {
        EXPECT_EQ(box.Snapshot("author"), before) << call;
        const bool isOld = !done && box.Read("old.zip") == "an old zip";
        EXPECT_TRUE(isOld || ReadZipDirectory(box / "old.zip").isWhole) << call;
        box.Write("old.zip", "an old zip");
    };
    int points = 0;
    for (KillRun run{true, false, {}}; run.killed; ++points) {
        run = WithKillAt(points + 1, publish);
        judge(run.call, run.answer);
        EXPECT_TRUE(run.killed || run.answer);
    }
    TellPoints(points, 20);
    points = 0;
    for (FaultRun run{false, true, {}}; run.reached; ++points) {
        run = WithFaultAt(points + 1, publish, std::errc::no_space_on_device);
        judge(run.call, run.answer);
    }
    TellPoints(points, 20);
    EXPECT_TRUE(publish()) << box.host.AllTold();
}

TEST_F(UploadTest, WhatTheAuthorTypedComesBackAfterAPackageThatCouldNotBeMade)
{
    const auto fails = [&](UploadWizard& wizard, const Path& zip, const std::string& words) {
        wizard.keepsTexts = true;
        box.host.told.clear();
        EXPECT_FALSE(FinishUpload(wizard, zip));
        EXPECT_TRUE(box.host.WasTold(words)) << box.host.AllTold();
        EXPECT_TRUE(box.host.WasTold("What you filled in is kept")) << box.host.AllTold();
        EXPECT_TRUE(wizard.isOver);
        EXPECT_FALSE(fs::exists(box / "home/_temp_config"));
        EXPECT_FALSE(box.Has("level.zip"));
    };
    auto wizard = Filled();
    wizard->step = UploadStep::Overview;
    wizard->author = "Zo\u00eb \u0141";
    wizard->note = "line\nand another";
    wizard->emails.items = {"a@b.example", "c@d.example"};
    wizard->externWaves.rows = {{"TR4", "a.wav", "b.wav", "c.wav"}};
    wizard->importNotes = "notes";
    wizard->moreInfo = "read me.txt";
    wizard->exeFormat = 2;
    WalkToEnd(*wizard);
    const LevelConfig typed = wizard->config;
    box.AddTool("zip", "echo no room; exit 14");
    fails(*wizard, box / "level.zip", "Error zipping file in: " + (box / "level.zip").native());
    fs::remove(box.session.programFolder / "zip");
    box.UseRealTools();

    wizard.reset();
    wizard = Wizard();
    box.host.WillAsk("Do you want back what you filled in then?", true);
    OfferUploadTexts(*wizard);
    ASSERT_TRUE(AddSources(*wizard, {box / "author"}));
    WalkToEnd(*wizard);
    EXPECT_EQ(wizard->moreInfo, "read me.txt");
    EXPECT_EQ(wizard->author + wizard->note + wizard->importNotes,
              typed.author + typed.note + typed.importNotes);
    EXPECT_EQ(wizard->config.authorEmails + wizard->config.externWaves + wizard->config.exeFormat,
              typed.authorEmails + typed.externWaves + typed.exeFormat);
    fails(*wizard, box / "no folder/level.zip", "Error zipping file in: ");

    // They wait until a package is there, or until nobody wants them.
    wizard.reset();
    wizard = Filled();
    wizard->keepsTexts = true;
    EXPECT_TRUE(FinishUpload(*wizard, box / "level.zip")) << box.host.AllTold();
    EXPECT_TRUE(wizard->isOver);
    OfferUploadTexts(*wizard);
    EXPECT_TRUE(KeepUploadTexts(*wizard));
    box.host.WillAsk("Do you want back what you filled in then?", false);
    OfferUploadTexts(*wizard);
    OfferUploadTexts(*wizard);
}

TEST_F(UploadTest, AWizardThatCannotKeepTheTextsStaysOpen)
{
    auto wizard = Filled();
    wizard->keepsTexts = true;
    fs::create_directory(box.session.programFolder / "unfinished_upload.cfg");
    box.AddTool("zip", "echo no room; exit 14");
    EXPECT_FALSE(FinishUpload(*wizard, box / "level.zip"));
    EXPECT_TRUE(box.host.WasTold("so the wizard stays open")) << box.host.AllTold();
    EXPECT_FALSE(wizard->isOver);
    fs::remove(box.session.programFolder / "zip");
    box.UseRealTools();
    EXPECT_TRUE(FinishUpload(*wizard, box / "level.zip")) << box.host.AllTold();
    EXPECT_EQ(ConfigIn(box / "level.zip").files.size(), 3U);
}

} // namespace

} // namespace kestrova::testing
