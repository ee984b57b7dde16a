#pragma once

#include "intake/source_report.h"
#include "session/session.h"
#include "tools/tools.h"

/// How files come into the folder of a level: single files, packages, whole folders. The sources
/// themselves are never changed.
namespace kestrova
{

/// What a source is called as a level: its name without its endings.
std::string LevelNameFrom(const Path& source);

class UnpackedAhead;

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
    /// Packages that workers have unpacked already; null: there are none.
    UnpackedAhead* ahead = nullptr;
    /// A file of a source folder that is none of the level's, as the package that is being made.
    Path leftOut{};
};

/// One file, or the files of a package, its folders left out, into `folder`. `Stopped` when the
/// person stopped it. Files of one name within the package: the first stays, the others are named
/// in the report. A package that lies in `folder` itself may hold a file of its own name, which
/// takes its place. What stands there in an archive's stored form (`.zl`) comes in as what it is,
/// within the limits; `Damaged`, with words for the person as its subject, when it is not whole or
/// goes beyond them.
Status CopyOrUnzipSource(Host& host, Machine& machine, const Folders& folders, const Tools& tools,
                         const Path& source, const Path& folder, const SourceOptions& options,
                         ProgressScope& progress, SourceReport& report);

/// `CopyOrUnzipSource` with its label and its message: what fails is told, and only a Stop
/// answered.
Status AddFile(Host& host, Machine& machine, const Folders& folders, const Tools& tools,
               const Path& source, const Path& folder, const SourceOptions& options,
               ProgressScope& progress, SourceReport& report);

} // namespace kestrova
