#include "formats/preferences.h"

#include "core/file_kinds.h"
#include "core/record_io.h"
#include "formats/trle_folder.h"

#include <vector>

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

struct FieldSpan {
    std::size_t begin;
    std::size_t end;
    bool isText;
};

/// Where the fields of a record lie.
class FieldPlaces
{
public:
    void Flag(const bool&) { Add(sizeof(std::int16_t), false); }
    void Text(const std::string&, std::size_t width) { Add(width, true); }
    [[nodiscard]] const std::vector<FieldSpan>& Fields() const { return fields_; }

private:
    void Add(std::size_t width, bool isText)
    {
        const std::size_t begin = fields_.empty() ? 0 : fields_.back().end;
        fields_.push_back({begin, begin + width, isText});
    }

    std::vector<FieldSpan> fields_;
};

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
    // The first-run record lends its bytes for what is cut, and for texts of zeros alone.
    const PreferencesRecord firstRun = DefaultPreferences();
    FieldPlaces places;
    DescribePreferences(places, firstRun);
    std::string whole = FormatPreferences(firstRun);
    for (const auto& [begin, end, isText] : places.Fields())
        if (end <= bytes.size() &&
            !(isText &&
              bytes.substr(begin, end - begin).find_first_not_of('\0') == std::string_view::npos))
            whole.replace(begin, end - begin, bytes, begin, end - begin);
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
