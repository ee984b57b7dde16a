#pragma once

#include "core/files.h"
#include "formats/archive_file.h"
#include "session/folders.h"

namespace kestrova
{

/// The pictures of one level, shown two at a time.
class ShotList
{
public:
    /// No picture is chosen for the next command.
    static constexpr std::ptrdiff_t noTarget = -1;

    /// All bitmaps of the level's folder, then all jpegs; the pair from the first on is shown. On a
    /// failure the list is empty, and nobody may say that the level has no pictures.
    Status Load(const Folders& folders, LevelCode code);
    /// Shows a pair. A place behind the list's end shows the default picture; a pair that is wholly
    /// behind it keeps the index.
    void ShowPair(std::ptrdiff_t index);
    /// False when there is no pair before, or behind.
    bool Previous();
    bool Next();
    [[nodiscard]] bool HasPrevious() const { return index_ >= 2; }
    [[nodiscard]] bool HasNext() const { return index_ + 2 > 0 && index_ + 2 < Count(); }

    [[nodiscard]] LevelCode Code() const { return code_; }
    [[nodiscard]] const Path& Left() const { return left_; }
    [[nodiscard]] const Path& Right() const { return right_; }
    /// The picture on the left; -2 while that is not one of the list.
    [[nodiscard]] std::ptrdiff_t Index() const { return index_; }
    [[nodiscard]] std::ptrdiff_t Count() const { return std::ssize(files_); }
    [[nodiscard]] bool Has(std::ptrdiff_t index) const { return index >= 0 && index < Count(); }
    [[nodiscard]] const std::vector<Path>& Files() const { return files_; }
    /// The picture at that place; outside the list it is the default picture.
    [[nodiscard]] const Path& At(std::ptrdiff_t index) const;
    /// Where a file name stands in the list: as spelled, otherwise without regard to case; -1 when
    /// it does not.
    [[nodiscard]] std::ptrdiff_t Find(std::string_view name) const;

    /// The picture that the next command takes without asking. It stays until a command takes it.
    [[nodiscard]] std::ptrdiff_t Target() const { return target_; }
    void SetTarget(std::ptrdiff_t index) { target_ = index; }

private:
    LevelCode code_ = originalCode;
    std::vector<Path> files_;
    Path default_;
    Path left_;
    Path right_;
    std::ptrdiff_t index_ = -2;
    std::ptrdiff_t target_ = noTarget;
};

} // namespace kestrova
