#pragma once

#include "platform/file_facts.h"
#include "session/session.h"

namespace kestrova
{

/// Preferences are written as soon as they are different, so that a program that is killed has
/// them. Where that fails it is told once, until it has succeeded again.
class KeptPreferences
{
public:
    explicit KeptPreferences(Session& session) : session_(session) {}

    void Keep();
    /// Another hand may have written the settings since: the file counts then, and the windows
    /// speak its language. Not while something goes on that may be about to change them.
    void TakeWhatOthersWrote();

private:
    Session& session_;
    std::optional<platform::FileFacts> seen_; ///< of the settings' file
    bool told_ = false;
};

} // namespace kestrova
