#include "app/run_on_several.h"

#include "app/several_host.h"
#include "archive/level_folders.h"
#include "session/operation.h"
#include "words/several.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Has the level under way chosen; the list of the window is shown anew once, at the end.
class SeveralList : public LevelList
{
public:
    void Refresh() override {}
    void Select(LevelCode code) override { selected_ = code; }
    [[nodiscard]] std::optional<LevelCode> Selected() const override { return selected_; }
    void ShowActivity(const std::string&) override {}

private:
    std::optional<LevelCode> selected_;
};

struct Outcome {
    std::size_t done = 0;
    std::string failed; ///< a line for each of these levels
    bool stopped = false;
};

/// One run over all of them: a session of its own over the same archive, whose host asks nobody.
class SeveralWork
{
public:
    SeveralWork(const CommandRow& row, const Run& asked, ProgressScope& shown)
        : row_(row), asked_(asked), session_(asked.session), progress_(shown),
          host_(progress_, row.several.agreed), own_{host_,
                                                     session_.machine,
                                                     list_,
                                                     session_.programFolder,
                                                     session_.preferences,
                                                     session_.settings}
    {
        own_.mp3Settings = session_.mp3Settings;
        own_.archive = session_.archive;
        own_.discs = session_.discs;
        own_.running = session_.running;
    }

    Outcome Through(const std::vector<LevelCode>& levels)
    {
        Outcome outcome;
        for (std::size_t i = 0; i < levels.size(); ++i) {
            const std::string name = LevelNameOf(own_.archive, levels[i]);
            progress_.Show(GetMsg(row_.several.step, {name}), i, levels.size());
            if (!progress_.Step())
                break;
            if (One(levels[i]))
                ++outcome.done;
            else if (!progress_.Stopped())
                outcome.failed += (outcome.failed.empty() ? "" : "\n") + FailureOf(name);
        }
        outcome.stopped = progress_.Stopped();
        return outcome;
    }

private:
    bool One(LevelCode level)
    {
        host_.Begin();
        list_.Select(level);
        Run run{own_, asked_.face, asked_.arguments};
        run.level = level;
        run.place = asked_.place;
        const bool done = (row_.several.run != nullptr ? row_.several.run : row_.run)(run);
        // Whatever ends the program between two levels finds the list as it is.
        session_.archive = own_.archive;
        session_.preferences = own_.preferences;
        return done;
    }

    [[nodiscard]] std::string FailureOf(const std::string& name) const
    {
        const std::string& why = host_.Why();
        return name + (why.empty() ? "" : ": " + why);
    }

    const CommandRow& row_;
    const Run& asked_;
    Session& session_;
    SeveralProgress progress_;
    SeveralHost host_;
    SeveralList list_;
    Session own_;
};

/// The names in quotation marks, a line each; of many the first ones, and how many more there are.
std::string NamesOfLevels(const Archive& archive, const std::vector<LevelCode>& levels)
{
    constexpr std::size_t most = 12;
    std::string names;
    for (std::size_t i = 0; i < std::min(levels.size(), most); ++i)
        names += (i == 0 ? "" : std::string{lineBreak}) + "\"" +
                 OnOneLine(LevelNameOf(archive, levels[i])) + "\"";
    if (levels.size() > most)
        names += std::string{lineBreak} +
                 GetMsg(Msg::SeveralMore, {std::to_string(levels.size() - most)});
    return names;
}

bool TellOutcome(Run& run, const OnSeveral& several, std::size_t count, const Outcome& outcome)
{
    const std::string done =
        GetMsg(several.done, {std::to_string(outcome.done), std::to_string(count)});
    if (outcome.failed.empty() && !outcome.stopped) {
        run.face.Note(done);
        return true;
    }
    const std::string words =
        outcome.stopped ? done + std::string{lineBreak} + GetMsg(Msg::SeveralStopped) : done;
    run.session.host.Tell(Tone::Warning, words, {}, outcome.failed);
    return false;
}

} // namespace

bool RunOnSeveral(const CommandRow& row, Session& session, Face& face,
                  const std::vector<LevelCode>& levels)
{
    if (session.running.operations > 0 || row.several.question == Message{} || levels.empty())
        return false;
    const Operation operation{session};
    if (!session.host.AskYesNo(
            GetMsg(row.several.question, {std::to_string(levels.size()), lineBreak,
                                          NamesOfLevels(session.archive, levels)})))
        return false;
    const Arguments none;
    Run asked{session, face, none};
    if (row.several.choose != nullptr && !row.several.choose(asked))
        return false;
    Outcome outcome;
    {
        const auto progress =
            session.host.BeginProgress(ProgressWindow::Progress, GetMsg(row.several.caption));
        progress->AllowStop();
        outcome = SeveralWork{row, asked, *progress}.Through(levels);
    }
    session.list.Refresh();
    return TellOutcome(asked, row.several, levels.size(), outcome);
}

} // namespace kestrova
