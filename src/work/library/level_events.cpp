#include "library/level_events.h"

#include "archive/level_folders.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/text.h"
#include "history/undo_entries.h"
#include "levels/may_undo.h"
#include "levels/undo_change.h"
#include "platform/clock.h"
#include "words/level_events.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// A longer log is passed over.
constexpr std::uint64_t longestLog = UINT64_C(4) << 20;
/// No more is read of all logs together.
constexpr std::uint64_t mostLogBytes = UINT64_C(16) << 20;
constexpr std::size_t mostEvents = 2000;
constexpr std::size_t longestEvent = 600; ///< bytes

void AddNoted(const LevelNote& note, std::vector<LevelEvent>& events)
{
    if (note.added)
        events.push_back({*note.added * platform::nsOfSecond, GetMsg(Msg::EventAdded), {}});
    if (note.lastPlayed)
        events.push_back({*note.lastPlayed * platform::nsOfSecond, GetMsg(Msg::EventPlayed), {}});
}

void AddChanges(const Folders& folders, const Archive& archive, LevelCode code,
                std::vector<LevelEvent>& events)
{
    const auto list = ReadUndoList(folders);
    if (!list)
        return;
    for (const ChangeHead& entry : list->entries)
        if (entry.code == code && WhereIsLevel(folders, archive, entry) == LevelIs::Here)
            events.push_back(
                {entry.madeNs,
                 GetMsg(entry.isUndone ? Msg::EventUndone : Msg::EventDone, {WhatWasDone(entry)}),
                 {}});
}

/// What a line has that tells of a file of the level.
std::string MarkOf(const Folders& folders, LevelCode code)
{
    return TextOf(LevelHomeOf(folders, code)) + '/';
}

Result<std::string> ReadLog(const Path& log)
{
    const auto text = ReadFileIfThere(log, longestLog);
    if (!text)
        return text.Error();
    if (!*text)
        return MakeFailure(ErrorCode::Missing, TextOf(log));
    return FromWindows1252(**text);
}

/// The latest first.
std::vector<std::pair<std::int64_t, Path>> LogsOf(const Folders& folders)
{
    std::vector<std::pair<std::int64_t, Path>> logs;
    const std::string pattern = Filled(OnDisk::FragLogFile, {"*"}).substr(1);
    for (const Path& log : ListFiles(folders.program, pattern).ValueOr({}))
        logs.emplace_back(platform::FactsOf(log).modifiedNs, log);
    std::sort(logs.rbegin(), logs.rend());
    return logs;
}

void AddLogs(const Folders& folders, LevelCode code, std::vector<LevelEvent>& events)
{
    const std::string mark = MarkOf(folders, code);
    std::uint64_t bytes = 0;
    for (const auto& [whenNs, log] : LogsOf(folders)) {
        bytes += FileSize(log);
        if (bytes > mostLogBytes)
            return;
        const auto text = ReadLog(log);
        if (text && text->find(mark) != std::string::npos)
            events.push_back({whenNs, GetMsg(Msg::EventLog, {TextOf(log.filename())}), log});
    }
}

} // namespace

std::vector<LevelEvent> EventsOf(const Folders& folders, const Archive& archive, LevelCode code,
                                 const LevelNote& note)
{
    std::vector<LevelEvent> events;
    AddNoted(note, events);
    AddChanges(folders, archive, code, events);
    AddLogs(folders, code, events);
    std::stable_sort(events.begin(), events.end(),
                     [](const LevelEvent& a, const LevelEvent& b) { return a.whenNs > b.whenNs; });
    return events;
}

Result<LogLines> LinesOfLog(const Folders& folders, LevelCode code, const Path& log)
{
    const auto text = ReadLog(log);
    if (!text)
        return text.Error();
    const std::string mark = MarkOf(folders, code);
    LogLines found;
    std::string_view rest = *text;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = Trim(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.find(mark) == std::string_view::npos)
            continue;
        if (found.lines.size() >= mostEvents)
            ++found.leftOut;
        else
            found.lines.push_back(Readable(line.substr(0, longestEvent)));
    }
    return found;
}

} // namespace kestrova
