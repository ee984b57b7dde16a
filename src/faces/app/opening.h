#pragma once

#include "app/command.h"
#include "swap/whereabouts.h"

/// How a command of the terminal opens what it needs, and how its work ends.
namespace kestrova
{

/// Preferences, settings and the archive as they stand in their files; nothing is written. False,
/// with words, when what is needed is not there.
bool OpenToLook(Run& run, Needs needs);
/// From now on Ctrl-C brings the work under way to an end, and words say so.
void HearInterrupts();
/// The same for a command that changes things: with the locks, after interrupted work was mended,
/// the archive loaded with all its questions. From here on Ctrl-C waits.
/// `said`: of folders that interrupted work waits for.
bool OpenToWork(Run& run, Needs needs, const Whereabouts& said = {});
/// Writes preferences and settings, provided that the work was done. Answers whether all of that
/// went well.
bool EndWork(Run& run, bool done);
/// Ends the saving after every change before a run's end.
void RestoreAutoSave(Run& run);

/// False, with words, while the archive's folder is away: what it holds is not nothing then. The
/// original configuration, which lies elsewhere, needs none.
bool HasArchiveFolder(Host& host, const Archive& archive, std::optional<LevelCode> code = {});

} // namespace kestrova
