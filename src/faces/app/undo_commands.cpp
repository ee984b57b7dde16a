#include "app/undo_commands.h"

#include "app/result_text.h"
#include "app/undoable.h"
#include "core/dates.h"
#include "core/file_kinds.h"
#include "core/size_words.h"
#include "core/text.h"
#include "editor/wad_undo.h"
#include "history/changes.h"
#include "history/undo_entries.h"
#include "levels/may_undo.h"
#include "originals/undo_import.h"
#include "session/telling.h"
#include "words/commands.h"
#include "words/undo.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

/// A number of an entry; nothing for another word.
std::optional<std::int32_t> NumberFrom(const std::string& word)
{
    const auto number = WholeNumber<std::int32_t>(word);
    return number && *number > 0 ? number : std::nullopt;
}

struct UndoRows {
    std::vector<Undoable> all; ///< newest first
    std::vector<Path> unread;
};

/// What there is to undo; nothing, told, while it cannot be read.
std::optional<UndoRows> RowsTold(Run& run)
{
    UndoRows rows;
    auto all = AllUndoable(run.session.Folders(), rows.unread);
    if (all) {
        rows.all = std::move(*all);
        return rows;
    }
    TellFailure(run.session.host, GetMsg(Msg::UndosNotRead), all.Error());
    return {};
}

/// The entry that the words name.
std::optional<Undoable> NamedEntry(Run& run)
{
    const std::string& word = run.arguments.words.front();
    const auto rows = RowsTold(run);
    if (!rows)
        return {};
    for (const Undoable& entry : rows->all)
        if (NumberOf(entry) == NumberFrom(word))
            return entry;
    const Path file = UndoEntryFile(run.session.Folders(), NumberFrom(word).value_or(0));
    const bool unread =
        std::find(rows->unread.begin(), rows->unread.end(), file) != rows->unread.end();
    run.session.host.Tell(Tone::Error, unread ? GetMsg(Msg::UndoUnread, {TextOf(file)})
                                              : GetMsg(Msg::UndoUnknown, {word}));
    return {};
}

/// The newest entry of this archive; where it has none, one of another, which is refused in words.
std::optional<Undoable> NewestEntry(Run& run, UndoWay way)
{
    const Folders folders = run.session.Folders();
    if (!RowsTold(run))
        return {};
    auto entry = NextUndoable(folders, run.session.archive, way);
    if (!entry)
        entry = NewestUndoable(folders, way);
    if (!entry)
        run.session.host.Tell(
            Tone::Plain, GetMsg(way == UndoWay::Undo ? Msg::NothingToUndo : Msg::NothingToRedo));
    return entry;
}

/// What the line says that tells of it; nothing when it was refused.
std::optional<std::string> TakeChange(Run& run, const ChangeHead& head)
{
    const auto entry = ReadUndoEntry(run.session.Folders(), head.id);
    if (!entry) {
        TellFailure(run.session.host, GetMsg(Msg::NotUndone, {WhatWasDone(head)}), entry.Error());
        return {};
    }
    const auto code = UndoChange(run.session, *entry);
    if (!code)
        return {};
    if (*code != head.code)
        return GetMsg(Msg::UndoneUnderNumber,
                      {WhatWasDone(head), std::to_string(head.code), std::to_string(*code)});
    return GetMsg(head.isUndone ? Msg::Redone : Msg::Undone, {WhatWasDone(head)});
}

std::optional<std::string> TakeImport(Run& run, const ImportNote& import)
{
    if (!UndoWads(run.session, import))
        return {};
    return GetMsg(import.isUndone ? Msg::Redone : Msg::Undone, {WhatWasDone(Undoable{import})});
}

bool TakeEntry(Run& run, const Undoable& entry)
{
    const auto* const change = std::get_if<ChangeHead>(&entry);
    const auto done =
        change != nullptr ? TakeChange(run, *change) : TakeImport(run, std::get<ImportNote>(entry));
    if (!done)
        return false;
    run.face.Note(*done);
    AddLine(run, *done);
    return true;
}

bool MayTake(const Folders& folders, const Archive& archive, const Undoable& one)
{
    if (const auto* const import = std::get_if<ImportNote>(&one))
        return bool{MayUndoImport(folders, *import)};
    const auto entry = ReadUndoEntry(folders, NumberOf(one));
    return entry && MayUndo(folders, archive, *entry);
}

