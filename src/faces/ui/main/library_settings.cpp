#include "ui/main/library_settings.h"

#include "ui/widgets/qt_text.h"

#include <QSettings>

#include <algorithm>

namespace kestrova
{

namespace
{

/// The words of the file, in the order of the values.
constexpr const char* lookWords[] = {"rows", "covers"};
constexpr const char* orderWords[] = {"name",  "author", "last-played", "time-played", "size",
                                      "added", "stars",  "status",      "savegames"};
constexpr const char* filterWords[] = {"all",      "playing",    "new",     "finished",
                                       "given-up", "favourites", "on-disc", "tag"};

constexpr const char* lookKey = "Library/look";
constexpr const char* coverKey = "Library/cover";
constexpr const char* orderKey = "Library/order";
/// In the order of the columns.
constexpr const char* columnWords[] = {"name",      "author", "last-played", "time-played",
                                       "savegames", "size",   "added"};
static_assert(std::size(columnWords) == LevelModel::ColumnCount);

constexpr const char* turnedKey = "Library/turned";
constexpr const char* columnsKey = "Library/columns";
constexpr const char* filterKey = "Library/filter";
constexpr const char* tagKey = "Library/tag";

template <class Value, std::size_t count>
void Write(QSettings& places, const char* key, const char* const (&words)[count], Value value)
{
    places.setValue(QLatin1String(key),
                    QString::fromLatin1(words[static_cast<std::size_t>(value)]));
}

template <class Value, std::size_t count>
Value Read(const QSettings& places, const char* key, const char* const (&words)[count])
{
    const QString word = places.value(QLatin1String(key)).toString();
    const auto* const found =
        std::find_if(std::begin(words), std::end(words),
                     [&](const char* one) { return word == QLatin1String(one); });
    return found == std::end(words) ? Value{} : static_cast<Value>(found - std::begin(words));
}

/// `-size:90`: hidden, and 90 wide when it is not.
QStringList TextsOf(const ChosenColumns& columns)
{
    QStringList texts;
    for (const ChosenColumn& column : columns)
        texts.append((column.hidden ? QStringLiteral("-") : QString()) +
                     QLatin1String(columnWords[column.column]) +
                     (column.width > 0 ? QStringLiteral(":%1").arg(column.width) : QString()));
    return texts;
}

ChosenColumns ColumnsFrom(const QStringList& texts)
{
    ChosenColumns columns;
    for (const QString& text : texts) {
        const bool hidden = text.startsWith(QLatin1Char('-'));
        const QString word = text.section(QLatin1Char(':'), 0, 0).mid(hidden ? 1 : 0);
        const auto* const known =
            std::find_if(std::begin(columnWords), std::end(columnWords),
                         [&](const char* one) { return word == QLatin1String(one); });
        if (known != std::end(columnWords))
            columns.push_back({static_cast<int>(known - std::begin(columnWords)),
                               text.section(QLatin1Char(':'), 1).toInt(), hidden});
    }
    return columns;
}

} // namespace

void WriteLibrarySettings(QSettings& places, const LibrarySettings& settings)
{
    Write(places, lookKey, lookWords, settings.look);
    places.setValue(QLatin1String(coverKey), settings.coverWidth);
    Write(places, orderKey, orderWords, settings.order);
    places.setValue(QLatin1String(turnedKey), settings.turned);
    places.setValue(QLatin1String(columnsKey), TextsOf(settings.columns));
    Write(places, filterKey, filterWords, settings.filter);
    places.setValue(QLatin1String(tagKey), ToQt(settings.tag));
}

LibrarySettings ReadLibrarySettings(const QSettings& places)
{
    LibrarySettings settings;
    settings.look = Read<LibraryLook>(places, lookKey, lookWords);
    settings.coverWidth = std::clamp(places.value(QLatin1String(coverKey), usualCover).toInt(),
                                     smallestCover, largestCover);
    settings.order = Read<LibraryOrder>(places, orderKey, orderWords);
    settings.turned = places.value(QLatin1String(turnedKey)).toBool();
    settings.columns = ColumnsFrom(places.value(QLatin1String(columnsKey)).toStringList());
    settings.filter = Read<LibraryFilter>(places, filterKey, filterWords);
    settings.tag = FromQt(places.value(QLatin1String(tagKey)).toString());
    return settings;
}

} // namespace kestrova
