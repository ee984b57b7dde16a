#pragma once

#include "core/copying.h"
#include "core/files.h"

#include <initializer_list>
#include <string>

/// The record of a swap in words: each wrapper does a file operation, adds one line ended by CRLF,
/// and gives the operation's answer. Paths of lines stand as a person reads them.
namespace kestrova
{

using ActivityLog = std::string;

/// The parts as one line.
std::string LogLine(std::initializer_list<std::string> parts);
/// The line of one copied file. `overwritten`: the target existed.
std::string CopyLine(const Path& source, const Path& target, bool done, bool overwritten = false);
/// The line of a pattern's files that were deleted.
std::string DeleteDirLine(const Path& folder, const std::string& pattern, bool done);

Status LogCopyFile(const Path& source, const Path& target, ActivityLog& log,
                   const CopyOptions& options = {});
Status LogCopyMatching(const Path& source, const Path& target, ActivityLog& log,
                       std::string_view pattern, const CopyOptions& options = {});
/// Deletes the file of exactly that spelling, no twin of it; the line calls it `named`.
Status LogDeleteFile(const Path& exact, const Path& named, ActivityLog& log);

/// The text, and one more CRLF, as a new `LevelLog_nnn.txt` of the folder: the first free number
/// from 000.
Status WriteLogFile(const Path& programFolder, const ActivityLog& log);

} // namespace kestrova
