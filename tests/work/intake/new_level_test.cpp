#include "intake/draft_sources.h"

#include "archive/level_folders.h"
#include "archive/tr4_index.h"
#include "core/size_words.h"
#include "history/history.h"
#include "intake/draft_files.h"
#include "intake/edit_level.h"
#include "intake/intake_steps.h"
#include "intake/language_choice.h"
#include "intake/unpacking_place.h"
#include "packages/level_config_file.h"
#include "packages/unzip.h"
#include "platform/file_hook.h"
#include "storage/zl_file.h"
#include "world/tool_box.h"
#include "world/zip_builder.h"

#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrova::testing
{

namespace
{

using Files = std::map<std::string, std::string>;

/// An archive with the original configuration, the tools of this machine, and a new level.
class NewLevelTest : public ::testing::Test
{
protected:
    NewLevelTest()
    {
        box.MakeTrle();
        box.MakeBackupAndArchive();
        box.UseRealTools();
        progress = box.host.BeginProgress(ProgressWindow::Progress, {});
    }

    /// A record with its folders, as a level that comes in has it.
    Intake& Begin()
    {
        record.levelCode = NextLevelCode(box.session.archive);
        EXPECT_TRUE(MakeLevelSubfolders(LevelHomeOf(box.session.Folders(), record.levelCode)));
        return Open();
    }
    /// A level of the archive, opened for its properties.
    Intake& Edit(const Files& files)
    {
        box.AddLevel("Stored", files);
        record = box.session.archive.levels.back();
        return OpenToEdit();
    }
    Intake& Open()
    {
        opened.emplace(box.session, record, NewLevelSteps(), *progress);
        EXPECT_TRUE(OpenNewLevel(*opened)) << box.host.AllTold();
        return *opened;
    }
    Intake& OpenToEdit()
    {
        opened.emplace(box.session, record, EditSteps(), *progress);
        EXPECT_TRUE(OpenEdit(*opened)) << box.host.AllTold();
        return *opened;
    }
    /// A package made by the real tool from what lies in a folder of the sandbox.
    void Zip(const std::string& folder, const std::string& zip)
    {
        std::filesystem::create_directories((box / zip).parent_path());
        Shell("cd '" + folder + "' && zip -q -r '" + (box / zip).native() + "' .");
    }
    void Shell(const std::string& script)
    {
        ToolWatch own;
        ASSERT_TRUE(own.Done(ShellAndWait(
            ToolsOf(box.session), "cd " + box.root.native() + " && " + script, own, own.report)));
        ASSERT_EQ(own.report.end.code, 0) << own.details;
    }
    [[nodiscard]] std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const Path& file : opened->draft.files)
            names.push_back(file.filename().native());
        return names;
    }
    [[nodiscard]] Files Part(const std::string& part) const
    {
        return box.Snapshot("levels/LEVEL_0001/" + part);
    }

    ToolBox box;
    std::unique_ptr<ProgressScope> progress;
    LevelRecord record;
    std::optional<Intake> opened;
};

TEST_F(NewLevelTest, APackageIsFlattenedAndDistributed)
{
    box.Write("in/data/level1.tr4", "level");
    box.Write("in/script.dat", "script");
    box.Write("in/English.DAT", "language");
    box.Write("in/docs/a note.txt", "note");
    box.Write("in/docs/Walkthrough.doc", "walk");
    box.Write("in/docs/view.JPG", "view");
    box.Write("in/docs/SAVEGAME.3", "saved");
    box.Write("in/madplay.exe", "tool");
    box.Write("deep/107.wav", "wave");
    box.Write("deep/deeper.txt", "deep");
    Zip("deep", "deepest/third.zip");
    box.Write("deepest/second.txt", "second");
    Zip("deepest", "in/audio/second.zip");
    Zip("in", "my first level.zip");
    const Files before = box.Snapshot("my first level.zip");
    box.session.archive.header.compressLevels = true;

    Intake& level = Begin();
    ASSERT_TRUE(AddSources(level, {box / "my first level.zip"})) << box.host.AllTold();
    EXPECT_EQ(level.draft.name, "my first level");
    EXPECT_EQ(level.draft.moreInfo, "Walkthrough.doc") << "an earlier word beats an earlier file";
    EXPECT_EQ(Names().size(), 10U) << "second.zip is unpacked, third.zip waits for a refresh";
    (void)Refresh(level);
    EXPECT_EQ(level.draft.FilesText(), "11 files (" + FormatSize(54) + ")");
    level.draft.note = "my note";
    ASSERT_TRUE(Accept(level)) << box.host.AllTold();

    Files stored = Part("files");
    EXPECT_TRUE(stored.contains("level1.tr4.zl") && stored.contains("107.wav.zl"));
    EXPECT_EQ(stored["English.DAT"], "language");
    EXPECT_EQ(stored["view.JPG"], "view") << "pictures stay in the level";
    EXPECT_EQ(stored.size(), 9U) << "neither the savegame nor the tool";
    EXPECT_EQ(Part("screenshots"), (Files{{"view.JPG", "view"}}));
    EXPECT_EQ(Part("backup_savegames"), (Files{{"SAVEGAME.3", "saved"}}));
    EXPECT_EQ(record.levelName, "my first level");
    EXPECT_EQ(record.levelNote, "my note");
    EXPECT_EQ(record.moreInfoFile, "Walkthrough.doc");
    EXPECT_EQ(record.filesSize, static_cast<int>(*FolderSize(box / "levels/LEVEL_0001/files")));
    EXPECT_EQ(record.extrasSize, 9);
    const auto index = ReadTr4InfOf(box.session.Folders(), 1);
    ASSERT_TRUE(index && index->size() == 1);
    EXPECT_EQ((*index)[0].size, 5) << "its true size";
    EXPECT_FALSE(FolderExists(UnpackingFolder(box.session.Folders())));
    EXPECT_EQ(box.Snapshot("my first level.zip"), before);
}

