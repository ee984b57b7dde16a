#include "app/undo_commands.h"

#include "app/result_text.h"
#include "core/dates.h"
#include "core/file_kinds.h"
#include "core/text.h"
#include "history/undo_entries.h"
#include "levels/undo_change.h"
#include "session/telling.h"
#include "words/commands.h"
#include "words/undo.h"

#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

/// A number of an entry; nothing for another word.
std::optional<std::int32_t> NumberOf(const std::string& word)
{
    const auto number = WholeNumber<std::int32_t>(word);
    return number && *number > 0 ? number : std::nullopt;
}

/// The entry that the words name.
std::optional<Change> NamedEntry(Run& run)
{
    const std::string& word = run.arguments.words.front();
    const auto entries = ReadUndoEntries(run.session.Folders());
    if (!entries) {
        TellFailure(run.session.host, GetMsg(Msg::UndosNotRead), entries.Error());
        return {};
    }
    for (const Change& entry : *entries)
        if (entry.id == NumberOf(word))
            return entry;
    run.session.host.Tell(Tone::Error, GetMsg(Msg::UndoUnknown, {word}));
    return {};
}

/// The newest change of another archive, where this one has none.
std::optional<Change> NextElsewhere(const Folders& folders, UndoWay way)
{
    const auto entries = ReadUndoEntries(folders).ValueOr({});
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry)
        if (entry->isUndone == (way == UndoWay::Redo))
            return *entry;
    return {};
}

bool Take(Run& run, UndoWay way)
{
    Session& session = run.session;
    std::optional<Change> entry;
    if (run.FromWords() && !run.arguments.words.empty()) {
        entry = NamedEntry(run);
        if (!entry)
            return false;
    } else {
        if (const auto entries = ReadUndoEntries(session.Folders()); !entries) {
            TellFailure(session.host, GetMsg(Msg::UndosNotRead), entries.Error());
            return false;
        }
        entry = NextToUndo(session.Folders(), session.archive, way);
        if (!entry)
            entry = NextElsewhere(session.Folders(), way); // which is refused in words
    }
    if (!entry) {
        session.host.Tell(Tone::Plain,
                          GetMsg(way == UndoWay::Undo ? Msg::NothingToUndo : Msg::NothingToRedo));
        return false;
    }
    if (!UndoChange(session, *entry))
        return false;
    const std::string done =
        GetMsg(entry->isUndone ? Msg::Redone : Msg::Undone, {WhatWasDone(*entry)});
    run.face.Note(done);
    AddLine(run, done);
    return true;
}

bool Undo(Run& run)
{
    return Take(run, UndoWay::Undo);
}

bool Redo(Run& run)
{
    return Take(run, UndoWay::Redo);
}

void AddEntry(Run& run, const Change& entry)
{
    const bool here = IsOfThisArchive(run.session.Folders(), run.session.archive, entry);
    const std::string what = WhatWasDone(entry);
    const std::string made = DateText(entry.madeNs);
    const std::uint64_t bytes = BytesOf(entry);
    if (run.json != nullptr) {
        run.json->push_back({{"id", entry.id},
                             {"what", what},
                             {"code", entry.code},
                             {"name", Readable(entry.levelName)},
                             {"made", made},
                             {"size", bytes},
                             {"undone", entry.isUndone},
                             {"here", here},
                             {"folder", Readable(entry.home)}});
        return;
    }
    std::string shown = entry.isUndone ? GetMsg(Msg::UndoLineRedo, {what}) : what;
    if (!here)
        shown = GetMsg(Msg::UndoLineElsewhere, {shown});
    AddLine(run, GetMsg(Msg::UndoLine, {std::to_string(entry.id), made,
                                        FormatSize(static_cast<double>(bytes)), shown}));
}

bool ListUndoable(Run& run)
{
    if (run.json != nullptr)
        *run.json = Json::array();
    const auto entries = ReadUndoEntries(run.session.Folders());
    if (!entries) {
        TellFailure(run.session.host, GetMsg(Msg::UndosNotRead), entries.Error());
        return false;
    }
    for (auto entry = entries->rbegin(); entry != entries->rend(); ++entry)
        AddEntry(run, *entry);
    return true;
}

bool WantsList(const Run& run)
{
    return run.arguments.Has("--list");
}

bool WantsRedo(const Run& run)
{
    return run.arguments.Has("--redo");
}

std::string WrongUndo(Run& run)
{
    const auto& words = run.arguments.words;
    if (WantsList(run) && WantsRedo(run))
        return GetMsg(Msg::WrongBoth, {"--list", "--redo"});
    if (WantsList(run) && !words.empty())
        return GetMsg(Msg::WrongWordTooMany, {words.front()});
    if (run.json != nullptr && !WantsList(run))
        return GetMsg(Msg::WrongOptionHere, {"--json", "undo"});
    if (!words.empty() && !NumberOf(words.front()))
        return GetMsg(Msg::WrongWordTooMany, {words.front()});
    return {};
}

ShownNow ShownFor(const Folders& folders, const Archive& archive, UndoWay way)
{
    const auto entry = NextToUndo(folders, archive, way);
    const bool undo = way == UndoWay::Undo;
    if (!entry)
        return {GetMsg(undo ? Msg::UndoNone : Msg::RedoNone), false};
    return {GetMsg(undo ? Msg::UndoOf : Msg::RedoOf, {OnOneLine(WhatWasDone(*entry))}), true};
}

} // namespace

std::span<const CommandRow> UndoCommands()
{
    static const CommandRow rows[] = {
        {.window = {.control = "mnu_Undo",
                    .caption = Msg::UndoNone,
                    .keys = "Ctrl+Z",
                    .menu = "mnu_Level",
                    .shown =
                        [](const Session& session) {
                            return ShownFor(session.Folders(), session.archive, UndoWay::Undo);
                        }},
         .terminal = {.word = "undo",
                      .usage = Msg::UseUndo,
                      .summary = Msg::SumUndo,
                      .json = Msg::KeysUndo,
                      .mostWords = 1,
                      .options = {FlagOption("--list"), FlagOption("--redo")},
                      .wrong = WrongUndo},
         .needs = Needs::Archive,
         .touches = Touches::LevelEditor,
         .run = Undo},
        {.window = {.control = "mnu_Redo",
                    .caption = Msg::RedoNone,
                    .keys = "Ctrl+Shift+Z",
                    .menu = "mnu_Level",
                    .shown =
                        [](const Session& session) {
                            return ShownFor(session.Folders(), session.archive, UndoWay::Redo);
                        }},
         .terminal = {.word = "undo", .when = WantsRedo},
         .needs = Needs::Archive,
         .touches = Touches::LevelEditor,
         .run = Redo},
        {.terminal = {.word = "undo", .when = WantsList}, .run = ListUndoable},
    };
    return rows;
}

} // namespace kestrova
