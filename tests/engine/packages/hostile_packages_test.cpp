#include "formats/zip_directory.h"
#include "packages/unzip.h"

#include "core/text.h"
#include "sandbox/faults.h"
#include "sandbox/patience.h"
#include "world/tool_box.h"
#include "world/zip_builder.h"

#include <chrono>
#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Files = std::map<std::string, std::string>;

/// Calls what a test wants at every step, and stops when it says so.
class SteppedProgress : public ProgressScope
{
public:
    std::function<bool()> atStep = [] { return true; };
    Clock::duration longestPause{};

    void SetLabel(const std::string&) override {}
    void SetBar(std::uint64_t, std::uint64_t) override {}
    void AllowStop() override {}
    bool Step() override
    {
        const auto now = Clock::now();
        longestPause = std::max(longestPause, now - last_);
        last_ = now;
        return atStep();
    }

private:
    Clock::time_point last_ = Clock::now();
};

class HostilePackages : public ::testing::Test
{
protected:
    ToolBox box;
    SteppedProgress progress;
    ToolWatch state{&progress};

    HostilePackages() { box.UseRealTools(); }

    bool Unzip(const std::string& package, const std::string& folder, bool junk = false,
               UnpackGuard* guard = nullptr)
    {
        return state.Done(UnzipWithProgress(ToolsOf(box.session), box / package, box / folder,
                                            {junk, false, guard}, state));
    }
    void Shell(const std::string& script)
    {
        ToolWatch own;
        ASSERT_TRUE(own.Done(ShellAndWait(
            ToolsOf(box.session), "cd " + box.root.native() + " && " + script, own, own.report)));
        ASSERT_EQ(own.report.end.code, 0) << own.details;
    }
    /// Nothing hidden stays behind either.
    bool IsEmpty(const std::string& folder)
    {
        return !fs::exists(box / folder) || fs::is_empty(box / folder);
    }
};

TEST_F(HostilePackages, NamesInEveryCodePageComeOutReadable)
{
    const struct {
        std::string name;
        std::string shown;
        std::uint16_t madeBy = madeByDos;
        std::uint16_t flags = 0;
    } cases[] = {
        {"Zug\x84nge \xA4.txt", "Zugänge ñ.txt"},
        {"\x90t\x82.txt", "Été.txt"},
        {"Stra\xE1"
         "e.txt",
         "Straße.txt"},
        {"S\x9Bndag.txt", "Søndag.txt"},
        {"liga\x87\xC6o.txt", "ligação.txt"},
        {"Zug\xE4nge.txt", "Zugänge.txt"},
        {"\xC9t\xE9 \x97 1.txt", "Été — 1.txt"},
        {"\xE9t\xE9.txt", "été.txt", 0x0314},
        {"Zugänge 日本.txt", "Zugänge 日本.txt"},
        {"Zugänge 日本.txt", "Zugänge 日本.txt", 0x0314},
        {"Zugänge 日本.txt", "Zugänge 日本.txt", madeByDos, 0x800},
        {"\xFF\xFE \x81.txt", {}},
    };
    for (const auto& entry : cases) {
        box.Write("a.zip",
                  BuildZip({{"plain.txt", "1"}, {entry.name, "2", entry.madeBy, entry.flags}}));
        fs::remove_all(box / "out");
        ASSERT_TRUE(Unzip("a.zip", "out", true)) << entry.name << state.error << state.details;
        const Files files = box.Snapshot("out");
        ASSERT_EQ(files.size(), 2U) << "none is dropped";
        EXPECT_TRUE(entry.shown.empty() || files.contains(entry.shown))
            << entry.shown << " is " << files.begin()->first;
        for (const auto& [name, content] : files)
            EXPECT_TRUE(IsUtf8(name));
    }
    // Without the tool that knows code pages they come out too, as well as the other can.
    box.machine.tools.erase("bsdtar");
    box.Write("a.zip", BuildZip({{"Zug\x84nge.txt", "2", madeByDos}}));
    ASSERT_TRUE(Unzip("a.zip", "out2"));
    EXPECT_EQ(box.Snapshot("out2"), (Files{{"Zugänge.txt", "2"}}));
}

