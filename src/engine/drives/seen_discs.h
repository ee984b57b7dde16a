#pragma once

#include "drives/seen_lock.h"
#include "formats/seen_note.h"
#include "session/host.h"
#include "session/machine.h"
#include "tools/tools.h"

/// Files of discs whose content is seen in folders. Each has a folder `discs/seen/KEY` below the
/// program's, with the note of what was made, a lock for whoever changes it, and a name for each
/// process that uses it. What is seen is given back by the last of them, or by the next start.
namespace kestrova
{

std::string SeenKeyOfDrive(const std::string& drive);
/// The same for one and the same file under whatever name.
std::string SeenKeyOfImage(const Path& image);

/// Where a file's content is seen now; empty when it is nowhere.
Path SeenFolder(const Path& programFolder, const std::string& key, const Path& image);

/// What is to be seen where.
struct SeenOrder {
    std::string key;
    Path image;
    Path place;               ///< has to be missing or empty
    std::string placeTaken{}; ///< said when it is not
};
/// From now on this process uses the folder that it answers.
Result<Path> ShowDisc(const Tools& tools, Machine& machine, Host& host, const SeenOrder& order);

/// This process does not use it any more; what nobody uses is given back. `Refused` while another
/// process uses it and `whole` is wanted.
Status HideDisc(const Tools& tools, const std::string& key, bool whole);

/// The keys that are there.
std::vector<std::string> SeenKeys(const Path& programFolder);

} // namespace kestrova
