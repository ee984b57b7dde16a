#include "app/look_commands.h"

#include "app/mark_commands.h"
#include "app/result_text.h"
#include "archive/level_folders.h"
#include "archive/library_notes.h"
#include "core/size_words.h"
#include "history/standing.h"
#include "library/level_list.h"
#include "session/telling.h"
#include "words/commands.h"
#include "words/library.h"
#include "words/mark_commands.h"

#include <nlohmann/json.hpp>

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

/// What is noted of the levels; told where it cannot be read.
LibraryNotes NotesOf(Run& run)
{
    LibraryNotes notes;
    notes.Follow(run.session.Folders(), run.session.archive);
    if (notes.Trouble())
        TellFailure(run.session.host, GetMsg(Msg::NotesUnreadable), *notes.Trouble());
    return notes;
}

std::string LevelAsLine(const LevelRecord& level, bool current)
{
    std::string line = ZeroPadded(level.levelCode, 4) + "  " + OneField(Field(level.levelName));
    if (current)
        line += Msg::CurrentLevelMark.text;
    if (level.cdNumber != 0)
        line += Shown(Msg::OnDiscMark);
    return line;
}

bool ListLevels(Run& run)
{
    const LevelCode current = CurrentLevelCode(run.session.Folders(), run.session.archive);
    if (run.json == nullptr) {
        for (const LevelRecord& level : run.session.archive.levels)
            AddLine(run, LevelAsLine(level, level.levelCode == current));
        return true;
    }
    const LibraryNotes notes = NotesOf(run);
    // One object at a time: the whole of a great archive costs more to build than to print.
    for (const LevelRecord& level : run.session.archive.levels) {
        Json object = LevelAsJson(level, level.levelCode == current);
        AddNote(object, notes.Of(level.levelCode));
        run.text += (run.text.empty() ? "[\n " : ",\n ") + JsonText(object);
    }
    run.text += "\n]\n";
    return true;
}

bool LevelInfo(Run& run)
{
    const auto facts =
        LookAtLevel(run.session.host, run.session.Folders(), run.session.archive, run.level);
    if (!facts)
        return false;
    const LevelRecord& level = facts->record;
    const LevelNote noted = NotesOf(run).Of(run.level);
    if (run.json != nullptr) {
        *run.json = LevelAsJson(level, facts->current);
        AddNote(*run.json, noted);
        (*run.json)["emails"] = TextList(level.authorEmails);
        (*run.json)["sites"] = TextList(level.authorSites);
        (*run.json)["authorNote"] = Field(level.authorNote);
        (*run.json)["moreInfo"] = Field(level.moreInfoFile);
        (*run.json)["folder"] = TextOf(facts->folder);
        (*run.json)["screenshots"] = facts->screenshots;
        (*run.json)["savegames"] = facts->liveSavegames;
        (*run.json)["archivedSavegames"] = facts->archivedSavegames;
        return true;
    }
    AddLine(run, LevelAsLine(level, facts->current));
    if (const std::string note = Field(level.levelNote); !note.empty())
        AddText(run, {}, note);
    AddLine(run, facts->info);
    if (const std::string author = Field(level.authorName); !author.empty())
        AddLine(run, GetMsg(Msg::InfoAuthor, {OneField(author)}));
    AddLine(run,
            GetMsg(Msg::InfoSizes, {SizeInWords(level.filesSize), SizeInWords(facts->extras)}));
    ShowNote(run, noted);
    return true;
}

} // namespace

std::span<const CommandRow> LookCommands()
{
    static const CommandRow rows[] = {
        {.terminal = {.word = "levels",
                      .usage = Msg::UseLevels,
                      .summary = Msg::SumLevels,
                      .json = Msg::KeysLevels},
         .needs = Needs::Archive,
         .run = ListLevels},
        {.terminal = {.word = "info",
                      .usage = Msg::UseInfo,
                      .summary = Msg::SumInfo,
                      .json = Msg::KeysInfo,
                      .leastWords = 1,
                      .mostWords = 1},
         .needs = Needs::LevelFiles,
         .run = LevelInfo},
    };
    return rows;
}

} // namespace kestrova
