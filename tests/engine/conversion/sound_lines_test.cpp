#include "conversion/sound_lines.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

/// Where the bar goes, line by line of recorded output.
TEST(SoundLines, TurnRecordedOutputIntoProgress)
{
    using Lines = std::vector<std::pair<std::string, std::optional<std::uint64_t>>>;
    const auto read = [](LineParser& parser, std::uint64_t total, const Lines& lines) {
        for (const auto& [line, place] : lines) {
            const LineAnswer answer = parser.Feed(line);
            EXPECT_EQ(answer.done, place) << line;
            EXPECT_TRUE(answer.goOn);
            EXPECT_TRUE(!place || answer.total == total) << line;
        }
    };
    read(*GestioneMadPlay(300), 300,
         {{"MPEG Audio Decoder 0.15.2 (beta) - Copyright (C) 2000-2004", {}},
          {" 00:00:03 Layer III, 128 kbps, 44100 Hz, joint stereo (MS), no CRC", 3},
          {" 00:00:03 Layer III, 96 kbps, 44100 Hz, joint stereo (MS), no CRC", {}},
          {" 00:01:02 Layer III", 62},
          {" 01:02:0", {}},
          {"11486 frames decoded (0:05:00.0), -5.5 dB peak amplitude", {}}});
    read(*GestioneLame(), 100,
         {{"Encoding as 16 kHz single-ch MPEG-2 Layer III (10.7x)", {}},
          {"   100/8336   ( 1%)|    0:00/    0:00|    0:00/    0:00|   419.87x|    0:00 ", 1},
          {"  8336/8336   (100%)|    0:00/    0:00|", 100},
          {"%) (5", {}}});
}

} // namespace

} // namespace kestrova::testing
