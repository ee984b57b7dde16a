#pragma once

#include "archive/archive_parts.h"

namespace kestrova
{

/// What is done to a level's sounds before its files are deflated or expanded: the level's name and
/// its `files`. False ends the whole work.
using AudioStep = std::function<bool(const std::string& name, const Path& files)>;

/// Brings the files of all levels on the hard disk into the form that the archive's settings say,
/// measures the sizes anew and tells them. A file that fails is asked about; Stop ends it between
/// levels. However it ends, killed too, every level stays as readable as it was: a file goes only
/// when its other form stands whole on the disk. True when it went through all levels.
bool ChangeCompression(const ArchiveParts& parts, const AudioStep& audio = {});

/// The same of one level; nothing is told when it went well. False when it was not brought into
/// that form, as one on a disc is not.
bool ChangeCompressionOf(const ArchiveParts& parts, LevelCode code, const AudioStep& audio);

/// The same of all after a question, when the settings are no longer `before`. Without an audio
/// step the wish for mp3 is none that could be carried out.
void OfferChangeCompression(const ArchiveParts& parts, const ArchiveHeader& before,
                            const AudioStep& audio = {});

} // namespace kestrova
