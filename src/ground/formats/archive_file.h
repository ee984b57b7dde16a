#pragma once

#include "core/files.h"
#include "core/result.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The archive file `*.kva`: one header, then `LevelCount` level records, nothing else. A file may
/// be longer than that (an old tail); the count rules.
///
///     header, 546 bytes                      level, 1634 bytes
///       0    4  ArchiveVersion, always 1       0  256  LevelName
///       4  256  MainFolder                   256  256  LevelNote
///     260  256  SecondaryFolder              512   80  AuthorName
///     516    4  LevelCount                   592  256  AuthorEmails, joined by NUL
///     520    4  CdCount                      848  256  AuthorSites, joined by NUL
///     524    2  CompressLevels              1104  256  AuthorNote
///     526    2  WavInMp3                    1360    4  LevelCode
///     528    2  CdMovePending               1364    4  CdNumber
///     530    8  MainFolderSize              1368  256  MoreInfoFile
///     538    8  SecondaryFolderSize         1624    4  FilesSize
///                                           1628    4  ExtrasSize
///                                           1632    2  ExtrasDirty
namespace kestrova
{

using LevelCode = std::int32_t;

/// The original configuration of the Level Editor's folder.
inline constexpr LevelCode originalCode = 0;

struct ArchiveHeader {
    std::int32_t archiveVersion = 1;
    std::string mainFolder;
    std::string secondaryFolder;
    std::int32_t levelCount = 0; ///< follows the number of levels whenever it is written
    std::int32_t cdCount = 0;
    bool compressLevels = false;
    bool wavInMp3 = false;
    bool cdMovePending = false;
    double mainFolderSize = 0;      ///< bytes
    double secondaryFolderSize = 0; ///< bytes
};

struct LevelRecord {
    std::string levelName;
    std::string levelNote;
    std::string authorName;
    std::string authorEmails; ///< joined by a NUL character
    std::string authorSites;  ///< joined by a NUL character
    std::string authorNote;
    LevelCode levelCode = 0;
    std::int32_t cdNumber = 0; ///< 0: on the hard disk
    std::string moreInfoFile;
    std::int32_t filesSize = 0;  ///< bytes
    std::int32_t extrasSize = 0; ///< bytes
    bool extrasDirty = false;
};

struct ArchiveContent {
    ArchiveHeader header;
    std::vector<LevelRecord> levels;
};

inline constexpr std::size_t archiveHeaderSize = 546;
inline constexpr std::size_t levelRecordSize = 1634;
/// Width of a folder's field.
inline constexpr std::size_t folderFieldSize = 256;

/// `Damaged` when the bytes end before the count says so, or the count is below 1.
Result<ArchiveContent> ParseArchive(std::string_view bytes);
/// The same of a file, which is read in pieces: most of an archive is the blanks of its fields.
/// `CannotRead` when it cannot be opened or read.
Result<ArchiveContent> ReadArchiveFile(const Path& file);
/// The header's count is written as the number of levels.
std::string FormatArchive(const ArchiveHeader& header, const std::vector<LevelRecord>& levels);
inline std::string FormatArchive(const ArchiveContent& content)
{
    return FormatArchive(content.header, content.levels);
}

} // namespace kestrova
