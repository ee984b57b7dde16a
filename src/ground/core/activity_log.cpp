#include "core/activity_log.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "words/core.h"

namespace kestrova
{

namespace
{

std::string OutcomeMark(bool done)
{
    return Told(done ? Msg::LogOk : Msg::LogError);
}

} // namespace

std::string LogLine(std::initializer_list<std::string> parts)
{
    std::string text;
    for (const std::string& part : parts)
        text += part;
    return text + std::string{lineBreak};
}

std::string CopyLine(const Path& source, const Path& target, bool done, bool overwritten)
{
    return LogLine({Told(Msg::LogCopy), TextOf(source), Told(Msg::LogArrow), TextOf(target),
                    OutcomeMark(done), overwritten ? Told(Msg::LogOverwrite) : std::string{}});
}

std::string DeleteDirLine(const Path& folder, const std::string& pattern, bool done)
{
    return LogLine({Told(Msg::LogDeleteDir), "\"", pattern, "\"", Told(Msg::LogArrow),
                    TextOf(folder), OutcomeMark(done)});
}

Status LogCopyFile(const Path& source, const Path& target, ActivityLog& log,
                   const CopyOptions& options)
{
    auto status = CopyFileOver(source, target, options);
    log += CopyLine(source, target, static_cast<bool>(status));
    return status;
}

Status LogCopyMatching(const Path& source, const Path& target, ActivityLog& log,
                       std::string_view pattern, const CopyOptions& options)
{
    auto status = CopyMatching(source, target, pattern, options);
    log += LogLine({Told(Msg::LogCopyAll), TextOf(source), "\\", std::string{pattern},
                    Told(Msg::LogArrow), TextOf(target), OutcomeMark(static_cast<bool>(status))});
    return status;
}

Status LogDeleteFile(const Path& exact, const Path& named, ActivityLog& log)
{
    auto status = DeleteSpelled(exact);
    log += LogLine({Told(Msg::LogDelete), TextOf(named), OutcomeMark(static_cast<bool>(status))});
    return status;
}

Status WriteLogFile(const Path& programFolder, const ActivityLog& log)
{
    const auto file = FirstFree(
        [&](int number) {
            return InFolder(programFolder, Filled(OnDisk::FragLogFile, {ZeroPadded(number, 3)}));
        },
        0);
    if (!file)
        return file.Error();
    return WriteWholeFile(*file, ToWindows1252(log) + std::string{lineBreak});
}

} // namespace kestrova
