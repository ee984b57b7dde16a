#pragma once

#include "archive/tr4_index.h"
#include "session/host.h"

#include <optional>
#include <unordered_map>

/// Levels that hold the same `.tr4`: same name without regard to case, same size. What a level has
/// stands in its `tr4.inf`, so no level's files need to be at hand.
namespace kestrova
{

/// Another level with an equal file.
struct EqualTr4 {
    std::size_t level = 0; ///< index in the archive
    std::string name;      ///< the file's, trimmed
};

/// The `tr4.inf` of all levels, read once, found by name and size. A level whose `tr4.inf` cannot
/// be read has no files here.
class EqualTr4Index
{
public:
    /// Reads on all cores; `progress`, which may be null, follows by levels done.
    EqualTr4Index(const Folders& folders, const Archive& archive, ProgressScope* progress);

    /// A failure when the archive's folder could not be listed; the index is empty then.
    [[nodiscard]] const Status& State() const { return state_; }
    [[nodiscard]] const std::vector<Tr4Entry>& FilesOf(std::size_t level) const
    {
        return levels_[level];
    }
    /// The first level of the archive but `except` that has one of these files.
    [[nodiscard]] std::optional<EqualTr4> Find(const std::vector<Tr4Entry>& files,
                                               std::size_t except) const;
    /// The first level found that has every one of these files; none for an empty list.
    [[nodiscard]] std::optional<std::size_t> FindWhole(const std::vector<Tr4Entry>& files) const;
    /// The level that came behind the others in the archive.
    void Add(std::vector<Tr4Entry> files);

private:
    /// The first two levels that have a file: whichever is left out, the answer is one of them.
    struct Owners {
        std::size_t first;
        std::optional<std::size_t> second;
    };
    void NoteOwner(std::size_t level);
    [[nodiscard]] bool HasWhole(std::size_t level, const std::vector<Tr4Entry>& files) const;

    Status state_;
    std::vector<std::vector<Tr4Entry>> levels_;
    std::unordered_map<std::string, Owners> owners_; ///< by folded name and size
};

/// Whether another level has one of the `*.tr4` of `folder`, or, for an empty path, of those in the
/// level's own `tr4.inf`. `levelIndex` may be that of a level that is not in the archive yet.
Result<std::optional<EqualTr4>> FindEqualTr4(const Folders& folders, const Archive& archive,
                                             const Path& folder, std::size_t levelIndex,
                                             ProgressScope* progress);

} // namespace kestrova
