#pragma once

#include "platform/waker.h"
#include "session/session.h"

namespace kestrova
{

/// Whether a game is running: the one that was started here, also through Wine, or any program in
/// the Level Editor's folder. Looking costs a walk through all processes, so it says when another
/// look is worth it: when what runs has ended, or when a file of the folder was opened.
class GameWatch
{
public:
    explicit GameWatch(Session& session) : session_(session) {}

    /// Looks again; True when the answer is another one.
    bool Look();
    [[nodiscard]] bool Running() const { return !programs_.empty(); }
    /// What was found at the last look.
    [[nodiscard]] const std::vector<platform::RunningProgram>& Programs() const
    {
        return programs_;
    }

    /// What becomes readable when there may be news; new ones after each look.
    [[nodiscard]] const std::vector<platform::Waker>& Wakers() const { return wakers_; }
    /// True when another look is worth it; to be asked when one of them is readable.
    [[nodiscard]] bool HasNews() const;
    /// False where the system cannot tell: then somebody has to look every now and then.
    [[nodiscard]] bool IsTold() const { return told_; }

private:
    Session& session_;
    std::vector<platform::RunningProgram> programs_;
    bool told_ = false;
    std::vector<platform::Waker> wakers_;
};

} // namespace kestrova
