// Packages that are good, though not of the usual make, and what of them could be lost.
#include "packages/unzip.h"

#include "core/text.h"
#include "packages/package_tools.h"
#include "world/tool_box.h"
#include "world/zip_builder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>;
using Names = std::vector<std::string>;

class OddPackages : public ::testing::Test
{
protected:
    ToolBox box;
    ToolWatch state;
    UnpackReport report;

    OddPackages() { box.UseRealTools(); }

    bool Unzip(const std::string& package, const std::string& namesAs = {})
    {
        fs::remove_all(box / "out");
        report = {};
        UnzipOptions options;
        options.namesAs = namesAs;
        options.report = &report;
        return state.Done(
            UnzipWithProgress(ToolsOf(box.session), box / package, box / "out", options, state));
    }
    Files Out() const { return box.Snapshot("out"); }
    void Shell(const std::string& script)
    {
        ToolWatch own;
        ASSERT_TRUE(own.Done(ShellAndWait(
            ToolsOf(box.session), "cd " + box.root.native() + " && " + script, own, own.report)));
        ASSERT_EQ(own.report.end.code, 0) << own.details;
    }
};

/// A frame of one raw block, as RFC 8878 has it.
std::string ZstdFrame(const std::string& content)
{
    const std::string head{"\x28\xB5\x2F\xFD\x20", 5};
    const auto block = static_cast<std::uint32_t>(content.size()) << 3 | 1;
    return head + static_cast<char>(content.size()) + static_cast<char>(block & 0xFF) +
           static_cast<char>(block >> 8) + '\0' + content;
}

TEST_F(OddPackages, EveryKindThatAChooserOffersIsTaken)
{
    const std::vector<std::string> patterns = Split(PackagePatterns(), ';');
    EXPECT_THAT(patterns, ::testing::IsSupersetOf({"*.zip", "*.zipx", "*.7z", "*.tar.gz"}));
    for (const std::string& pattern : patterns)
        EXPECT_TRUE(IsPackage("Level One" + pattern.substr(1)) &&
                    IsPackage("LEVEL" + UpperCase(pattern.substr(1))))
            << pattern;
    EXPECT_FALSE(IsPackage("level.tr4") || IsPackage("level.zip.txt") || IsPackage("zip"));
}

