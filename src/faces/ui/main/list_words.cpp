#include "ui/main/list_words.h"

#include "ui/widgets/qt_text.h"
#include "words/library_window.h"

namespace kestrova
{

QString WordsForEmptyList(const Archive& archive, const Library& shown, const QString& search,
                          const QString& filter)
{
    if (!archive.Loaded())
        return Words(Msg::EmptyNoArchive, {lineBreak});
    const bool all = shown.Filter() == LibraryFilter::All;
    if (shown.Count() == 0 && shown.IsSearched())
        return all ? Words(Msg::EmptyNoHit, {FromQt(search.trimmed()), lineBreak})
                   : Words(Msg::EmptyFilteredHit,
                           {FromQt(filter), FromQt(search.trimmed()), lineBreak});
    if (shown.Count() == 0)
        return shown.Filter() == LibraryFilter::Favourites
                   ? Words(Msg::EmptyFavourites, {lineBreak})
                   : Words(Msg::EmptyFiltered, {FromQt(filter), lineBreak});
    if (archive.levels.size() == 1)
        return Words(Msg::EmptyNoLevels, {lineBreak});
    return {};
}

QString WordsOfCounts(const Library& shown, std::size_t chosen)
{
    const auto all = shown.Levels().size();
    const auto rows = static_cast<std::size_t>(shown.Count());
    if (chosen > 1)
        return Words(Msg::CountChosen, {std::to_string(chosen), std::to_string(rows)});
    if (all != rows)
        return Words(Msg::CountMatches, {std::to_string(rows), std::to_string(all)});
    return all == 1 ? Words(Msg::CountOneLevel) : Words(Msg::CountLevels, {std::to_string(all)});
}

} // namespace kestrova
