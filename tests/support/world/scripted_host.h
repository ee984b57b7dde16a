#pragma once

#include "session/host.h"

#include <deque>

namespace kestrova::testing
{

/// A host that answers as a test said it would. An unexpected question fails the test, and so does,
/// at the end, an answer that nobody asked for.
class ScriptedHost : public Host
{
public:
    ~ScriptedHost() override;

    /// The next question must hold `part` of a text; it is answered so.
    void WillAsk(const std::string& part, bool yes);
    void WillAskYesNoCancel(const std::string& part, YesNoCancel answer);
    void WillAskText(const std::string& part, std::optional<std::string> answer);
    /// The next chooser must hold `part` in its title.
    void WillChoose(const std::string& part, std::optional<Path> answer);
    /// Every further question is answered so, without a failure (for runs that break anywhere).
    void AnswerAll(bool yes) { answerAll_ = yes; }
    /// Nobody sits in front of it: what `AnswerAll` says is a switch of a script.
    bool attended = true;
    [[nodiscard]] bool CanAsk() const override { return attended; }
    /// Stop is pressed at the n-th step of a progress that allows it, counted from 1.
    void StopAtStep(int step) { stopAt_ = step; }

    struct Told {
        Tone tone;
        std::string text;
        std::string reason;  ///< all that stands beside the text
        std::string details; ///< the part of it that a window folds away
    };
    std::vector<Told> told;
    /// True when something was told that holds `part`.
    [[nodiscard]] bool WasTold(const std::string& part) const;
    /// All that was told, for a failing test's message.
    [[nodiscard]] std::string AllTold() const;

    void Tell(Tone tone, const std::string& text, const std::string& reason = {},
              const std::string& details = {}) override;
    bool AskYesNo(const std::string& text, Consent consent = Consent::Ordinary) override;
    bool AskOkCancel(const std::string& text) override;
    YesNoCancel AskYesNoCancel(const std::string& text) override;
    std::optional<std::string> AskText(const std::string& text, const std::string& suggestion,
                                       const std::string& title = {}) override;
    std::optional<Path> ChooseFolder(const std::string& title, const Path& start) override;
    std::optional<Path> ChooseOpenFile(const std::string& title, const std::string& filter,
                                       const Path& start) override;
    std::optional<Path> ChooseSaveFile(const std::string& title, const std::string& filter,
                                       const Path& start, const std::string& suggestion) override;
    std::unique_ptr<ProgressScope> BeginProgress(ProgressWindow window,
                                                 const std::string& text) override;
    std::vector<std::string> progressTexts;
    Path lastStart;         ///< where the last chooser opened
    std::string lastFilter; ///< what it offered

private:
    struct Answer {
        std::string part;
        YesNoCancel answer = YesNoCancel::No;
        std::optional<std::string> text;
        std::optional<Path> path;
        char kind = 'q';
    };
    std::optional<Answer> Next(char kind, const std::string& text);
    std::deque<Answer> answers_;
    std::optional<bool> answerAll_;
    int stopAt_ = 0;
    int steps_ = 0;
    friend class ScriptedProgress;
};

} // namespace kestrova::testing
