#include "conversion/sound_tools.h"

namespace kestrova
{

namespace
{

/// The decoder prints the texts of a file's tags, of whatever length, a line each.
constexpr std::size_t lineWithTags = std::size_t{1} << 20;

} // namespace

const Tool& Decoder()
{
    static const Tool madplay{.name = "madplay",
                              .package = "madplay",
                              .environment = {{"LC_ALL", "C.UTF-8"}},
                              .lineLimit = lineWithTags};
    return madplay;
}

const Tool& Encoder()
{
    // No variable of the player's adds switches.
    static const Tool lame{
        .name = "lame", .package = "lame", .environment = {{"LC_ALL", "C.UTF-8"}, {"LAMEOPT", ""}}};
    return lame;
}

/// madplay 0.15.2: the kind stands before the target's name, so that no name is taken for one. It
/// calls garbage and an empty file a success, so the caller looks at what came out.
ToolArguments DecoderArguments(const Path& source, const Path& wave, Checksums checksums)
{
    ToolArguments arguments{source.native(), "-v", "--bit-depth=16", "-S",
                            "-owave:" + wave.native()};
    if (checksums == Checksums::Ignored)
        arguments.emplace_back("-i");
    return arguments;
}

/// lame 3.100: takes what is no wave for raw samples, so the caller looks at the source. Without
/// the picture of bit rates, and ten lines of progress a second.
ToolArguments EncoderArguments(const Path& wave, const Path& target, const Mp3Settings& settings)
{
    ToolArguments arguments{"--nohist", "--disptime", "0.1", "-b",
                            std::to_string(settings.bitRate)};
    if (settings.channels == 1)
        arguments.emplace_back("-a");
    if (settings.frequency != 0) {
        arguments.emplace_back("--resample");
        arguments.push_back(std::to_string(settings.frequency));
    }
    arguments.push_back(wave.native());
    arguments.push_back(target.native());
    return arguments;
}

} // namespace kestrova