TEST_F(HostilePackages, FilesOfOneNameAreAllKeptWhenFlat)
{
    box.Write("a.zip", BuildZip({{"a.txt", "1"},
                                 {"A.TXT", "2"},
                                 {"Sub/a.txt", "3"},
                                 {"sub/b.txt", "4"},
                                 {"sub/deep/B.txt", "5"},
                                 {"c", "6"}}));
    Shell("mkdir t && cd t && unzip -q ../a.zip && bsdtar -cf ../a.tar a.txt A.TXT Sub sub c");
    for (const std::string package : {"a.zip", "a.tar"}) {
        fs::remove_all(box / "flat");
        ASSERT_TRUE(Unzip(package, "flat", true)) << state.error << state.details;
        const Files flat = box.Snapshot("flat");
        EXPECT_EQ(flat.size(), 6U) << package;
        std::set<std::string> contents;
        std::set<std::string> folded;
        for (const auto& [name, content] : flat) {
            contents.insert(content);
            folded.insert(FoldCase(name));
        }
        EXPECT_EQ(contents.size(), 6U) << package;
        EXPECT_EQ(folded.size(), 6U) << package << ": no two differ by case alone";
        EXPECT_EQ(flat.at("a.txt"), "3") << "the later one has the name";
    }
    // With folders: what was there is replaced in its own spelling, folders of one name are one.
    box.Write("out/A.Txt", "old");
    box.Write("out/SUB/other", "kept");
    ASSERT_TRUE(Unzip("a.zip", "out")) << state.error << state.details;
    EXPECT_EQ(box.Snapshot("out"), (Files{{"A.Txt", "2"},
                                          {"a_2.txt", "1"},
                                          {"SUB/other", "kept"},
                                          {"SUB/a.txt", "3"},
                                          {"SUB/b.txt", "4"},
                                          {"SUB/deep/B.txt", "5"},
                                          {"c", "6"}}));
    // What cannot come in leaves no half package.
    fs::create_directories(box / "shut/c");
    EXPECT_FALSE(Unzip("a.zip", "shut"));
    EXPECT_NE(state.error.find("a.zip"), std::string::npos) << state.error;
    EXPECT_NE(state.details.find("shut/c"), std::string::npos) << state.details;
}

