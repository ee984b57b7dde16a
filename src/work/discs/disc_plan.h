#pragma once

#include "discs/disc_capacity.h"
#include "session/archive.h"
#include "session/folders.h"
#include "session/host.h"

#include <optional>

/// Which levels of an archive go onto which disc.
namespace kestrova
{

/// What something takes on a disc.
struct DiscSize {
    double bytes = 0;       ///< of its files
    std::uint64_t room = 0; ///< with all that the disc's own order takes
    std::uint64_t note = 0; ///< of what the first disc tells of it, at most
    std::string twin{};     ///< a file that has another one's name but for the letters' case
    DiscSize& operator+=(const DiscSize& other);
};
/// Of a folder with all below it, and of a file. What no disc takes (a link, a device) is refused.
Result<DiscSize> DiscSizeOf(const Path& place, const Heartbeat& heartbeat = {});

/// A level that lies on the hard disk.
struct DiscCandidate {
    std::size_t index = 0; ///< in the archive's list
    LevelCode code = 0;
    DiscSize size{};
};
/// A level that stays on the hard disk, and why.
struct LevelLeftOut {
    LevelCode code = 0;
    std::string reason; ///< for a person
};

struct PlannedDisc {
    std::int32_t number = 0;
    std::string label;
    std::vector<LevelCode> levels; ///< in the archive's order
    DiscSize size{};               ///< the first disc's extras with it
    bool tooLarge = false;         ///< for a disc of the chosen kind
};

/// What a person chose.
struct DiscChoice {
    bool levels = true;       ///< the levels go onto the discs
    bool trle = false;        ///< the Level Editor's folder goes onto the first one
    bool setup = false;       ///< the program's own setup too
    bool imageFirst = true;   ///< an image is made, and then burnt
    int megabytes = 0;        ///< of a disc; 0: nothing chosen
    std::optional<int> speed; ///< nothing chosen: none
    std::string drive{};      ///< its name; empty: none chosen
    bool imagesOnly = false;  ///< no disc is burnt: the images are what is wanted
    Path images{};            ///< the folder that they come into
    Path setupFile{}; ///< the setup, chosen before; empty: it is asked for when the discs are made
    std::vector<Path> setupFiles{}; ///< found when `setup` was chosen
    bool unattended = false;        ///< nobody answers: discs are there, everything is verified
    std::optional<bool> remove{};   ///< the levels leave the hard disk; nothing: that is asked
};

class DiscPlan
{
public:
    /// Looks at every level that lies on the hard disk, the bar following. A level whose files are
    /// not there, or hold what no disc takes, stays and is told by `LeftOut`.
    Status Measure(const Folders& folders, const Archive& archive, ProgressScope& progress);

    /// The levels of a list that was measured before. `lastDisc`: the largest number of a disc
    /// that is taken.
    void Take(std::vector<DiscCandidate> candidates, std::int32_t lastDisc);

    DiscChoice choice{};
    /// Of the first disc beside its levels: the Level Editor's folder, the setup files.
    DiscSize extras{};

    /// The division, as the choice stands now: the next disc begins when a level does not fit any
    /// more; the order is never changed. Without a capacity there are no discs.
    void Divide();
    [[nodiscard]] const std::vector<PlannedDisc>& Discs() const { return discs_; }
    [[nodiscard]] const std::vector<DiscCandidate>& Candidates() const { return candidates_; }
    [[nodiscard]] const std::vector<LevelLeftOut>& LeftOut() const { return leftOut_; }
    /// Of the levels that go.
    [[nodiscard]] std::size_t LevelCount() const;
    /// Levels that are larger than a disc of the chosen kind.
    [[nodiscard]] std::vector<LevelCode> TooLarge() const;
    /// Bytes that all images take together.
    [[nodiscard]] std::uint64_t RoomOfImages() const;

private:
    /// Of the archive's file and of the note, on the first disc.
    [[nodiscard]] std::uint64_t RoomOfLists() const;

    std::vector<DiscCandidate> candidates_;
    std::vector<LevelLeftOut> leftOut_;
    std::vector<PlannedDisc> discs_;
    std::int32_t lastDisc_ = 0;    ///< the largest number that a level has
    std::uint64_t listsBytes_ = 0; ///< of the archive's lists and the notes that there are
};

} // namespace kestrova
