#include "intake/source_report.h"

#include "core/look.h"
#include "core/name_list.h"
#include "core/text.h"
#include "session/telling.h"
#include "words/sources.h"

namespace kestrova
{

void NoteChangedSources(SourceReport& report)
{
    for (const auto& [file, before] : report.read) {
        const auto now = LookAt(file);
        if (!now || now->kind != platform::FileKind::File || // what is gone by now was read whole
            (now->size == before.size && now->modifiedNs == before.modifiedNs))
            continue;
        report.changed.push_back(TextOf(file.filename()));
        ++report.failed;
    }
    report.read.clear();
}

void TellReport(Host& host, const SourceReport& report)
{
    if (!report.changed.empty())
        host.Tell(Tone::Error, GetMsg(Msg::SourcesChanged, {ShownNames(report.changed)}));
    std::vector<std::string> words;
    const auto add = [&](const std::vector<std::string>& names, Message row) {
        if (!names.empty())
            words.push_back(GetMsg(row, {ShownNames(names)}));
    };
    add(report.leftOut, Msg::SameNameLeftOut);
    add(report.renamed, Msg::KeptUnderFreeName);
    add(report.notFiles, Msg::NoFilesLeftOut);
    add(report.ledOut, Msg::LedOutLeftOut);
    add(report.twice, Msg::TwiceInPackage);
    if (!words.empty())
        host.Tell(Tone::Warning, Join(words, std::string{lineBreak} + std::string{lineBreak}));
}

bool IsStop(const Status& status)
{
    return !status && status.Error().code == ErrorCode::Stopped;
}

void TellSourceFailure(Host& host, const std::string& text, const Failure& failure)
{
    if (failure.sentence.empty())
        return TellFailure(host, text, failure);
    host.NoteFailure(failure.code);
    host.Tell(Tone::Error, text + std::string{lineBreak} + failure.sentence, failure.reason,
              failure.details);
}

} // namespace kestrova
