#pragma once

#include "core/files.h"

#include <map>

namespace kestrova
{

/// Files with their sizes and times, as they were at one moment.
class FolderState
{
public:
    /// The file is known as it stands now.
    void Note(const Path& file);
    /// Whether a file of that name was there, in whatever spelling.
    [[nodiscard]] bool Knows(const Path& file) const;
    /// Whether it was there and is as it was.
    [[nodiscard]] bool IsUnchanged(const Path& file) const;
    /// Whether these are all the files that were there, each as it was.
    [[nodiscard]] bool AreTheSame(const std::vector<Path>& files) const;

private:
    struct Seen {
        std::uint64_t size = 0;
        std::int64_t modifiedNs = 0;
    };
    std::map<std::string, Seen> files_; ///< by folded name
};

} // namespace kestrova