/// An older one that can be taken, where a newer one was refused.
std::optional<Undoable> NextThatMay(const Session& session, UndoWay way, std::int32_t before)
{
    const Folders folders = session.Folders();
    while (auto one = NextUndoable(folders, session.archive, way, before)) {
        if (MayTake(folders, session.archive, *one))
            return one;
        before = NumberOf(*one);
    }
    return {};
}

bool Take(Run& run, UndoWay way)
{
    const bool named = run.FromWords() && !run.arguments.words.empty();
    auto entry = named ? NamedEntry(run) : NewestEntry(run, way);
    if (!entry)
        return false;
    if (TakeEntry(run, *entry))
        return true;
    const Folders folders = run.session.Folders();
    if (run.FromWords() || ChangeWaits(folders) || ImportWaits(folders))
        return false;
    entry = NextThatMay(run.session, way, NumberOf(*entry));
    return entry &&
           run.session.host.AskYesNo(
               GetMsg(way == UndoWay::Undo ? Msg::AskUndoOther : Msg::AskRedoOther,
                      {WhatWasDone(*entry)})) &&
           TakeEntry(run, *entry);
}

bool Undo(Run& run)
{
    return Take(run, UndoWay::Undo);
}

bool Redo(Run& run)
{
    return Take(run, UndoWay::Redo);
}

void AddImport(Run& run, const ImportNote& entry)
{
    const Folders folders = run.session.Folders();
    const bool here = IsOfThisFolder(folders, entry);
    const std::string what = WhatWasDone(Undoable{entry});
    const std::string made = DateText(entry.madeNs);
    const std::uint64_t bytes = BytesOfImport(folders, entry.id);
    if (run.json != nullptr) {
        run.json->push_back({{"id", entry.id},
                             {"what", what},
                             {"code", originalCode},
                             {"name", ""},
                             {"made", made},
                             {"size", bytes},
                             {"undone", entry.isUndone},
                             {"here", here},
                             {"folder", Readable(entry.folder.path)}});
        return;
    }
    std::string shown = entry.isUndone ? GetMsg(Msg::UndoLineRedo, {what}) : what;
    if (!here)
        shown = GetMsg(Msg::UndoLineOtherEditor, {shown});
    AddLine(run, GetMsg(Msg::UndoLine, {std::to_string(entry.id), made,
                                        SizeInWords(static_cast<double>(bytes)), shown}));
}

void AddEntry(Run& run, const ChangeHead& entry)
{
    const LevelIs level = WhereIsLevel(run.session.Folders(), run.session.archive, entry);
    const bool here = level == LevelIs::Here || level == LevelIs::Gone;
    const std::string what = WhatWasDone(entry);
    const std::string made = DateText(entry.madeNs);
    const std::uint64_t bytes = BytesOf(run.session.Folders(), entry);
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
    if (level != LevelIs::Here)
        shown =
            GetMsg(level == LevelIs::Gone ? Msg::UndoLineGone : Msg::UndoLineElsewhere, {shown});
    AddLine(run, GetMsg(Msg::UndoLine, {std::to_string(entry.id), made,
                                        SizeInWords(static_cast<double>(bytes)), shown}));
}

bool ListUndoable(Run& run)
{
    if (run.json != nullptr)
        *run.json = Json::array();
    const auto rows = RowsTold(run);
    if (!rows)
        return false;
    for (const Undoable& one : rows->all) {
        if (const auto* const change = std::get_if<ChangeHead>(&one))
            AddEntry(run, *change);
        else
            AddImport(run, std::get<ImportNote>(one));
    }
    for (const Path& file : rows->unread)
        run.session.host.Tell(Tone::Warning, GetMsg(Msg::UndoUnread, {TextOf(file)}));
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
    if (!words.empty() && !NumberFrom(words.front()))
        return GetMsg(Msg::WrongWordTooMany, {words.front()});
    return {};
}

ShownNow ShownFor(const Folders& folders, const Archive& archive, UndoWay way)
{
    const auto entry = NextUndoable(folders, archive, way);
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