TEST_F(HostilePackages, NothingGetsOutOfTheFolder)
{
    box.Write("in/victim", "unharmed");
    fs::permissions(box / "in/victim", fs::perms::owner_read);
    const std::string victim = (box / "in/victim").native();
    constexpr std::uint32_t link = 0120777;
    constexpr std::uint32_t device = 0020666;
    constexpr std::uint32_t pipe = 0010666;
    const struct {
        std::vector<BuiltEntry> entries;
        Files taken; ///< when it is taken at all
    } cases[] = {
        {{{"../escaped", "1"}, {"ok", "2"}}, {{"escaped", "1"}, {"ok", "2"}}},
        {{{"/escaped", "1"}, {"//srv/escaped2", "2"}}, {{"escaped", "1"}, {"srv/escaped2", "2"}}},
        {{{"a/../../escaped", "1"}}, {{"a/escaped", "1"}}},
        {{{"..\\escaped", "1", madeByDos}}, {{"escaped", "1"}}},
        {{{"C:\\x\\y", "1", madeByDos}, {"c:z", "2", madeByDos}}, {{"C_/x/y", "1"}, {"c_z", "2"}}},
        {{{"d", "..", 0x0314, 0, link}, {"d/escaped", "1"}}, {}},
        {{{"d", victim, 0x0314, 0, link}, {"d", "overwritten"}}, {{"d", "overwritten"}}},
        {{{"tty", "", 0x0314, 0, device}, {"p", "", 0x0314, 0, pipe}, {"ok", "1"}},
         {{"tty", ""}, {"p", ""}, {"ok", "1"}}},
        {{{"..", "1"}, {".", "2"}, {"ok", "3"}}, {{"__", "1"}, {"_", "2"}, {"ok", "3"}}},
        {{{"", "1"}, {"ok", "2"}}, {}},
        {{{std::string(300, 'n'), "1"}, {"ok", "2"}}, {}},
        {{{".kv~hidden", "1"}, {"esc\x1B[31m\n", "2"}}, {{"_kv~hidden", "1"}, {"esc[31m", "2"}}},
        {{{"a", "1"}, {"a/b", "2"}}, {}},
    };
    int number = 0;
    for (const auto& entry : cases) {
        box.Write("evil.zip", BuildZip(entry.entries));
        const Files before = box.Snapshot("");
        const std::string folder = "deep/out" + std::to_string(++number);
        if (Unzip("evil.zip", folder)) {
            EXPECT_EQ(box.Snapshot(folder), entry.taken) << number;
        } else {
            EXPECT_TRUE(entry.taken.empty()) << number << state.error << state.details;
            EXPECT_NE(state.error, "") << number;
            EXPECT_NE(state.details, "") << number << ": the tool's own words";
            EXPECT_TRUE(IsEmpty(folder)) << number;
        }
        fs::remove_all(box / folder);
        // The other tool takes the same, or refuses it.
        fs::copy_file(box / "evil.zip", box / "evil.cab");
        (void)Unzip("evil.cab", folder, number % 2 == 0);
        fs::remove_all(box / folder);
        fs::remove(box / "evil.cab");
        EXPECT_EQ(box.Snapshot(""), before) << number;
        EXPECT_FALSE(fs::exists("/escaped") || fs::exists("/srv/escaped2")) << number;
    }
    // Hard links are what only tapes bring.
    Shell(
        "ln in/victim h && bsdtar -P -cf hard.tar \"$PWD/in/victim\" h && rm -f h && "
        "mkdir t && cd t && echo x > ../near && ln ../near n && bsdtar -P -cf ../up.tar ../near n");
    (void)Unzip("hard.tar", "hard");
    (void)Unzip("up.tar", "deep/up", true);
    EXPECT_EQ(box.Read("in/victim"), "unharmed");
    EXPECT_EQ(fs::status(box / "in/victim").permissions(), fs::perms::owner_read);
}

TEST_F(HostilePackages, BombsAreRefusedOrStoppedAndTheFolderCleared)
{
    constexpr std::uint64_t megabyte = 1 << 20;
    const UnpackLimits limits{100, megabyte, 10, megabyte};
    const std::string zeros(20 * megabyte, '\0');
    box.Write("bomb.zip", BuildZip({{"x", zeros, 0x0314, 0, 0100644, true}}));
    box.Write("lie.zip", BuildZip({{"a", "a"}, {"x", zeros, 0x0314, 0, 0100644, true, 10}}));
    box.Write("fine.zip", BuildZip({{"a", "a"}, {"x", zeros.substr(0, megabyte / 2)}}));
    box.Write("nest.zip", BuildZip({{"fine.zip", box.Read("fine.zip")}}));
    Shell("bsdtar -xf bomb.zip && bsdtar -czf bomb.tar.gz x && rm x");
    box.Write("out/kept", "kept");
    for (const std::string package : {"bomb.zip", "lie.zip", "bomb.tar.gz"}) {
        UnpackGuard guard{box.machine, box / package, box / "out", limits};
        EXPECT_FALSE(Unzip(package, "out", false, &guard)) << package;
        EXPECT_NE(state.error.find("'" + package + "'"), std::string::npos) << state.error;
        EXPECT_NE(state.error.find("No level does that"), std::string::npos) << state.error;
        EXPECT_EQ(box.Snapshot("out"), (Files{{"kept", "kept"}}));
        EXPECT_FALSE(fs::exists(box / "out/.kv~unpack"));
    }
    // Packages in a package count together.
    UnpackGuard guard{box.machine, box / "nest.zip", box / "nest", limits};
    ASSERT_TRUE(Unzip("nest.zip", "nest", false, &guard)) << state.error;
    for (int i = 0; i < 30; ++i)
        fs::copy_file(box / "nest/fine.zip", box / ("nest/" + std::to_string(i) + ".zip"));
    EXPECT_FALSE(Unzip("nest/fine.zip", "nest", false, &guard));
    EXPECT_NE(state.error.find("'nest.zip'"), std::string::npos) << state.error;

    // A disk that fills up, by what the list says and while the tool works.
    box.machine.free = 2 * megabyte;
    UnpackGuard small{box.machine, box / "fine.zip", box / "room", limits};
    ASSERT_TRUE(Unzip("fine.zip", "room", false, &small)) << state.error;
    box.machine.free = megabyte / 2;
    EXPECT_FALSE(Unzip("fine.zip", "room", false, &small));
    EXPECT_NE(state.error.find("no room to unpack 'fine.zip'"), std::string::npos) << state.error;
    box.machine.free = 100 * megabyte;
    box.AddTool("unzip", "[ $1 = -l ] && echo list || { echo x > \"$4/x\"; sleep 5; }");
    progress.atStep = [&] {
        if (fs::exists(box / "slow/.kv~unpack/x"))
            box.machine.free = 0;
        return true;
    };
    const auto start = Clock::now();
    UnpackGuard slow{box.machine, box / "fine.zip", box / "slow", limits};
    EXPECT_FALSE(Unzip("fine.zip", "slow", false, &slow));
    EXPECT_NE(state.error.find("no room"), std::string::npos) << state.error;
    EXPECT_TRUE(IsEmpty("slow"));
    EXPECT_LT(Clock::now() - start, soon);
}

