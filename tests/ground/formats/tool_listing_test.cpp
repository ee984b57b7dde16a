#include "formats/tool_listing.h"

#include "core/text.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

TEST(ToolListing, TakesNamesAndSizesWhereverTheColumnsStand)
{
    const std::string listing = "Archive:  z3.zip\n"
                                "  Length      Date    Time    Name\n"
                                "---------  ---------- -----   ----\n"
                                "        3  2026-11-21 01:01   folder/mit leer.txt\n"
                                "        0  2026-11-21 01:01   folder/\n"
                                "10800332800  1980-01-01 00:00   big.dat\n"
                                "        6  2026-11-21 03:37    lead ----\n"
                                "---------                     -------\n"
                                "       10                     9 files\n"
                                "        3  2026-11-21 01:01   behind\n";
    const auto shown = [](const std::vector<PackageEntry>& entries) {
        std::string all;
        for (const PackageEntry& entry : entries)
            all += entry.name + "|" + std::to_string(entry.size) + "\n";
        return all;
    };
    const std::string expected = "folder/mit leer.txt|3\nfolder/|0\nbig.dat|10800332800\n"
                                 " lead ----|6\n";
    EXPECT_EQ(shown(ParseZipListing(listing)), expected);
    EXPECT_EQ(shown(ParseZipListing(ReplaceAll(listing, "\n", "\r\n"))), expected);
    EXPECT_EQ(shown(ParseZipListing(" Length    Date    Time    Name\n --------   ----\n"
                                    "     12  01-02-03 04:05   old.txt\n --------   -------\n")),
              "old.txt|12\n");
    // No head, a head without lines, and nothing at all are lists without entries.
    EXPECT_EQ(shown(ParseZipListing(listing.substr(listing.find("------")))), "");
    EXPECT_EQ(shown(ParseZipListing(listing.substr(0, listing.find("        3")) + "----\n")), "");
    EXPECT_EQ(shown(ParseZipListing("")), "");

    EXPECT_EQ(shown(ParseTarListing(
                  "drwxr-xr-x  0 0      0           0 Nov 21 03:47 ./back/\n"
                  "-rw-r--r--  0 1000   1000        2 Nov 21  2019 ./back/sub/one and two\n"
                  "lrwxrwxrwx  0 0      0           0 Nov 21 03:47 l -> /etc/passwd\n"
                  "hrw-r--r--  0 0      0           0 Nov 21 03:47 h link to ./back\n"
                  "crw-r--r--  0 0      0         1,3 Nov 21 03:47 null\n"
                  "-rw-r--r--  0 0      0           1 Nov 21 03:47 a\\\\b\\t\\303\\244\\9\n"
                  "bsdtar: Error exit delayed from previous errors.\n"
                  "-rwxrwxrwx  0 0 0 99999999999999999999 Nov 21 03:47 too big\n")),
              "./back/|0\n./back/sub/one and two|2\nl|0\nh|0\nnull|0\na\\b\tä\\9|1\n");
}

} // namespace

} // namespace kestrova::testing
