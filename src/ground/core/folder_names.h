#pragma once

#include "core/files.h"

#include <unordered_map>
#include <unordered_set>

namespace kestrova
{

/// The names of one folder, listed once, for somebody who puts many files there.
class FolderNames
{
public:
    explicit FolderNames(const Path& folder);

    /// A failure when the folder could not be listed; no file may be put there then. A folder that
    /// is missing has no names.
    [[nodiscard]] const Status& State() const { return state_; }
    [[nodiscard]] const Path& Folder() const { return folder_; }
    /// Where a file of that name lies, in the spelling that is there, or where it would lie.
    [[nodiscard]] Path PathOf(const std::string& name) const;
    [[nodiscard]] bool Has(const std::string& name) const;
    void Add(const std::string& name);
    void Remove(const std::string& name);
    /// A name that is free, for a file that gives its own to another one: a number ahead of the
    /// ending. A second `.dat` would count as a language of the level, so there it stands behind.
    [[nodiscard]] std::string FreeName(const std::string& name);

private:
    Path folder_;
    Status state_;
    std::unordered_map<std::string, std::string> names_; ///< by folded name
    std::unordered_set<std::string> exact_;
    std::unordered_map<std::string, int> numbers_; ///< the last one given, by folded name
};

} // namespace kestrova
