#pragma once

#include "core/names.h"
#include "core/result.h"
#include "platform/files.h"

#include <string_view>
#include <utility>

namespace kestrova
{

/// A file that is built beside its target and takes its place in one step. What is not committed
/// is removed again.
class StagedFile
{
public:
    /// `target` is resolved by the caller or as it stands.
    explicit StagedFile(const Path& target);
    ~StagedFile();
    StagedFile(const StagedFile&) = delete;
    StagedFile& operator=(const StagedFile&) = delete;

    /// Creates the staged file; needed before the others. Its failure is `CannotOpen`.
    Status Open();
    [[nodiscard]] const Path& StagedPath() const { return staged_; }
    platform::File& Handle() { return file_; }
    Status Write(std::string_view bytes);
    /// Closes and renames; with `flush` content and name are durable when it answers.
    Status Commit(bool flush);

private:
    Path target_;
    Path staged_;
    platform::File file_;
    bool pending_ = false;
};

/// A staged name beside `target` for a file that somebody else writes; what is there at the end of
/// its life is removed.
class StagedPlace
{
public:
    explicit StagedPlace(const Path& target);
    ~StagedPlace() { Clear(); }
    StagedPlace(StagedPlace&& other) noexcept : path_(std::exchange(other.path_, {})) {}
    StagedPlace& operator=(StagedPlace&& other) noexcept;

    [[nodiscard]] const Path& Staged() const { return path_; }
    /// What was written becomes `target`, whose existing spelling stays.
    Status MoveTo(const Path& target);

private:
    void Clear();
    Path path_;
};

/// A free name beside `target`, one that no listing shows.
Path StagedNameFor(const Path& target);
/// What stands where a file is to come (no link is followed). `CannotOpen` for a folder, and for a
/// file that a write in place could not change.
Result<platform::FileFacts> LookAtReplaced(const Path& target);
/// Closes a staged file and renames it, which empties `staged`; with `flush` content and name are
/// durable when it answers.
Status PutStaged(platform::File& file, Path& staged, const Path& target, bool flush);

/// The whole content or the old one. Durable when it answers, unless a later flush of the file
/// system is to make it so (`flush` False). A link gives way to the file, and what it leads to is
/// never touched; the mode of an old file is kept, and a file that a write in place could not
/// change is not replaced (`CannotOpen`).
Status WriteWholeFile(const Path& target, std::string_view content, bool flush = true);
/// The same for a binary record whose count rules: an old longer file keeps its tail.
Status WriteRecordFile(const Path& target, std::string_view content, bool flush = true);
/// A binary record that is the person's own document: where it is a link, the person chose it, and
/// the file behind it is written.
Status WriteDocument(const Path& target, std::string_view content);
/// The same for a text: it is the whole content.
Status WriteKeptFile(const Path& target, std::string_view content);

/// Removes what staged files of killed programs left in a folder.
void ClearStagedLeftovers(const Path& folder);
/// The same where other programs may be at work: what belongs to a process that runs stays.
void ClearLeftoversOfKilled(const Path& folder);

} // namespace kestrova
