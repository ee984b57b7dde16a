#pragma once

#include "archive/archive_parts.h"

namespace kestrova
{

/// True while an archive is loaded; otherwise False, with words. Whatever changes an archive or its
/// folders asks here first.
bool HasArchive(Host& host, const Archive& archive);
/// Writes header and levels; without a message. The file becomes the archive's own. `Refused` for a
/// list without the original configuration, and for a folder that its field cannot hold.
Status WriteArchive(const Folders& folders, ProgramSettings& settings, Archive& archive,
                    const Path& file);
/// The same for the archive in memory; the file is the one that the next start loads.
Status WriteArchive(const ArchiveParts& parts, const Path& file);
/// The loaded archive becomes the one that the next start loads.
void RememberArchive(const ArchiveParts& parts);
/// What every change of the archive ends with: writes at once with `AutoSave`, marks the archive
/// dirty without it. False when a write failed, which it shows; the archive is dirty then. A list
/// that belongs to no file is not written: False, and nothing is said.
bool SaveArchive(const ArchiveParts& parts);
/// The command to save: writes whether or not anything changed. Shows its failure.
bool SaveArchiveNow(const ArchiveParts& parts);
/// What became of changes that were asked about. `Saved`: the file holds all that memory holds;
/// `NotSaved`: a failed save was told.
enum class Changes { Saved, Dropped, NotSaved };
/// Saves or drops changes, as the person wants, before something replaces the archive.
Changes AskSaveChanges(const ArchiveParts& parts);
/// The same: False when the archive must not be replaced, since its changes could be neither saved
/// nor given up. `saved`: the file holds all changes.
bool MayReplaceArchive(const ArchiveParts& parts, bool& saved);

/// Where the exact forms of names lie that the records cannot hold: beside the levels' folders.
Path ExactNamesFile(const ArchiveHeader& header);

enum class ArchiveFolder { Main, Secondary };
/// Under what name the settings keep an archive's folder that the code page cannot hold.
std::string ExactFolderField(ArchiveFolder folder, const Path& file);

/// Saves a changed list of levels; a list that cannot be saved is put back to `before`. A write may
/// fail after its file got its name, so the old list is written once more. False, with words.
bool SaveArchiveOrPutBack(const ArchiveParts& parts, const Archive& before);

} // namespace kestrova
