#include "library/library.h"

#include "core/text.h"
#include "library/text_order.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace kestrova
{

namespace
{

/// By status, in the order of `LevelStatus`.
constexpr std::int64_t statusRank[] = {1, 0, 2, 3};

/// What is not known of a level.
constexpr std::int64_t unknown = std::numeric_limits<std::int64_t>::max();

/// What comes first has the smaller one.
std::int64_t RankOf(const LibraryLevel& level, LibraryOrder order)
{
    const LevelNote& own = level.own;
    switch (order) {
    case LibraryOrder::LastPlayed:
        return own.lastPlayed ? -*own.lastPlayed : unknown;
    case LibraryOrder::TimePlayed:
        return own.secondsPlayed > 0 ? -own.secondsPlayed : unknown;
    case LibraryOrder::Size:
        return -level.size;
    case LibraryOrder::Added:
        return own.added ? -*own.added : unknown;
    case LibraryOrder::Stars:
        return own.stars > 0 ? -own.stars : unknown;
    case LibraryOrder::Status:
        return statusRank[static_cast<std::size_t>(own.status)];
    case LibraryOrder::Savegames:
        return level.savegames >= 0 ? -level.savegames : unknown;
    case LibraryOrder::Name:
    case LibraryOrder::Author:
        break;
    }
    return 0;
}

std::vector<std::uint32_t> ByName(std::size_t count, bool turned)
{
    std::vector<std::uint32_t> sorted(count);
    std::iota(sorted.begin(), sorted.end(), 0U);
    if (turned)
        std::reverse(sorted.begin(), sorted.end());
    return sorted;
}

std::vector<std::uint32_t> ByAuthor(const std::vector<LibraryLevel>& levels, bool turned)
{
    TextOrder order;
    for (const LibraryLevel& level : levels)
        order.Add(level.author);
    auto sorted = order.Sorted();
    // The empty texts came first.
    const auto named = std::find_if(sorted.begin(), sorted.end(), [&](std::uint32_t place) {
        return !levels[place].author.empty();
    });
    const auto end = std::rotate(sorted.begin(), named, sorted.end());
    if (turned)
        std::reverse(sorted.begin(), end);
    return sorted;
}

std::vector<std::uint32_t> ByRank(const std::vector<LibraryLevel>& levels, LibraryOrder order,
                                  bool turned)
{
    std::vector<std::pair<std::int64_t, std::uint32_t>> ranks;
    ranks.reserve(levels.size());
    for (const LibraryLevel& level : levels) {
        const std::int64_t rank = RankOf(level, order);
        ranks.emplace_back(turned && rank != unknown ? -rank : rank,
                           static_cast<std::uint32_t>(ranks.size()));
    }
    std::sort(ranks.begin(), ranks.end());
    std::vector<std::uint32_t> sorted;
    sorted.reserve(ranks.size());
    for (const auto& [rank, place] : ranks)
        sorted.push_back(place);
    return sorted;
}

bool HasTag(const LibraryLevel& level, const std::string& tag)
{
    return std::any_of(level.own.tags.begin(), level.own.tags.end(),
                       [&](const std::string& one) { return one == tag || EqualNames(one, tag); });
}

} // namespace

void Library::SetLevels(std::vector<LibraryLevel> levels)
{
    TextOrder order;
    for (const LibraryLevel& level : levels)
        order.Add(level.text);
    levels_.clear();
    levels_.reserve(levels.size());
    for (const std::uint32_t place : order.Sorted())
        levels_.push_back(std::move(levels[place]));
    places_.clear();
    places_.reserve(levels_.size());
    for (const LibraryLevel& level : levels_)
        places_.emplace_back(level.code, static_cast<std::uint32_t>(places_.size()));
    std::sort(places_.begin(), places_.end());
    folded_.clear();
    Sort();
}

void Library::SetOrder(LibraryOrder order, bool turned)
{
    if (order == order_ && turned == turned_)
        return;
    order_ = order;
    turned_ = turned;
    Sort();
}

void Library::SetSavegames(LevelCode code, int count)
{
    if (const std::size_t place = PlaceOf(code); place < levels_.size())
        levels_[place].savegames = count;
}

void Library::SetFilter(LibraryFilter filter, std::string_view tag)
{
    filter_ = filter;
    tag_ = tag;
    Show();
}

bool Library::SetSearch(std::string_view text)
{
    std::string folded = FoldCase(Trim(text));
    if (folded == search_)
        return false;
    search_ = std::move(folded);
    Show();
    return true;
}

std::size_t Library::PlaceOf(LevelCode code) const
{
    const auto found = std::lower_bound(places_.begin(), places_.end(), std::pair{code, 0U});
    return found == places_.end() || found->first != code ? levels_.size() : found->second;
}

int Library::RowOf(LevelCode code) const
{
    const std::size_t place = PlaceOf(code);
    return place < rows_.size() ? rows_[place] : -1;
}

std::vector<std::string> Library::Tags() const
{
    std::vector<std::string> all;
    for (const LibraryLevel& level : levels_)
        all.insert(all.end(), level.own.tags.begin(), level.own.tags.end());
    // Most levels share theirs with others.
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    TextOrder order;
    for (const std::string& tag : all)
        order.Add(tag);
    std::vector<std::string> tags;
    for (const std::uint32_t place : order.Sorted())
        if (tags.empty() || !EqualNames(tags.back(), all[place]))
            tags.push_back(all[place]);
    return tags;
}

void Library::Sort()
{
    switch (order_) {
    case LibraryOrder::Name:
        sorted_ = ByName(levels_.size(), turned_);
        break;
    case LibraryOrder::Author:
        sorted_ = ByAuthor(levels_, turned_);
        break;
    default:
        sorted_ = ByRank(levels_, order_, turned_);
    }
    Show();
}

bool Library::Passes(const LibraryLevel& level) const
{
    if (filter_ == LibraryFilter::All)
        return true;
    if (level.code == originalCode)
        return false;
    switch (filter_) {
    case LibraryFilter::Playing:
        return level.own.status == LevelStatus::Playing;
    case LibraryFilter::New:
        return level.own.status == LevelStatus::New;
    case LibraryFilter::Finished:
        return level.own.status == LevelStatus::Finished;
    case LibraryFilter::GivenUp:
        return level.own.status == LevelStatus::GivenUp;
    case LibraryFilter::Favourites:
        return level.own.stars >= favouriteStars;
    case LibraryFilter::OnDisc:
        return level.cdNumber != 0;
    case LibraryFilter::Tag:
        return HasTag(level, tag_);
    case LibraryFilter::All:
        break;
    }
    return true;
}

void Library::FoldAll()
{
    folded_.reserve(levels_.size());
    std::string whole;
    for (const LibraryLevel& level : levels_) {
        whole = level.text;
        for (const std::string* part : {&level.author, &level.note, &level.own.ownNote})
            (whole += '\n') += *part; // which no search text has, so that none reaches across
        folded_.push_back(FoldCase(whole));
    }
}

void Library::Show()
{
    if (!search_.empty() && folded_.empty())
        FoldAll();
    shown_.clear();
    shown_.reserve(sorted_.size());
    rows_.assign(levels_.size(), -1);
    for (const std::uint32_t place : sorted_) {
        if (!Passes(levels_[place]) ||
            (!search_.empty() && folded_[place].find(search_) == std::string::npos))
            continue;
        rows_[place] = static_cast<int>(shown_.size());
        shown_.push_back(place);
    }
}

} // namespace kestrova
