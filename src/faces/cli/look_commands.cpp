#include "cli/look_commands.h"

#include "app/doctor.h"
#include "archive/level_folders.h"
#include "cli/work.h"
#include "history/standing.h"
#include "library/level_list.h"
#include "words/cli.h"
#include "words/library.h"
#include "words/swap.h"

namespace kestrova
{

namespace
{

Json TextList(std::string_view joined)
{
    Json list = Json::array();
    for (const std::string& part : Split(Trim(joined), '\0'))
        if (!Trim(part).empty())
            list.push_back(Readable(Trim(part)));
    return list;
}

std::string Field(std::string_view text)
{
    return Readable(Trim(text));
}

Json LevelAsJson(const LevelRecord& level, bool current)
{
    return {{"code", level.levelCode},        {"name", Field(level.levelName)},
            {"note", Field(level.levelNote)}, {"author", Field(level.authorName)},
            {"cd", level.cdNumber},           {"filesSize", level.filesSize},
            {"extrasSize", level.extrasSize}, {"current", current}};
}

std::string LevelAsLine(const LevelRecord& level, bool current)
{
    std::string line = ZeroPadded(level.levelCode, 4) + "  " + OneField(Field(level.levelName));
    if (current)
        line += Msg::CurrentLevelMark.text;
    return line;
}

} // namespace

Exit RunLevels(Run& run)
{
    if (!BeginLooking(run, Needs::Archive))
        return Exit::Failed;
    const LevelCode current = CurrentLevelCode(run.session);
    if (run.json == nullptr) {
        for (const LevelRecord& level : run.session.archive.levels)
            AddLine(run, LevelAsLine(level, level.levelCode == current));
        return Exit::Done;
    }
    // One object at a time: the whole of a great archive costs more to build than to print.
    for (const LevelRecord& level : run.session.archive.levels)
        run.text += (run.text.empty() ? "[\n " : ",\n ") +
                    JsonText(LevelAsJson(level, level.levelCode == current));
    run.text += "\n]\n";
    return Exit::Done;
}

Exit RunInfo(Run& run)
{
    const auto code = CodeFromWord(run, run.arguments.words.front());
    if (!code)
        return Exit::WrongUse;
    if (!BeginLooking(run, Needs::Archive))
        return Exit::Failed;
    if (FindLevel(run.session, *code) < 0) {
        run.host.Tell(Tone::Error, GetMsg(Msg::UnknownLevelCode, {std::to_string(*code)}));
        return Exit::Failed;
    }
    if (!HasArchiveFolder(run, *code))
        return Exit::Failed;
    const auto facts = LookAtLevel(run.session, *code);
    if (!facts)
        return Exit::Failed;
    const LevelRecord& level = facts->record;
    if (run.json != nullptr) {
        *run.json = LevelAsJson(level, facts->current);
        (*run.json)["emails"] = TextList(level.authorEmails);
        (*run.json)["sites"] = TextList(level.authorSites);
        (*run.json)["authorNote"] = Field(level.authorNote);
        (*run.json)["moreInfo"] = Field(level.moreInfoFile);
        (*run.json)["folder"] = TextOf(facts->folder);
        (*run.json)["screenshots"] = facts->screenshots;
        (*run.json)["savegames"] = facts->liveSavegames;
        (*run.json)["archivedSavegames"] = facts->archivedSavegames;
        return Exit::Done;
    }
    AddLine(run, LevelAsLine(level, facts->current));
    if (const std::string note = Field(level.levelNote); !note.empty())
        AddText(run, {}, note);
    AddLine(run, facts->info);
    if (const std::string author = Field(level.authorName); !author.empty())
        AddLine(run, GetMsg(Msg::InfoAuthor, {OneField(author)}));
    AddLine(run,
            GetMsg(Msg::InfoSizes, {FormatSize(level.filesSize), FormatSize(level.extrasSize)}));
    return Exit::Done;
}

Exit RunCurrent(Run& run)
{
    if (!BeginLooking(run, Needs::LevelEditor))
        return Exit::Failed;
    if (!TellUnlessKnown(run.session))
        return Exit::Failed;
    const LevelPlace level = StandingLevel(run.session);
    const LevelCode code = level.code;
    if (CurrentLevelCode(run.session) == foreignLevel) {
        const std::string folder = TextOf(level.home);
        if (run.json != nullptr)
            *run.json = {{"code", code}, {"name", ""}, {"other-archive", folder}};
        else
            AddLine(run, std::to_string(code) + "\t" + GetMsg(Msg::OtherArchivesLevel, {folder}));
        return Exit::Done;
    }
    const std::string name = Field(LevelNameOf(run.session, code));
    if (run.json != nullptr)
        *run.json = {{"code", code}, {"name", name}};
    else
        AddLine(run, std::to_string(code) + "\t" + OneField(name));
    return Exit::Done;
}

Exit RunDoctor(Run& run)
{
    if (!BeginLooking(run, Needs::Nothing))
        return Exit::Failed;
    if (run.json != nullptr)
        *run.json = Json::array();
    for (const Finding& finding : Examine(run.session)) {
        if (run.json != nullptr) {
            run.json->push_back({{"name", Readable(finding.name)},
                                 {"fine", finding.fine},
                                 {"state", Readable(finding.state)},
                                 {"remedy", Readable(finding.remedy)}});
            continue;
        }
        AddLine(run, GetMsg(finding.fine ? Msg::DoctorFineLine : Msg::DoctorBadLine,
                            {finding.name, finding.state}));
        if (!finding.fine)
            AddLine(run, GetMsg(Msg::DoctorRemedyLine, {finding.remedy}));
    }
    return Exit::Done;
}

} // namespace kestrova
