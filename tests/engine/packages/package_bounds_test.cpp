#include "packages/package_list.h"
#include "packages/unzip.h"

#include "world/tool_box.h"
#include "world/zip_builder.h"

#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Files = std::map<std::string, std::string>;

class PackageBounds : public ::testing::Test
{
protected:
    ToolBox box;
    ToolWatch state;

    PackageBounds()
    {
        box.UseRealTools();
        box.Write("empty", "");
    }

    bool Unzip(const std::string& package, const std::string& folder,
               const UnpackLimits& limits = {})
    {
        UnpackGuard guard{box.machine, box / package, box / folder, limits};
        return state.Done(UnzipWithProgress(ToolsOf(box.session), box / package, box / folder,
                                            {false, false, &guard}, state));
    }
    void Shell(const std::string& script)
    {
        ToolWatch own;
        ASSERT_TRUE(own.Done(ShellAndWait(
            ToolsOf(box.session), "cd " + box.root.native() + " && " + script, own, own.report)));
        ASSERT_EQ(own.report.end.code, 0) << own.details;
    }
    /// A tape of what the lines name, each with its rights and kind, made by the real tool.
    void Tape(const std::string& name, const std::string& lines)
    {
        box.Write("tape.mtree", "#mtree\n" + lines);
        Shell("bsdtar -cf " + name + " @tape.mtree");
    }
    bool IsEmpty(const std::string& folder)
    {
        return !fs::exists(box / folder) || fs::is_empty(box / folder);
    }
    void ExpectRefused(const std::string& package, const std::string& word,
                       const UnpackLimits& limits = {})
    {
        EXPECT_FALSE(Unzip(package, "out", limits)) << package;
        EXPECT_NE(state.error.find(word), std::string::npos) << package << ": " << state.error;
        EXPECT_NE(state.error.find("'" + package + "'"), std::string::npos) << state.error;
        EXPECT_TRUE(IsEmpty("out")) << package;
    }
};

