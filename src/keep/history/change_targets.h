#pragma once

#include "core/files.h"
#include "formats/change_note.h"

#include <map>

namespace kestrova
{

/// Of the file in this very spelling: a case twin is another one. Empty for one that is missing; a
/// failure for one that cannot be read.
Result<std::string> HashSpelled(const Path& file);
/// Whether the file in this very spelling has that content; one that cannot be read has not.
bool Holds(const Path& file, const std::string& hash);

/// A file that takes part in a change: `was` is empty for a new name, `becomes` for one that goes.
struct ChangeTarget {
    Path file;
    std::string was;
    std::string becomes;
    Path source;          ///< of what it becomes
    Path respelled{};     ///< its new name, which differs in case alone
    bool foreign = false; ///< somebody else wrote it since; it stays
};

/// The files of a change's folders, one for each spelling.
class ChangeTargets
{
public:
    ChangeTargets() = default;
    /// What an earlier change left half staged in the folders goes.
    explicit ChangeTargets(const std::vector<ChangedFolder>& folders);
    ChangeTargets(ChangeTargets&&) = default;
    ChangeTargets& operator=(ChangeTargets&&) = default;

    [[nodiscard]] auto begin() { return targets_.begin(); }
    [[nodiscard]] auto end() { return targets_.end(); }
    [[nodiscard]] auto begin() const { return targets_.begin(); }
    [[nodiscard]] auto end() const { return targets_.end(); }

    /// The targets that have the content, before the change or after it.
    [[nodiscard]] const std::vector<const ChangeTarget*>& With(const std::string& hash) const;

private:
    void Add(const ChangedFolder& folder);
    void IndexContents();

    std::vector<ChangeTarget> targets_;
    std::map<std::string, std::vector<const ChangeTarget*>> byContent_;
};

} // namespace kestrova