TEST_F(OddPackages, EveryMethodOfPackingIsRead)
{
    const std::string level(100'000, 'l');
    box.Write("in/level.tr4", level);
    for (const char* method : {"LZMA", "XZ", "PPMd", "BZip2", "Deflate64", "Deflate", "Copy"}) {
        const std::string package = std::string{method} + ".zipx";
        Shell("cd in && 7zz a -bso0 -tzip -mm=" + std::string{method} + " ../" + package +
              " level.tr4");
        EXPECT_TRUE(Unzip(package)) << method << state.error << state.details;
        EXPECT_EQ(Out(), (Files{{"level.tr4", level}})) << method;
    }
    BuiltEntry zstd{"level.tr4", "small"};
    zstd.method = 93;
    zstd.packed = ZstdFrame(zstd.content);
    box.Write("zstd.zip", BuildZip({zstd}));
    EXPECT_TRUE(Unzip("zstd.zip")) << state.error << state.details;
    EXPECT_EQ(Out(), (Files{{"level.tr4", "small"}}));
    zstd.method = 97; // sounds, which no tool here unpacks
    box.Write("wavpack.zip", BuildZip({zstd}));
    EXPECT_FALSE(Unzip("wavpack.zip"));
    EXPECT_NE(state.error.find("packed in a way"), std::string::npos) << state.error;
}

TEST_F(OddPackages, CommentsAndFoldersWithoutASlashDoNoHarm)
{
    const std::vector<BuiltEntry> one{{"level.tr4", "level"}};
    for (const std::string& comment :
         {std::string(60'000, 'c'), std::string{"skipping: all of it\n  inflating: no"}}) {
        box.Write("a.zip", BuildZip(one, comment));
        EXPECT_TRUE(Unzip("a.zip")) << state.error << state.details;
        EXPECT_EQ(Out(), (Files{{"level.tr4", "level"}}));
    }
    const Files expected{{"data/sub/level.tr4", "level"}, {"readme.txt", ""}};
    for (const std::uint32_t dos : {0U, 0x10U})
        for (const std::uint32_t mode : {0U, 0040755U}) {
            const std::uint16_t madeBy = mode == 0 ? madeByDos : 0x0314;
            BuiltEntry folder{"data", "", madeBy, 0, mode};
            BuiltEntry inner{"data/sub", "", madeBy, 0, mode};
            folder.dosAttributes = inner.dosAttributes = dos;
            box.Write(
                "a.zip",
                BuildZip({folder, inner, {"data/sub/level.tr4", "level"}, {"readme.txt", ""}}));
            EXPECT_TRUE(Unzip("a.zip")) << dos << mode << state.error << state.details;
            EXPECT_EQ(Out(), expected) << dos << " " << mode;
        }
}

TEST_F(OddPackages, NamesThatBecomeEqualAreKeptAndOneNameTwiceIsNamed)
{
    box.Write("a.zip", BuildZip({{"level.tr4;1", "1"},
                                 {"level.tr4;2", "2"},
                                 {"c\x01.txt", "3"},
                                 {"c\x02.txt", "4"},
                                 {"same.txt", "5"},
                                 {"same.txt", "6"},
                                 {"link", "same.txt", 0x0314, 0, 0120777}}));
    ASSERT_TRUE(Unzip("a.zip")) << state.error << state.details;
    Files out = Out();
    EXPECT_NE(out["c_.txt"], out["c__2.txt"]);
    EXPECT_EQ(out, (Files{{"level.tr4;1", "1"},
                          {"level.tr4;2", "2"},
                          {"c_.txt", out["c_.txt"]},
                          {"c__2.txt", out["c__2.txt"]},
                          {"same.txt", "6"}}));
    EXPECT_EQ(report.twice, Names{"same.txt"});
    EXPECT_EQ(report.notFiles, Names{"link"});
    // A tape that was added to has a name twice as well, and pipes that only tapes have.
    Shell("mkdir t && cd t && echo 1 >a && ln -s a l && mkfifo p && bsdtar -cf ../a.tar a l p && "
          "echo 2 >a && bsdtar -rf ../a.tar a");
    ASSERT_TRUE(Unzip("a.tar")) << state.error << state.details;
    EXPECT_EQ(Out(), (Files{{"a", "2\n"}}));
    EXPECT_EQ(report.twice, Names{"a"});
    EXPECT_EQ(report.notFiles, (Names{"l", "p"}));
}

TEST_F(OddPackages, NamesOfOldCodePagesAreGuessedAndCanBeChosen)
{
    // The signs that stand for "table" and "so" end with the byte of a backslash.
    const std::string table = "\x95\x5C.tr4";
    const std::string source = "\x83\x5C\x81\x5B\x83X.txt";
    const std::string folder = "\x83\x8C\x83x\x83\x8B/\x83\x5C.wav";
    const Files expected{{"表.tr4", "1"}, {"ソース.txt", "2"}, {"レベル/ソ.wav", "3"}};
    for (const std::uint16_t madeBy : {madeByDos, std::uint16_t{0x0314}}) {
        box.Write("a.zip",
                  BuildZip({{table, "1", madeBy}, {source, "2", madeBy}, {folder, "3", madeBy}}));
        ASSERT_TRUE(Unzip("a.zip")) << state.error << state.details;
        EXPECT_EQ(report.namesAs, "CP932");
        EXPECT_EQ(Out(), expected);
    }
    // Tapes have no mark for it either.
    box.Write("t/" + table, "1");
    box.Write("t/" + source, "2");
    box.Write("t/" + folder, "3");
    Shell("cd t && LC_ALL=C bsdtar --format ustar -cf ../a.tar *");
    ASSERT_TRUE(Unzip("a.tar")) << state.error << state.details;
    EXPECT_EQ(report.namesAs, "CP932");
    EXPECT_EQ(Out(), expected);

    const std::string russian = "\x8A\xA0\xE0\xE2\xA0.tr4";
    box.Write("r.zip", BuildZip({{russian, "1", madeByDos}, {"plain.txt", "2"}}));
    ASSERT_TRUE(Unzip("r.zip"));
    EXPECT_EQ(report.namesAs, "CP866");
    EXPECT_EQ(Out(), (Files{{"Карта.tr4", "1"}, {"plain.txt", "2"}}));
    ASSERT_TRUE(Unzip("r.zip", "CP437"));
    EXPECT_EQ(report.namesAs, "CP437");
    EXPECT_EQ(Out(), (Files{{"èáαΓá.tr4", "1"}, {"plain.txt", "2"}}));
    box.Write("u.zip", BuildZip({{"Zugänge.txt", "1", 0x0314, 0x800}}));
    ASSERT_TRUE(Unzip("u.zip"));
    EXPECT_EQ(report.namesAs, "") << "these names say what they are";
}

TEST_F(OddPackages, WhatIsWrongIsToldInThePlayersWords)
{
    std::string content;
    for (int i = 0; i < 20'000; ++i)
        content += std::to_string(i * 7919);
    box.Write("in/level.tr4", content);
    Shell("cd in && zip -q ../a.zip level.tr4 && zip -qP secret ../locked.zip level.tr4 && "
          "bsdtar -czf ../a.tar.gz level.tr4 && 7zz a -bso0 -psecret ../locked.7z level.tr4");
    for (const std::string package : {"a.zip", "a.tar.gz"}) {
        const std::string whole = box.Read(package);
        box.Write("cut-" + package, whole.substr(0, whole.size() / 2));
        EXPECT_FALSE(Unzip("cut-" + package));
        EXPECT_NE(state.error.find("'cut-" + package + "' is damaged or not fully downloaded"),
                  std::string::npos)
            << state.error;
        EXPECT_NE(state.details.find("did not do its work"), std::string::npos) << state.details;
        EXPECT_EQ(Out(), Files{});
    }
    for (const char* package : {"locked.zip", "locked.7z"}) {
        EXPECT_FALSE(Unzip(package));
        EXPECT_NE(state.error.find("is locked with a password"), std::string::npos)
            << state.error << state.details;
    }
}

} // namespace

} // namespace kestrova::testing
