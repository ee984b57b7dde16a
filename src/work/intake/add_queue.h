#pragma once

#include "intake/intake.h"
#include "intake/queue_sources.h"

/// Several levels, added one after the other without a question.
namespace kestrova
{

enum class QueueState {
    Waiting, ///< also, once the queue has ended: it did not come to it
    UnderWay,
    Added,    ///< the archive has it now
    Skipped,  ///< the archive had it before, or it was given twice
    NeedsYou, ///< something must be asked, which the window of a single level can
    Refused,  ///< it could not be added
};

struct QueueItem {
    Path source;
    QueueState state = QueueState::Waiting;
    LevelCode code = 0;  ///< of the level that was added, or that the archive had; 0: of none
    std::string name;    ///< of that level
    std::string why;     ///< why it is as it is, on one line; of an added one: what to know of it
    std::string details; ///< everything else that was told of it, a line each
};

/// How a queue came to its end.
enum class QueueEnd {
    None,      ///< it runs, or did not begin
    Done,      ///< every source had its turn
    Stopped,   ///< by the person
    NoRoom,    ///< the disk is full
    NoArchive, ///< the archive's folder is gone
    NotSaved,  ///< the list of levels could not be written
};

/// The rules of the queue; a window or the terminal shows it. Each level comes in as a single one
/// does, saved at once, so that a kill loses none that was finished. What stood in the way of one
/// does not keep the next one from its turn, unless it would stand in the way of all.
class AddQueue
{
public:
    /// Says of a level that is about to come in what else is wanted of it.
    using Prepare = std::function<void(LevelDraft& draft)>;
    /// Called when the item has got another state.
    using Changed = std::function<void(std::size_t item)>;

    explicit AddQueue(Session& session) : session_(session) {}

    /// More sources, behind the others, before it runs; those it has already are passed over.
    void Take(const std::vector<QueueSource>& sources);
    /// Works through all that wait. `progress` shows each step of each level; its Stop ends the
    /// level under way, of which nothing stays, and the queue.
    void Run(ProgressScope& progress, const Prepare& prepare, const Changed& changed);
    /// The person added it in the window of a single level.
    void NoteAdded(std::size_t item, LevelCode code);

    [[nodiscard]] const std::vector<QueueItem>& Items() const { return items_; }
    [[nodiscard]] QueueEnd End() const { return end_; }
    [[nodiscard]] std::size_t Count(QueueState state) const;
    /// Every source is in the archive: it was added, or had been there.
    [[nodiscard]] bool AllIn() const;

private:
    class Work;

    Session& session_;
    std::vector<QueueItem> items_;
    QueueEnd end_ = QueueEnd::None;
};

} // namespace kestrova
