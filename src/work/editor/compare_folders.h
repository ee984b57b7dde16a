#pragma once

#include "session/host.h"

#include <cstdint>
#include <string>
#include <vector>

/// Two folders, file by file, by content: a Level Editor's folder and its mirror, or one folder
/// before and after somebody worked in it.
namespace kestrova
{

/// What became of a file on the way from the folder before to the folder after.
enum class FileState {
    New,
    Missing,
    Changed,
    Equal,
    Unread ///< it cannot be read, or what the other folder has of it cannot, so that nobody knows
};
inline constexpr std::size_t fileStates = 5;
/// As the terminal says it.
std::string_view WordOfState(FileState state);

/// A file of one of the folders, or of both.
struct ComparedFile {
    Path name; ///< relative, as the folder after spells it, or else the one before
    FileState state = FileState::Equal;
    Path before{}; ///< the files themselves; empty where there is none
    Path after{};
    std::uint64_t sizeBefore = 0;
    std::uint64_t sizeAfter = 0;
    std::string reason{}; ///< of one that cannot be read, by the system
};

/// All files of both folders, sorted by their names without regard to case. Names are paired
/// without regard to case, where a folder has several that differ by it alone those of one spelling
/// first. A link to a file counts as what it leads to. So does one to a folder where the other
/// folder has a folder of that name; any other one, one to a folder above the two, and one to the
/// same folder as the other's link is a single thing of its name. Sizes decide first; what is as
/// long in both is read to its end. A sub-folder that cannot be listed is unread, with all that the
/// other one has in it; one of the two folders themselves is a failure, and so is a Stop.
Result<std::vector<ComparedFile>> CompareFolders(const Path& before, const Path& after,
                                                 ProgressScope& progress);

} // namespace kestrova
