#include "ui/main/library_source.h"

#include "ui/main/level_delegate.h"
#include "ui/widgets/qt_text.h"
#include "words/library.h"

#include <QElapsedTimer>
#include <QScrollBar>
#include <utility>

namespace kestrova
{

namespace
{

/// While an operation runs the disk is its own.
constexpr int countLaterMs = 500;
/// The window answers meanwhile.
constexpr int countAtOnceMs = 8;
/// Rows that are sorted by numbers which come do not jump all the time.
constexpr int tellLaterMs = 400;

int SumOf(const SavegameCount& count)
{
    return count.live + count.archived;
}

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
    tellSoon_.setSingleShot(true);
    connect(&tellSoon_, &QTimer::timeout, this, &LibrarySource::TellCounted);
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
    auto levels = LibraryLevels(folders, session_.archive,
                                [this](LevelCode code) { return notes_.Of(code); });
    for (LibraryLevel& level : levels)
        if (const auto known = savegames_.find(level.code); known != savegames_.end())
            level.savegames = SumOf(known->second);
    return levels;
}

LevelNote LibrarySource::NoteOf(LevelCode code)
{
    notes_.Follow(session_.Folders(), session_.archive);
    return notes_.Of(code);
}

void LibrarySource::CountAll()
{
    for (const LibraryLevel& level : model_.Shown().Levels())
        if (counted_.insert(level.code).second)
            waiting_.push_front(level.code);
    countSoon_.start(0);
}

QString LibrarySource::SavegamesOf(LevelCode code)
{
    if (counted_.insert(code).second) {
        waiting_.push_back(code);
        countSoon_.start(0);
    }
    const auto known = savegames_.find(code);
    if (known == savegames_.end() || SumOf(known->second) == 0)
        return {};
    return ToQt(std::to_string(known->second.live) + GetMsg(Msg::InfoArchivedSavegames) +
                std::to_string(known->second.archived));
}

bool LibrarySource::Count(LevelCode code)
{
    const SavegameCount count = CountSavegames(session_.Folders(), session_.archive, code);
    const auto [known, isNew] = savegames_.try_emplace(code, count);
    if (!isNew && known->second == count)
        return false;
    known->second = count;
    model_.SetSavegames(code, SumOf(count));
    model_.Renew(code);
    return true;
}

void LibrarySource::CountNext()
{
    if (session_.running.operations > 0)
        return countSoon_.start(countLaterMs);
    QElapsedTimer watch;
    watch.start();
    while (!waiting_.empty() && watch.elapsed() < countAtOnceMs) {
        const LevelCode code = waiting_.back(); // what was painted last is seen now
        waiting_.pop_back();
        if (Count(code) && !tellSoon_.isActive())
            tellSoon_.start(tellLaterMs);
    }
    if (!waiting_.empty())
        countSoon_.start(0);
}

void LibrarySource::TellCounted()
{
    if (session_.running.operations > 0)
        return tellSoon_.start(countLaterMs);
    counted();
}

void LibrarySource::WantSeen()
{
    std::set<LevelCode> seen;
    for (const int row : view_.SeenRows())
        seen.insert(model_.Shown().At(row).code);
    covers_.WantOnly(seen);
}

} // namespace kestrova
