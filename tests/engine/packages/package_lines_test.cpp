#include "packages/package_lines.h"

#include "packages/package_tools.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

/// Where the bar goes and when the parser asks to stop, line by line of recorded output.
TEST(PackageLines, TurnRecordedOutputIntoProgress)
{
    using Place = std::optional<std::uint64_t>;
    const auto& unzip = ToolOf(Unpacker::Unzip).marks;
    const auto& bsdtar = ToolOf(Unpacker::Bsdtar).marks;
    const auto& zip = ZipTool().marks;
    struct Row {
        std::unique_ptr<LineParser> parser;
        std::vector<std::pair<std::string, Place>> lines;
        bool goesOn = true;
    };
    const Row rows[] = {
        {GestioneUnzip(unzip, 4),
         {{"Archive:  z3.zip", {}},
          {"   creating: D/folder/", 1},
          {"  inflating: D/beta.txt    ", 2},
          {" extracting: D/tiny", 3},
          {"D/skip:  bad CRC 93d4b9b0  (should be 01020304)", {}},
          {"  INFLATING: D/x", 4}}},
        {GestioneUnzip(bsdtar, 2),
         {{"x folder/a b.txt", 1}, {"bsdtar: x inside", {}}, {"x", {}}, {"x ü", 2}}},
        {GestioneZip(zip, 2),
         {{"  adding: big1.bin (deflated 0%)", 1}, {"  adding: big2.txt (deflated 71%)", 2}},
         false},
        {GestioneZip(zip, 2), {{"  adding: one (stored 0%)", 1}, {"zip warning: x", {}}}},
        {GestioneZip(zip, 0), {{"zip error: Nothing to do!", {}}}, false},
    };
    for (const Row& row : rows) {
        bool goesOn = true;
        for (const auto& [line, place] : row.lines) {
            const LineAnswer answer = row.parser->Feed(line);
            EXPECT_EQ(answer.done, place) << line;
            goesOn = answer.goOn;
        }
        EXPECT_EQ(goesOn, row.goesOn) << row.lines.back().first;
    }
}

} // namespace

} // namespace kestrova::testing