TEST_F(NewLevelTest, OtherKindsOfPackagesComeInToo)
{
    box.Write("in/sub/level.tr4", "level");
    Shell("bsdtar -cf one.tar.gz -z -C in sub && bsdtar -cf two.7z --format 7zip -C in sub && "
          "bsdtar -cf three.iso --format iso9660 -C in sub");
    for (const char* package : {"one.tar.gz", "two.7z", "three.iso"}) {
        Intake& level = Begin();
        EXPECT_TRUE(AddSources(level, {box / package})) << package << box.host.AllTold();
        ASSERT_EQ(Names().size(), 1U) << package;
        EXPECT_TRUE(EqualNames(Names()[0], "level.tr4")) << package;
        EXPECT_EQ(level.draft.name.find('.'), std::string::npos) << level.draft.name;
        std::filesystem::remove_all(box / "levels/LEVEL_0001");
    }
}

TEST_F(NewLevelTest, WhatCannotBeUnpackedIsNamedAndTheRestComesIn)
{
    box.Write("in/level.tr4", "level");
    box.Write("in/broken.zip", "PK no zip at all");
    Zip("in", "outer.zip");
    const std::string whole = box.Read("outer.zip");
    box.Write("cut.zip", whole.substr(0, whole.size() / 2));
    Intake& level = Begin();
    EXPECT_FALSE(AddSources(level, {box / "cut.zip", box / "outer.zip"}));
    EXPECT_TRUE(
        box.host.WasTold("Error while copying or unzipping file: " + (box / "cut.zip").native()));
    EXPECT_TRUE(box.host.WasTold("Error decompressing file: broken.zip"));
    EXPECT_TRUE(box.host.WasTold("It is still in the package that you gave"));
    EXPECT_EQ(Names(), (std::vector<std::string>{"level.tr4"}));
    EXPECT_TRUE(Accept(level)) << "what could be taken makes a level";

    // A zip that only the archive has is left alone.
    std::filesystem::remove_all(box / "levels/LEVEL_0001");
    record = {};
    Intake& stored = Edit({{"a.tr4", "a"}, {"extra.zip", "PK no zip"}});
    EXPECT_TRUE(box.host.WasTold("It stays in the level as it is"));
    EXPECT_EQ(stored.draft.files.size(), 2U);
    EXPECT_EQ(box.Read("levels/LEVEL_0001/files/extra.zip"), "PK no zip");
}

TEST_F(NewLevelTest, NoFileIsLostBesideAnotherOne)
{
    // A package that holds one of its own name, and one whose files are called like the outer's.
    box.Write("own/inner.txt", "inner");
    Zip("own", "again/level.zip");
    box.Write("again/own.txt", "own");
    Zip("again", "in/level.zip");
    box.Write("more/readme.txt", "the inner one");
    box.Write("more/same.txt", "same");
    box.Write("more/SCRIPT.dat", "the inner script");
    Zip("more", "in/more.zip");
    box.Write("in/readme.txt", "the outer one");
    box.Write("in/same.txt", "same");
    box.Write("in/script.dat", "the outer script");
    box.Write("in/level.tr4", "level");
    Zip("in", "outer.zip");
    Intake& level = Begin();
    ASSERT_TRUE(AddSources(level, {box / "outer.zip"})) << box.host.AllTold();
    EXPECT_EQ(box.Read("levels/LEVEL_0001/files/own.txt"), "own");
    EXPECT_TRUE(box.host.WasTold("readme.txt as readme_2.txt, script.dat as script.dat_2"));
    EXPECT_FALSE(box.host.WasTold("same.txt"));
    (void)Refresh(level);
    EXPECT_EQ(Part("files"), (Files{{"inner.txt", "inner"},
                                    {"level.tr4", "level"},
                                    {"own.txt", "own"},
                                    {"readme.txt", "the inner one"},
                                    {"readme_2.txt", "the outer one"},
                                    {"same.txt", "same"},
                                    {"script.dat", "the inner script"},
                                    {"script.dat_2", "the outer script"}}));
    // A folder: links are named, and of what comes from a package and beside it the person chooses.
    Shell("rm in/level.zip && ln -s /etc/hostname in/link.tr4 && ln -s same.txt in/within.txt && "
          "ln -s .. in/up");
    std::filesystem::remove_all(box / "levels/LEVEL_0001/files");
    std::filesystem::create_directory(box / "levels/LEVEL_0001/files");
    box.host.told.clear();
    box.host.WillAsk("readme.txt", false);
    box.host.WillAsk("script.dat", true);
    EXPECT_TRUE(AddSources(level, {box / "in"}));
    EXPECT_TRUE(box.host.WasTold("left out: link.tr4, up.")) << box.host.AllTold();
    EXPECT_EQ(box.Read("levels/LEVEL_0001/files/within.txt"), "same");
    EXPECT_EQ(box.Read("levels/LEVEL_0001/files/readme.txt"), "the inner one");
}

