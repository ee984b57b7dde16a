#pragma once

#include "archive/level_folders.h"
#include "core/files.h"
#include "formats/preferences.h"
#include "formats/swap_journal.h"
#include "swap/swap_parts.h"

#include <memory>
#include <unordered_map>

/// Files of the Level Editor's folder that a swap put there, and how they are told from what a
/// player or a designer made since.
namespace kestrova
{

/// What is noted about a file as it stands; `name` is what the note calls it.
OwnedFile AsItStands(std::string name, const Path& file);
/// True by size and time alone.
bool IsAsListed(const OwnedFile& listed, const platform::FileFacts& facts);
/// True when nothing has touched the file since it was noted. Of a note that holds size and time
/// alone, when these are as noted.
bool IsAsPut(const OwnedFile& listed, const platform::FileFacts& facts);

/// `relative` (below the Level Editor's folder) in the spelling of the noted file: where several
/// files differ by case alone, of the one that is as it was put there, or else of the one that the
/// name as it is noted finds.
Path SpelledAsPut(const Folders& folders, const OwnedFile& listed, const Path& relative);

/// A noted file where it stands.
struct ListedFile {
    Path relative; ///< below the Level Editor's folder, as it is spelled
    Path place;
    platform::FileFacts facts;
};
/// No value for a name of none of a level's files, and where no file stands any more.
Result<std::optional<ListedFile>> FindListed(const Folders& folders, const OwnedFile& listed);

/// True for a file in the folder of sounds while the backup is compact: it holds none of them, so
/// what stands there stays.
bool StaysWithCompactBackup(const PreferencesRecord& preferences, std::string_view name);

/// A list of noted files by name, case ignored.
class OwnedNames
{
public:
    explicit OwnedNames(const std::vector<OwnedFile>& files);
    [[nodiscard]] bool Has(const std::string& name) const;
    /// True when one of the notes of that name is of this file.
    [[nodiscard]] bool IsAsPut(const std::string& name, const platform::FileFacts& facts) const;

private:
    std::unordered_multimap<std::string, OwnedFile> files_;
};

/// Tells whether a file may go because its content is safe: nothing touched it since it was put
/// there, the backup holds the same, or the level's stored files do. The latter are made ready only
/// when they are asked for.
class SafeContents
{
public:
    SafeContents(const SwapParts& parts, Folders folders, LevelPlace level);
    ~SafeContents();
    SafeContents(const SafeContents&) = delete;
    SafeContents& operator=(const SafeContents&) = delete;

    /// `relative`: below the Level Editor's folder.
    bool Holds(const OwnedFile& listed, const Path& relative);

private:
    struct Stored;
    bool LevelHolds(const Path& relative);

    SwapParts parts_;
    Folders folders_;
    LevelPlace level_;
    std::unique_ptr<Stored> stored_;
};

} // namespace kestrova
