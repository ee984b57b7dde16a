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

/// The text is that question: it begins as it does, or has its first words behind what a value at
/// its beginning says.
bool Asks(std::string_view text, std::string_view question)
{
    const std::size_t marker = question.find('~');
    if (marker > 0)
        return text.starts_with(question.substr(0, marker));
    const std::string_view behind = question.substr(std::min(std::size_t{2}, question.size()));
    const std::string_view words = behind.substr(0, behind.find('~'));
    return !words.empty() && text.find(words) != std::string_view::npos;
}

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
    const bool isAgreed = consent == Consent::YesKeeps ||
                          std::any_of(agreed_.begin(), agreed_.end(), [&](const Message& question) {
                              return Asks(text, Shown(question));
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
