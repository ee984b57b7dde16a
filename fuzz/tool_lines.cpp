// What outside tools print: bytes into lines, lines into progress and lists, the end into words.

#include "check.h"
#include "conversion/sound_lines.h"
#include "packages/package_tools.h"
#include "tools/line_splitter.h"
#include "tools/tool_output.h"

using namespace kestrova;
using namespace kestrova::fuzz;

namespace
{

/// What was captured, and what the parsers made of it.
struct Read {
    std::string output;
    std::size_t lines = 0;
    LineSplitter::State state = LineSplitter::State::Goes;
    bool operator==(const Read&) const = default;
};

Read ReadBy(std::string_view bytes, std::size_t chunk, bool wholeLines)
{
    constexpr std::uint64_t total = 3;
    std::vector<std::unique_ptr<LineParser>> parsers;
    parsers.push_back(GestioneZip(ZipTool().marks, total));
    for (const Unpacker unpacker : {Unpacker::Unzip, Unpacker::Bsdtar})
        parsers.push_back(GestioneUnzip(ToolOf(unpacker).marks, total));
    parsers.push_back(GestioneMadPlay(total));
    parsers.push_back(GestioneLame());
    Read read;
    LineSplitter splitter{wholeLines};
    const auto take = [&](std::string_view line) {
        Promise(line.size() <= LineSplitter::usualLimit, "a line keeps to the limit");
        ++read.lines;
        for (const auto& parser : parsers)
            (void)parser->Feed(line);
        (void)ShownLine(line);
        return true;
    };
    for (std::size_t at = 0; at < bytes.size() && read.state == LineSplitter::State::Goes;
         at += chunk)
        read.state = splitter.Feed(bytes.substr(at, chunk), take);
    read.output = splitter.Output();
    return read;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    for (const bool wholeLines : {true, false})
        Promise(ReadBy(bytes, 1, wholeLines) == ReadBy(bytes, 7, wholeLines),
                "chunks do not matter");
    for (const PackageEntry& entry : ParseZipListing(bytes))
        Promise(entry.name.find_first_of("\r\n") == std::string::npos, "a name is one line");
    for (const PackageEntry& entry : ParseTarListing(bytes))
        Promise(entry.name.size() <= bytes.size(), "a name is no longer than what was printed");
    (void)ComplaintIn(ToolOf(Unpacker::Unzip).tool, bytes);
    Promise(LastLines(bytes).size() < 10'000, "the last lines are few");
    return 0;
}
