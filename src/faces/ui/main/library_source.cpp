#include "ui/main/library_source.h"

#include "library/level_list.h"
#include "ui/main/level_delegate.h"
#include "ui/widgets/qt_text.h"
#include "words/library.h"

#include <QScrollBar>
#include <utility>

namespace kestrova
{

namespace
{

/// While an operation runs the disk is its own.
constexpr int countLaterMs = 500;

} // namespace

LibrarySource::LibrarySource(Session& session, LevelModel& model, LevelView& view)
    : QObject(&view), session_(session), model_(model), view_(view)
{
    covers_.places = [this](LevelCode code) {
        return CoverPlacesOf(session_.Folders(), code, notes_.Of(code));
    };
    covers_.came = [this](LevelCode code) { model_.Renew(code); };
    view_.Delegate().picture = [this](LevelCode code) { return covers_.Cover(code); };
    model_.savegames = [this](LevelCode code) { return SavegamesOf(code); };
    countSoon_.setSingleShot(true);
    connect(&countSoon_, &QTimer::timeout, this, &LibrarySource::CountNext);
    connect(view_.verticalScrollBar(), &QScrollBar::valueChanged, this, &LibrarySource::WantSeen);
}

std::vector<LibraryLevel> LibrarySource::Levels()
{
    const Folders folders = session_.Folders();
    notes_.Follow(folders, session_.archive);
    covers_.LookAgain();
    // Another archive has other levels under the same numbers.
    if (std::exchange(countedOf_, session_.ArchivePath()) != session_.ArchivePath())
        savegames_.clear();
    counted_.clear();
    waiting_.clear();
    return LibraryLevels(folders, session_.archive,
                         [this](LevelCode code) { return notes_.Of(code); });
}

QString LibrarySource::SavegamesOf(LevelCode code)
{
    if (counted_.insert(code).second) {
        waiting_.push_back(code);
        countSoon_.start(0);
    }
    const auto known = savegames_.find(code);
    return known == savegames_.end() ? QString{} : known->second;
}

void LibrarySource::CountNext()
{
    if (waiting_.empty())
        return;
    if (session_.runningOperations > 0)
        return countSoon_.start(countLaterMs);
    const LevelCode code = waiting_.back(); // what was painted last is seen now
    waiting_.pop_back();
    const SavegameCount count = CountSavegames(session_.Folders(), session_.archive, code);
    QString words;
    if (count.live > 0 || count.archived > 0)
        words = ToQt(std::to_string(count.live) + GetMsg(Msg::InfoArchivedSavegames) +
                     std::to_string(count.archived));
    if (QString& shown = savegames_[code]; shown != words) {
        shown = words;
        model_.Renew(code);
    }
    countSoon_.start(0);
}

void LibrarySource::WantSeen()
{
    std::set<LevelCode> seen;
    for (const int row : view_.SeenRows())
        seen.insert(model_.Shown().At(row).code);
    covers_.WantOnly(seen);
}

} // namespace kestrova
