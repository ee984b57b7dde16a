#pragma once

#include "app/command.h"
#include "session/shown_list.h"
#include "words/message.h"

#include <set>

namespace kestrova
{

/// What `--yes` and `--no` say beforehand.
enum class StandingAnswer { None, Yes, No };

/// Questions and messages on the standard error, answers from the standard input, provided that
/// both are a terminal. Results are not its matter.
class TerminalHost : public Host, public Face
{
public:
    void SetStandingAnswer(StandingAnswer answer) { standing_ = answer; }
    /// A question found no answer; it was named on the standard error.
    [[nodiscard]] bool LeftUnanswered() const override { return unanswered_; }
    /// Something was told as an error.
    [[nodiscard]] bool ToldError() const override { return toldError_; }
    /// True when a yes/no question would find an answer.
    [[nodiscard]] bool CanAnswer() const override
    {
        return interactive_ || standing_ != StandingAnswer::None;
    }
    /// Names a question that will find no answer.
    void NameUnanswered(const std::string& text) override;

    void Tell(Tone tone, const std::string& text, const std::string& reason = {},
              const std::string& details = {}) override;
    [[nodiscard]] bool CanAsk() const override { return interactive_; }
    [[nodiscard]] bool WorksUnattended() const override { return true; }
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

    TerminalHost();

private:
    /// The line that the person types; no value without a person or at the end of the input.
    std::optional<std::string> Prompt(const std::string& text, const std::string& ending);
    /// The place of the letter that is typed among `letters`, those of told English or of the
    /// language that is spoken; no value when there is no answer. `safe`: the place that an empty
    /// line stands for.
    std::optional<std::size_t> AskLetter(const std::string& text, Message choices, Message letters,
                                         std::size_t safe);
    /// `safe`: the place of that letter among `letters`; the first is the answer Yes.
    bool AskTwo(const std::string& text, Message choices, Message letters, bool standingCounts,
                std::size_t safe);
    std::optional<Path> AskPath(const std::string& title, const Path& suggestion);

    StandingAnswer standing_ = StandingAnswer::None;
    std::set<std::string> told_; ///< one failure is told once, however many steps meet it
    bool interactive_ = false;
    bool unanswered_ = false;
    bool toldError_ = false;
};

/// The terminal shows no list; what the operations select is kept.
class TerminalList : public LevelList
{
public:
    void Refresh() override {}
    void Select(LevelCode code) override { selected_ = code; }
    [[nodiscard]] std::optional<LevelCode> Selected() const override { return selected_; }
    void ShowActivity(const std::string&) override {}

private:
    std::optional<LevelCode> selected_;
};

} // namespace kestrova