TEST_F(HostilePackages, FarTooManyEntriesAreRefusedAndCanBeStopped)
{
    // A program that watches its memory takes as long for a quarter of them.
    const std::size_t many = WalkStride() == 1 ? 1'000'000 : 250'000;
    {
        std::vector<BuiltEntry> entries(many);
        for (std::size_t i = 0; i < many; ++i)
            entries[i].name = std::to_string(i);
        box.Write("many.zip", BuildZip(entries));
    }
    UnpackGuard guard{box.machine, box / "many.zip", box / "out"};
    progress.Step();
    progress.longestPause = {};
    auto start = Clock::now();
    EXPECT_FALSE(Unzip("many.zip", "out", true, &guard));
    EXPECT_LT(Clock::now() - start, 10 * soon);
    // On a machine at work the tool may not come to the end of its list in the time that it has.
    EXPECT_TRUE(state.error.find("'many.zip' holds " + std::to_string(many) + " files") !=
                    std::string::npos ||
                state.error == "Timeout")
        << state.error;
    EXPECT_TRUE(IsEmpty("out"));
    EXPECT_LT(progress.longestPause, soon);

    start = Clock::now();
    progress.atStep = [&] { return Clock::now() - start < std::chrono::milliseconds{200}; };
    EXPECT_FALSE(Unzip("many.zip", "out", true));
    EXPECT_EQ(state.error, "Break user");
    EXPECT_LT(Clock::now() - start, soon);
    EXPECT_TRUE(IsEmpty("out"));
}

TEST_F(HostilePackages, StopClearsWhatHadComeOut)
{
    std::vector<BuiltEntry> entries;
    for (int i = 0; i < 20'000; ++i)
        entries.push_back({"f" + std::to_string(i), "x"});
    box.Write("long.zip", BuildZip(entries));
    bool stopped = false;
    Clock::time_point at;
    progress.atStep = [&] {
        if (!stopped && fs::exists(box / "out/.kv~unpack/f100")) {
            stopped = true;
            at = Clock::now();
        }
        return !stopped;
    };
    EXPECT_FALSE(Unzip("long.zip", "out"));
    ASSERT_TRUE(stopped);
    EXPECT_LT(Clock::now() - at, soon);
    EXPECT_EQ(state.error, "Break user");
    EXPECT_TRUE(IsEmpty("out"));
}

} // namespace

} // namespace kestrova::testing
