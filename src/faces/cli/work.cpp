#include "cli/work.h"

#include "app/start_up.h"
#include "archive/level_sizes.h"
#include "cli/command_table.h"
#include "core/look.h"
#include "editor/find_trle.h"
#include "levels/level_life.h"
#include "levels/original_level.h"
#include "platform/places.h"
#include "platform/terminal.h"
#include "session/preferences_file.h"
#include "swap/backup.h"
#include "upkeep/archive_life.h"
#include "words/app.h"
#include "words/cli.h"

#include <charconv>
#include <fmt/format.h>

namespace kestrova
{

namespace
{

bool Refuse(Run& run, Message text)
{
    run.host.Tell(Tone::Error, GetMsg(text));
    return false;
}

bool TellArchive(Run& run, Message text)
{
    run.host.Tell(Tone::Error, GetMsg(text, {TextOf(run.session.RememberedArchive())}));
    return false;
}

bool HasLevelEditor(Run& run)
{
    const Path trle = run.session.TrleFolder();
    const auto lacks = WhatTrleLacks(trle);
    if (!lacks)
        return TellFolderNotRead(run.session, lacks.Error());
    if (lacks->empty())
        return true;
    const auto backup = LookAtBackup(run.session);
    if (!backup)
        return TellFolderNotRead(run.session, backup.Error());
    const auto waves = WavesToCopy(run.session);
    if (waves && !waves->empty()) {
        run.host.Tell(Tone::Error, *waves);
        return false;
    }
    const bool mendable = FolderExists(trle) && *backup == BackupState::Present;
    return Refuse(run, mendable ? Msg::NeedsRestore : Msg::NeedsSetup);
}

bool ChooseHome(Run& run, bool make)
{
    const auto folder = ChooseProgramFolder(run.arguments.ValueOf("--home"), make);
    if (!folder) {
        TellFailure(run.session, GetMsg(Msg::NoProgramFolder), folder.Error());
        return false;
    }
    run.session.programFolder = *folder;
    return true;
}

} // namespace

bool BeginLooking(Run& run, Needs needs)
{
    bool firstRun = false;
    if (!ChooseHome(run, false) || !OpenSession(run.session, false, firstRun))
        return false;
    const auto loaded = LoadArchiveToLook(run.session);
    if (needs == Needs::LevelEditor && run.session.TrleFolder().empty())
        return Refuse(run, Msg::NeedsSetup);
    if (needs != Needs::Archive || loaded)
        return true;
    if (run.session.RememberedArchive().empty())
        return Refuse(run, Msg::NeedsArchive);
    TellFailure(run.session, GetMsg(Msg::ArchiveNotRead), loaded.Error());
    return false;
}

bool BeginWork(Run& run, Needs needs, const Whereabouts& said)
{
    Session& session = run.session;
    platform::NoteInterrupts(Msg::InterruptNoted.text);
    bool firstRun = false;
    if (!ChooseHome(run, true) || !OpenSession(session, true, firstRun, said))
        return false;
    // A run ends with its command: nobody could save the archive later.
    run.keptAutoSave = session.preferences.autoSave;
    session.preferences.autoSave = true;
    if (needs == Needs::Nothing)
        return true;
    if (!HasLevelEditor(run))
        return false;
    if (!EnsureLevel0Folder(session))
        return Refuse(run, Msg::ErrorLevel0);
    if (needs == Needs::LevelEditor)
        return true;
    const Path remembered = session.RememberedArchive();
    if (remembered.empty())
        return Refuse(run, Msg::NeedsArchive);
    if (!FileExists(remembered))
        return TellArchive(run, Msg::ArchiveGone);
    if (!ReadArchive(session, remembered))
        return false;
    if (session.level0Rebuilt)
        RefreshLevelSizes(session, originalCode);
    return true;
}

void RestoreAutoSave(Run& run)
{
    if (run.keptAutoSave)
        run.session.preferences.autoSave = *run.keptAutoSave;
    run.keptAutoSave.reset();
}

Exit EndWork(Run& run, bool done)
{
    RestoreAutoSave(run);
    // Without a word of the person's everything was written at once; what was not has been told.
    const bool written = !run.session.archive.dirty;
    return done && written && SavePreferencesNow(run.session) ? Exit::Done : Exit::Failed;
}

bool HasArchiveFolder(Run& run, std::optional<LevelCode> code)
{
    if (code == originalCode)
        return true;
    const Path folder = FolderFromText(Trim(run.session.archive.header.secondaryFolder));
    const auto isThere = IsFolder(folder);
    if (!isThere)
        return TellFolderNotRead(run.session, isThere.Error());
    if (!*isThere)
        run.host.Tell(Tone::Error, GetMsg(Msg::ArchiveFolderAway, {TextOf(folder)}));
    return *isThere;
}

std::optional<LevelCode> CodeFromWord(Run& run, const std::string& word)
{
    LevelCode code = -1;
    const auto [end, failure] = std::from_chars(word.data(), word.data() + word.size(), code);
    if (failure == std::errc{} && end == word.data() + word.size() && code >= 0)
        return code;
    WrongUse(run.arguments.command, GetMsg(Msg::WrongCode, {word}));
    return {};
}

Path PlaceFromWord(const std::string& word)
{
    return FolderFromText(platform::AbsolutePath(word).lexically_normal().native());
}

Exit WrongUse(std::string_view command, const std::string& what)
{
    std::string words = ForTerminal(what) + "\n";
    if (const CommandRow* row = FindCommand(command))
        words += GetMsg(Msg::UsageLine, {row->usage.text}) + "\n";
    else
        words += GetMsg(Msg::UsageHint) + "\n";
    (void)platform::WriteStream(platform::Stream::Error, words);
    return Exit::WrongUse;
}

std::string JsonText(const Json& value, int indent)
{
    constexpr std::string_view escape = "\\u{:04x}"; // not shown
    const std::string text = value.dump(indent, ' ', false, Json::error_handler_t::replace);
    std::string safe;
    safe.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        const bool upperControl = byte == 0xC2 && next < 0xA0;
        if (upperControl)
            ++i;
        if (upperControl || byte == 0x7F)
            safe += fmt::format(escape, static_cast<unsigned char>(text[i]));
        else
            safe += text[i];
    }
    return safe;
}

std::string OneField(std::string_view text)
{
    return OnOneLine(ForTerminal(text));
}

void AddLine(Run& run, std::string_view line)
{
    run.text += ReplaceAll(ForTerminal(line), "\n", " ");
    run.text += '\n';
}

void AddText(Run& run, const std::string& head, std::string_view text)
{
    const std::vector<std::string> lines = Split(ForTerminal(text), '\n');
    for (std::size_t i = 0; i < lines.size(); ++i)
        AddLine(run, (i == 0 ? head : "  ") + lines[i]);
}

} // namespace kestrova
