#pragma once

#include "packages/unpack_guard.h"
#include "session/host.h"

#include <memory>
#include <set>

namespace kestrova
{

class FolderNames;
class WorkFolder;

/// What a source gave, beyond what it was asked for. What fails is told where it fails, and counted
/// here; a Stop, which leaves what was copied until then, is what the functions that fill it
/// answer.
struct SourceReport {
    std::size_t failed = 0;           ///< files that could not be copied; each was told
    std::vector<std::string> changed; ///< written to while they were taken in
    /// The sources as they were before they were read.
    std::vector<std::pair<Path, platform::FileFacts>> read;
    std::vector<std::string> leftOut;   ///< two files of one name in one source: the later ones
    std::vector<std::string> notFiles;  ///< links and devices
    std::vector<std::string> ledOut;    ///< names that lead out of the folder
    std::vector<std::string> twice;     ///< names that a package has several times; the last counts
    std::vector<std::string> renamed;   ///< files that keep a free name, with that name
    std::set<std::string> placed;       ///< the names, folded, that came into the level's folder
    std::set<std::string> unpacked;     ///< those of them that came out of packages
    std::uint64_t storedBytes = 0;      ///< in the stored form that came as single files
    std::uint64_t expandedBytes = 0;    ///< what they became
    Amount came;                        ///< out of packages, whatever became of it
    std::vector<Path> packages;         ///< the packages among the sources
    std::string namesAs;                ///< the code page that names had to be read in, if any
    std::shared_ptr<FolderNames> names; ///< the level's folder, listed once
    /// Held from one package to the next; to be let go when the last one is in.
    std::shared_ptr<WorkFolder> unpacking;
};

/// Sources that were written to since they were read, as by a download that still runs, count as
/// failed: the level has a part of them.
void NoteChangedSources(SourceReport& report);

/// Names what is not in the level, or not under its own name, if anything.
void TellReport(Host& host, const SourceReport& report);

/// Whether that is a Stop of the person.
bool IsStop(const Status& status);

/// Tells that a source failed: of a package what is wrong with it, in words of its own.
void TellSourceFailure(Host& host, const std::string& text, const Failure& failure);

} // namespace kestrova
