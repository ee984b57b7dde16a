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
constexpr const char* orderWords[] = {"name", "author", "last-played", "time-played",
                                      "size", "added",  "stars",       "status"};
constexpr const char* filterWords[] = {"all",      "playing",    "new",     "finished",
                                       "given-up", "favourites", "on-disc", "tag"};

constexpr const char* lookKey = "Library/look";
constexpr const char* coverKey = "Library/cover";
constexpr const char* orderKey = "Library/order";
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

} // namespace

void WriteLibrarySettings(QSettings& places, const LibrarySettings& settings)
{
    Write(places, lookKey, lookWords, settings.look);
    places.setValue(QLatin1String(coverKey), settings.coverWidth);
    Write(places, orderKey, orderWords, settings.order);
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
    settings.filter = Read<LibraryFilter>(places, filterKey, filterWords);
    settings.tag = FromQt(places.value(QLatin1String(tagKey)).toString());
    return settings;
}

} // namespace kestrova
