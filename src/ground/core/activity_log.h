#pragma once

#include "core/copying.h"
#include "core/files.h"

#include <string>

/// The record of a swap in words: each wrapper does a file operation, adds one line ended by CRLF,
/// and gives the operation's answer. Paths of lines stand as a person reads them.
namespace kestrova
{

using ActivityLog = std::string;

Status LogCopyFile(const Path& source, const Path& target, ActivityLog& log,
                   const CopyOptions& options = {});
/// `overwritten` tells whether the target existed.
Status LogCopyFileNoting(const Path& source, const Path& target, bool& overwritten,
                         ActivityLog& log, const CopyOptions& options = {});
Status LogDeleteMatching(const Path& folder, ActivityLog& log, std::string_view pattern);
Status LogCopyMatching(const Path& source, const Path& target, ActivityLog& log,
                       std::string_view pattern, const CopyOptions& options = {});
/// Deletes the file of exactly that spelling, no twin of it; the line calls it `named`.
Status LogDeleteFile(const Path& exact, const Path& named, ActivityLog& log);

/// The text, and one more CRLF, as a new `LevelLog_nnn.txt` of the folder: the first free number
/// from 000.
Status WriteLogFile(const Path& programFolder, const ActivityLog& log);

} // namespace kestrova