TEST_F(NewLevelTest, NamesOfAPackageAreReadAnewInTheChosenCodePage)
{
    // The same bytes are the one in Russian and the other in English.
    const std::string name = "\x8A\xA0\xE0\xE2\xA0.txt";
    const std::string inner =
        BuildZip({{"\x8F\xE0\xAE\xE7\xE2\xA8.txt", "inner", madeByDos}, {"level.tr4", "level"}});
    box.Write("r.zip", BuildZip({{name, "outer", madeByDos}, {"inner.zip", inner}}));
    box.Write("own.txt", "own");
    Intake& level = Begin();
    ASSERT_TRUE(AddSources(level, {box / "r.zip", box / "own.txt"})) << box.host.AllTold();
    EXPECT_EQ(level.draft.namesReadAs, "CP866");
    const Files russian{{"level.tr4", "level"},
                        {"own.txt", "own"},
                        {"Карта.txt", "outer"},
                        {"Прочти.txt", "inner"}};
    EXPECT_EQ(Part("files"), russian);
    ASSERT_TRUE(ReadNamesAs(level, "CP437")) << box.host.AllTold();
    EXPECT_EQ(level.draft.namesReadAs, "CP437");
    EXPECT_EQ(Part("files"), (Files{{"level.tr4", "level"},
                                    {"own.txt", "own"},
                                    {"èáαΓá.txt", "outer"},
                                    {"Åα«τΓ¿.txt", "inner"}}));
    ASSERT_TRUE(ReadNamesAs(level, "CP866"));
    EXPECT_EQ(Part("files"), russian);
    // Without the package nothing goes.
    std::filesystem::remove(box / "r.zip");
    EXPECT_FALSE(ReadNamesAs(level, "CP437"));
    EXPECT_TRUE(box.host.WasTold("r.zip"));
    EXPECT_EQ(Part("files"), russian);
}

TEST_F(NewLevelTest, TheStoredFormOfAnArchiveComesInAsWhatItIsAndWithinTheLimits)
{
    box.Write("in/level.tr4.zl", CompressZlBytes("level"));
    box.Write("in/deep/twice.wav.zl.ZL", CompressZlBytes(CompressZlBytes("wave")));
    box.Write("in/deep/readme.txt.zl", CompressZlBytes("the packed one"));
    box.Write("in/deep/readme.txt", "the plain one");
    Zip("in", "p.zip");
    Intake& level = Begin();
    ASSERT_TRUE(AddSources(level, {box / "p.zip"})) << box.host.AllTold();
    const Files expected{{"level.tr4", "level"},
                         {"twice.wav", "wave"},
                         {"readme.txt", "the plain one"},
                         {"readme_2.txt", "the packed one"}};
    EXPECT_EQ(Part("files"), expected);
    EXPECT_TRUE(box.host.WasTold("readme.txt.zl as readme_2.txt"));
    // A folder and a single file give the same.
    box.Write("one/other.tr4.zl", CompressZlBytes("other"));
    ASSERT_TRUE(AddSources(level, {box / "one", box / "in/level.tr4.zl"})) << box.host.AllTold();
    EXPECT_EQ(Part("files")["other.tr4"], "other");
    EXPECT_EQ(Part("files").size(), 5U);

    // What is damaged, or would fill the disk, is refused and leaves nothing.
    const Files before = Part("files");
    box.Write("bad/cut.tr4.zl", CompressZlBytes("level").substr(0, 6));
    Zip("bad", "bad.zip");
    EXPECT_FALSE(AddSources(level, {box / "bad.zip"}));
    EXPECT_TRUE(box.host.WasTold("'cut.tr4.zl' of 'bad.zip' is in the form in which an archive"));
    const std::string zeros = CompressZlBytes(std::string(3 << 20, '\0'));
    for (const char* name : {"a", "b", "c"})
        box.Write("bomb/" + std::string{name} + ".tr4.zl", zeros);
    Zip("bomb", "bomb.zip");
    SourceOptions options;
    options.limits.alwaysAllowed = 8 << 20;
    options.limits.mostTimes = 10;
    SourceReport report;
    const auto packed = CopyOrUnzipSource(
        box.session.host, box.session.machine, box.session.Folders(), ToolsOf(box.session),
        box / "bomb.zip", level.draft.workFolder, options, *progress, report);
    ASSERT_FALSE(packed);
    EXPECT_NE(packed.Error().sentence.find("No level does that"), std::string::npos)
        << packed.Error().sentence;
    Status last;
    for (const char* name : {"a", "b", "c"})
        if (last)
            last = CopyOrUnzipSource(box.session.host, box.session.machine, box.session.Folders(),
                                     ToolsOf(box.session),
                                     box / ("bomb/" + std::string{name} + ".tr4.zl"),
                                     level.draft.workFolder, options, *progress, report);
    EXPECT_FALSE(last) << "single files count together";
    Files after = Part("files");
    after.erase("a.tr4");
    after.erase("b.tr4");
    EXPECT_EQ(after, before);
    report.unpacking.reset();
    EXPECT_FALSE(FolderExists(UnpackingFolder(box.session.Folders())));
}

