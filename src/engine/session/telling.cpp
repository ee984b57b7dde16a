#include "session/telling.h"

#include "core/dates.h"
#include "core/size_words.h"
#include "words/common.h"
#include "words/session.h"

namespace kestrova
{

void TellFailure(Host& host, const std::string& text, const Failure& failure)
{
    const std::string& what = failure.sentence.empty() ? failure.subject : failure.sentence;
    // A text that names the file already does not name it twice.
    std::string reason = text.find(what) == std::string::npos ? what : "";
    // A whole sentence ends its line.
    if (!failure.reason.empty() && !reason.empty())
        reason += reason.ends_with('.') ? lineBreak : ": ";
    reason += failure.reason;
    host.NoteFailure(failure.code);
    host.Tell(Tone::Error, text, reason, failure.details);
}

void TellFailure(Host& host, const Failure& failure)
{
    if (failure.code == ErrorCode::Stopped && failure.sentence.empty())
        return;
    Failure rest = failure;
    rest.sentence.clear();
    TellFailure(host, failure.sentence.empty() ? failure.subject : failure.sentence, rest);
}

bool Refuse(Host& host, const std::string& words)
{
    host.Tell(Tone::Error, words);
    return false;
}

bool DoneOrTold(Host& host, const Status& status)
{
    if (!status)
        TellFailure(host, status.Error());
    return bool{status};
}

Failure FolderNotRead(Failure failure)
{
    std::string words = GetMsg(Msg::FolderNotRead, {failure.subject});
    return Saying(std::move(words), std::move(failure));
}

bool TellFolderNotRead(Host& host, const Failure& failure)
{
    TellFailure(host, GetMsg(Msg::FolderNotRead, {failure.subject}), failure);
    return false;
}

bool ConfirmReplace(Host& host, const Path& newFile, const Path& oldFile)
{
    const auto lines = [](Message head, const Path& file) {
        const platform::FileFacts facts = platform::FactsOf(ResolvePath(file));
        return GetMsg(head) + TextOf(file.filename()) + std::string{lineBreak} +
               GetMsg(Msg::ReplaceSize) + FormatSize(static_cast<double>(facts.size)) + " " +
               GetMsg(Msg::ReplaceDate) + DateText(facts.modifiedNs) + std::string{lineBreak};
    };
    return host.AskYesNo(lines(Msg::ReplaceFile, oldFile) + lines(Msg::ReplaceWithFile, newFile) +
                         std::string{lineBreak} + GetMsg(Msg::ReplaceIt));
}

} // namespace kestrova
