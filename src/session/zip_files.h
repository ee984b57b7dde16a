#pragma once

#include "session/tool_runner.h"

/// Packages through the outside tools. Beside zip files the reading operations take every kind
/// that `UnpackerOf` knows a tool for.
namespace kestrova
{

/// Packs the files of `folder`, its sub-folders left out, flat and with maximal compression into
/// `zip`, whose name has an ending. An existing file of that name goes first. A missing tool is
/// told; any other failure is in the state. True when the zip is there.
bool ZipFolder(Session& session, const Path& zip, const Path& folder, ToolProgressState& state);

struct UnzipOptions {
    bool junkPaths = false;        ///< all files straight into the folder
    bool cleanDestination = false; ///< the folder's files go first
    /// As in `ToolRun`: words stop the unpacking.
    std::function<std::string()> watch{};
};

/// Unpacks, with the bar following the count of files; the folder is made when missing. Whatever
/// happened, what lies in the folder afterwards is plain (`MakePlain`). True on success; a failure
/// is in the state.
bool UnzipWithProgress(Session& session, const Path& package, const Path& folder,
                       const UnzipOptions& options, ToolProgressState& state);

/// The same without a bar: True without a look at what happened, for callers that look for the
/// files they expect. A missing tool and files that cannot be deleted are told. False and silent
/// when `package` or `folder` is not there.
bool UnzipQuick(Session& session, const Path& package, const Path& folder,
                const UnzipOptions& options, ToolProgressState& state);

/// The entries of a package; 20 seconds at most. A failure is in the state.
bool ListZip(Session& session, const Path& package, std::vector<PackageEntry>& entries,
             ToolProgressState& state);

/// What a package of anybody's making brought becomes plain files and folders: links and other
/// things are unlinked, the owner may read and write all, a name that is no text is made readable
/// from the older code page. Links are never entered.
void MakePlain(const Path& folder, ProgressScope* progress = nullptr);

} // namespace kestrova
