#include "app/several_host.h"

#include "core/text.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// What a level's own work would show in a window of its own. It may be stopped only where that
/// window would have a Stop.
class SeveralStep : public ProgressScope
{
public:
    explicit SeveralStep(SeveralProgress& all) : all_(all) {}
    ~SeveralStep() override { all_.ShowPart(0, 0); }
    SeveralStep(const SeveralStep&) = delete;
    SeveralStep& operator=(const SeveralStep&) = delete;
    void SetLabel(const std::string&) override {}
    void SetBar(std::uint64_t done, std::uint64_t total) override { all_.ShowPart(done, total); }
    void AllowStop() override { mayStop_ = true; }
    bool Step() override { return all_.Step() || !mayStop_; }

private:
    SeveralProgress& all_;
    bool mayStop_ = false;
};

} // namespace

void SeveralProgress::Show(const std::string& level, std::size_t done, std::size_t all)
{
    shown_.SetLabel(level);
    shown_.SetBar(done, all);
}

bool SeveralProgress::Step()
{
    stopped_ = !shown_.Step() || stopped_;
    return !stopped_;
}

void SeveralHost::NoteWhy(const std::string& text)
{
    if (why_.empty())
        why_ = OnOneLine(text);
}

void SeveralHost::Tell(Tone tone, const std::string& text, const std::string& reason,
                       const std::string&)
{
    if (tone != Tone::Plain)
        NoteWhy(reason.empty() ? text : text + " " + reason);
}

bool SeveralHost::AskYesNo(const std::string& text, Consent consent)
{
    const bool isAgreed =
        consent == Consent::YesKeeps ||
        std::any_of(agreed_.begin(), agreed_.end(), [&](const Message& question) {
            return text.starts_with(question.text.substr(0, question.text.find('~')));
        });
    if (!isAgreed)
        NoteWhy(text);
    return isAgreed;
}

bool SeveralHost::AskOkCancel(const std::string& text)
{
    NoteWhy(text);
    return false;
}

YesNoCancel SeveralHost::AskYesNoCancel(const std::string& text)
{
    NoteWhy(text);
    return YesNoCancel::Cancel;
}

std::optional<std::string> SeveralHost::AskText(const std::string& text, const std::string&,
                                                const std::string&)
{
    NoteWhy(text);
    return {};
}

std::optional<Path> SeveralHost::ChooseFolder(const std::string& title, const Path&)
{
    NoteWhy(title);
    return {};
}

std::optional<Path> SeveralHost::ChooseOpenFile(const std::string& title, const std::string&,
                                                const Path&)
{
    NoteWhy(title);
    return {};
}

std::optional<Path> SeveralHost::ChooseSaveFile(const std::string& title, const std::string&,
                                                const Path&, const std::string&)
{
    NoteWhy(title);
    return {};
}

std::unique_ptr<ProgressScope> SeveralHost::BeginProgress(ProgressWindow, const std::string&)
{
    return std::make_unique<SeveralStep>(progress_);
}

} // namespace kestrova
