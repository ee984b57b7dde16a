#include "intake/queue_texts.h"

#include "words/add_many.h"

namespace kestrova
{

std::string StateText(QueueState state, bool ended)
{
    switch (state) {
    case QueueState::UnderWay:
        return GetMsg(Msg::ManyStateUnderWay);
    case QueueState::Added:
        return GetMsg(Msg::ManyStateAdded);
    case QueueState::Skipped:
        return GetMsg(Msg::ManyStateSkipped);
    case QueueState::NeedsYou:
        return GetMsg(Msg::ManyStateNeedsYou);
    case QueueState::Refused:
        return GetMsg(Msg::ManyStateRefused);
    case QueueState::Waiting:
        break;
    }
    return GetMsg(ended ? Msg::ManyStateUntried : Msg::ManyStateWaiting);
}

std::string OutcomeText(const QueueItem& item)
{
    if (item.state != QueueState::Added)
        return item.why;
    const std::string level =
        GetMsg(Msg::ManyAddedAs, {std::to_string(item.code), Readable(item.name)});
    return item.why.empty() ? level : level + ". " + item.why;
}

std::string CountsText(const AddQueue& queue)
{
    const auto count = [&](QueueState state) { return std::to_string(queue.Count(state)); };
    const std::string counts =
        GetMsg(Msg::ManyCounts, {count(QueueState::Added), count(QueueState::Skipped),
                                 count(QueueState::NeedsYou), count(QueueState::Refused)});
    return queue.Count(QueueState::Waiting) == 0
               ? counts
               : GetMsg(Msg::ManyCountsLeft, {counts, count(QueueState::Waiting)});
}

std::string EndText(QueueEnd end)
{
    switch (end) {
    case QueueEnd::Stopped:
        return GetMsg(Msg::ManyEndStopped);
    case QueueEnd::NoRoom:
        return GetMsg(Msg::ManyEndNoRoom);
    case QueueEnd::NoArchive:
        return GetMsg(Msg::ManyEndNoArchive);
    case QueueEnd::NotSaved:
        return GetMsg(Msg::ManyEndNotSaved);
    case QueueEnd::None:
    case QueueEnd::Done:
        break;
    }
    return {};
}

std::string QueueText(const AddQueue& queue)
{
    std::string text = CountsText(queue) + "\n";
    if (const std::string end = EndText(queue.End()); !end.empty())
        text += end + "\n";
    for (const QueueItem& item : queue.Items()) {
        std::string line =
            GetMsg(Msg::ManyTextLine, {StateText(item.state, true), TextOf(item.source)});
        if (const std::string outcome = OutcomeText(item); !outcome.empty())
            line = GetMsg(Msg::ManyTextLine, {line, outcome});
        text += line + "\n";
    }
    return text;
}

} // namespace kestrova
