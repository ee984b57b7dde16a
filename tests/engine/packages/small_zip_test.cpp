#include "packages/small_zip.h"

#include "packages/unzip.h"
#include "world/tool_box.h"
#include "world/zip_builder.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>;

class SmallZip : public ::testing::Test
{
protected:
    ToolBox box;
    ToolWatch state;

    SmallZip() { box.UseRealTools(); }

    bool Unpack(const std::string& bytes, const std::string& folder)
    {
        box.Write("small.zip", bytes);
        fs::create_directories(box / folder);
        return UnpackSmallZip(box / "small.zip", box / folder);
    }
    /// As packages come in: by the program where it can, by the tool where it cannot.
    bool Unzip(const std::string& folder, bool guarded)
    {
        UnpackGuard guard{box.machine, box / "small.zip", box / folder};
        UnzipOptions options;
        options.guard = guarded ? &guard : nullptr;
        return state.Done(UnzipWithProgress(ToolsOf(box.session), box / "small.zip", box / folder,
                                            options, state));
    }
};

TEST_F(SmallZip, ComesOutAsTheToolMakesIt)
{
    box.Write("in/a.tr4", std::string(9'000, 'a') + "unlike");
    box.Write("in/empty", "");
    box.Write("in/sub/deep/b.txt", "below");
    fs::create_directories(box / "in/bare");
    ToolWatch own;
    ASSERT_TRUE(own.Done(ShellAndWait(ToolsOf(box.session),
                                      "cd " + (box / "in").native() +
                                          " && touch -d '2003-07-09 10:20:31 UTC' a.tr4 && "
                                          "zip -qr ../plain.zip . && zip -qrX ../bare.zip .",
                                      own, own.report)));
    for (const std::string zip : {"plain.zip", "bare.zip"}) {
        ASSERT_TRUE(Unpack(box.Read(zip), "own-" + zip)) << zip;
        ASSERT_TRUE(Unzip("tool-" + zip, false)) << state.error;
        EXPECT_EQ(box.Snapshot("own-" + zip), box.Snapshot("in"));
        EXPECT_EQ(box.Snapshot("tool-" + zip), box.Snapshot("in"));
        EXPECT_TRUE(fs::is_directory(box / ("own-" + zip + "/bare")));
        EXPECT_EQ(fs::last_write_time(box / ("own-" + zip + "/a.tr4")),
                  fs::last_write_time(box / ("tool-" + zip + "/a.tr4")))
            << zip;
    }
}

TEST_F(SmallZip, WhatIsNotPlainAndWholeIsTheToolsMatter)
{
    constexpr std::uint32_t link = 0120777;
    const BuiltEntry good{"good", "good"};
    const auto flags = [](std::uint16_t set) { return BuiltEntry{"f", "f", 0x0314, set}; };
    const std::vector<BuiltEntry> odd[] = {
        {good, {"../up", "1"}},
        {good, {"/abs", "1"}},
        {good, {"a/./b", "1"}},
        {good, {"a//b", "1"}},
        {good, {"..\\up", "1", madeByDos}},
        {good, {"c:x", "1"}},
        {good, {"esc\x1B[1m", "1"}},
        {good, {"\xC3\xA4", "1"}},
        {good, {"", "1"}},
        {good, {"v.tr4;1", "1"}},
        {good, good},
        {good, {"good/below", "1"}},
        {good, {"d", "good", 0x0314, 0, link}},
        {good, flags(0x0001)},
        {good, flags(0x2000)},
        {good, {"m", "m", 0x0314, 0, 0100644, false, {}, 0, 12}},
        {good, {"less", std::string(5'000, 'l'), 0x0314, 0, 0100644, true, 10}},
        {good, {"more", "more", 0x0314, 0, 0100644, true, 3'000'000}},
        {good, {"huge", "huge", 0x0314, 0, 0100644, true, 0xFFFFFFFF}},
        {good, {"bad", "right", 0x0314, 0, 0100644, false, {}, 0, 0, "wrong"}},
        {good, {"big", std::string(6'000'000, '\0'), 0x0314, 0, 0100644, true}},
        std::vector<BuiltEntry>(201, good),
        {},
    };
    int number = 0;
    for (const auto& entries : odd) {
        const std::string folder = "deep/in/own" + std::to_string(++number);
        EXPECT_FALSE(Unpack(BuildZip(entries), folder)) << number;
        fs::remove_all(box / folder);
        EXPECT_EQ(box.Snapshot("deep"), Files{}) << number << ": something got out";
        // Whoever unpacks it in the end, the same comes in, or the same is said.
        const bool byTool = Unzip("tool", false);
        const std::string words = state.error;
        EXPECT_EQ(Unzip("either", true), byTool) << number;
        EXPECT_EQ(state.error, words) << number;
        EXPECT_EQ(box.Snapshot("either"), box.Snapshot("tool")) << number;
        fs::remove_all(box / "tool");
        fs::remove_all(box / "either");
    }
    EXPECT_FALSE(fs::exists("/abs"));
}

TEST_F(SmallZip, OneThatIsCutOrAlteredAnywhereGivesNothingWrong)
{
    const std::string whole = BuildZip(
        {{"a.tr4", "content of a"}, {"b", std::string(300, 'b'), 0x0314, 0, 0100644, true}});
    ASSERT_TRUE(Unpack(whole, "whole"));
    const Files right = box.Snapshot("whole");
    int taken = 0;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        fs::remove_all(box / "out");
        EXPECT_FALSE(Unpack(whole.substr(0, i), "out")) << i;
        std::string altered = whole;
        altered[i] = static_cast<char>(altered[i] ^ 0x15);
        fs::remove_all(box / "out");
        if (!Unpack(altered, "out"))
            continue;
        ++taken;
        // What no checksum covers may differ: times, versions, who made it.
        std::multiset<std::string> contents;
        for (const auto& [name, content] : box.Snapshot("out"))
            contents.insert(content);
        EXPECT_EQ(contents, (std::multiset<std::string>{right.at("a.tr4"), right.at("b")})) << i;
    }
    EXPECT_GT(taken, 0);
    // Two entries whose contents lie in each other.
    std::string over = BuildZip({{"a", "same"}, {"a", "same"}});
    const std::size_t second = over.rfind("PK\x01\x02");
    over[second + 42] = 0;
    over[over.rfind("PK\x01\x02") + 46] = 'a';
    EXPECT_FALSE(Unpack(over, "over"));
}

} // namespace

} // namespace kestrova::testing
