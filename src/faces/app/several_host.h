#pragma once

#include "session/host.h"
#include "words/message.h"

#include <vector>

namespace kestrova
{

/// Shows what goes on with one of several levels in the window for all of them, and remembers its
/// Stop.
class SeveralProgress
{
public:
    explicit SeveralProgress(ProgressScope& shown) : shown_(shown) {}

    void Show(const std::string& level, std::size_t done, std::size_t all);
    void ShowPart(std::uint64_t done, std::uint64_t total) { shown_.SetPart(done, total); }
    /// False once Stop was pressed.
    bool Step();
    [[nodiscard]] bool Stopped() const { return stopped_; }

private:
    ProgressScope& shown_;
    bool stopped_ = false;
};

/// Nobody is asked while several levels are worked on: what one of them would tell and ask is
/// gathered, and a question finds the answer that keeps things as they are.
class SeveralHost : public Host
{
public:
    /// `agreed`: questions, as they begin, that a Yes was given to for all levels.
    SeveralHost(SeveralProgress& progress, const std::vector<Message>& agreed)
        : progress_(progress), agreed_(agreed)
    {
    }

    /// The next level: nothing is told of it yet.
    void Begin() { why_.clear(); }
    /// The first error of this level, or its first question, on one line.
    [[nodiscard]] const std::string& Why() const { return why_; }

    void Tell(Tone tone, const std::string& text, const std::string& reason = {},
              const std::string& details = {}) override;
    bool AskYesNo(const std::string& text, Consent consent = Consent::Ordinary) override;
    bool AskOkCancel(const std::string& text) override;
    YesNoCancel AskYesNoCancel(const std::string& text) override;
    [[nodiscard]] bool CanAsk() const override { return false; }
    [[nodiscard]] bool WorksUnattended() const override { return true; }
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
    void NoteWhy(const std::string& text);

    SeveralProgress& progress_;
    const std::vector<Message>& agreed_;
    std::string why_;
};

} // namespace kestrova
