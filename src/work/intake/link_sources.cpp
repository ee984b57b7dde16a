#include "intake/link_sources.h"

#include "core/look.h"
#include "core/text.h"
#include "editor/tom_assistant.h"
#include "editor/tom_sources.h"
#include "intake/draft_files.h"
#include "session/telling.h"
#include "words/assistant.h"

#include <algorithm>

namespace kestrova
{

namespace
{

TomAssistant AssistantOf(Intake& intake)
{
    Session& session = intake.session;
    return TomAssistant{{session.host, session.machine, session.Folders(), ToolsOf(session)},
                        intake.draft.workFolder};
}

/// A file of the level by its name; none when it has no such file.
std::optional<Path> FileNamed(const Intake& intake, const std::string& name)
{
    const auto& files = intake.draft.files;
    const auto found = std::find_if(files.begin(), files.end(), [&](const Path& file) {
        return EqualNames(file.filename().native(), name);
    });
    return found == files.end() ? std::nullopt : std::optional{*found};
}

bool MakeLinks(Intake& intake)
{
    if (intake.draft.links.empty())
        return true;
    TomAssistant assistant = AssistantOf(intake);
    for (const WadLink& link : intake.draft.links) {
        if (!FileNamed(intake, link.tom)) {
            intake.session.host.Tell(Tone::Error, GetMsg(Msg::LinkNoSuchTom, {Readable(link.tom)}));
            return false;
        }
        if (!assistant.Link(link.tom, link.wads))
            return false;
    }
    intake.draft.links.clear();
    return RefreshFiles(intake);
}

/// Tells what of the sources is missing. True when nothing is.
bool AreSourcesThere(Intake& intake, Path& lacking)
{
    const Session& session = intake.session;
    const auto found = TomWithoutWads(session.Folders(), SourcesAmong(intake.draft.files));
    if (!found)
        return TellFolderNotRead(session.host, found.Error());
    lacking = *found;
    return lacking.empty();
}

bool LinkByDocument(Intake& intake)
{
    const std::string& name = intake.draft.analysed;
    Path document = FileNamed(intake, name).value_or(Path{name});
    const auto isThere = IsFile(document);
    if (!isThere || !*isThere) {
        intake.session.host.Tell(Tone::Error, GetMsg(Msg::AnalysedMissing, {Readable(name)}),
                                 isThere ? std::string{} : isThere.Error().reason);
        return false;
    }
    TomAssistant assistant = AssistantOf(intake);
    assistant.ShowEssential(false); // a set that the level brings counts too
    assistant.AnalyseDocument(document);
    return assistant.IsDone();
}

bool LinkByPerson(Intake& intake)
{
    TomAssistant assistant = AssistantOf(intake);
    return assistant.Open() ? intake.windows.assistant(assistant) : assistant.IsDone();
}

} // namespace

bool LinkSources(Intake& intake)
{
    Host& host = intake.session.host;
    Path lacking;
    if (!MakeLinks(intake))
        return false;
    while (!AreSourcesThere(intake, lacking)) {
        if (lacking.empty())
            return false;
        if (!intake.windows.assistant && intake.draft.analysed.empty()) {
            const std::string name = TextOf(lacking.filename());
            host.Tell(Tone::Error, GetMsg(Msg::SourcesNotLinked, {name, name}));
            return false;
        }
        const bool linked =
            intake.windows.assistant ? LinkByPerson(intake) : LinkByDocument(intake);
        if (!linked || !RefreshFiles(intake))
            return false;
        if (intake.windows.assistant)
            host.Tell(Tone::Plain, GetMsg(Msg::SourcesFurtherControl));
    }
    return true;
}

} // namespace kestrova
