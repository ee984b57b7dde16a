#include "tools/line_handlers.h"
#include "tools/line_splitter.h"
#include "tools/tool_table.h"

#include "words/tools.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using Lines = std::vector<std::string>;
using State = LineSplitter::State;

struct Reading {
    Lines lines;
    std::string output;
    State state = State::Goes;
    bool operator==(const Reading&) const = default;
};

/// Fed `chunk` bytes at a time.
Reading Read(std::string_view bytes, std::size_t chunk, bool wholeLines = true)
{
    Reading reading;
    LineSplitter splitter{wholeLines};
    const auto take = [&](std::string_view line) {
        reading.lines.emplace_back(line);
        return line != "stop";
    };
    for (std::size_t at = 0; at < bytes.size() && reading.state == State::Goes; at += chunk)
        reading.state = splitter.Feed(bytes.substr(at, chunk), take);
    reading.output = splitter.Output();
    return reading;
}

TEST(LineSplitter, FollowsEachByteHoweverTheyArrive)
{
    const std::string longest(256, 'x');
    const struct {
        std::string bytes;
        Lines lines;
        State state = State::Goes;
    } cases[] = {
        {"", {}},
        {"one\ntwo\r\nthree\r", {"one", "two", "three"}},
        {"no end", {}},
        {"\n\r\n\n", {}},
        {"again\nAGAIN\r\nother\nagain\n", {"again", "other", "again"}},
        {"ÄPFEL\näpfel\n", {"ÄPFEL"}},
        {" 1%\r 2%\r 2%\r 3%\n", {" 1%", " 2%", " 3%"}},
        {"in 3\b2\b1\n", {"in 1"}},
        {"abc\b\bX\n", {"aX"}},             // what stood behind the place is no part of the line
        {"a\b\bb\n", {"a", "b"}},           // back to the start is an end like any other
        {"\tx\ny\t\n", {"    x", "y    "}}, // blanks at the end stay
        {std::string("a\0b\n", 4), {std::string("a\0b", 3)}},
        {"\xFF\xFE\n", {"\xFF\xFE"}},
        {"go\nstop\nnever\n", {"go", "stop"}, State::Stopped},
        {longest + "\nx\n", {longest, "x"}},
        {longest + "y\nx\n", {}, State::TooLong},
        {"a\n" + longest.substr(3) + "\tx", {"a"}, State::TooLong},
    };
    for (const auto& entry : cases) {
        const Reading whole = Read(entry.bytes, entry.bytes.size() + 1);
        EXPECT_EQ(whole.lines, entry.lines) << entry.bytes;
        EXPECT_EQ(whole.state, entry.state) << entry.bytes;
        EXPECT_EQ(whole.output, [&] {
            std::string all;
            for (const std::string& line : entry.lines)
                all += line + "\r\n";
            return all;
        }()) << entry.bytes;
        for (std::size_t chunk = 1; chunk < entry.bytes.size(); ++chunk)
            EXPECT_EQ(Read(entry.bytes, chunk), whole) << entry.bytes << " by " << chunk;
    }
}

TEST(LineSplitter, HandsOnTheUnfinishedLineWhenAskedTo)
{
    const Reading reading = Read("abc\nz\n", 1, false);
    // One byte behind: it is handed on when the line before it is known to have grown.
    EXPECT_EQ(reading.lines, (Lines{"ab", "abc", "", ""}));
    EXPECT_EQ(reading.output, "");
}

/// Where the bar goes and when the handler asks to stop, line by line of recorded output.
TEST(LineHandlers, TurnRecordedOutputIntoProgress)
{
    using Place = std::optional<std::uint64_t>;
    const struct {
        Message handler;
        ToolId tool;
        std::uint64_t total;
        std::vector<std::pair<std::string, Place>> lines;
        bool goesOn = true;
    } cases[] = {
        {Msg::HandlerUnzip,
         ToolId::Unzip,
         4,
         {{"Archive:  z3.zip", {}},
          {"   creating: D/folder/", 1},
          {"  inflating: D/beta.txt    ", 2},
          {" extracting: D/tiny", 3},
          {"D/skip:  bad CRC 93d4b9b0  (should be 01020304)", {}},
          {"  INFLATING: D/x", 4}}},
        {Msg::HandlerUnzip,
         ToolId::Bsdtar,
         2,
         {{"x folder/a b.txt", 1}, {"bsdtar: x inside", {}}, {"x", {}}, {"x ü", 2}}},
        {Msg::HandlerZip,
         ToolId::Zip,
         2,
         {{"  adding: big1.bin (deflated 0%)", 1}, {"  adding: big2.txt (deflated 71%)", 2}},
         false},
        {Msg::HandlerZip,
         ToolId::Zip,
         2,
         {{"  adding: one (stored 0%)", 1}, {"zip warning: x", {}}}},
        {Msg::HandlerZip, ToolId::Zip, 0, {{"zip error: Nothing to do!", {}}}, false},
        {Msg::HandlerMadPlay,
         ToolId::Zip,
         300,
         {{"MPEG Audio Decoder 0.15.2 (beta) - Copyright (C) 2000-2004", {}},
          {" 00:00:03 Layer III, 128 kbps, 44100 Hz, joint stereo (MS), no CRC", 3},
          {" 00:00:03 Layer III, 96 kbps, 44100 Hz, joint stereo (MS), no CRC", {}},
          {" 00:01:02 Layer III", 62},
          {" 01:02:0", {}},
          {"11486 frames decoded (0:05:00.0), -5.5 dB peak amplitude", {}}}},
        {Msg::HandlerLame,
         ToolId::Zip,
         7,
         {{"Encoding as 16 kHz single-ch MPEG-2 Layer III (10.7x)", {}},
          {"   100/8336   ( 1%)|    0:00/    0:00|    0:00/    0:00|   419.87x|    0:00 ", 1},
          {"  8336/8336   (100%)|    0:00/    0:00|", 100},
          {"%) (5", {}}}},
    };
    for (const auto& entry : cases) {
        const auto handler = MakeLineHandler(entry.handler.text, RowOf(entry.tool).marks);
        ASSERT_NE(handler, nullptr);
        bool goesOn = true;
        for (const auto& [line, place] : entry.lines) {
            const LineAnswer answer = handler->Feed(line, entry.total);
            EXPECT_EQ(answer.done, place) << line;
            goesOn = answer.goOn;
        }
        EXPECT_EQ(goesOn, entry.goesOn) << entry.lines.back().first;
    }
    EXPECT_EQ(MakeLineHandler("Gestione", {}), nullptr);
}

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
