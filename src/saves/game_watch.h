#pragma once

#include "session/session.h"

namespace kestrova
{

/// Whether a game is running: the one that was started here, also through Wine, or any program in
/// the Level Editor's folder.
class GameWatch
{
public:
    explicit GameWatch(Session& session) : session_(session) {}

    /// Looks again; True when the answer is another one.
    bool Look();
    [[nodiscard]] bool Running() const { return running_; }

private:
    Session& session_;
    bool running_ = false;
};

} // namespace kestrova
