#include "records/level_config.h"

#include "core/names.h"
#include "core/record_io.h"

namespace kestrova
{

namespace
{

constexpr std::size_t leastFileEntry = 6;

template <class Io, class File> void DescribeFile(Io& io, File& file)
{
    io.CountedText(file.name);
    io.I32(file.size);
}

template <class Io, class Config> void Describe(Io& io, Config& config)
{
    io.Text(config.name, 256);
    io.Text(config.note, 256);
    io.Text(config.author, 80);
    io.Text(config.authorNote, 256);
    io.Text(config.authorEmails, 256);
    io.Text(config.authorSites, 256);
    io.Text(config.externWaves, 4096);
    io.Text(config.importWads, 2048);
    io.Text(config.importNotes, 512);
    io.Text(config.duplicates, 600);
    io.Text(config.moreInfo, 80);
    io.Text(config.exeFormat, 10);
    io.Count(config.files, leastFileEntry);
    for (auto& file : config.files)
        DescribeFile(io, file);
}

/// The text behind the list, or what is there of it: a file that was cut here has lost nothing that
/// the level itself needs.
std::string TrailingText(std::string_view bytes)
{
    RecordReader length{bytes};
    std::int16_t wanted = 0;
    length.I16(wanted);
    if (!length.Good() || wanted < 0)
        return {};
    return FromWindows1252(bytes.substr(length.Place(), static_cast<std::size_t>(wanted)));
}

} // namespace

Result<LevelConfig> ParseLevelConfig(std::string_view bytes)
{
    RecordReader reader{bytes};
    LevelConfig config;
    Describe(reader, config);
    if (!reader.Good())
        return Failure{ErrorCode::Damaged, {}, {}};
    config.tomWads = TrailingText(bytes.substr(reader.Place()));
    return config;
}

Result<std::string> FormatLevelConfig(const LevelConfig& config)
{
    LevelConfig plain = config;
    for (ConfigFile& file : plain.files)
        file.name = FileNameOf(file.name);
    RecordWriter writer;
    Describe(writer, plain);
    writer.CountedText(plain.tomWads);
    if (!writer.Good())
        return Failure{ErrorCode::Refused, {}, {}};
    return writer.Bytes();
}

} // namespace kestrova
