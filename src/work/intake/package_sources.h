#pragma once

#include "packages/unpack_guard.h"

#include <memory>
#include <set>

/// How files come into the folder of a level: single files, packages, whole folders. The sources
/// themselves are never changed.
namespace kestrova
{

/// True for a name that only a package has: `.zip`, `.7z`, `.tar.gz` …
bool IsPackage(const Path& file);
/// What a source is called as a level: its name without its endings.
std::string LevelNameFrom(const Path& source);

/// A name of the folder that is taken already.
enum class Replace {
    Ask,      ///< as the person says; the same content needs no question
    Silent,   ///< the new file goes in its place
    KeepBoth, ///< so it does, and the old one gets a free name
};

struct SourceOptions {
    Replace replace = Replace::Ask;          ///< by what comes out of a package
    Replace replaceByFile = Replace::Silent; ///< by a source that is a single file
    UnpackLimits limits{};
    /// The code page of names in packages that say none; empty: guessed.
    std::string namesAs{};
    /// Of a package that is damaged, what is whole comes in.
    bool keepWhole = false;
};

class FolderNames;

/// Where packages are unpacked, for as long as somebody holds it.
class UnpackingPlace;

/// What a source gave, beyond what it was asked for.
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
    bool stopped = false;               ///< by the person; what was copied until then stays
    std::shared_ptr<FolderNames> names; ///< the level's folder, listed once
    /// Held from one package to the next; to be let go when the last one is in.
    std::shared_ptr<UnpackingPlace> unpacking;
};

/// One file, or the files of a package, its folders left out, into `folder`. `Stopped` when the
/// person stopped it. Files of one name within the package: the first stays, the others are named
/// in the report. A package that lies in `folder` itself may hold a file of its own name, which
/// takes its place. What stands there in an archive's stored form (`.zl`) comes in as what it is,
/// within the limits; `Damaged`, with words for the person as its subject, when it is not whole or
/// goes beyond them.
Status CopyOrUnzipSource(Session& session, const Path& source, const Path& folder,
                         const SourceOptions& options, ProgressScope& progress,
                         SourceReport& report);

/// `CopyOrUnzipSource` with its label and its message.
bool AddFile(Session& session, const Path& source, const Path& folder, const SourceOptions& options,
             ProgressScope& progress, SourceReport& report);
/// The file or folder that the person chooses as a source; the first chosen place is remembered for
/// the next. `audioType`: an ending like `.wav` to offer those alone; empty for packages and all.
std::optional<Path> ChooseSourceFile(Session& session, const std::string& audioType = {});
std::optional<Path> ChooseSourceFolder(Session& session);

/// Whether the files of sub-folders come too.
enum class Subfolders { Ask, Take };
/// What a folder gives. `ending`: `.*` for all, otherwise the characters that names end with.
Result<std::vector<Path>> FilesOfSource(Session& session, const Path& source,
                                        const std::string& ending, Subfolders subfolders,
                                        ProgressScope& progress);
/// All files of a folder, packages unpacked. Failures are told together at the end.
void AddFilesFromFolder(Session& session, const Path& source, const Path& folder,
                        const SourceOptions& options, ProgressScope& progress,
                        Subfolders subfolders, SourceReport& report);

/// Tells that a source failed: of a package what is wrong with it, in words of its own.
void TellSourceFailure(Session& session, const std::string& text, const Failure& failure);

/// Sources that were written to since they were read, as by a download that still runs, count as
/// failed: the level has a part of them.
void NoteChangedSources(SourceReport& report);

/// Names what is not in the level, or not under its own name, if anything.
void TellReport(Session& session, const SourceReport& report);

/// Where packages are unpacked before their files go on; empty of meaning between two runs.
Path UnpackingFolder(const Session& session);

} // namespace kestrova
