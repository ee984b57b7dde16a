#include "records/archive_file.h"

#include "core/record_io.h"

namespace kestrova
{

namespace
{

template <class Io, class Header> void DescribeHeader(Io& io, Header& header)
{
    io.I32(header.archiveVersion);
    io.Text(header.mainFolder, folderFieldSize);
    io.Text(header.secondaryFolder, folderFieldSize);
    io.I32(header.levelCount);
    io.I32(header.cdCount);
    io.Flag(header.compressLevels);
    io.Flag(header.wavInMp3);
    io.Flag(header.cdMovePending);
    io.F64(header.mainFolderSize);
    io.F64(header.secondaryFolderSize);
}

template <class Io, class Level> void DescribeLevel(Io& io, Level& level)
{
    io.Text(level.levelName, 256);
    io.Text(level.levelNote, 256);
    io.Text(level.authorName, 80);
    io.Text(level.authorEmails, 256);
    io.Text(level.authorSites, 256);
    io.Text(level.authorNote, 256);
    io.I32(level.levelCode);
    io.I32(level.cdNumber);
    io.Text(level.moreInfoFile, 256);
    io.I32(level.filesSize);
    io.I32(level.extrasSize);
    io.Flag(level.extrasDirty);
}

} // namespace

Result<ArchiveContent> ParseArchive(std::string_view bytes)
{
    RecordReader reader{bytes};
    ArchiveContent content;
    DescribeHeader(reader, content.header);
    const std::int64_t count = content.header.levelCount;
    if (!reader.Good() || count < 1 ||
        count > static_cast<std::int64_t>(reader.Left() / levelRecordSize))
        return Failure{ErrorCode::Damaged, {}, {}};
    content.levels.resize(static_cast<std::size_t>(count));
    for (LevelRecord& level : content.levels)
        DescribeLevel(reader, level);
    return content;
}

std::string FormatArchive(const ArchiveHeader& header, const std::vector<LevelRecord>& levels)
{
    RecordWriter writer;
    writer.Reserve(archiveHeaderSize + levels.size() * levelRecordSize);
    ArchiveHeader counted = header;
    counted.levelCount = static_cast<std::int32_t>(levels.size());
    DescribeHeader(writer, counted);
    for (const LevelRecord& level : levels)
        DescribeLevel(writer, level);
    return writer.Bytes();
}

} // namespace kestrova
