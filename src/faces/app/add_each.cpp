#include "app/add_each.h"

#include "app/result_text.h"
#include "intake/queue_texts.h"
#include "words/add_many.h"

#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

constexpr std::pair<QueueState, const char*> keys[] = {{QueueState::Added, "added"},
                                                       {QueueState::Skipped, "skipped"},
                                                       {QueueState::NeedsYou, "needs"},
                                                       {QueueState::Refused, "refused"},
                                                       {QueueState::Waiting, "untried"}};

Json JsonOf(const QueueItem& item)
{
    Json json = {{"source", TextOf(item.source)}};
    if (item.code != 0) {
        json["code"] = item.code;
        json["name"] = Readable(item.name);
    }
    if (!item.why.empty())
        json["why"] = Readable(item.why);
    return json;
}

std::string LineOf(const char* key, const QueueItem& item)
{
    const std::string code = item.code == 0 ? "" : std::to_string(item.code);
    std::string line = key;
    for (const std::string& field :
         {code, OneField(Readable(item.name)), OneField(TextOf(item.source))})
        line += '\t' + field;
    return line;
}

void ShowResult(Run& run, const AddQueue& queue)
{
    if (run.json != nullptr)
        *run.json = Json::object();
    for (const auto& [state, key] : keys) {
        Json rows = Json::array();
        for (const QueueItem& item : queue.Items()) {
            if (item.state != state)
                continue;
            if (run.json != nullptr)
                rows.push_back(JsonOf(item));
            else
                AddLine(run, LineOf(key, item));
        }
        if (run.json != nullptr)
            (*run.json)[key] = std::move(rows);
    }
}

/// What became of an item, as soon as that is known.
void SayOutcome(Host& host, const AddQueue& queue, std::size_t index)
{
    const QueueItem& item = queue.Items()[index];
    if (item.state == QueueState::UnderWay || item.state == QueueState::Waiting)
        return;
    const std::string state = StateText(item.state, true);
    const std::string outcome = OutcomeText(item);
    const bool tellsMore = item.state != QueueState::Skipped && item.details != item.why;
    host.Tell(Tone::Plain,
              GetMsg(Msg::ManyLine,
                     {std::to_string(index + 1), std::to_string(queue.Items().size()),
                      TextOf(item.source.filename()),
                      outcome.empty() ? state : GetMsg(Msg::ManyTextLine, {state, outcome})}),
              {}, tellsMore ? item.details : std::string{});
}

} // namespace

bool AddEach(Run& run, const AddQueue::Prepare& prepare)
{
    Host& host = run.session.host;
    std::vector<Path> given;
    for (const std::string& word : run.arguments.words)
        given.push_back(PlaceFromWord(word));
    const auto progress = host.BeginProgress(ProgressWindow::Progress, {});
    AddQueue queue{run.session};
    queue.Take(SourcesOfLevels(given, [&] { return progress->Step(); }));
    const auto say = [&](std::size_t index) { SayOutcome(host, queue, index); };
    for (std::size_t i = 0; i < queue.Items().size(); ++i)
        say(i); // those that have no turn
    queue.Run(*progress, prepare, say);
    if (const std::string end = EndText(queue.End()); !end.empty())
        host.Tell(Tone::Error, end);
    host.Tell(Tone::Plain, CountsText(queue));
    ShowResult(run, queue);
    return queue.AllIn();
}

} // namespace kestrova
