#pragma once

#include "core/files.h"
#include "words/message.h"

#include <memory>
#include <optional>
#include <string>

/// Whatever asks, tells or shows. Plain types only, so that windows, the terminal and the tests can
/// each be one.
namespace kestrova
{

enum class Tone { Plain, Warning, Error };
enum class YesNoCancel { Yes, No, Cancel };

/// What a question's Yes is. Enter, and closing the question, mean the answer that keeps what the
/// person made, which is No unless Yes keeps it.
enum class Consent {
    Ordinary,
    Explicit, ///< nobody but the person may give it, least of all a switch that answers everything
    YesKeeps  ///< No would drop what the person made
};

/// Which of the small windows a piece of long work shows.
enum class ProgressWindow { Progress, Wait, Zip, Audio, Download };

/// A shown progress; it disappears at the end of its life.
class ProgressScope
{
public:
    virtual ~ProgressScope() = default;
    virtual void SetLabel(const std::string& text) = 0;
    /// The bar shows `done` of `total`; a total of 0 is an empty bar.
    virtual void SetBar(std::uint64_t done, std::uint64_t total) = 0;
    /// A second bar, of the step under way, where the window has one.
    virtual void SetPart(std::uint64_t done, std::uint64_t total)
    {
        (void)done;
        (void)total;
    }
    /// Shows a Stop button.
    virtual void AllowStop() = 0;
    /// Keeps the window alive; to be called at least every 50 ms. False once Stop was pressed.
    virtual bool Step() = 0;
};

class Host
{
public:
    virtual ~Host() = default;

    /// `reason`: the system's own words, shown smaller beside the text. `details`: a tool's last
    /// lines or a list, which a window folds away.
    virtual void Tell(Tone tone, const std::string& text, const std::string& reason = {},
                      const std::string& details = {}) = 0;
    /// What is told next is a failure of that kind.
    virtual void NoteFailure(ErrorCode code) { (void)code; }
    virtual bool AskYesNo(const std::string& text, Consent consent = Consent::Ordinary) = 0;
    virtual bool AskOkCancel(const std::string& text) = 0;
    /// The same of what the person has just pressed the very button for, and which changes nothing
    /// that was there: Enter means Ok.
    virtual bool AskToGoOn(const std::string& text) { return AskOkCancel(text); }
    virtual YesNoCancel AskYesNoCancel(const std::string& text) = 0;
    /// One of two ways, or neither; `safe`: what Enter means. Closing the question means neither.
    virtual YesNoCancel AskEither(const std::string& text, Message first, Message second,
                                  YesNoCancel safe)
    {
        (void)first;
        (void)second;
        (void)safe;
        return AskYesNoCancel(text);
    }
    /// False where nobody can answer, so that a question that needs one must not be repeated.
    [[nodiscard]] virtual bool CanAsk() const { return true; }
    /// Scripts work through this host. Stop ends the file under way too, and what cannot be
    /// converted is offered to stay as it is before any question about a loss.
    [[nodiscard]] virtual bool WorksUnattended() const { return false; }
    /// True once a question stayed without any answer: the No that it gave was nobody's wish.
    [[nodiscard]] virtual bool LeftUnanswered() const { return false; }
    /// No value when the person cancelled. `title`: of the question's window; empty: the program's.
    virtual std::optional<std::string> AskText(const std::string& text,
                                               const std::string& suggestion,
                                               const std::string& title = {}) = 0;
    /// Folders come back without a trailing separator; no value when the person cancelled.
    virtual std::optional<Path> ChooseFolder(const std::string& title, const Path& start) = 0;
    /// `filter`: pairs of description and pattern joined by `|`.
    virtual std::optional<Path> ChooseOpenFile(const std::string& title, const std::string& filter,
                                               const Path& start) = 0;
    /// The same for several at once; none when the person cancelled. Where only one can be chosen
    /// it is that one.
    virtual std::vector<Path> ChooseOpenFiles(const std::string& title, const std::string& filter,
                                              const Path& start)
    {
        const auto chosen = ChooseOpenFile(title, filter, start);
        return chosen ? std::vector<Path>{*chosen} : std::vector<Path>{};
    }
    virtual std::optional<Path> ChooseSaveFile(const std::string& title, const std::string& filter,
                                               const Path& start,
                                               const std::string& suggestion) = 0;
    virtual std::unique_ptr<ProgressScope> BeginProgress(ProgressWindow window,
                                                         const std::string& text) = 0;
};

} // namespace kestrova
