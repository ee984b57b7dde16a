#pragma once

#include "core/result.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// `kestrova.cfg`, which travels with a level and tells what its files cannot: texts, what must be
/// fetched from elsewhere, and the list of its files. No magic, no version.
///
///     fixed block, 8710 bytes                         file, FileCount times
///        0   256  Name                                  0  2  length n of the name
///      256   256  Note                                  2  n  name, no folder
///      512    80  Author                              2+n  4  size in bytes
///      592   256  AuthorNote
///      848   256  AuthorEmails, list                  behind the last file
///     1104   256  AuthorSites, list                     0  2  length n of the text
///     1360  4096  ExternWaves, groups of four           2  n  TomWads, pairs
///     5456  2048  ImportWads, pairs
///     7504   512  ImportNotes
///     8016   600  Duplicates, pairs
///     8616    80  MoreInfo
///     8696    10  ExeFormat
///     8706     4  FileCount
///
/// A file may end right behind its last file entry: TomWads is empty then. Where it ends within
/// TomWads, what is there counts. It may be longer than that (an old tail). Lists, pairs and groups
/// are NUL lists (`records/nul_list.h`).
///
/// Texts whose letters the fields cannot hold stand once more behind TomWads, where other readers
/// do not look:
///
///     exact texts                                    each text
///        0     8  "KvExact1"                            0  1  number of its field, Name being 0
///        8     n  the texts, up to the file's end       1  2  length n
///                                                       3  n  the text in UTF-8
///
/// One of them counts while its field holds what is left of it there.
namespace kestrova
{

struct ConfigFile {
    std::string name; ///< may hold folders in memory; only its last part is written
    std::int32_t size = 0;
};

/// The fields as they stand in the file, without the blanks at their ends. Who looks at one trims
/// its beginning too.
struct LevelConfig {
    std::string name;
    std::string note;
    std::string author;
    std::string authorNote;
    std::string authorEmails; ///< NUL list
    std::string authorSites;  ///< NUL list
    std::string externWaves;  ///< NUL list of CD, source, target, alternative
    std::string importWads;   ///< NUL list of file to check for, address of the package
    std::string importNotes;  ///< shown when a package of wads is asked for
    std::string duplicates;   ///< NUL list of pattern, target
    std::string moreInfo;     ///< name of the level's documentation
    std::string exeFormat;    ///< "ZIP", "TRLE", "MIRROR", "FLYDRIVE" or nothing
    std::vector<ConfigFile> files;
    std::string tomWads; ///< NUL list of tom file, pattern of its set of wads
};

inline constexpr std::size_t levelConfigBlockSize = 8710;

/// `Damaged` when the file count, or a length in the list, goes beyond the bytes or is negative.
Result<LevelConfig> ParseLevelConfig(std::string_view bytes);
/// Texts longer than their fields are cut. `Refused` for a file's name or TomWads above 32767
/// bytes, which no length can tell.
Result<std::string> FormatLevelConfig(const LevelConfig& config);

} // namespace kestrova
