#include "core/activity_log.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "words/core.h"

namespace kestrova
{

namespace
{

/// Marks the outcome and ends the line.
Status Marked(Status status, ActivityLog& log, bool overwritten = false)
{
    log += (status ? Msg::LogOk : Msg::LogError).text;
    if (overwritten)
        log += Msg::LogOverwrite.text;
    log += lineBreak;
    return status;
}

void BeginCopyLine(ActivityLog& log, const Path& source, const Path& target)
{
    log += GetMsg(Msg::LogCopy) + TextOf(source) + GetMsg(Msg::LogArrow) + TextOf(target);
}

} // namespace

Status LogCopyFile(const Path& source, const Path& target, ActivityLog& log,
                   const CopyOptions& options)
{
    BeginCopyLine(log, source, target);
    return Marked(CopyFileOver(source, target, options), log);
}

Status LogCopyFileNoting(const Path& source, const Path& target, bool& overwritten,
                         ActivityLog& log, const CopyOptions& options)
{
    BeginCopyLine(log, source, target);
    overwritten = FileExists(target);
    return Marked(CopyFileOver(source, target, options), log, overwritten);
}

Status LogDeleteMatching(const Path& folder, ActivityLog& log, std::string_view pattern)
{
    log += GetMsg(Msg::LogDeleteDir) + "\"" + std::string{pattern} + "\"" + GetMsg(Msg::LogArrow) +
           TextOf(folder);
    return Marked(DeleteMatching(folder, pattern), log);
}

Status LogCopyMatching(const Path& source, const Path& target, ActivityLog& log,
                       std::string_view pattern, const CopyOptions& options)
{
    log += GetMsg(Msg::LogCopyAll) + TextOf(source) + "\\" + std::string{pattern} +
           GetMsg(Msg::LogArrow) + TextOf(target);
    return Marked(CopyMatching(source, target, pattern, options), log);
}

Status LogDeleteFile(const Path& exact, const Path& named, ActivityLog& log)
{
    log += GetMsg(Msg::LogDelete) + TextOf(named);
    return Marked(DeleteSpelled(exact), log);
}

Status WriteLogFile(const Path& programFolder, const ActivityLog& log)
{
    Path file;
    for (int number = 0; file.empty() || FileExists(file); ++number)
        file = InFolder(programFolder, Filled(OnDisk::FragLogFile, {ZeroPadded(number, 3)}));
    return WriteWholeFile(file, ToWindows1252(log) + std::string{lineBreak});
}

} // namespace kestrova
