#include "formats/archive_file.h"

#include "core/record_io.h"

#include <functional>

namespace kestrova
{

namespace
{

template <class Io, class Header> void DescribeArchiveHead(Io& io, Header& header)
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

/// The bytes from a place on, as many as asked for; fewer at the end.
using ArchiveBytes =
    std::function<Result<std::string_view>(std::uint64_t place, std::size_t count)>;

Result<ArchiveContent> ParsePieces(std::uint64_t size, const ArchiveBytes& bytes)
{
    constexpr std::size_t levelsInPiece = 100;
    const Failure damaged{ErrorCode::Damaged, {}, {}};
    const auto head = bytes(0, archiveHeaderSize);
    if (!head)
        return head.Error();
    RecordReader headReader{*head};
    ArchiveContent content;
    DescribeArchiveHead(headReader, content.header);
    const std::int64_t count = content.header.levelCount;
    if (!headReader.Good() || size < archiveHeaderSize || count < 1 ||
        count > static_cast<std::int64_t>((size - archiveHeaderSize) / levelRecordSize))
        return damaged;
    content.levels.resize(static_cast<std::size_t>(count));
    for (std::size_t done = 0; done < content.levels.size();) {
        const std::size_t many = std::min(levelsInPiece, content.levels.size() - done);
        const auto piece =
            bytes(archiveHeaderSize + done * levelRecordSize, many * levelRecordSize);
        if (!piece)
            return piece.Error();
        RecordReader reader{*piece};
        for (const std::size_t end = done + many; done < end; ++done)
            DescribeLevel(reader, content.levels[done]);
        if (!reader.Good()) // the file became shorter
            return damaged;
    }
    return content;
}

} // namespace

Result<ArchiveContent> ParseArchive(std::string_view bytes)
{
    return ParsePieces(bytes.size(), [bytes](std::uint64_t place, std::size_t count) {
        return Result<std::string_view>{
            bytes.substr(std::min(static_cast<std::size_t>(place), bytes.size()), count)};
    });
}

Result<ArchiveContent> ReadArchiveFile(const Path& file)
{
    const Path place = ResolvePath(file);
    platform::File handle;
    if (const auto failure = platform::File::OpenForRead(place, handle))
        return MakeFailure(ErrorCode::CannotRead, TextOf(place), failure);
    std::string buffer;
    auto content =
        ParsePieces(handle.Facts().size,
                    [&](std::uint64_t from, std::size_t count) -> Result<std::string_view> {
                        buffer.resize(std::max(buffer.size(), count));
                        std::size_t got = 0;
                        if (const auto failure = handle.ReadAt(
                                from, std::as_writable_bytes(std::span{buffer}.first(count)), got))
                            return MakeFailure(ErrorCode::CannotRead, TextOf(place), failure);
                        return std::string_view{buffer}.substr(0, got);
                    });
    if (!content && content.Error().code == ErrorCode::Damaged)
        return MakeFailure(ErrorCode::Damaged, TextOf(place));
    return content;
}

std::string FormatArchive(const ArchiveHeader& header, const std::vector<LevelRecord>& levels)
{
    RecordWriter writer;
    writer.Reserve(archiveHeaderSize + levels.size() * levelRecordSize);
    ArchiveHeader counted = header;
    counted.levelCount = static_cast<std::int32_t>(levels.size());
    DescribeArchiveHead(writer, counted);
    for (const LevelRecord& level : levels)
        DescribeLevel(writer, level);
    return writer.Bytes();
}

} // namespace kestrova
