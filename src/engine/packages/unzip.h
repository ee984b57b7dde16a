#pragma once

#include "packages/unpack_guard.h"
#include "packages/unpacked_files.h"
#include "tools/run_to_end.h"

/// Packages come out through the outside tools: beside zip files every kind that `UnpackerOf` knows
/// a tool for.
namespace kestrova
{

/// What unpacking brought to light beside the files.
struct UnpackReport {
    std::string namesAs{};               ///< the code page of `PackagePlan`; empty: none needed
    std::vector<std::string> notFiles{}; ///< links and devices, which do not come in
    std::vector<std::string> twice{};    ///< names of several files; the last of each came in
    std::vector<std::string> lost{};     ///< what was not whole and did not come in
    std::vector<RenamedFile> renamed{};  ///< of two names that differ in case alone
    std::vector<std::string> ledOut{};   ///< names that lead out of the folder, left out
};

struct UnzipOptions {
    bool junkPaths = false;        ///< all files straight into the folder
    bool cleanDestination = false; ///< the folder's files go first
    UnpackGuard* guard = nullptr;  ///< whose words end it
    bool keepStaging = false;      ///< where it is unpacked first stays, empty, for the next one
    bool keepWhole = false;        ///< of a damaged package that tells checksums what is whole
    std::string namesAs{};         ///< the code page for names that say none; empty: guessed
    UnpackReport* report = nullptr;
};

/// Unpacks, with the bar following the count of files; the folder is made when missing. All of the
/// package comes in, made plain (`MakePlain`), two files of the same name under distinct ones, or
/// nothing does, unless `keepWhole` is set.
Status UnzipWithProgress(const Tools& tools, const Path& package, const Path& folder,
                         const UnzipOptions& options, const ToolProgressState& state);

} // namespace kestrova