TEST_F(NewLevelTest, NamesThatDifferInCaseAloneAreNamedWhereverTheyComeFrom)
{
    box.Write("in/A.TR4", "one");
    box.Write("in/a.tr4", "two");
    Intake& level = Begin();
    EXPECT_TRUE(AddSources(level, {box / "in"}));
    EXPECT_TRUE(box.host.WasTold("were left out: a.tr4")) << box.host.AllTold();
    EXPECT_EQ(Part("files"), (Files{{"A.TR4", "one"}}));
    Shell("cd in && zip -q ../in.zip A.TR4 a.tr4 && bsdtar -cf ../in.tar A.TR4 a.tr4");
    for (const std::string package : {"in.zip", "in.tar"}) {
        std::filesystem::remove(box / "levels/LEVEL_0001/files/A.TR4");
        std::filesystem::remove(box / "levels/LEVEL_0001/files/a.tr4");
        std::filesystem::remove(box / "levels/LEVEL_0001/files/A_2.TR4");
        box.host.told.clear();
        (void)Refresh(level);
        EXPECT_TRUE(AddSources(level, {box / package}));
        EXPECT_TRUE(box.host.WasTold("A.TR4 as A_2.TR4")) << package << box.host.AllTold();
        EXPECT_EQ(Part("files"), (Files{{"a.tr4", "two"}, {"A_2.TR4", "one"}})) << package;
    }
}

