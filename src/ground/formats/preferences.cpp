#include "formats/preferences.h"

#include "core/file_kinds.h"
#include "core/record_io.h"
#include "formats/trle_folder.h"

#include <algorithm>

namespace kestrova
{

namespace
{

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
    // The first-run record lends its bytes from where the file ends.
    std::string whole = FormatPreferences(DefaultPreferences());
    whole.replace(0, std::min(bytes.size(), preferencesSize), bytes.substr(0, preferencesSize));
    RecordReader reader{whole};
    PreferencesRecord record;
    DescribePreferences(reader, record);
    return record;
}

std::string FormatPreferences(const PreferencesRecord& record)
{
    RecordWriter writer;
    DescribePreferences(writer, record);
    return writer.Bytes();
}

} // namespace kestrova
