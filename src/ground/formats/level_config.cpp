#include "formats/level_config.h"

#include "core/names.h"
#include "core/record_io.h"

#include <iterator>
#include <limits>

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

template <class Io, class Config> void DescribeConfig(Io& io, Config& config)
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

constexpr std::string_view exactMark = "KvExact1";

struct ExactField {
    std::string LevelConfig::*text;
    std::size_t width;
};
/// By the number that stands in the file.
constexpr ExactField exactFields[] = {
    {&LevelConfig::name, 256},         {&LevelConfig::note, 256},
    {&LevelConfig::author, 80},        {&LevelConfig::authorNote, 256},
    {&LevelConfig::authorEmails, 256}, {&LevelConfig::authorSites, 256},
    {&LevelConfig::importNotes, 512},  {&LevelConfig::moreInfo, 80}};

/// What is left of a text in its field.
std::string InField(const std::string& text, std::size_t width)
{
    const std::string bytes = ToWindows1252(text);
    return FromWindows1252(TrimEnd(std::string_view{bytes}.substr(0, width)));
}

std::string ExactTexts(const LevelConfig& config)
{
    constexpr std::size_t longest = std::numeric_limits<std::int16_t>::max();
    std::string bytes;
    for (std::size_t i = 0; i < std::size(exactFields); ++i) {
        const std::string text{TrimEnd(config.*exactFields[i].text)};
        if (FitsWindows1252(text) || !IsUtf8(text) || text.size() > longest)
            continue;
        bytes += static_cast<char>(i);
        bytes += static_cast<char>(text.size() & 0xFFU);
        bytes += static_cast<char>(text.size() >> 8U);
        bytes += text;
    }
    return bytes.empty() ? bytes : std::string{exactMark} + bytes;
}

/// What is wrong in the tail, or follows from another file, is passed over.
void TakeExactTexts(std::string_view bytes, LevelConfig& config)
{
    if (!bytes.starts_with(exactMark))
        return;
    bytes.remove_prefix(exactMark.size());
    constexpr std::size_t head = 3;
    while (bytes.size() > head) {
        const auto field = static_cast<unsigned char>(bytes[0]);
        const std::size_t length = static_cast<unsigned char>(bytes[1]) |
                                   static_cast<unsigned>(static_cast<unsigned char>(bytes[2]))
                                       << 8U;
        if (field >= std::size(exactFields) || length > bytes.size() - head)
            return;
        const std::string text{TrimEnd(bytes.substr(head, length))};
        std::string& plain = config.*exactFields[field].text;
        if (IsUtf8(text) && InField(text, exactFields[field].width) == plain)
            plain = text;
        bytes.remove_prefix(head + length);
    }
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
    DescribeConfig(reader, config);
    if (!reader.Good())
        return Failure{ErrorCode::Damaged, {}, {}};
    const std::string_view behind = bytes.substr(reader.Place());
    config.tomWads = TrailingText(behind);
    constexpr std::size_t lengthSize = 2;
    const std::size_t end = lengthSize + ToWindows1252(config.tomWads).size();
    TakeExactTexts(behind.substr(std::min(end, behind.size())), config);
    return config;
}

Result<std::string> FormatLevelConfig(const LevelConfig& config)
{
    LevelConfig plain = config;
    for (ConfigFile& file : plain.files)
        file.name = FileNameOf(file.name);
    RecordWriter writer;
    DescribeConfig(writer, plain);
    writer.CountedText(plain.tomWads);
    if (!writer.Good())
        return Failure{ErrorCode::Refused, {}, {}};
    return writer.Bytes() + ExactTexts(config);
}

} // namespace kestrova
