#pragma once

#include "core/copying.h"
#include "formats/change_note.h"

namespace kestrova
{

/// Files of one of a level's folders while an operation changes them in its own way: kept
/// beforehand, compared afterwards.
class WatchedFiles
{
public:
    /// `patterns`: which files, parted by `|`. `kept`: the folder for their contents.
    WatchedFiles(Path folder, std::string patterns, Path kept);

    /// To be called before anything changes.
    Status Keep();
    /// What has changed; contents that nobody needs for the way back are gone.
    [[nodiscard]] Result<ChangedFolder> Changed() const;

private:
    [[nodiscard]] Result<std::vector<StateFile>> Now() const;

    Path folder_;
    std::string patterns_;
    Path kept_;
    std::vector<StateFile> before_;
};

/// A second name of the file where the file system can, since whatever changes a level's file puts
/// another one in its place; otherwise a copy.
Status GiveSecondName(const Path& file, const Path& place, const CopyOptions& options);
/// The content under its hash in `kept`, so.
Status KeepBeside(const Path& kept, const Path& file, const std::string& hash);

} // namespace kestrova