std::string Repeated(const std::string& text, int times)
{
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

TEST_F(PackageBounds, NamesAreBoundedInLengthAndDepthBeforeAnythingComesOut)
{
    const std::string part = std::string(99, 'p') + "/";
    const std::string longest(255, 'n');
    box.Write("fine.zip", BuildZip({{Repeated("d/", 31) + "f", "1"},
                                    {Repeated(part, 9) + std::string(100, 'f'), "2"},
                                    {longest, "3"}}));
    ASSERT_TRUE(Unzip("fine.zip", "fine")) << state.error;
    EXPECT_EQ(box.Snapshot("fine").size(), 3U);

    box.Write("deep.zip", BuildZip({{"ok", "1"}, {Repeated("d/", 32) + "f", "2"}}));
    box.Write("long.zip", BuildZip({{"ok", "1"}, {Repeated(part, 10) + "f", "2"}}));
    box.Write("name.zip", BuildZip({{"ok", "1"}, {longest + "n", "2"}}));
    ExpectRefused("deep.zip", "33 deep");
    ExpectRefused("long.zip", "too long: ppp");
    ExpectRefused("name.zip", "too long: nnn");
    // On a tape a few bytes can say a path that the system itself could not remove by its name.
    box.Write("f", "1");
    Shell("bsdtar -czf jam.tar.gz --format=pax -s '#^f$#" + Repeated("d/", 2000) +
          "f#' f && "
          "bsdtar -czf wide.tar.gz -s '#^f$#" +
          Repeated(part, 11) + "f#' f");
    const auto start = Clock::now();
    ExpectRefused("jam.tar.gz", "2001 deep");
    ExpectRefused("wide.tar.gz", "too long");
    EXPECT_LT(Clock::now() - start, std::chrono::seconds{5});
    // Names of another alphabet are as long as they are, not as the tool prints them.
    Tape("bytes.tar", "./" + Repeated("\\203\\134", 80) + " type=file size=0 contents=empty\n");
    ASSERT_TRUE(Unzip("bytes.tar", "bytes")) << state.error << state.details;
    EXPECT_EQ(box.Snapshot("bytes").size(), 1U);
}

TEST_F(PackageBounds, FoldersCountAsEntriesAndAsBytes)
{
    std::vector<BuiltEntry> folders;
    for (int i = 0; i < 60; ++i)
        folders.push_back({"d" + std::to_string(i) + "/", ""});
    box.Write("folders.zip", BuildZip(folders));
    UnpackLimits limits;
    limits.mostFiles = 59;
    ExpectRefused("folders.zip", "holds 60 files", limits);
    limits.mostFiles = 60;
    limits.alwaysAllowed = 60 * 4096 - 1;
    limits.mostTimes = 1;
    ExpectRefused("folders.zip", "becomes", limits);
    limits.alwaysAllowed = 60 * 4096;
    EXPECT_TRUE(Unzip("folders.zip", "out", limits)) << state.error;
    // What the names leave unsaid is met while it comes out: folders that no entry names.
    box.Write("implied.zip", BuildZip({{"a/b/c/d/e/f/g/h/i/j/k", "1"}}));
    limits.mostFiles = 5;
    ExpectRefused("implied.zip", "more than 5 files", limits);
}

TEST_F(PackageBounds, NoListCanHideWhatComesOut)
{
    UnpackLimits limits;
    limits.mostFiles = 3;
    const std::string list = "  Length      Date    Time    Name\n"
                             "---------  ---------- -----   ----\n"
                             "        1  2026-11-21 01:01   a\n"
                             "---------                     -------\n"
                             "        1                     1 file\n";
    std::vector<BuiltEntry> entries;
    for (int i = 0; i < 5; ++i)
        entries.push_back({"f" + std::to_string(i), "x"});
    box.Write("comment.zip", BuildZip(entries, "x\n" + list));
    const auto listed = ListZip(ToolsOf(box.session), box / "comment.zip", state);
    ASSERT_TRUE(listed);
    EXPECT_EQ(listed->size(), 5U);
    ExpectRefused("comment.zip", "holds 5 files", limits);

    // A tool that says one thing and does another: the zip's own directory speaks, then the folder.
    const std::string many = "mkdir -p \"$4\"; for i in 1 2 3 4 5 6 7 8 9; do echo x > \"$4/$i\"; "
                             "done; sleep 20";
    box.AddTool("unzip", "[ $1 = -l ] && cat <<'E' || { " + many + "; }\n" + list + "E\n");
    ExpectRefused("comment.zip", "holds 5 files", limits);
    box.Write("none.zip", "no directory");
    const auto start = Clock::now();
    ExpectRefused("none.zip", "more than 3 files", limits);
    EXPECT_LT(Clock::now() - start, std::chrono::seconds{3}) << "stopped while it came";
}

TEST_F(PackageBounds, NothingButPlainFilesOfPlainRightsComesOut)
{
    box.Write("x", "#!/bin/sh\n");
    Tape("a.tar", "./suid type=file mode=6777 contents=x\n"
                  "./Readme.desktop type=file mode=0755 contents=x\n"
                  "./none type=file mode=0000 contents=x\n"
                  "./open type=dir mode=3777\n"
                  "./open/in type=file mode=0400 contents=x\n"
                  "./pipe type=fifo mode=0666\n"
                  "./null type=char device=native,1,3 mode=0666\n"
                  "./link type=link link=/etc/passwd\n"
                  "./shut type=dir mode=0555\n"
                  "./shut/pipe type=fifo mode=0\n");
    ASSERT_TRUE(Unzip("a.tar", "out")) << state.error << state.details;
    const std::string x = box.Read("x");
    EXPECT_EQ(box.Snapshot("out"),
              (Files{{"suid", x}, {"Readme.desktop", x}, {"none", x}, {"open/in", x}}));
    for (const auto& entry : fs::recursive_directory_iterator(box / "out")) {
        struct stat status {
        };
        ASSERT_EQ(::lstat(entry.path().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode, entry.is_directory() ? S_IFDIR | 0755U : S_IFREG | 0644U)
            << entry.path();
    }
    // What a killed run left there does not hold up the next one.
    const Path left = box / "out2/.kv~unpack/shut";
    fs::create_directories(left);
    ASSERT_EQ(::mkfifo((left / "pipe").c_str(), 0), 0);
    ASSERT_EQ(::chmod(left.c_str(), 0), 0);
    EXPECT_TRUE(Unzip("a.tar", "out2")) << state.error << state.details;
    EXPECT_EQ(box.Snapshot("out2").size(), 4U);
}

TEST_F(PackageBounds, TenThousandNamesThatBecomeOneAreNumberedInOneGo)
{
    constexpr int count = 10'000;
    {
        std::ofstream cases{box / "cases.mtree"};
        std::ofstream controls{box / "controls.mtree"};
        cases << "#mtree\n";
        controls << "#mtree\n";
        const auto control = [](int n) {
            return "\\0" + std::to_string(n / 8 + 1) + std::to_string(n % 8);
        };
        for (int i = 0; i < count; ++i) {
            std::string name = "abcdefghijklmn";
            for (int bit = 0; bit < 14; ++bit)
                if ((i >> bit & 1) != 0)
                    name[static_cast<std::size_t>(bit)] ^= ' ';
            cases << "./" << name << " type=file size=0 contents=empty\n";
            controls << "./c" << control(i % 20) << control(i / 20 % 20) << control(i / 400 % 20)
                     << control(i / 8000) << " type=file size=0 contents=empty\n";
        }
    }
    for (const std::string kind : {"cases", "controls"}) {
        Shell("bsdtar -cf " + kind + ".tar @" + kind + ".mtree");
        const auto start = Clock::now();
        ASSERT_TRUE(Unzip(kind + ".tar", kind)) << state.error << state.details;
        EXPECT_LT(Clock::now() - start, std::chrono::seconds{10}) << kind;
        const Files files = box.Snapshot(kind);
        EXPECT_EQ(files.size(), static_cast<std::size_t>(count)) << kind << ": none is lost";
        EXPECT_TRUE(kind == "cases" || files.contains("c_____" + std::to_string(count)) ||
                    files.contains("c_____2"));
    }
    // A name as long as a name can be gets its number all the same.
    box.Write("long.zip", BuildZip({{std::string(251, 'n') + ".txt", "1"},
                                    {std::string(251, 'N') + ".txt", "2"}}));
    ASSERT_TRUE(Unzip("long.zip", "long")) << state.error << state.details;
    EXPECT_EQ(box.Snapshot("long").size(), 2U);
}

} // namespace

} // namespace kestrova::testing
