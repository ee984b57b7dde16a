#include "formats/burn_lines.h"
#include "formats/iso_listing.h"

#include <array>
#include <gtest/gtest.h>

namespace kestrova
{

namespace
{

TEST(BurnLines, ProgressIsReadAsEachToolPrintsIt)
{
    struct Case {
        const char* line;
        std::optional<PartDone> image;
        std::optional<PartDone> burn;
    };
    const Case cases[] = {
        {"  2.57% done, estimate finish Sat Nov 21 01:04:37 2026", PartDone{2, 100}, {}},
        {"xorriso : UPDATE :  38.13% done", PartDone{38, 100}, {}},
        {"xorriso : UPDATE : 938.13% done", {}, {}},
        {"% done", {}, {}},
        {"Track 01:    7 of   38 MB written (fifo 100%) [buf  50%]  246.7x.", {}, PartDone{7, 38}},
        {"xorriso : UPDATE :   16 of   39 MB written (fifo 99%)", {}, PartDone{16, 39}},
        {"Track 01:    8 MB written (fifo 100%)", {}, {}},
        {"Track 01: 99999999999999999999 of 1 MB written", {}, {}},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(ImageProgressIn(row.line), row.image) << row.line;
        EXPECT_EQ(BurnProgressIn(row.line), row.burn) << row.line;
    }
    const std::pair<const char*, std::optional<std::uint64_t>> extracted[] = {
        {"xorriso : UPDATE :      18 files restored ( 97645k) in 1 seconds = 72.2xD",
         97645U * 1024},
        {"xorriso : UPDATE :       2 files restored (  1.5g) in 9 seconds", 1536U << 20},
        {"xorriso : UPDATE :       1 files restored (   512) in 1 seconds", 512},
        {"xorriso : UPDATE :       1 files restored (", {}},
        {"xorriso : UPDATE :       1 files restored (9999999999999t)", {}},
        {"xorriso : UPDATE :      18 nodes read in 1 seconds", {}},
    };
    for (const auto& [line, bytes] : extracted)
        EXPECT_EQ(ExtractedBytesIn(line), bytes) << line;
    EXPECT_TRUE(IsCountdown("LAST CHANCE to quit"));
    EXPECT_TRUE(IsCountdown("Last ch")) << "a line that was not written to its end yet";
    EXPECT_FALSE(IsCountdown("Lasting"));
    EXPECT_EQ(WithoutCountdown("a\r\nLast chance to quit\r\nb\r\n"), "a\r\nb\r\n");
}

TEST(BurnLines, NumbersAndTimesAreFoundWhereverTheyStand)
{
    EXPECT_EQ(SectorsToCome("xorriso 1.5.4\n14841\n"), 14841U);
    EXPECT_EQ(SectorsToCome("Total extents scheduled to be written = 19797\n19797\n"), 19797U);
    EXPECT_EQ(SectorsToCome("nothing\n"), std::nullopt);
    EXPECT_EQ(SectorsWritten("14845 extents written (28 MB)\n"), 14845U);
    EXPECT_EQ(SectorsWritten("Written to medium : 14841 sectors at LBA 0\n"), 14841U);
    EXPECT_EQ(SectorsWritten("Track 01: Total bytes read/written: 40548352/40548352 (19799 "
                             "sectors).\n"),
              19799U);
    EXPECT_EQ(SectorsWritten("14845 extents read\n"), std::nullopt);
    EXPECT_EQ(SectorsWritten("Track 01: Total bytes read/written: 0/0 (0 sectors).\n"),
              std::nullopt);

    const BurnTimes times = BurnTimesIn("Writing  time:   10.000s\r\nFixating time:    0.5s\r\n"
                                        "write at speed   8.0 in TAO\r\nBlanking time:   3.999s");
    EXPECT_TRUE(IsWholeBurn(times, true));
    EXPECT_FALSE(IsWholeBurn(times, false));
    EXPECT_FALSE(IsWholeBlanking(times));
    EXPECT_EQ(times.speed, 8.0);
    EXPECT_FALSE(IsWholeBurn(BurnTimesIn("Writing time: 10s\nFixating time: 9s"), true))
        << "two blanks stand in that word";
    EXPECT_FALSE(IsWholeBurn(BurnTimesIn("Writing  time:\n60 seconds\nFixating time: 9s"), true));

    constexpr std::array<std::string_view, 2> words{"Warning", "Error"};
    const char* both = "cdrecord: starting\ncdrecord: Warning: old\ncdrecord: Error: bad\n";
    EXPECT_EQ(WordsBehind(both, "CDRECORD:", words), "Warning: old");
    EXPECT_EQ(WordsBehind("Error\nSense Code: 0x30\n", "Sense Code:", {}), "0x30");
}

TEST(IsoListing, BothToolsLinesBecomeTheSameFiles)
{
    const auto isoinfo = ParseIsoinfoListing(
        "\nDirectory listing of /\n"
        "d---------   0    0    0            2048 Nov 22 2026 [     35 02]  . \n"
        "d---------   0    0    0            2048 Nov 22 2026 [     35 02]  .. \n"
        "d---------   0    0    0            2048 Nov  2 2026 [     36 02]  K \n"
        "\nDirectory listing of /K/\n"
        "----------   0    0    0      5000000000 Jan 21 2024 [     34 00]  a ] b.bin \n");
    ASSERT_TRUE(isoinfo);
    const std::vector<DiscEntry> files{{"/K", true, 2048, 2, 11, 2026},
                                       {"/K/a ] b.bin", false, 5'000'000'000, 21, 1, 2024}};
    EXPECT_EQ(*isoinfo, files);
    const auto xorriso = ParseXorrisoListing(
        "dr-xr-xr-x    1 0        0               0 Nov 22 20:31 '/'\n"
        "dr-xr-xr-x    1 0        0            2048 Nov  2 20:31 '/K'\n"
        "-r--r--r--    1 0        0      5000000000 Jan 21  2024 '/K/a ] b.bin'\n"
        "-r--r--r--    1 0        0               1 Dec  1 10:00 '/it'\"'\"'s'\n"
        "lrwxrwxrwx    1 0        0               0 Dec  1 10:00 '/link' -> 'K'\n"
        "-r--r--r--    1 0        0               1 Dec  1 10:00 '/open\n",
        2026, 11);
    ASSERT_TRUE(xorriso);
    ASSERT_EQ(xorriso->size(), 3U);
    EXPECT_EQ((*xorriso)[0], files[0]);
    EXPECT_EQ((*xorriso)[1], files[1]);
    EXPECT_EQ((*xorriso)[2].path, "/it's");
    EXPECT_EQ((*xorriso)[2].year, 2025) << "December of this year is still to come";

    const auto strange = ParseIsoinfoListing(
        "----------   0    0    0           50000 Nix 21 2026 [     34 00]  alpha.bin \n");
    ASSERT_FALSE(strange);
    EXPECT_EQ(strange.Error().sentence, "Error scanning date month");
}

TEST(IsoListing, ATreeHasFoldersBeforeFilesAndAReferenceTheirDates)
{
    const std::vector<DiscEntry> files{{"/a.txt", false, 7, 1, 2, 2026},
                                       {"/z", true},
                                       {"/z/b", true},
                                       {"/z/a", false, 1, 9, 12, 1999},
                                       {"/z/b/c", false, 0, 1, 1, 2026}};
    EXPECT_EQ(TreeListOf(files), "z/\r\n  b/\r\n    c\r\n  a\r\na.txt\r\n");
    EXPECT_EQ(ReferenceListOf(files), "/a.txt\t7\t01/02/2026\r\n/z\t--\t--\r\n/z/b\t--\t--\r\n"
                                      "/z/a\t1\t09/12/1999\r\n/z/b/c\t0\t01/01/2026\r\n");
}

} // namespace

} // namespace kestrova
