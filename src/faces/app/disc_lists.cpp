#include "app/disc_lists.h"

#include "app/disc_drives.h"
#include "app/opening.h"
#include "app/result_text.h"
#include "burning/burn_cd.h"
#include "burning/disc_burning.h"
#include "core/text.h"
#include "drives/attached_discs.h"
#include "formats/iso_listing.h"
#include "session/telling.h"
#include "words/discs_commands.h"

#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

BurnCd EngineOf(Session& session)
{
    return {session.host, session.machine, ToolsOf(session), session.settings};
}

Json FileAsJson(const DiscEntry& file)
{
    Json json{{"path", file.path}, {"folder", file.isFolder}};
    json["size"] = file.isFolder ? Json{} : Json(file.size);
    json["date"] = file.isFolder ? Json{} : Json(DayText(file.day, file.month, file.year));
    return json;
}

} // namespace

std::string WrongListOptions(const Run& run)
{
    const bool isTree = run.arguments.Has("--tree");
    const bool isReference = run.arguments.Has("--reference");
    const auto& words = run.arguments.words;
    if (words.front() == "blank" && !IsBlankExtent(words[2]))
        return GetMsg(Msg::WrongBlankExtent);
    return isTree && isReference ? GetMsg(Msg::WrongListForm) : std::string{};
}

bool ListDisc(Run& run)
{
    if (!OpenToLook(run, Needs::Nothing))
        return false;
    BurnCd engine = EngineOf(run.session);
    engine.settings.image = PlaceFromWord(run.arguments.words[1]);
    const auto progress = run.session.host.BeginProgress(ProgressWindow::Progress, {});
    engine.settings.progress = progress.get();
    const bool isReference = run.arguments.Has("--reference") || run.json != nullptr;
    if (!engine.Command(CwCommand::ReportImage, isReference                   ? "ReferenceList"
                                                : run.arguments.Has("--tree") ? "TreeList"
                                                                              : "FlatList"))
        return DoneOrTold(run.session.host, engine.LastStatus());
    if (run.json != nullptr) {
        *run.json = Json::array();
        for (const DiscEntry& file : engine.result.files)
            run.json->push_back(FileAsJson(file));
        return true;
    }
    for (const std::string& line : Split(engine.result.text, '\n'))
        if (!TrimEnd(line).empty())
            AddLine(run, line.substr(0, line.find('\r')));
    return true;
}

bool BlankInDrive(Run& run)
{
    if (!OpenToLook(run, Needs::Nothing))
        return false;
    auto drive = DriveFromWord(run, run.arguments.words[1]);
    if (!drive)
        return false;
    Host& host = run.session.host;
    if (drive->medium != DiscMedium::Blank &&
        !host.AskYesNo(GetMsg(Msg::AskBlankDisc, {drive->label, drive->name})))
        return false;
    if (!DoneOrTold(host, DetachDisc(ToolsOf(run.session), *drive)))
        return false;
    BurnCd engine = EngineOf(run.session);
    engine.settings.device = DeviceOf(*drive);
    const auto progress = host.BeginProgress(ProgressWindow::Progress, {});
    engine.settings.progress = progress.get();
    return engine.Command(CwCommand::Blank, run.arguments.words[2]) ||
           DoneOrTold(host, engine.LastStatus());
}

} // namespace kestrova
