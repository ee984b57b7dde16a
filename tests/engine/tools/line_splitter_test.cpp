#include "tools/line_splitter.h"

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

} // namespace

} // namespace kestrova::testing
