#include "packages/package_list.h"
#include "packages/unzip.h"
#include "packages/zip_folder.h"

#include "core/text.h"
#include "session/telling.h"
#include "world/tool_box.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;

class ZipFiles : public ::testing::Test
{
protected:
    ToolBox box;
    std::unique_ptr<ProgressScope> progress = box.host.BeginProgress(ProgressWindow::Zip, "");
    ToolWatch state{progress.get()};

    ZipFiles() { box.UseRealTools(); }

    bool Unzip(const std::string& package, const std::string& folder, bool junk = false)
    {
        return state.Done(
            UnzipWithProgress(ToolsOf(box.session), box / package, box / folder, {junk}, state));
    }
    void Shell(const std::string& script)
    {
        ToolWatch own;
        ASSERT_TRUE(own.Done(ShellAndWait(
            ToolsOf(box.session), "cd " + box.root.native() + " && " + script, own, own.report)));
        ASSERT_EQ(own.report.end.code, 0) << own.details;
    }
};

TEST_F(ZipFiles, CarryNamesOfEveryKindThereAndBack)
{
    const std::vector<std::string> names{
        "-x",    "--help",      "a b.txt",   " lead",        "trail ",
        "q\"uo", "'it''s'",     "br[1].txt", "st*r?",        "ümläut é",
        "日本",  "back\\slash", "$(id)",     "`id`",         "@",
        "%s%n",  "a;b|c&d",     "#",         "inflating: x", std::string(255, 'n')};
    const std::vector<std::string> controls{"line\nend", "return\rx", "tab\tx"};
    std::map<std::string, std::string> expected;
    for (const std::string& name : names) {
        box.Write("in/" + name, "content of " + name);
        // What would mean a folder or a drive, or part a list, is made harmless.
        std::string safe = name;
        for (const char* bad : {"\\", ":", "|"})
            safe = ReplaceAll(std::move(safe), bad, "_");
        expected[safe] = "content of " + name;
    }
    box.Write("in/sub/deeper", "left out");
    ASSERT_TRUE(state.Done(ZipFolder(ToolsOf(box.session), box / "a [1].zip", box / "in", state)))
        << state.details;
    auto entries = ListZip(ToolsOf(box.session), box / "a [1].zip", state);
    ASSERT_TRUE(entries);
    EXPECT_EQ(entries->size(), names.size());
    for (const char* folder : {"-out put", "deep/er/out"}) {
        ASSERT_TRUE(Unzip("a [1].zip", folder)) << state.error << state.details;
        EXPECT_EQ(box.Snapshot(folder), expected);
    }
    // Control characters go in as they are; the unpacking tool makes them harmless.
    for (const std::string& name : controls)
        box.Write("in/" + name, "content of " + name);
    ASSERT_TRUE(state.Done(ZipFolder(ToolsOf(box.session), box / "a [1].zip", box / "in", state)))
        << state.details;
    entries = ListZip(ToolsOf(box.session), box / "a [1].zip", state);
    ASSERT_TRUE(entries);
    EXPECT_EQ(entries->size(), names.size() + controls.size());
    ASSERT_TRUE(Unzip("a [1].zip", "out2")) << state.error;
    EXPECT_EQ(box.Read("out2/lineend"), "content of line\nend");
    EXPECT_EQ(box.Snapshot("out2").size(), names.size() + controls.size());
}

TEST_F(ZipFiles, FailInWordsAndLeaveNoHalfZip)
{
    fs::create_directories(box / "in");
    box.Write("a.zip", "an old zip");
    EXPECT_FALSE(state.Done(ZipFolder(ToolsOf(box.session), box / "a.zip", box / "in", state)))
        << "nothing to do";
    EXPECT_NE(state.error.find("code 12"), std::string::npos) << state.error;
    EXPECT_FALSE(box.Has("a.zip"));
    box.Write("in/one", "1");
    EXPECT_FALSE(
        state.Done(ZipFolder(ToolsOf(box.session), box / "missing/a.zip", box / "in", state)));
    EXPECT_NE(state.details, "");
    // What the run says of itself does not count where the zip is there.
    box.AddTool("zip", "echo half > \"$4\"; exit 5");
    EXPECT_TRUE(state.Done(ZipFolder(ToolsOf(box.session), box / "a.zip", box / "in", state)));
    EXPECT_EQ(state.error, "");
    box.AddTool("zip", "echo the only word");
    EXPECT_FALSE(state.Done(ZipFolder(ToolsOf(box.session), box / "b.zip", box / "in", state)));
    EXPECT_EQ(state.error, "the only word\r\n");

    box.machine.tools.clear();
    fs::remove(box.session.programFolder / "zip");
    EXPECT_FALSE(
        DoneOrTold(box.host, ZipFolder(ToolsOf(box.session), box / "a.zip", box / "in", state)));
    EXPECT_TRUE(box.host.WasTold("Zip program 'pkzip.exe' not found in: " +
                                 box.session.programFolder.native()));
    EXPECT_FALSE(Unzip("a.zip", "out"));
    EXPECT_NE(state.error.find("Missing utility"), std::string::npos);
}

