#pragma once

#include "session/archive.h"
#include "session/folders.h"
#include "session/settings.h"

#include <map>

namespace kestrova
{

/// What a level is called of which nobody knows the name.
std::string NumberedName(LevelCode code);

/// What is known of the levels of a folder whose list was lost: old lists, damaged ones too, as far
/// as their records are there; names that were noted beside the levels; the entries of undoing; the
/// levels' own configuration files and documents.
class RecoveredTexts
{
public:
    /// `remembered`: the file of the list that was loaded last.
    RecoveredTexts(const Folders& folders, const ProgramSettings& settings, const Path& levels,
                   const Path& remembered);

    /// The texts of that level, whose files lie in `files`; what nobody knows stays empty, but for
    /// a name with its number.
    void Fill(LevelRecord& level, const Path& files) const;
    /// How the levels' files are stored, by the best old list.
    [[nodiscard]] const ArchiveHeader& Header() const { return header_; }
    /// Folders that old lists named for these levels.
    [[nodiscard]] const std::vector<Path>& OldFolders() const { return oldFolders_; }

private:
    struct OldList;
    void TakeLists(const ProgramSettings& settings, const std::vector<Path>& files);
    void TakeNames(const Folders& folders);

    const Path levels_;
    ArchiveHeader header_;
    std::map<LevelCode, LevelRecord> records_;
    std::map<LevelCode, std::string> names_; ///< of levels without a record
    std::vector<Path> oldFolders_;
};

} // namespace kestrova
