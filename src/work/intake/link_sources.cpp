#include "intake/link_sources.h"

#include "core/look.h"
#include "core/text.h"
#include "editor/tom_assistant.h"
#include "editor/tom_sources.h"
#include "intake/draft_files.h"
#include "intake/listed_files.h"
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
    return ShowFiles(intake);
}

/// Nobody can link what is missing: tells by which words it is done. True when nothing is missing.
bool NothingToLink(Intake& intake)
{
    const Session& session = intake.session;
    const auto lacking = TomWithoutWads(session.Folders(), SourcesAmong(intake.draft.files));
    if (!lacking)
        return TellFolderNotRead(session.host, lacking.Error());
    if (lacking->empty())
        return true;
    const std::string name = TextOf(lacking->filename());
    const bool isLeft = session.host.WorksUnattended() && !session.host.CanAsk();
    session.host.Tell(Tone::Error,
                      GetMsg(isLeft ? Msg::SourcesLeft : Msg::SourcesNotLinked, {name, name}));
    return false;
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

/// Where no assistant can be shown, the document that the draft names takes its place.
bool LinkUnseen(Intake& intake)
{
    if (intake.draft.analysed.empty())
        return NothingToLink(intake);
    return LinkByDocument(intake) && ShowFiles(intake) && CheckTomSources(intake, Checking::Silent);
}

} // namespace

bool LinkSources(Intake& intake)
{
    if (!MakeLinks(intake))
        return false;
    // Who does not go on past a warning may still have all that the compiler needs.
    if (CheckLevelFileList(intake, Checking::Interactive) ||
        CheckTomSources(intake, Checking::Silent)) {
        if (const std::string& document = intake.draft.analysed; !document.empty())
            intake.session.host.Tell(Tone::Plain,
                                     GetMsg(Msg::AnalysisNotNeeded, {Readable(document)}));
        return true;
    }
    if (!intake.windows.assistant)
        return LinkUnseen(intake);
    do {
        if (!LinkByPerson(intake) || !ShowFiles(intake))
            return false;
        intake.session.host.Tell(Tone::Plain, GetMsg(Msg::SourcesFurtherControl));
    } while (!CheckLevelFileList(intake, Checking::Interactive));
    return true;
}

} // namespace kestrova
