#pragma once

#include "library/level_covers.h"
#include "ui/widgets/cover_shelf.h"

#include <QCache>
#include <QImage>
#include <QObject>
#include <QPixmap>
#include <QThreadPool>

#include <deque>
#include <functional>
#include <map>
#include <set>

namespace kestrova
{

/// The pictures that stand for levels, small: found and decoded on workers, in memory as far as its
/// bound goes, and kept in the desktop's cache between runs.
class CoverCache : public QObject
{
public:
    /// The longer side of every cover at most.
    static constexpr int side = 256;

    /// `shelf`: the folder in which covers are kept; empty: none.
    explicit CoverCache(const Path& shelf = UsualShelf(), QObject* parent = nullptr);
    ~CoverCache() override;

    /// Where the pictures of a level may lie; called in the thread of the windows.
    std::function<CoverPlaces(LevelCode)> places = [](LevelCode) { return CoverPlaces{}; };
    /// The cover of that level is there now, or is another one, or is gone.
    std::function<void(LevelCode)> came = [](LevelCode) {};

    /// The level's cover, at once; null when it has none, and while that is not known: then it is
    /// looked for, and `came` tells of it. To be called whenever the level is painted.
    QPixmap Cover(LevelCode code);
    /// These are seen now: nobody waits for others, which are asked for again once they are.
    void WantOnly(const std::set<LevelCode>& seen);
    /// Files may have changed: each cover stays until it is asked for, and is looked at anew then.
    /// One whose places are other ones, as those of another archive, is not shown any more.
    void LookAgain();
    void LookAgain(LevelCode code);

    /// `$XDG_CACHE_HOME/kestrova/covers`.
    static Path UsualShelf();

private:
    /// What a cover was made of.
    struct Source {
        Path file; ///< empty: there is no picture
        platform::FileFacts facts;
    };
    struct Entry {
        CoverPlaces places;
        Source source;
        QPixmap cover;
    };
    struct Found {
        LevelCode code;
        CoverPlaces places;
        Source source;
        std::optional<QImage> cover; ///< no value: it is the one that is there
    };
    static Found Look(CoverShelf& shelf, Found found);
    void Begin();
    void Take(const Found& found);

    CoverShelf shelf_;
    QCache<LevelCode, Entry> entries_;
    std::map<LevelCode, unsigned> checked_; ///< in which round
    unsigned round_ = 1;
    std::deque<LevelCode> waiting_;
    std::set<LevelCode> wanted_; ///< waiting or under way
    int working_ = 0;
    QThreadPool pool_; ///< the last member: its threads end before anything else does
};

} // namespace kestrova
