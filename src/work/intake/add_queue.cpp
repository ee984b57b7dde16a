#include "intake/add_queue.h"

#include "archive/level_folders.h"
#include "intake/add_level.h"
#include "intake/draft_sources.h"
#include "intake/queue_host.h"
#include "intake/unpacked_ahead.h"
#include "packages/package_tools.h"
#include "session/cleared_progress.h"
#include "words/add_many.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

DeflateAhead WhatToDeflate(const ArchiveHeader& header)
{
    if (!header.compressLevels)
        return DeflateAhead::Nothing;
    return header.wavInMp3 ? DeflateAhead::AllButWaves : DeflateAhead::All;
}

} // namespace

/// One run of the queue: a session of its own over the same archive, whose host asks nobody.
class AddQueue::Work
{
public:
    Work(AddQueue& queue, ProgressScope& shown, const Prepare& prepare, const Changed& changed)
        : queue_(queue), session_(queue.session_), prepare_(prepare), changed_(changed),
          progress_(shown), host_(progress_), own_{host_,
                                                   session_.machine,
                                                   list_,
                                                   session_.programFolder,
                                                   session_.preferences,
                                                   session_.settings},
          ahead_(session_.machine, session_.Folders(), ToolsOf(session_),
                 WhatToDeflate(session_.archive.header))
    {
        own_.mp3Settings = session_.mp3Settings;
        own_.archive = session_.archive;
        own_.discs = session_.discs;
        own_.running.operations = session_.running.operations;
    }

    QueueEnd Run();

private:
    /// The list of levels is shown anew once, at the queue's end.
    class Unshown : public LevelList
    {
    public:
        void Refresh() override {}
        void Select(LevelCode) override {}
        [[nodiscard]] std::optional<LevelCode> Selected() const override { return {}; }
        void ShowActivity(const std::string&) override {}
    };

    QueueEnd RunOne(QueueShare& share);
    bool AddOne(const Path& source, QueueShare& share, LevelCode& code);
    bool Fill(Intake& level, const Path& source, QueueShare& share);
    /// While this level is stored, workers unpack those behind it.
    void BeginNext(const LevelDraft& draft);
    QueueEnd NoteAdded(QueueItem& item, LevelCode code, QueueShare& share);
    QueueEnd NoteTwin(QueueItem& item, std::size_t twin);
    QueueEnd NoteFailed(QueueItem& item);
    void Set(QueueItem& item, QueueState state);

    AddQueue& queue_;
    Session& session_;
    const Prepare& prepare_;
    const Changed& changed_;
    QueueProgress progress_;
    QueueHost host_;
    Unshown list_;
    Session own_;
    UnpackedAhead ahead_;
    std::size_t next_ = 0;
    bool hasRoom_ = true;    ///< for more than one unpacked package at once
    bool accepted_ = false;  ///< of the level under way: nothing but the list was left to write
    bool isProgram_ = false; ///< and that it comes as a program
};

QueueEnd AddQueue::Work::Run()
{
    progress_.AllowStop();
    progress_.SetLabel(GetMsg(Msg::ManyLooking));
    EqualTr4Index equal{own_.Folders(), own_.archive, &progress_};
    ClearProgress(progress_);
    if (!equal.State())
        return QueueEnd::NoArchive;
    QueueShare share{equal};
    QueueEnd end = QueueEnd::Done;
    for (next_ = 0; next_ < queue_.items_.size() && end == QueueEnd::Done; ++next_)
        if (queue_.items_[next_].state == QueueState::Waiting)
            end = progress_.Step() ? RunOne(share) : QueueEnd::Stopped;
    ClearProgress(progress_);
    session_.settings = own_.settings;
    session_.preferences.archivePath = own_.preferences.archivePath;
    return end;
}

QueueEnd AddQueue::Work::RunOne(QueueShare& share)
{
    QueueItem& item = queue_.items_[next_];
    Set(item, QueueState::UnderWay);
    LevelCode code = 0;
    bool added = AddOne(item.source, share, code);
    // What was unpacked for the levels behind it goes, if that is what there is no room for.
    if (!added && host_.LackedRoom() && ahead_.DropAll()) {
        hasRoom_ = false;
        added = AddOne(item.source, share, code);
    }
    item.details = host_.AllTold();
    if (added)
        return NoteAdded(item, code, share);
    if (share.twin)
        return NoteTwin(item, *share.twin);
    return NoteFailed(item);
}

bool AddQueue::Work::AddOne(const Path& source, QueueShare& share, LevelCode& code)
{
    share.files.clear();
    share.twin.reset();
    host_.Begin();
    accepted_ = isProgram_ = false;
    const bool added = AddLevel(
        own_, progress_, [&](Intake& level) { return Fill(level, source, share); }, code);
    ahead_.Drop(source);
    return added;
}

