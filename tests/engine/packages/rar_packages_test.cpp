// Rars, of which the tool that unpacks them neither proves nor opens all, and what is kept of a
// damaged package.
#include "formats/rar_headers.h"
#include "packages/unzip.h"
#include "world/tool_box.h"
#include "world/zip_builder.h"

#include <gtest/gtest.h>
#include <libdeflate.h>

namespace kestrova::testing
{

namespace
{

using Files = std::map<std::string, std::string>;
using Names = std::vector<std::string>;

std::uint32_t Checksum(const std::string& bytes)
{
    return libdeflate_crc32(0, bytes.data(), bytes.size());
}

std::string Number(std::uint64_t value, int width)
{
    std::string bytes;
    for (; width > 0; --width, value >>= 8)
        bytes += static_cast<char>(value & 0xFF);
    return bytes;
}

struct Packed {
    std::string name;
    std::string content;
    std::string stored; ///< what stands in the rar for it
    bool locked = false;
};

/// Rar 4, each file stored as it is.
std::string OldRar(const std::vector<Packed>& files)
{
    const auto block = [](int kind, int flags, const std::string& body) {
        const std::string head =
            Number(kind, 1) + Number(flags, 2) + Number(7 + body.size(), 2) + body;
        return Number(Checksum(head) & 0xFFFF, 2) + head;
    };
    std::string rar = std::string{"Rar!\x1a\x07\x00", 7} + block(0x73, 0, std::string(6, '\0'));
    for (const Packed& file : files)
        rar +=
            block(0x74, 0x8000 | (file.locked ? 4 : 0),
                  Number(file.stored.size(), 4) + Number(file.content.size(), 4) + Number(2, 1) +
                      Number(Checksum(file.content), 4) + Number(0x50210843, 4) + Number(20, 1) +
                      Number(0x30, 1) + Number(file.name.size(), 2) + Number(0x20, 4) + file.name) +
            file.stored;
    return rar + block(0x7B, 0x4000, {});
}

/// Rar 5; no number here needs more than two bytes.
std::string NewRar(const std::vector<Packed>& files)
{
    const auto small = [](std::size_t value) {
        return value < 0x80 ? Number(value, 1)
                            : Number((value & 0x7F) | 0x80, 1) + Number(value >> 7, 1);
    };
    const auto block = [&](const std::string& body) {
        const std::string head = small(body.size()) + body;
        return Number(Checksum(head), 4) + head;
    };
    std::string rar =
        std::string{"Rar!\x1a\x07\x01\x00", 8} + block(small(1) + small(0) + small(0));
    for (const Packed& file : files) {
        const std::string lock = small(1) + small(0) + small(0) + "\x0F" + std::string(32, 'k');
        const std::string extras = file.locked ? small(lock.size()) + lock : "";
        rar +=
            block(small(2) + small(file.locked ? 3 : 2) +
                  (file.locked ? small(extras.size()) : "") + small(file.stored.size()) + small(4) +
                  small(file.content.size()) + small(0x20) + Number(Checksum(file.content), 4) +
                  small(0) + small(0) + small(file.name.size()) + file.name + extras) +
            file.stored;
    }
    return rar + block(small(5) + small(0) + small(0));
}

class RarPackages : public ::testing::Test
{
protected:
    RarPackages() { box.UseRealTools(); }

    bool Unzip(const std::string& name, const std::string& bytes, bool keepWhole = false)
    {
        std::filesystem::remove_all(box / "out");
        box.Write(name, bytes);
        report = {};
        UnzipOptions options;
        options.keepWhole = keepWhole;
        options.report = &report;
        return state.Done(
            UnzipWithProgress(ToolsOf(box.session), box / name, box / "out", options, state));
    }
    [[nodiscard]] bool Says(const std::string& words) const
    {
        return state.error.find(words) != std::string::npos;
    }
    Files Out() const { return box.Snapshot("out"); }

