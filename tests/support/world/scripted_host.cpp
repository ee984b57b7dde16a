#include "world/scripted_host.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

ScriptedHost::~ScriptedHost()
{
    if (!answerAll_)
        for (const Answer& answer : answers_)
            ADD_FAILURE() << "nobody asked: " << answer.part;
}

void ScriptedHost::WillAsk(const std::string& part, bool yes)
{
    answers_.push_back({part, yes ? YesNoCancel::Yes : YesNoCancel::No, {}, {}, 'q'});
}

void ScriptedHost::WillAskYesNoCancel(const std::string& part, YesNoCancel answer)
{
    answers_.push_back({part, answer, {}, {}, 'q'});
}

void ScriptedHost::WillAskText(const std::string& part, std::optional<std::string> answer)
{
    answers_.push_back({part, YesNoCancel::No, std::move(answer), {}, 't'});
}

void ScriptedHost::WillChoose(const std::string& part, std::optional<Path> answer)
{
    answers_.push_back({part, YesNoCancel::No, {}, std::move(answer), 'c'});
}

bool ScriptedHost::WasTold(const std::string& part) const
{
    for (const Told& entry : told)
        if (entry.text.find(part) != std::string::npos ||
            entry.reason.find(part) != std::string::npos)
            return true;
    return false;
}

std::string ScriptedHost::AllTold() const
{
    std::string all;
    for (const Told& entry : told)
        all += entry.text + " | " + entry.reason + "\n";
    return all;
}

std::optional<ScriptedHost::Answer> ScriptedHost::Next(char kind, const std::string& text)
{
    if (!answers_.empty() && answers_.front().kind == kind &&
        text.find(answers_.front().part) != std::string::npos) {
        Answer answer = answers_.front();
        answers_.pop_front();
        return answer;
    }
    if (!answerAll_)
        ADD_FAILURE() << "unexpected question: " << text;
    return {};
}

void ScriptedHost::Tell(Tone tone, const std::string& text, const std::string& reason,
                        const std::string& details)
{
    told.push_back(
        {tone, text, reason + (reason.empty() || details.empty() ? "" : "\n") + details, details});
}

bool ScriptedHost::AskYesNo(const std::string& text, Consent)
{
    const auto answer = Next('q', text);
    return answer ? answer->answer == YesNoCancel::Yes : answerAll_.value_or(false);
}

bool ScriptedHost::AskOkCancel(const std::string& text)
{
    return AskYesNo(text);
}

YesNoCancel ScriptedHost::AskYesNoCancel(const std::string& text)
{
    const auto answer = Next('q', text);
    return answer ? answer->answer : YesNoCancel::Cancel;
}

std::optional<std::string> ScriptedHost::AskText(const std::string& text, const std::string&,
                                                 const std::string&)
{
    const auto answer = Next('t', text);
    return answer ? answer->text : std::nullopt;
}

std::optional<Path> ScriptedHost::ChooseFolder(const std::string& title, const Path& start)
{
    lastStart = start;
    const auto answer = Next('c', title);
    return answer ? answer->path : std::nullopt;
}

std::optional<Path> ScriptedHost::ChooseOpenFile(const std::string& title,
                                                 const std::string& filter, const Path& start)
{
    lastFilter = filter;
    return ChooseFolder(title, start);
}

std::optional<Path> ScriptedHost::ChooseSaveFile(const std::string& title, const std::string&,
                                                 const Path& start, const std::string&)
{
    return ChooseFolder(title, start);
}

class ScriptedProgress : public ProgressScope
{
public:
    explicit ScriptedProgress(ScriptedHost& host) : host_(host) {}
    void SetLabel(const std::string& text) override { host_.progressTexts.push_back(text); }
    void SetBar(std::uint64_t done, std::uint64_t total) override
    {
        if (total > 0) {
            EXPECT_LE(done, total);
        }
    }
    void AllowStop() override { allowed_ = true; }
    bool Step() override
    {
        return !allowed_ || host_.stopAt_ == 0 || ++host_.steps_ < host_.stopAt_;
    }

private:
    ScriptedHost& host_;
    bool allowed_ = false;
};

std::unique_ptr<ProgressScope> ScriptedHost::BeginProgress(ProgressWindow, const std::string& text)
{
    progressTexts.push_back(text);
    return std::make_unique<ScriptedProgress>(*this);
}

} // namespace kestrova::testing
