#include "intake/queue_host.h"

#include "core/text.h"

#include <utility>

namespace kestrova
{

namespace
{

/// A step that opens a progress of its own shows it in the queue's window. It may stop only where
/// the queue may.
class QueueStepProgress : public ProgressScope
{
public:
    QueueStepProgress(QueueProgress& queue, const std::string& text) : queue_(queue)
    {
        queue_.SetLabel(text);
    }
    ~QueueStepProgress() override
    {
        queue_.SetLabel({});
        queue_.SetBar(0, 0);
    }
    QueueStepProgress(const QueueStepProgress&) = delete;
    QueueStepProgress& operator=(const QueueStepProgress&) = delete;
    void SetLabel(const std::string& text) override { queue_.SetLabel(text); }
    void SetBar(std::uint64_t done, std::uint64_t total) override { queue_.SetBar(done, total); }
    void AllowStop() override { mayStop_ = true; }
    bool Step() override
    {
        queue_.StepOn();
        return !mayStop_ || !queue_.Stopped();
    }

private:
    QueueProgress& queue_;
    bool mayStop_ = false;
};

/// A text of several lines as one.
std::string AsLine(const std::string& text)
{
    std::string line;
    for (const char c : OnOneLine(text))
        if (c != ' ' || !line.ends_with(' '))
            line += c;
    return std::string{Trim(line)};
}

} // namespace

void QueueHost::Begin()
{
    firstError_.clear();
    firstQuestion_.clear();
    allTold_.clear();
    wantedAnswer_ = false;
    lackedRoom_ = tellsFailure_ = false;
}

void QueueHost::Tell(Tone tone, const std::string& text, const std::string& reason,
                     const std::string& details)
{
    // Of a failure in two lines the second one says what is wrong; the first one names what was
    // done.
    const std::size_t second = text.find(lineBreak);
    const bool hasSecond = std::exchange(tellsFailure_, false) && second != std::string::npos &&
                           second + lineBreak.size() < text.size();
    const std::string line =
        AsLine(hasSecond ? text.substr(second + lineBreak.size()) : text + ' ' + reason);
    const bool isFirst = tone == Tone::Error && firstError_.empty();
    if (isFirst)
        firstError_ = line;
    constexpr std::size_t most = 8192; // of one level that tells without end
    if (tone == Tone::Plain || allTold_.size() > most)
        return;
    for (const std::string& each : {isFirst ? std::string{} : line,
                                    hasSecond ? AsLine(reason) : std::string{}, AsLine(details)})
        if (!each.empty())
            allTold_ += (allTold_.empty() ? "" : "\n") + each;
}

void QueueHost::NoteFailure(ErrorCode code)
{
    tellsFailure_ = true;
    lackedRoom_ = lackedRoom_ || code == ErrorCode::NoSpace;
}

bool QueueHost::CanAsk() const
{
    wantedAnswer_ = true;
    return false;
}

void QueueHost::NoteQuestion(const std::string& text)
{
    wantedAnswer_ = true;
    if (firstQuestion_.empty())
        firstQuestion_ = AsLine(text);
}

bool QueueHost::AskYesNo(const std::string& text, Consent consent)
{
    if (consent == Consent::YesKeeps)
        return true;
    NoteQuestion(text);
    return false;
}

bool QueueHost::AskOkCancel(const std::string& text)
{
    NoteQuestion(text);
    return false;
}

YesNoCancel QueueHost::AskYesNoCancel(const std::string& text)
{
    NoteQuestion(text);
    return YesNoCancel::Cancel;
}

std::optional<std::string> QueueHost::AskText(const std::string& text, const std::string&,
                                              const std::string&)
{
    NoteQuestion(text);
    return {};
}

std::optional<Path> QueueHost::ChooseFolder(const std::string& title, const Path&)
{
    NoteQuestion(title);
    return {};
}

std::optional<Path> QueueHost::ChooseOpenFile(const std::string& title, const std::string&,
                                              const Path&)
{
    NoteQuestion(title);
    return {};
}

std::optional<Path> QueueHost::ChooseSaveFile(const std::string& title, const std::string&,
                                              const Path&, const std::string&)
{
    NoteQuestion(title);
    return {};
}

std::unique_ptr<ProgressScope> QueueHost::BeginProgress(ProgressWindow, const std::string& text)
{
    return std::make_unique<QueueStepProgress>(progress_, text);
}

} // namespace kestrova