    ToolBox box;
    ToolWatch state;
    UnpackReport report;
    const std::string level = std::string(1600, 'l');
    const std::string other = std::string(1600, 'x');
};

TEST_F(RarPackages, WhatIsDamagedOrLockedIsNeverTakenForTheFile)
{
    for (const auto& make : {OldRar, NewRar}) {
        EXPECT_TRUE(Unzip("good.rar", make({{"a.tr4", level, level}}))) << state.error;
        EXPECT_EQ(Out(), (Files{{"a.tr4", level}}));
        EXPECT_TRUE(Unzip("really a rar.zip", make({{"a.tr4", level, level}}))) << state.error;
        EXPECT_EQ(Out(), (Files{{"a.tr4", level}}));
        EXPECT_FALSE(Unzip("bad.rar", make({{"a.tr4", level, other}})));
        EXPECT_TRUE(Says("damaged or not fully downloaded")) << state.error;
        EXPECT_EQ(Out(), Files{});
        EXPECT_FALSE(
            Unzip("locked.rar", make({{"b.txt", "b", "b"}, {"a.tr4", level, other, true}})));
        EXPECT_TRUE(Says("is locked with a password")) << state.error;
        EXPECT_EQ(Out(), Files{});
    }
}

TEST_F(RarPackages, OfADamagedPackageWhatIsWholeIsKeptWhereThatIsWanted)
{
    BuiltEntry bad{"data/bad.tr4", level};
    bad.packed = other;
    const std::vector<BuiltEntry> entries{{"data/good.tr4", "good"}, bad, {"more.txt", "more"}};
    const std::vector<Packed> packed{
        {"good.tr4", "good", "good"}, {"bad.tr4", level, other}, {"more.txt", "more", "more"}};
    EXPECT_FALSE(Unzip("part.zip", BuildZip(entries)));
    EXPECT_EQ(Out(), Files{});
    EXPECT_TRUE(Unzip("part.zip", BuildZip(entries), true)) << state.error;
    EXPECT_EQ(Out(), (Files{{"data/good.tr4", "good"}, {"more.txt", "more"}}));
    EXPECT_EQ(report.lost, (Names{"data/bad.tr4"}));
    EXPECT_TRUE(Unzip("part.rar", OldRar(packed), true)) << state.error;
    EXPECT_EQ(Out(), (Files{{"good.tr4", "good"}, {"more.txt", "more"}}));
    EXPECT_EQ(report.lost, (Names{"bad.tr4"}));
    EXPECT_FALSE(Unzip("all.zip", BuildZip({bad}), true)) << "nothing of it is whole";
    EXPECT_TRUE(Says("damaged")) << state.error;
}

TEST_F(RarPackages, HeadersAreReadFromAnythingThatCallsItselfARar)
{
    for (const std::string& rar : {OldRar({{"a", "1", "1"}, {"b", "2", "2", true}}),
                                   NewRar({{"a", "1", "1"}, {"b", "2", "2", true}})}) {
        const auto read = [&](const std::string& bytes) {
            return ParseRarHeaders(
                [&](std::uint64_t place, std::size_t most) {
                    return place < bytes.size() ? bytes.substr(place, most) : std::string{};
                },
                bytes.size());
        };
        const RarHeaders whole = read(rar);
        EXPECT_TRUE(whole.isRar && whole.locked);
        ASSERT_EQ(whole.files.size(), 2U);
        EXPECT_EQ(whole.files[1].checksum, Checksum("2"));
        EXPECT_EQ(read("MZ and a program " + rar), whole);
        for (std::size_t size = 0; size < rar.size(); ++size) {
            const RarHeaders cut = read(rar.substr(0, size));
            ASSERT_LE(cut.files.size(), whole.files.size());
            for (std::size_t i = 0; i < cut.files.size(); ++i)
                EXPECT_EQ(cut.files[i], whole.files[i]) << size;
        }
    }
}

/// Level 1, the file stored as it is.
std::string Lzh(const std::string& name, const std::string& content)
{
    const auto crc16 = [](const std::string& bytes) {
        std::uint32_t crc = 0;
        for (const char c : bytes) {
            crc ^= static_cast<unsigned char>(c);
            for (int bit = 0; bit < 8; ++bit)
                crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xA001U : 0U);
        }
        return crc;
    };
    const std::string body = "-lh0-" + Number(content.size(), 4) + Number(content.size(), 4) +
                             Number(0x50210843, 4) + Number(0x20, 1) + Number(1, 1) +
                             Number(name.size(), 1) + name + Number(crc16(content), 2) + "M" +
                             Number(0, 2);
    std::uint32_t sum = 0;
    for (const char c : body)
        sum += static_cast<unsigned char>(c);
    return Number(body.size(), 1) + Number(sum, 1) + body + content + '\0';
}

TEST_F(RarPackages, NamesOfAnLzhAreReadInTheirCodePage)
{
    EXPECT_TRUE(Unzip("names.lzh", Lzh("\x83\x67\x83\x45\x81\x5B\x83\x80.tr4", level)))
        << state.error << state.details;
    EXPECT_EQ(Out(), (Files{{"トウーム.tr4", level}})) << report.namesAs;
}

TEST_F(RarPackages, OneProgramIsEnoughForAMiddlingZip)
{
    const std::string middling(300'000, 'm');
    box.AddTool("unzip", "echo run >>'" + (box / "runs").native() + "'\nexec '" +
                             platform::FindOnPath("unzip").native() + "' \"$@\"");
    box.Write("middling.zip", BuildZip({{"a.tr4", middling}}));
    UnpackGuard guard{box.machine, box / "middling.zip", box / "out"};
    UnzipOptions options;
    options.guard = &guard;
    ASSERT_TRUE(state.Done(
        UnzipWithProgress(ToolsOf(box.session), box / "middling.zip", box / "out", options, state)))
        << state.error << state.details;
    EXPECT_EQ(Out(), (Files{{"a.tr4", middling}}));
    EXPECT_EQ(box.Read("runs"), "run\n");
}

TEST_F(RarPackages, NamesThatLeadOutAreLeftOutAndNamedAndTheRestComesIn)
{
    box.Write("up.txt", "up");
    box.Write("in/a.tr4", level);
    box.Write("in/d..e/..f", "odd but inside");
    ToolWatch own;
    ASSERT_TRUE(
        own.Done(ShellAndWait(ToolsOf(box.session),
                              "cd '" + (box / "in").native() +
                                  "' && bsdtar -cPf ../out.tar a.tr4 ../up.txt 'd..e/../../up.txt' "
                                  "d..e && bsdtar -cPf ../only.tar ../up.txt",
                              own, own.report)));
    std::filesystem::remove(box / "up.txt");
    EXPECT_TRUE(Unzip("out.tar", box.Read("out.tar"))) << state.error << state.details;
    EXPECT_EQ(Out(), (Files{{"a.tr4", level}, {"d..e/..f", "odd but inside"}}));
    EXPECT_EQ(report.ledOut, (std::vector<std::string>{"../up.txt", "d..e/../../up.txt"}));
    EXPECT_FALSE(box.Has("up.txt"));
    EXPECT_TRUE(Unzip("out.rar", OldRar({{"..\\up.txt", "up", "up"}, {"a.tr4", level, level}})))
        << state.error << state.details;
    EXPECT_EQ(Out(), (Files{{"a.tr4", level}}));
    EXPECT_FALSE(box.Has("up.txt"));
    EXPECT_FALSE(Unzip("only.tar", box.Read("only.tar"))) << "nothing would come in";
}

TEST_F(RarPackages, EachCauseHasWordsOfItsOwn)
{
    EXPECT_FALSE(Unzip("empty.zip", BuildZip({})));
    EXPECT_TRUE(Says("holds no file")) << state.error;
    EXPECT_FALSE(Unzip("clash.zip", BuildZip({{"a", "file"}, {"a/b.tr4", "below"}})));
    EXPECT_TRUE(Says("a file and a folder of the same name")) << state.error;
    box.Write("b.txt", "b");
    ToolWatch own;
    ASSERT_TRUE(own.Done(ShellAndWait(
        ToolsOf(box.session),
        "cd '" + box.root.native() + "' && mkdir in && cd in && bsdtar -cPf ../out.tar ../b.txt",
        own, own.report)));
    EXPECT_FALSE(Unzip("out.tar", box.Read("out.tar")));
    EXPECT_TRUE(Says("lead out of the folder")) << state.error << state.details;
}

} // namespace

} // namespace kestrova::testing