TEST_F(NewLevelTest, ALevelThatIsStillInsideAProgramIsToldOf)
{
    const std::string stub = "MZ" + std::string(3'000, '\0');
    const struct {
        Files files;
        std::string words; ///< none: nothing is said
    } cases[] = {
        {{{"game.exe", stub + BuildZip({{"inside.tr4", "level"}})}}, "give it the ending .zip"},
        {{{"game.exe", stub + "7z\xBC\xAF\x27\x1C" + "packed"}}, "is an archive that unpacks"},
        {{{"game.exe", stub + "Rar!\x1A\x07"}, {"title.tr4", "title"}}, "is an archive that"},
        {{{"Setup.EXE", stub}, {"uninstall.exe", stub}}, "as a program, Setup.EXE, and its"},
        {{{"game.exe", stub}, {"level.tr4", "level"}}, ""},
        {{{"game.exe", stub}, {"level.tom", "source"}}, ""},
        {{{"ReadMe.exe", stub}, {"madplay.exe", stub}, {"start_me.exe", stub}}, ""},
    };
    for (const auto& entry : cases) {
        std::filesystem::remove_all(box / "in");
        std::filesystem::remove_all(box / "levels/LEVEL_0001");
        for (const auto& [name, content] : entry.files)
            box.Write("in/" + name, content);
        Zip("in", "level.zip");
        for (const std::string source : {"in", "level.zip"}) {
            std::filesystem::remove_all(box / "levels/LEVEL_0001");
            box.host.told.clear();
            Intake& level = Begin();
            EXPECT_TRUE(AddSources(level, {box / source}));
            (void)Refresh(level);
            EXPECT_EQ(box.host.told.size(), entry.words.empty() ? 0U : 1U) << box.host.AllTold();
            EXPECT_TRUE(entry.words.empty() || box.host.WasTold(entry.words))
                << entry.words << box.host.AllTold();
        }
    }
    // What comes out of a package in the package may be the level.
    box.Write("out/setup.exe", stub);
    box.Write("out/inner.zip", BuildZip({{"inside.tr4", "level"}}));
    std::filesystem::remove_all(box / "levels/LEVEL_0001");
    box.host.told.clear();
    Intake& level = Begin();
    EXPECT_TRUE(AddSources(level, {box / "out"}));
    EXPECT_EQ(box.host.AllTold(), "");
}

TEST_F(NewLevelTest, ManyNamesInAMessageAreBounded)
{
    for (int i = 0; i < 1'000; ++i) {
        const std::string name = std::to_string(i) + ".txt";
        box.Write("in/a/" + name, "one");
        box.Write("in/b/" + name, "two");
    }
    box.Write("in/a/" + std::string(240, 'n'), "one");
    box.Write("in/b/" + std::string(240, 'n'), "two");
    Intake& level = Begin();
    EXPECT_TRUE(AddSources(level, {box / "in"}, Subfolders::Take));
    EXPECT_TRUE(box.host.WasTold("b/0.txt, ")) << box.host.AllTold();
    EXPECT_TRUE(box.host.WasTold("and 991 more"));
    EXPECT_LT(box.host.AllTold().size(), 600U);
}

TEST_F(NewLevelTest, PackagesInAPackageCountTogether)
{
    Shell("mkdir in out && truncate -s 100M in/1.wav && cd in && zip -q1 ../out/1.zip 1.wav && "
          "mv 1.wav 2.wav && zip -q1 ../out/2.zip 2.wav && mv 2.wav 3.wav && "
          "zip -q1 ../out/3.zip 3.wav && rm 3.wav && echo level >../out/a.tr4");
    Zip("out", "down/three.zip");
    Intake& level = Begin();
    (void)AddSources(level, {box / "down/three.zip"});
    // Two are within what any package may become, all three are not.
    EXPECT_EQ(Names(), (std::vector<std::string>{"1.wav", "2.wav", "a.tr4"}));
    EXPECT_TRUE(box.host.WasTold("3.zip")) << box.host.AllTold();
    (void)Refresh(level);
    EXPECT_EQ(Names().size(), 3U);
}

TEST_F(NewLevelTest, AFolderComesWithItsSubfoldersWhenThePersonWantsThem)
{
    box.Write("in/level.tr4", "level");
    box.Write("in/sub/a.wav", "first");
    box.Write("in/twin/A.WAV", "other");
    box.Write("in/twin/level.tr4", "level");
    box.Write("pack/readme.txt", "from the zip");
    Zip("pack", "in/sub/more.zip");
    Intake& level = Begin();
    box.host.WillAsk("In folder \"in\" there are also sub folders.\r\n\r\nWould", false);
    EXPECT_TRUE(AddSources(level, {box / "in"}));
    EXPECT_EQ(Names(), (std::vector<std::string>{"level.tr4"}));
    box.host.WillAsk("there are also sub folders", true);
    EXPECT_TRUE(AddSources(level, {box / "in"}));
    EXPECT_EQ(Names(), (std::vector<std::string>{"a.wav", "level.tr4", "readme.txt"}));
    EXPECT_TRUE(box.host.WasTold("twin/A.WAV")) << "another file of that name is named";
    EXPECT_FALSE(box.host.WasTold("twin/level.tr4")) << "the same file twice is no matter";
    EXPECT_EQ(level.draft.name, "in");
    EXPECT_FALSE(AddSources(level, {box / "none"}));
    EXPECT_TRUE(box.host.WasTold("is not there: " + (box / "none").native()));
    // The archive's own folder around the level gives no file to itself.
    box.Write("levels/other.tr4", "other");
    EXPECT_TRUE(AddSources(level, {box / "levels"}, Subfolders::Take)) << box.host.AllTold();
    EXPECT_EQ(Names().size(), 4U);
}

TEST_F(NewLevelTest, ASourceThatIsStillWrittenToIsNamed)
{
    box.Write("in/level.tr4", "a part");
    /// The download goes on whenever a file of ours changes.
    class Download : public platform::FileHook
    {
    public:
        explicit Download(Path file) : file_(std::move(file)) { platform::SetFileHook(this); }
        ~Download() override { platform::SetFileHook(nullptr); }
        Download(const Download&) = delete;
        Download& operator=(const Download&) = delete;
        std::error_code Before(platform::FileAction, const Path&) override
        {
            std::ofstream{file_, std::ios::app} << " and more";
            return {};
        }

    private:
        Path file_;
    };
    Intake& level = Begin();
    {
        const Download running{box / "in/level.tr4"};
        EXPECT_FALSE(AddSources(level, {box / "in"}, Subfolders::Take));
    }
    EXPECT_EQ(level.draft.report.failed, 1U);
    EXPECT_TRUE(box.host.WasTold("were written to while they were taken in")) << box.host.AllTold();
    EXPECT_TRUE(AddSources(level, {box / "in"}, Subfolders::Take)) << box.host.AllTold();
    EXPECT_EQ(level.draft.report.failed, 0U);
}

TEST_F(NewLevelTest, OfASourceThatCannotBeReadWholeTheRestComesInAndTheLossIsNamed)
{
    box.Write("in/level.tr4", "level");
    box.Write("in/sub/more.txt", "more");
    // Folders so deep that no path leads there.
    const std::string name(200, 'd');
    int place = ::open((box / "in").c_str(), O_RDONLY | O_DIRECTORY);
    for (int i = 0; i < 25; ++i) {
        ASSERT_EQ(::mkdirat(place, name.c_str(), 0755), 0);
        const int next = ::openat(place, name.c_str(), O_RDONLY | O_DIRECTORY);
        ::close(std::exchange(place, next));
    }
    ::close(place);
    Intake& level = Begin();
    EXPECT_FALSE(AddSources(level, {box / "in"}, Subfolders::Take));
    EXPECT_EQ(level.draft.report.failed, 1U);
    EXPECT_TRUE(box.host.WasTold("could not be read. Nothing of it was copied"));
    EXPECT_EQ(Names(), (std::vector<std::string>{"level.tr4", "more.txt"}));

    Shell("mkfifo pipe");
    EXPECT_FALSE(AddSources(level, {box / "pipe"}));
    EXPECT_TRUE(box.host.WasTold("neither a file nor a folder"));
    BuiltEntry bad{"bad.txt", "what it was"};
    bad.packed = "what it is ";
    box.Write("part.zip", BuildZip({{"good.txt", "good"}, bad}));
    EXPECT_FALSE(AddSources(level, {box / "part.zip"}));
    EXPECT_EQ(Names().size(), 2U);
    level.draft.keepGoing = true;
    EXPECT_FALSE(AddSources(level, {box / "part.zip"}));
    EXPECT_TRUE(box.host.WasTold("did not come whole out of the package 'part.zip'"));
    EXPECT_EQ(Names(), (std::vector<std::string>{"good.txt", "level.tr4", "more.txt"}));
}

TEST_F(NewLevelTest, ASecondPackageAsksBeforeItReplacesAFile)
{
    box.Write("in/level.tr4", "level");
    box.Write("in/script.dat", "script");
    Zip("in", "one.zip");
    box.Write("in/script.dat", "other script");
    Zip("in", "two.zip");
    Intake& level = Begin();
    ASSERT_TRUE(AddSources(level, {box / "one.zip"}));
    box.host.WillAsk("script.dat", false);
    ASSERT_TRUE(AddSources(level, {box / "two.zip"}));
    EXPECT_EQ(Part("files")["script.dat"], "script");
    box.host.WillAsk("script.dat", true);
    ASSERT_TRUE(AddSources(level, {box / "two.zip"}));
    EXPECT_EQ(Part("files")["script.dat"], "other script");
    EXPECT_EQ(level.draft.name, "one") << "a name that is there stays";
}

TEST_F(NewLevelTest, AStopEndsTheSourcesAndLeavesTheLevelOpen)
{
    for (int i = 0; i < 50; ++i)
        box.Write("in/file" + std::to_string(i) + ".txt", "text");
    Intake& level = Begin();
    box.host.StopAtStep(20);
    EXPECT_TRUE(IsStop(AddSources(level, {box / "in"})));
    EXPECT_TRUE(box.host.told.empty()) << box.host.AllTold();
    EXPECT_LT(level.draft.files.size(), 50U);
}

TEST_F(NewLevelTest, TheChooserRemembersItsFolderAndALevelOnCdTakesNothing)
{
    box.session.preferences.downloadFolder = "c:\\";
    box.Write("loads/level.tr4", "level");
    Intake& level = Begin();
    box.host.WillChoose("Select source file (zip or other)", std::nullopt);
    EXPECT_FALSE(AddChosenFile(level));
    box.host.WillChoose("Select source file (zip or other)", box / "loads/level.tr4");
    EXPECT_TRUE(AddChosenFile(level));
    EXPECT_EQ(box.session.preferences.downloadFolder, (box / "loads").native());
    EXPECT_EQ(level.draft.name, "level");
    EXPECT_FALSE(RemoveFile(level, {}));
    EXPECT_TRUE(box.host.WasTold("No file selected"));
    box.host.WillAsk("Are you sure to remove file: level.tr4", true);
    EXPECT_TRUE(RemoveFile(level, level.draft.files.front()));
    EXPECT_TRUE(level.draft.files.empty());
    EXPECT_FALSE(Accept(level));
    EXPECT_TRUE(box.host.WasTold("Missing tr4 files"));
    level.draft.name = "  ";
    EXPECT_FALSE(Accept(level));
    EXPECT_TRUE(box.host.WasTold("You must set a name for new level"));

    record = {};
    record.levelCode = 5;
    record.cdNumber = 1;
    box.session.archive.levels.push_back(record);
    Intake onCd{box.session, record, EditSteps(), *progress};
    ASSERT_TRUE(OpenEdit(onCd));
    EXPECT_TRUE(box.host.WasTold("Cd missing. Main files will not be showed"));
    EXPECT_FALSE(AddSources(onCd, {box / "loads"}));
    EXPECT_TRUE(box.host.WasTold("Current level is also on cd. \r\nYou can not modify"));
    onCd.draft.name = "A name for it";
    EXPECT_TRUE(Accept(onCd)) << "its texts may be changed";
}

TEST_F(NewLevelTest, TheConfigurationFileFillsTheTextsAndIsNotStored)
{
    LevelConfig config;
    config.name = "The real name ";
    config.note = "its note";
    config.author = "An author";
    config.authorEmails = std::string("a@b\0c@d", 7);
    config.authorNote = "hello";
    config.moreInfo = "ABOUT.HTM";
    config.externWaves = std::string("TR4\0x.wav\0y.wav\0z.wav", 21);
    box.Write("in/level.tr4", "level");
    box.Write("in/about.htm", "about");
    box.Write("in/readme.txt", "read");
    ASSERT_TRUE(WriteLevelConfig(box / "in/Kestrova.CFG", config));
    Zip("in", "p.zip");
    Intake& level = Begin();
    box.host.WillAsk("in Tr4 The Last Revelation CD", false);
    ASSERT_TRUE(AddSources(level, {box / "p.zip"}));
    EXPECT_EQ(level.draft.name, "The real name");
    EXPECT_EQ(level.draft.note, "its note");
    EXPECT_EQ(level.draft.moreInfo, "about.htm");
    EXPECT_EQ(record.authorName, "An author");
    EXPECT_EQ(record.authorEmails, config.authorEmails);
    EXPECT_TRUE(box.host.WasTold("wave file is missing (x.wavy.wav)")) << box.host.AllTold();
    EXPECT_EQ(Names(), (std::vector<std::string>{"about.htm", "level.tr4", "readme.txt"}));
    box.Write("kestrova.cfg", "a later one is deleted unread");
    ASSERT_TRUE(AddSources(level, {box / "kestrova.cfg"}));
    EXPECT_EQ(level.draft.name, "The real name");
    EXPECT_EQ(level.draft.files.size(), 3U);
    GiveUp(level);
    EXPECT_EQ(record.authorName, "") << "the record is as it was";

    // One that cannot be read is told, and does not become a file of the level.
    std::filesystem::remove_all(box / "levels/LEVEL_0001");
    record = {};
    box.Write("in/Kestrova.CFG", "none at all");
    Intake& other = Begin();
    ASSERT_TRUE(AddSources(other, {box / "in"}));
    EXPECT_TRUE(box.host.WasTold("Error reading config file: "));
    ASSERT_TRUE(Accept(other)) << box.host.AllTold();
    EXPECT_EQ(Part("files").count("kestrova.cfg"), 0U);
    EXPECT_EQ(Part("files").count("level.tr4"), 1U);
}

TEST_F(NewLevelTest, NoProgramIsTakenForADocumentNorKeepsTheRightsOfOne)
{
    namespace fs = std::filesystem;
    box.Write("in/level.tr4", "level");
    box.Write("in/Walkthrough.exe", "MZ");
    box.Write("in/Readme.desktop", "[Desktop Entry]");
    box.Write("in/game notes.rtf", "notes");
    for (const char* name : {"level.tr4", "Walkthrough.exe", "Readme.desktop", "game notes.rtf"})
        fs::permissions(box / "in" / name, fs::perms::all | fs::perms::set_uid);
    Shell("mkfifo in/Install.txt && cd in && bsdtar -cf ../in.tar *");
    for (const char* source : {"in", "in.tar"}) {
        Intake& level = Begin();
        (void)AddSources(level, {box / source});
        EXPECT_EQ(level.draft.moreInfo, "game notes.rtf") << source;
        ASSERT_EQ(level.draft.files.size(), 4U) << source;
        for (const Path& file : level.draft.files)
            EXPECT_EQ(platform::FactsOf(file).mode, 0644U) << source << file;
        OpenFile(level, level.draft.workFolder / "game notes.rtf");
        box.host.WillAsk("Readme.desktop is no text, page or picture", false);
        OpenFile(level, level.draft.workFolder / "Readme.desktop");
        GiveUp(level);
        fs::remove_all(level.draft.workFolder);
    }
    EXPECT_EQ(box.machine.opened.size(), 2U);
    // Neither does the level's own configuration file choose one.
    LevelConfig config;
    config.name = "Trap";
    config.moreInfo = "Readme.desktop";
    ASSERT_TRUE(WriteLevelConfig(box / "in/kestrova.cfg", config));
    Intake& level = Begin();
    (void)AddSources(level, {box / "in"});
    EXPECT_EQ(level.draft.name, "Trap");
    EXPECT_EQ(level.draft.moreInfo, "");
}

TEST_F(NewLevelTest, OneLanguageFileStays)
{
    box.Write("home/backup_trle/Script.dat", "the original script");
    const auto choose = [&](const std::vector<std::string>& names) {
        std::filesystem::remove_all(box / "lang");
        for (const std::string& name : names)
            box.Write("lang/" + name, name);
        EXPECT_TRUE(ChooseLanguageFile(box.session.host, box.session.Folders(), box / "lang"))
            << box.host.AllTold();
        return box.Snapshot("lang");
    };
    Files backup = box.Snapshot("tools/backup_trle");
    box.session.programFolder = box / "home";
    std::string own;
    for (const auto& [name, content] : box.Snapshot("home/backup_trle"))
        if (EndsWithName(name, ".dat") && !EqualNames(name, "script.dat") && own.empty())
            own = name;
    ASSERT_FALSE(own.empty());

    EXPECT_EQ(choose({"french.dat"}),
              (Files{{"french.dat", "french.dat"}, {"script.dat", "the original script"}}));
    EXPECT_EQ(choose({"SCRIPT.DAT", "a.dat", own}),
              (Files{{"SCRIPT.DAT", "SCRIPT.DAT"}, {own, own}}))
        << "the player's own language needs no question";
    const std::string question = "This level contains 3 language files (.dat). Please choose only "
                                 "one. (Write number you wish: 1-3)\r\n1) a.dat\r\n2) b.dat";
    for (const auto& answer : {std::optional<std::string>{}, std::optional<std::string>{"0"},
                               std::optional<std::string>{"4"}, std::optional<std::string>{"b"}})
        box.host.WillAskText(question, answer);
    box.host.WillAskText(question, " 2 ");
    EXPECT_EQ(choose({"script.dat", "a.dat", "b.dat", "c.dat"}),
              (Files{{"b.dat", "b.dat"}, {"script.dat", "script.dat"}}));

    // A question stays one that a screen can hold, whatever lies there.
    std::vector<std::string> many{"script.dat"};
    for (int i = 0; i < 500; ++i)
        many.push_back("text" + std::to_string(1000 + i) + ".dat");
    box.host.WillAskText("40) text1039.dat\r\nand 460 more", "500");
    EXPECT_EQ(choose(many),
              (Files{{"script.dat", "script.dat"}, {"text1499.dat", "text1499.dat"}}));
}

TEST_F(NewLevelTest, ALevelThatIsThereAlreadyIsAskedFor)
{
    Intake& first = Begin();
    box.Write("in/same.tr4", "12345");
    ASSERT_TRUE(AddSources(first, {box / "in"}));
    ASSERT_TRUE(Accept(first));
    box.session.archive.levels.push_back(record);
    std::filesystem::rename(box / "in/same.tr4", box / "in/SAME.tr4");
    record = {};
    Intake& second = Begin();
    ASSERT_TRUE(AddSources(second, {box / "in"}));
    box.host.WillAsk("current tr4 file \"SAME.tr4\"\r\n has same name and same size of tr4 file in "
                     "level \"in\"\r\n\r\nHowever",
                     false);
    EXPECT_FALSE(Accept(second));
    EXPECT_TRUE(second.draft.givenUp);
    box.session.preferences.checkEqualLevels = false;
    Intake& third = Open();
    third.draft.name = "again";
    EXPECT_TRUE(Accept(third)) << "not asked when the preference is off";
}

TEST_F(NewLevelTest, PropertiesStoreOnlyWhatChanged)
{
    const Path stored = box / "levels/LEVEL_0001/files/a.tr4";
    Intake& level = Edit({{"a.tr4", "aaaa"}, {"script.dat", "s"}});
    box.session.archive.header.compressLevels = true;
    EXPECT_EQ(level.draft.name, "Stored");
    EXPECT_EQ(level.draft.SizeText(), "Level size: 0 + 0 = 0");
    level.draft.name = "Renamed";
    ASSERT_TRUE(Accept(level));
    EXPECT_EQ(record.levelName, "Renamed");
    EXPECT_TRUE(FileExists(stored)) << "nothing was compressed, as nothing changed";
    EXPECT_EQ(record.filesSize, 0);

    // Another date is a change.
    Intake& again = OpenToEdit();
    std::filesystem::last_write_time(stored, std::filesystem::file_time_type{});
    ASSERT_TRUE(Accept(again));
    EXPECT_EQ(Part("files").count("a.tr4.zl"), 1U);
    EXPECT_GT(record.filesSize, 0);

    // A file that joins a compressed level leaves the others in the index; one that takes the
    // place of a compressed one leaves no twin.
    box.Write("in/b.tr4", "bb");
    box.Write("in/a.tr4", "longer a");
    Intake& joined = OpenToEdit();
    ASSERT_TRUE(AddSources(joined, {box / "in/b.tr4"}));
    ASSERT_TRUE(Accept(joined));
    const auto index = ReadTr4InfOf(box.session.Folders(), 1);
    ASSERT_TRUE(index && index->size() == 2);
    Intake& replaced = OpenToEdit();
    ASSERT_TRUE(AddSources(replaced, {box / "in/a.tr4"}));
    EXPECT_EQ(Names(), (std::vector<std::string>{"a.tr4", "b.tr4.zl", "script.dat"}));
    GiveUp(replaced);
}

TEST_F(NewLevelTest, PropertiesOnAnExpandedCopyStoreItAnewOrDropIt)
{
    box.session.archive.header.compressLevels = true;
    Intake& first = Begin();
    box.Write("in/a.tr4", "aaaa");
    ASSERT_TRUE(AddSources(first, {box / "in"}));
    ASSERT_TRUE(Accept(first));
    const Files before = Part("files");
    box.session.preferences.noDecompressInProperties = false;
    Intake& level = OpenToEdit();
    EXPECT_EQ(Names(), (std::vector<std::string>{"a.tr4"})) << "shown as it is without compression";
    box.Write("b.tr4", "bb");
    ASSERT_TRUE(AddSources(level, {box / "b.tr4"}));
    const Path temp = level.draft.workFolder;
    GiveUp(level);
    EXPECT_FALSE(FolderExists(temp));
    EXPECT_EQ(Part("files"), before);

    Intake& kept = OpenToEdit();
    ASSERT_TRUE(AddSources(kept, {box / "b.tr4"}));
    ASSERT_TRUE(Accept(kept));
    EXPECT_FALSE(FolderExists(temp));
    EXPECT_EQ(Part("files").size(), 2U);
    EXPECT_EQ(Part("files").count("b.tr4.zl"), 1U);
}

TEST_F(NewLevelTest, OfTwoDifferentSavegamesBothAreKept)
{
    Intake& level = Edit({{"a.tr4", "a"}});
    const std::string old = SavegameBytes("Mine", 7);
    const std::string incoming = SavegameBytes("Theirs", 9);
    box.Write("levels/LEVEL_0001/backup_savegames/savegame.0", old);
    box.Write("levels/LEVEL_0001/backup_savegames/savegame.1", old);
    box.Write("levels/LEVEL_0001/screenshots/view.jpg", "my picture");
    for (const char* name : {"savegame.0", "savegame.1", "savegame.2", "view.jpg"})
        box.Write(std::string("in/") + name, name[0] == 'v' ? "their picture" : incoming);
    ASSERT_TRUE(AddSources(level, {box / "in"}));
    box.host.WillAsk("savegame.0", true);
    box.host.WillAsk("savegame.1", false);
    ASSERT_TRUE(Accept(level)) << box.host.AllTold();
    EXPECT_EQ(Part("backup_savegames"),
              (Files{{"savegame.0", incoming}, {"savegame.1", old}, {"savegame.2", incoming}}));
    EXPECT_EQ(Part("screenshots")["view.jpg"], "their picture");
    EXPECT_EQ(Part("files").count("savegame.0"), 0U);
    std::map<std::string, std::string> kept;
    for (const HistoryEntry& entry : HistoryOf(box.session.Folders(), 1))
        kept[entry.name] = *ReadWholeFile(HistoryContent(box.session.Folders(), entry.hash));
    EXPECT_EQ(kept,
              (Files{{"savegame.0", old}, {"savegame.1", incoming}, {"view.jpg", "my picture"}}));
}

} // namespace

} // namespace kestrova::testing
