#pragma once

#include "core/text.h"
#include "words/core.h"

#include <initializer_list>
#include <string>

namespace kestrova
{

/// The parts as one line of the activity log.
inline std::string LogLine(std::initializer_list<std::string> parts)
{
    std::string text;
    for (const std::string& part : parts)
        text += part;
    return text + std::string{lineBreak};
}

inline std::string OutcomeMark(bool done)
{
    return GetMsg(done ? Msg::LogOk : Msg::LogError);
}

/// The line of one copied file, as `LogCopyFile` writes it.
inline std::string CopyLine(const Path& source, const Path& target, bool done, bool overwritten)
{
    return LogLine({GetMsg(Msg::LogCopy), TextOf(source), GetMsg(Msg::LogArrow), TextOf(target),
                    OutcomeMark(done), overwritten ? GetMsg(Msg::LogOverwrite) : std::string{}});
}

/// The line of a pattern's files that were deleted, as `LogDeleteMatching` writes it.
inline std::string DeleteDirLine(const Path& folder, const std::string& pattern, bool done)
{
    return LogLine({GetMsg(Msg::LogDeleteDir), "\"", pattern, "\"", GetMsg(Msg::LogArrow),
                    TextOf(folder), OutcomeMark(done)});
}

} // namespace kestrova