TEST_F(ZipFiles, UnpackFlatOrWithFoldersAndCleanFirst)
{
    box.Write("in/one", "1");
    box.Write("in/sub/two", "2");
    box.Write("in/sub/deep/three", "");
    Shell("cd in && zip -qr ../a.zip . && bsdtar -czf ../a.tar.gz . && "
          "bsdtar --format 7zip -cf ../a.7z . && bsdtar --format iso9660 -cf ../a.ISO .");
    for (const std::string package : {"a.zip", "a.tar.gz", "a.7z", "a.ISO"}) {
        fs::remove_all(box / "out");
        box.Write("out/old", "old");
        ASSERT_TRUE(Unzip(package, "out")) << package << state.error << state.details;
        EXPECT_EQ(box.Snapshot("out"),
                  (std::map<std::string, std::string>{
                      {"old", "old"}, {"one", "1"}, {"sub/two", "2"}, {"sub/deep/three", ""}}))
            << package;
        ASSERT_TRUE(state.Done(UnzipWithProgress(ToolsOf(box.session), box / package, box / "flat",
                                                 {true, true}, state)))
            << package << state.error << state.details;
        EXPECT_EQ(box.Snapshot("flat"),
                  (std::map<std::string, std::string>{{"one", "1"}, {"two", "2"}, {"three", ""}}))
            << package;
        box.Write("flat/old", "old");
    }
    EXPECT_TRUE(box.host.told.empty()) << box.host.AllTold();
}

TEST_F(ZipFiles, SayWhatIsWrongWithADamagedOrLockedPackage)
{
    box.Write("in/one", std::string(5'000, 'a') + "unlike");
    Shell("cd in && zip -q ../a.zip one && zip -qe -P secret ../locked.zip one && "
          "zip -q ../locked.zip ../a.zip");
    const std::string whole = box.Read("a.zip");
    box.Write("cut.zip", whole.substr(0, whole.size() / 2));
    std::string flipped = whole;
    constexpr std::size_t inContent = 64; // behind head, name and the marks of time and owner
    flipped[inContent] = static_cast<char>(flipped[inContent] ^ 0x55);
    box.Write("flipped.zip", flipped);
    box.Write("empty.zip", "");
    box.Write("text.7z", "no package");
    for (const char* package :
         {"cut.zip", "flipped.zip", "empty.zip", "locked.zip", "text.7z", "missing.zip"}) {
        EXPECT_FALSE(Unzip(package, "out")) << package;
        EXPECT_NE(state.error, "") << package;
        EXPECT_NE(state.details, "") << package;
    }
    // No tool waits for a password, and none is asked for without an end.
    box.Write("out2/keep", "kept");
    Shell("cp locked.zip locked.cab");
    EXPECT_FALSE(Unzip("locked.cab", "out2"));
    EXPECT_LT(state.details.size(), 3000U);
    EXPECT_EQ(box.Read("out2/keep"), "kept");
}

TEST_F(ZipFiles, OfADiskThatFailsAreNotCalledDamaged)
{
    // A file that opens and whose first byte fails to come, as on a disk that dies.
    std::filesystem::create_symlink("/proc/self/mem", box / "dying.zip");
    EXPECT_FALSE(Unzip("dying.zip", "out"));
    EXPECT_NE((state.error + state.details).find("could not be read to its end"), std::string::npos)
        << state.error << state.details;
    EXPECT_EQ(state.error.find("Download it again"), std::string::npos) << state.error;
}

TEST_F(ZipFiles, BringNothingButPlainFilesIntoTheFolderAndNothingBesideIt)
{
    box.Write("in/victim", "unharmed");
    Shell("mkdir pack && cd pack && ln -s ../in/victim link && ln -s .. up && mkfifo pipe && "
          "echo x > closed && chmod 0 closed && mkdir shut && echo y > shut/in && "
          "zip -qry ../a.zip link up closed shut && bsdtar -cf ../a.tar . && chmod 700 closed");
    for (const std::string package : {"a.zip", "a.tar"}) {
        ASSERT_TRUE(Unzip(package, "out-" + package)) << state.error << state.details;
        EXPECT_EQ(box.Snapshot("out-" + package),
                  (std::map<std::string, std::string>{{"closed", "x\n"}, {"shut/in", "y\n"}}));
        EXPECT_FALSE(box.Has("out-" + package + "/link"));
        EXPECT_FALSE(box.Has("out-" + package + "/pipe"));
    }
    EXPECT_EQ(box.Read("in/victim"), "unharmed");
    // Two that become the same name stay two files.
    box.Write("plain/a\xE9.txt", "1");
    box.Write("plain/aé.txt", "2");
    MakePlain(box / "plain");
    EXPECT_EQ(box.Snapshot("plain"),
              (std::map<std::string, std::string>{{"aé.txt", "2"}, {"aé_2.txt", "1"}}));
}

} // namespace

} // namespace kestrova::testing
