#pragma once

#include "session/session.h"

namespace kestrova
{

/// The selected level's pictures, shown two at a time.
class ShotList
{
public:
    /// All bitmaps of the level's folder, then all jpegs; the pair from the first on is shown.
    void Load(Session& session, LevelCode code);
    /// Shows a pair. A place behind the list's end shows the default picture; a pair that is wholly
    /// behind it keeps the index.
    void ShowPair(std::ptrdiff_t index);
    /// False when there is no pair before, or behind.
    bool Previous();
    bool Next();
    [[nodiscard]] bool HasPrevious() const { return index_ >= 2; }
    [[nodiscard]] bool HasNext() const { return index_ + 2 > 0 && index_ + 2 < Count(); }

    [[nodiscard]] const Path& Left() const { return left_; }
    [[nodiscard]] const Path& Right() const { return right_; }
    /// The picture on the left; -2 while that is not one of the list.
    [[nodiscard]] std::ptrdiff_t Index() const { return index_; }
    [[nodiscard]] std::ptrdiff_t Count() const { return std::ssize(files_); }

private:
    [[nodiscard]] const Path& At(std::ptrdiff_t index) const;

    std::vector<Path> files_;
    Path default_;
    Path left_;
    Path right_;
    std::ptrdiff_t index_ = -2;
};

} // namespace kestrova
