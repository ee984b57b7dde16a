#pragma once

#include "session/session.h"

namespace kestrova
{

/// State and steps of "Where is Tomb Raider Level Editor folder ?".
class TrleFinder
{
public:
    explicit TrleFinder(Session& session) : session_(session) {}

    /// True when the folder of the preferences passes: nothing needs to be asked. Otherwise the
    /// folder is the one that Wine's registry knows; it counts once it is accepted.
    bool Prepare();
    [[nodiscard]] const Path& Folder() const { return folder_; }
    /// A chooser; the chosen folder is taken when it passes the test.
    void Browse();
    /// Takes a folder without a chooser when it passes the test (a practice folder just made).
    bool Take(const Path& folder);
    /// True when the folder was accepted into the preferences.
    bool Accept();
    /// Says that the program cannot run without the folder.
    void GiveUp();

private:
    Session& session_;
    Path folder_;
};

} // namespace kestrova
