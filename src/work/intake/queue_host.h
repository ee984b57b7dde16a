#pragma once

#include "session/host.h"

/// Nobody is asked while levels are added one after the other: what a single one would tell and ask
/// is gathered, and each question finds the answer that keeps what the person made.
namespace kestrova
{

/// Shows what goes on in the queue's window, and remembers its Stop.
class QueueProgress : public ProgressScope
{
public:
    explicit QueueProgress(ProgressScope& shown) : shown_(shown) {}

    void SetLabel(const std::string& text) override { shown_.SetLabel(text); }
    void SetBar(std::uint64_t done, std::uint64_t total) override { shown_.SetBar(done, total); }
    void AllowStop() override { shown_.AllowStop(); }
    bool Step() override
    {
        stopped_ = !shown_.Step() || stopped_;
        return !stopped_;
    }
    /// Keeps the window alive during what must be done to its end.
    void StepOn() { stopped_ = !shown_.Step() || stopped_; }
    [[nodiscard]] bool Stopped() const { return stopped_; }

private:
    ProgressScope& shown_;
    bool stopped_ = false;
};

class QueueHost : public Host
{
public:
    explicit QueueHost(QueueProgress& progress) : progress_(progress) {}

    /// The next level: nothing is told or asked yet.
    void Begin();
    /// The first error of this level, or the first question, on one line.
    [[nodiscard]] std::string FirstError() const { return firstError_; }
    [[nodiscard]] std::string FirstQuestion() const { return firstQuestion_; }
    /// Everything else that was told of it, a line each.
    [[nodiscard]] const std::string& AllTold() const { return allTold_; }
    /// Somebody in front of it could have helped.
    [[nodiscard]] bool WantedAnswer() const { return wantedAnswer_; }
    /// A failure of it was that the disk is full.
    [[nodiscard]] bool LackedRoom() const { return lackedRoom_; }

    void Tell(Tone tone, const std::string& text, const std::string& reason = {},
              const std::string& details = {}) override;
    void NoteFailure(ErrorCode code) override;
    [[nodiscard]] bool CanAsk() const override;
    [[nodiscard]] bool WorksUnattended() const override { return true; }
    [[nodiscard]] bool LeftUnanswered() const override { return !firstQuestion_.empty(); }
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

private:
    void NoteQuestion(const std::string& text);

    QueueProgress& progress_;
    std::string firstError_;
    std::string firstQuestion_;
    std::string allTold_;
    mutable bool wantedAnswer_ = false;
    bool lackedRoom_ = false;
    bool tellsFailure_ = false; ///< what is told next
};

} // namespace kestrova
