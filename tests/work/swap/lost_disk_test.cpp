// A disk goes away in the middle of a swap, and its mount point stands there empty: what the player
// made is found again once the disk is back.
#include "sandbox/faults.h"
#include "session/operation.h"
#include "swap/install.h"
#include "swap/recovery.h"
#include "swap/swap_world.h"

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;

/// Takes a folder away before the n-th changing call, and leaves an empty one in its place. Its end
/// brings the folder back.
class LostDisk : public platform::FileHook
{
public:
    LostDisk(Path folder, int call) : folder_(std::move(folder)), left_(call)
    {
        platform::SetFileHook(this);
    }
    ~LostDisk() override
    {
        platform::SetFileHook(nullptr);
        if (!IsGone())
            return;
        fs::remove_all(folder_);
        fs::rename(aside_, folder_);
    }
    LostDisk(const LostDisk&) = delete;
    LostDisk& operator=(const LostDisk&) = delete;

    std::error_code Before(platform::FileAction, const Path&) override
    {
        if (--left_ == 0) {
            fs::rename(folder_, aside_);
            fs::create_directory(folder_);
        }
        return {};
    }
    [[nodiscard]] bool IsGone() const { return left_ <= 0; }
    /// What was made in the empty folder.
    [[nodiscard]] bool HasStrays() const { return IsGone() && !fs::is_empty(folder_); }

private:
    Path folder_;
    Path aside_{folder_.native() + ".away"};
    std::atomic<int> left_;
};

/// False when the work needs fewer calls.
bool LoseAt(int call, const char* folder)
{
    SwapWorld world;
    world.PlayFirst();
    world.host.AnswerAll(true);
    const auto treasures = world.Treasures();
    bool gone = false;
    {
        const Operation operation{world.session};
        LostDisk lost{world / folder, call};
        (void)InstallLevel(world.session, world.second);
        gone = lost.IsGone();
        EXPECT_FALSE(lost.HasStrays());
    }
    Session fresh = world.Reopened();
    EXPECT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
    world.ExpectNothingLost(treasures);
    return gone;
}

} // namespace

TEST(LostDisk, LeavesWhatThePlayerMadeWhereItIsFoundAgain)
{
    for (const char* folder : {"levels", "trle", "home"}) {
        int call = 1;
        for (; LoseAt(call, folder); call += 3 * WalkStride())
            ASSERT_FALSE(HasFailure()) << folder << " went at the call " << call;
        TellPoints(call / 3, 20);
    }
}

} // namespace kestrova::testing
