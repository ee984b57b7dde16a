#include "formats/savegame_records.h"

#include "core/record_io.h"

namespace kestrova
{

namespace
{

template <class Io, class Record> void DescribeSavegameHead(Io& io, Record& record)
{
    io.Text(record.slotPrefix, 256);
    io.Text(record.archiveRoot, 256);
    io.Text(record.liveFolder, 256);
    io.Text(record.gameExe, 256);
    io.I16(record.slotCount);
    io.I32(record.archivedCount);
}

template <class Io, class Record> void DescribeToolPrefs(Io& io, Record& record)
{
    io.Text(record.archivePath, 256);
    io.I16(record.flag0);
    io.Text(record.shotFolder, 256);
    io.I16(record.flag1);
    io.I16(record.flag2);
    io.I16(record.flag3);
    io.I16(record.flag4);
    io.I16(record.toolCapture);
}

} // namespace

Result<SavegameArchiveHeader> ParseSavegameArchiveHeader(std::string_view bytes)
{
    RecordReader reader{bytes};
    SavegameArchiveHeader record;
    DescribeSavegameHead(reader, record);
    if (!reader.Good())
        return Failure{ErrorCode::Damaged, {}, {}};
    return record;
}

std::string FormatSavegameArchiveHeader(const SavegameArchiveHeader& record)
{
    RecordWriter writer;
    DescribeSavegameHead(writer, record);
    return writer.Bytes();
}

Result<SavegameToolPrefs> ParseSavegameToolPrefs(std::string_view bytes)
{
    RecordReader reader{bytes};
    SavegameToolPrefs record;
    DescribeToolPrefs(reader, record);
    if (!reader.Good())
        return Failure{ErrorCode::Damaged, {}, {}};
    return record;
}

std::string FormatSavegameToolPrefs(const SavegameToolPrefs& record)
{
    RecordWriter writer;
    DescribeToolPrefs(writer, record);
    return writer.Bytes();
}

} // namespace kestrova
