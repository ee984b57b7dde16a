#pragma once

#include "core/names.h"
#include "words/message.h"

#include <QString>
#include <vector>

class QMimeData;

/// Between the core's text and Qt's.
namespace kestrova
{

/// Text as a window can show it: bytes that are no UTF-8 are taken for Windows-1252, a line break
/// is a single character.
QString ToQt(std::string_view text);
std::string FromQt(const QString& text);
/// A text for a window.
QString Words(Message id, std::initializer_list<std::string_view> args = {});

/// A tool tip that shows the text letter by letter: Qt takes for markup what looks like it, and
/// shows markup that does not.
QString PlainTip(const QString& text);
/// The day of a moment, in seconds since 1970, as the desktop's language writes it.
QString DayText(std::int64_t seconds);
/// The same with the time of the day; of nanoseconds.
QString MomentText(std::int64_t ns);

/// For the desktop's choosers, which speak of paths as text.
QString PathToQt(const Path& path);
/// Without a trailing separator.
Path PathFromQt(const QString& text);
/// The local files and folders among what is dragged.
std::vector<Path> DraggedPaths(const QMimeData& data);

} // namespace kestrova
