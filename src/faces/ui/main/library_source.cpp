#include "ui/main/library_source.h"

#include "library/level_list.h"
#include "ui/widgets/qt_text.h"
#include "words/library.h"

namespace kestrova
{

namespace
{

/// While an operation runs the disk is its own.
constexpr int countLaterMs = 500;

} // namespace

LibrarySource::LibrarySource(Session& session, LevelModel& model)
    : QObject(&model), session_(session), model_(model)
{
    model_.savegames = [this](LevelCode code) { return SavegamesOf(code); };
    countSoon_.setSingleShot(true);
    connect(&countSoon_, &QTimer::timeout, this, &LibrarySource::CountNext);
}

std::vector<LibraryLevel> LibrarySource::Levels()
{
    const Folders folders = session_.Folders();
    counted_.clear();
    waiting_.clear();
    return LibraryLevels(folders, session_.archive, [](LevelCode) { return LevelNote{}; });
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

} // namespace kestrova
