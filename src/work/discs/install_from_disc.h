#pragma once

#include "session/disc_reader.h"
#include "session/session.h"

namespace kestrova
{

/// What an install needs of a session.
struct DiscInstall {
    DiscInstall(Session& session)
        : host(session.host), machine(session.machine), settings(session.settings),
          folders(session.Folders())
    {
    }

    Host& host;
    Machine& machine;
    ProgramSettings& settings; ///< exact forms of folders
    Folders folders;           ///< the discs' reader among them
};

/// Brings an archive whose file lies on a disc to the hard disk: below the chosen folder a folder
/// of its own is made, which has each level's folder, with `full` its files too, and the archive's
/// file. It is built beside that place and gets its name in one step at the end, so that a killed
/// or failed install leaves what was there before. Of the folder that the archive names only the
/// last part counts. Answers the new file; no value, with words, when it was not installed.
std::optional<Path> InstallArchive(const DiscInstall& install, const Path& file,
                                   const DiscSetup& setup);

/// Called while an archive is read. An archive on a disc is installed as the person chooses: then
/// the answer is True, and `file` the new one. Otherwise False; `abort`, with words, when it lies
/// on a disc and was not installed.
bool InstallFromCd(const DiscInstall& install, Path& file, bool& abort);

} // namespace kestrova
