#pragma once

#include "core/files.h"
#include "formats/disc_note.h"

/// The note of an archive's discs in the archive's folder, and what it proves of a level's files.
namespace kestrova
{

/// The file of the note. `levels` is the archive's folder on the hard disk.
Path DiscNoteOf(const Path& levels);
/// An empty note where there is none; `Damaged` for one that this program did not write.
Result<DiscNote> ReadDiscNote(const Path& levels);
/// Durable when it answers. A note without discs is no file.
Status WriteDiscNote(const Path& levels, const DiscNote& note);

/// What lies in a level's `files` folder now: every file with its size, without its hash, by name.
/// `Missing` without the folder; `Refused` for what no copy takes with it (a link, a device).
/// `folders` gets the folders below it, by their names below it.
Result<std::vector<NotedFile>> ListFilesToNote(const Path& files, const Heartbeat& heartbeat = {},
                                               std::vector<std::string>* folders = nullptr);
/// The same with the hashes.
Result<std::vector<NotedFile>> NoteFilesOf(const Path& files, const Heartbeat& heartbeat = {});
/// The folder holds exactly the noted files, content for content. `Differs`, with the first name
/// that is not so, otherwise; a folder that cannot be read whole is a failure too.
Status HoldsNotedFiles(const Path& files, const NotedLevel& level, const Heartbeat& heartbeat = {});
/// What the note says of that level on that disc; null when it says nothing.
const NotedLevel* FindNoted(const DiscNote& note, std::int32_t disc, LevelCode code);

} // namespace kestrova
