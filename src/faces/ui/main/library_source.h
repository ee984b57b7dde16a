#pragma once

#include "archive/library_notes.h"
#include "library/level_list.h"
#include "session/session.h"
#include "ui/main/level_view.h"
#include "ui/widgets/cover_cache.h"

#include <QTimer>

#include <deque>
#include <map>
#include <set>

namespace kestrova
{

/// Where the list gets what it shows: levels from the archive with their notes, and for the rows
/// that are seen their covers and how many savegames they have. Nothing that is painted waits.
class LibrarySource : public QObject
{
public:
    LibrarySource(Session& session, LevelModel& model, LevelView& view);

    /// As things stand now; what is seen is looked at anew.
    std::vector<LibraryLevel> Levels();
    /// What is noted of a level, as it stands now.
    LevelNote NoteOf(LevelCode code);
    /// The savegames of all levels are counted, of those that are seen first: the order is theirs.
    void CountAll();

    /// Other numbers of savegames have come by now.
    std::function<void()> counted = [] {};

private:
    QString SavegamesOf(LevelCode code);
    void CountNext();
    bool Count(LevelCode code);
    void TellCounted();
    void WantSeen();

    Session& session_;
    LevelModel& model_;
    LevelView& view_;
    LibraryNotes notes_;
    CoverCache covers_;
    std::map<LevelCode, SavegameCount> savegames_; ///< as they were counted last
    Path countedOf_;                               ///< the archive that `savegames_` tells of
    std::set<LevelCode> counted_;                  ///< since the last refresh, or about to be
    std::deque<LevelCode> waiting_;
    QTimer countSoon_;
    QTimer tellSoon_; ///< runs while numbers are different that nobody was told of
};

} // namespace kestrova
