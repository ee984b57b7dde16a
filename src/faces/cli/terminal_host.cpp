#include "cli/terminal_host.h"

#include "app/result_text.h"
#include "platform/clock.h"
#include "platform/places.h"
#include "platform/terminal.h"
#include "words/cli.h"

#include <algorithm>

namespace kestrova
{

namespace
{

using platform::Stream;

void Say(const std::string& text)
{
    // Nobody can be told that telling failed.
    (void)platform::WriteStream(Stream::Error, text);
}

/// One line that is written over, on a terminal only.
class TerminalProgress : public ProgressScope
{
public:
    explicit TerminalProgress(std::string label)
        : label_(std::move(label)), shows_(platform::IsTerminal(Stream::Error))
    {
    }
    ~TerminalProgress() override
    {
        if (drawn_)
            Say(GetMsg(Msg::TerminalLineStart));
    }
    void SetLabel(const std::string& text) override
    {
        label_ = text;
        Draw();
    }
    void SetBar(std::uint64_t done, std::uint64_t total) override
    {
        percent_ =
            total == 0
                ? -1
                : static_cast<int>(static_cast<double>(done) * 100.0 / static_cast<double>(total));
        Draw();
    }
    void AllowStop() override { mayStop_ = true; }
    bool Step() override
    {
        Draw();
        return !(mayStop_ && platform::WasInterrupted());
    }

private:
    void Draw()
    {
        constexpr std::int64_t pause = 100'000'000;
        const std::int64_t now = platform::NowNs();
        if (!shows_ || now - last_ < pause)
            return;
        last_ = now;
        drawn_ = true;
        const std::string share = percent_ < 0 ? "" : " " + std::to_string(percent_) + "%";
        Say(GetMsg(Msg::TerminalLineStart) + ForTerminal(label_) + share);
    }

    std::string label_;
    bool shows_;
    bool drawn_ = false;
    bool mayStop_ = false;
    int percent_ = -1;
    std::int64_t last_ = 0;
};

} // namespace

TerminalHost::TerminalHost()
    : interactive_(platform::IsTerminal(Stream::Input) && platform::IsTerminal(Stream::Error))
{
}

void TerminalHost::NameUnanswered(const std::string& text)
{
    unanswered_ = true;
    Say(GetMsg(Msg::TerminalUnanswered) + ForTerminal(text) + "\n");
}

void TerminalHost::Tell(Tone tone, const std::string& text, const std::string& reason,
                        const std::string& details)
{
    toldError_ = toldError_ || tone == Tone::Error;
    std::string lines = ForTerminal(text) + "\n";
    for (const std::string& beside : {reason, details})
        if (!beside.empty())
            lines += "  " + ForTerminal(beside) + "\n";
    if (tone == Tone::Plain || told_.insert(lines).second)
        Say(lines);
}

std::optional<std::string> TerminalHost::Prompt(const std::string& text, const std::string& ending)
{
    std::string line;
    if (interactive_) {
        Say(ForTerminal(text) + ending);
        if (platform::ReadLine(line))
            return line;
        Say("\n");
    }
    NameUnanswered(text);
    return {};
}

std::optional<std::size_t> TerminalHost::AskLetter(const std::string& text, Message choices,
                                                   Message letters, std::size_t safe)
{
    // Letters of another length could be taken for another answer.
    const std::string_view shown =
        Shown(letters).size() == letters.text.size() ? Shown(letters) : letters.text;
    const std::string ending = GetMsg(choices, {shown.substr(safe, 1)});
    while (const auto line = Prompt(text, ending)) {
        const std::string answer = FoldCase(Trim(*line));
        if (answer.empty())
            return safe;
        for (const std::string_view known : {shown, letters.text})
            if (const auto place = known.find(answer.front()); place != std::string_view::npos)
                return place;
    }
    return {};
}

bool TerminalHost::AskTwo(const std::string& text, Message choices, Message letters,
                          bool standingCounts, std::size_t safe)
{
    if (standingCounts && standing_ != StandingAnswer::None) {
        const bool yes = standing_ == StandingAnswer::Yes;
        Say(ForTerminal(text) + GetMsg(yes ? Msg::TerminalAnswersYes : Msg::TerminalAnswersNo) +
            "\n");
        return yes;
    }
    return AskLetter(text, choices, letters, safe) == std::size_t{0};
}

bool TerminalHost::AskYesNo(const std::string& text, Consent consent)
{
    return AskTwo(text, Msg::TerminalYesNo, Msg::TerminalYesNoLetters, consent != Consent::Explicit,
                  consent == Consent::YesKeeps ? 0 : 1);
}

bool TerminalHost::AskOkCancel(const std::string& text)
{
    return AskTwo(text, Msg::TerminalOkCancel, Msg::TerminalOkCancelLetters, true, 1);
}

YesNoCancel TerminalHost::AskYesNoCancel(const std::string& text)
{
    constexpr std::size_t cancel = 2;
    const auto letter =
        AskLetter(text, Msg::TerminalYesNoCancel, Msg::TerminalYesNoCancelLetters, cancel);
    if (letter.value_or(cancel) == cancel)
        return YesNoCancel::Cancel;
    return *letter == 0 ? YesNoCancel::Yes : YesNoCancel::No;
}

std::optional<std::string> TerminalHost::AskText(const std::string& text,
                                                 const std::string& suggestion,
                                                 const std::string& title)
{
    auto line = Prompt(title.empty() ? text : title + "\n" + text,
                       GetMsg(Msg::TerminalSuggestion, {ForTerminal(suggestion)}));
    if (line && line->empty())
        return suggestion;
    return line;
}

std::optional<Path> TerminalHost::AskPath(const std::string& title, const Path& suggestion)
{
    auto line = Prompt(title, GetMsg(Msg::TerminalPath, {ForTerminal(TextOf(suggestion))}));
    // A single dot takes what is offered; an empty line cancels.
    if (!line || Trim(*line).empty())
        return {};
    if (Trim(*line) == ".")
        return suggestion;
    return FolderFromText(platform::AbsolutePath(*line).lexically_normal().native());
}

std::optional<Path> TerminalHost::ChooseFolder(const std::string& title, const Path& start)
{
    return AskPath(title, start);
}

std::optional<Path> TerminalHost::ChooseOpenFile(const std::string& title, const std::string&,
                                                 const Path& start)
{
    return AskPath(title, start);
}

std::optional<Path> TerminalHost::ChooseSaveFile(const std::string& title, const std::string&,
                                                 const Path& start, const std::string& suggestion)
{
    return AskPath(title, start / suggestion);
}

std::unique_ptr<ProgressScope> TerminalHost::BeginProgress(ProgressWindow, const std::string& text)
{
    return std::make_unique<TerminalProgress>(text);
}

} // namespace kestrova
