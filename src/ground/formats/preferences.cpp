#include "formats/preferences.h"

#include "core/file_kinds.h"
#include "core/record_io.h"
#include "formats/trle_folder.h"

#include <algorithm>
#include <iterator>

namespace kestrova
{

namespace
{

constexpr std::size_t textWidth = 256;
constexpr std::size_t firstText = 10;
constexpr std::size_t endOfTexts = 1290;
constexpr std::size_t fieldEnds[] = {0,   2,   4,    6,    8,    10,   266,
                                     522, 778, 1034, 1290, 1292, 1294, preferencesSize};

template <class Io, class Record> void DescribePreferences(Io& io, Record& record)
{
    io.Flag(record.captureEnabled);
    io.Flag(record.promptCapture);
    io.Flag(record.noAutoCompile);
    io.Flag(record.checkEqualLevels);
    io.Flag(record.writeLogFiles);
    io.Text(record.archivePath, 256);
    io.Text(record.trlePath, 256);
    io.Text(record.tom2PcName, 256);
    io.Text(record.tombExeName, 256);
    io.Text(record.downloadFolder, 256);
    io.Flag(record.noDecompressInProperties);
    io.Flag(record.fullBackup);
    io.Flag(record.autoSave);
}

} // namespace

PreferencesRecord DefaultPreferences()
{
    PreferencesRecord record;
    record.tom2PcName = std::string{OnDisk::DefaultTom2PcName};
    record.tombExeName = std::string{OnDisk::DefaultTombExeName};
    record.downloadFolder = std::string{OnDisk::DefaultDownloadFolder};
    return record;
}

PreferencesRecord ParsePreferences(std::string_view bytes)
{
    if (bytes.find_first_not_of('\0') == std::string_view::npos)
        return DefaultPreferences();
    // The first-run record lends its bytes from where the last whole field ends.
    std::string whole = FormatPreferences(DefaultPreferences());
    const auto* const end = std::upper_bound(std::begin(fieldEnds), std::end(fieldEnds),
                                             std::min(bytes.size(), preferencesSize));
    const std::size_t used = *std::prev(end);
    whole.replace(0, used, bytes.substr(0, used));
    for (std::size_t at = firstText; at < endOfTexts; at += textWidth)
        if (whole.find_first_not_of('\0', at) >= at + textWidth)
            whole.replace(at, textWidth, FormatPreferences(DefaultPreferences()), at, textWidth);
    RecordReader reader{whole};
    PreferencesRecord record;
    DescribePreferences(reader, record);
    return record;
}

bool IsCutOrEmpty(std::string_view bytes)
{
    return bytes.size() < preferencesSize || bytes.find_first_not_of('\0') == std::string::npos;
}

std::string FormatPreferences(const PreferencesRecord& record)
{
    RecordWriter writer;
    DescribePreferences(writer, record);
    return writer.Bytes();
}

} // namespace kestrova
