#pragma once

#include "core/files.h"
#include "formats/disc_note.h"

#include <optional>

/// What lies on a disc: a folder that is called like the archive's and ends with the disc's number,
/// in which the levels' folders lie.
namespace kestrova
{

/// What the archive's folders on its discs are called, without the number: the last part of its
/// main folder, whose other parts name a drive.
std::string NameOnDiscs(const ArchiveHeader& header);
/// What is written on a disc of that number: its label.
std::string LabelOfDisc(std::int32_t number);

/// A disc of some archive, as the name of its folder tells.
struct KnownDisc {
    std::string archive;
    std::int32_t number = 0;
};
/// The discs whose folders lie in that root, in the order of the names. A folder counts when it
/// ends with a number and holds a level's folder.
Result<std::vector<KnownDisc>> DiscsIn(const Path& root);

/// The folder of the disc of that number below the root, as it is spelled there, when it holds that
/// level's folder; no value when it does not. `Damaged` when the level's files are not those of
/// the note, by name and size: the subject is the first such file. Without a note any do.
/// `Refused`, in words, when anything on the way or among them is a link.
Result<std::optional<Path>> FindDiscFolder(const Path& root, const ArchiveHeader& header,
                                           const LevelRecord& level, const NotedLevel* noted);

/// The archive's note on the hard disk tells of these levels, each on its disc, from now on. What
/// else it tells by then stays, as where an image was found meanwhile.
Status NoteLevels(const ArchiveHeader& header,
                  const std::vector<std::pair<std::int32_t, NotedLevel>>& levels);

/// Every noted file of that `files` folder, whatever case its name has there, holds what was put on
/// the disc. `Damaged` otherwise, the first other one as subject.
Status HoldsNotedContent(const Path& files, const NotedLevel& noted, const Heartbeat& beat);

} // namespace kestrova