bool AddQueue::Work::Fill(Intake& level, const Path& source, QueueShare& share)
{
    LevelDraft& draft = level.draft;
    level.queue = &share;
    draft.looksOnline = !own_.settings.updateServers.empty();
    prepare_(draft);
    draft.ahead = &ahead_;
    if (hasRoom_)
        BeginNext(draft); // of the first level on
    const Status came = AddWhole(level, {source});
    if (hasRoom_)
        BeginNext(draft);
    isProgram_ = draft.exeAsked;
    if (IsStop(came) || draft.givenUp || !progress_.Step())
        return false;
    const bool all = came && !host_.LeftUnanswered();
    accepted_ = (all || draft.keepGoing) && Accept(level);
    return accepted_;
}

void AddQueue::Work::BeginNext(const LevelDraft& draft)
{
    constexpr std::size_t farthest = 16;
    const std::size_t end = std::min(queue_.items_.size(), next_ + farthest);
    for (std::size_t i = next_ + 1; i < end; ++i) {
        const QueueItem& item = queue_.items_[i];
        if (item.state == QueueState::Waiting && !ahead_.Begin(item.source, draft.Options()) &&
            IsPackage(item.source))
            break;
    }
}

QueueEnd AddQueue::Work::NoteAdded(QueueItem& item, LevelCode code, QueueShare& share)
{
    share.equal.Add(std::move(share.files));
    session_.archive.levels.push_back(own_.archive.levels.back());
    session_.archive.header = own_.archive.header;
    session_.archive.dirty = own_.archive.dirty;
    item.code = code;
    item.name = Trim(own_.archive.levels.back().levelName);
    item.why = host_.FirstError();
    Set(item, QueueState::Added);
    return QueueEnd::Done;
}

QueueEnd AddQueue::Work::NoteTwin(QueueItem& item, std::size_t twin)
{
    const LevelRecord& level = own_.archive.levels[twin];
    item.code = level.levelCode;
    item.name = Trim(level.levelName);
    item.why = GetMsg(Msg::ManyHasIt, {item.name});
    Set(item, QueueState::Skipped);
    return QueueEnd::Done;
}

QueueEnd AddQueue::Work::NoteFailed(QueueItem& item)
{
    if (progress_.Stopped()) {
        Set(item, QueueState::Waiting); // nothing of it stays
        return QueueEnd::Stopped;
    }
    const bool needsYou = host_.WantedAnswer() || isProgram_;
    item.why = isProgram_ ? GetMsg(Msg::ManyProgram) : host_.FirstQuestion();
    if (item.why.empty())
        item.why = host_.FirstError();
    if (item.why.empty())
        item.why = GetMsg(Msg::ManyNotAdded);
    Set(item, needsYou ? QueueState::NeedsYou : QueueState::Refused);
    if (!ArchiveFolderIsThere(own_.archive))
        return QueueEnd::NoArchive;
    if (host_.LackedRoom())
        return QueueEnd::NoRoom;
    return accepted_ ? QueueEnd::NotSaved : QueueEnd::Done;
}

void AddQueue::Work::Set(QueueItem& item, QueueState state)
{
    item.state = state;
    changed_(next_);
}

void AddQueue::Take(const std::vector<QueueSource>& sources)
{
    std::set<Path> known;
    for (const QueueItem& item : items_)
        known.insert(item.source);
    for (const QueueSource& source : sources) {
        if (known.contains(source.place))
            continue;
        QueueItem item;
        item.source = source.place;
        if (source.isTwin) {
            item.state = QueueState::Skipped;
            item.why = GetMsg(Msg::ManyGivenTwice);
        } else if (source.packagesBelow != 0) {
            item.state = QueueState::Skipped;
            item.why = GetMsg(Msg::ManyPackagesBelow, {std::to_string(source.packagesBelow)});
        } else if (source.holdsNone) {
            item.state = QueueState::Refused;
            item.why = GetMsg(Msg::ManyHoldsNone);
        } else if (source.isArchive) {
            item.state = QueueState::Refused;
            item.why = GetMsg(Msg::ManyIsArchive);
        }
        items_.push_back(std::move(item));
    }
}

void AddQueue::Run(ProgressScope& progress, const Prepare& prepare, const Changed& changed)
{
    {
        Work work{*this, progress, prepare, changed};
        end_ = work.Run();
    }
    session_.list.Refresh();
    const auto last = std::find_if(items_.rbegin(), items_.rend(), [](const QueueItem& item) {
        return item.state == QueueState::Added;
    });
    if (last != items_.rend())
        session_.list.Select(last->code);
}

void AddQueue::NoteAdded(std::size_t item, LevelCode code)
{
    items_[item].state = QueueState::Added;
    items_[item].code = code;
    items_[item].name = LevelNameOf(session_.archive, code);
    items_[item].why.clear();
}

std::size_t AddQueue::Count(QueueState state) const
{
    return static_cast<std::size_t>(std::count_if(
        items_.begin(), items_.end(), [&](const QueueItem& item) { return item.state == state; }));
}

bool AddQueue::AllIn() const
{
    return Count(QueueState::Added) + Count(QueueState::Skipped) == items_.size();
}

} // namespace kestrova
