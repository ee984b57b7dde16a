#pragma once

#include "cli/command.h"
#include "swap/whereabouts.h"

#include <nlohmann/json.hpp>

/// What the commands share: how they begin, how they end, how they read a word.
namespace kestrova
{

enum class Needs { Nothing, LevelEditor, Archive };

/// Preferences, settings and the archive as they stand in their files; nothing is written. False,
/// with words, when what is needed is not there.
bool BeginLooking(Run& run, Needs needs);
/// The same for a command that changes things: with the locks, after interrupted work was mended,
/// the archive loaded with all its questions. From here on Ctrl-C waits.
/// `said`: of folders that interrupted work waits for.
bool BeginWork(Run& run, Needs needs, const Whereabouts& said = {});
/// Writes preferences and settings, provided that the work was done.
Exit EndWork(Run& run, bool done);
/// Ends the saving after every change before a run's end.
void RestoreAutoSave(Run& run);

/// False, with words, while the archive's folder is away: what it holds is not nothing then. The
/// original configuration, which lies elsewhere, needs none.
bool HasArchiveFolder(Run& run, std::optional<LevelCode> code = {});

/// A level's number; no value, with words, when the word is none.
std::optional<LevelCode> CodeFromWord(Run& run, const std::string& word);
/// Absolute and tidied; relative words count from the working folder.
Path PlaceFromWord(const std::string& word);
/// Names the wrong word or option and shows the command's usage.
Exit WrongUse(std::string_view command, const std::string& what);

/// What is shown goes through these: names and texts come out of downloads, and none of them may
/// steer the terminal or look like a line or column of its own.
void AddLine(Run& run, std::string_view line);
/// A text of several lines; those behind the first are set in.
void AddText(Run& run, const std::string& head, std::string_view text);
/// A name among others on a line.
std::string OneField(std::string_view text);
/// The exact value, on one line without an indent; what could steer a terminal is escaped.
std::string JsonText(const Json& value, int indent = -1);

} // namespace kestrova
