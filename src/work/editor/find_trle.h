#pragma once

#include "session/session.h"

namespace kestrova
{

/// Why a folder is no whole Level Editor's folder, in words; empty when it is one. A failure when
/// nobody can tell, because one of its folders cannot be listed.
Result<std::string> WhatTrleLacks(const Path& folder);
/// What to do when only music is missing and the backup is compact, so that it cannot come back
/// from there; empty otherwise.
Result<std::string> WavesToCopy(const Folders& folders, const PreferencesRecord& preferences);
/// The one test of what a Level Editor's folder is; with `showErrors` the first test that fails is
/// told in words.
bool IsTrleFolder(Host& host, const Folders& folders, const PreferencesRecord& preferences,
                  const Path& folder, bool showErrors);

/// State and steps of "Where is Tomb Raider Level Editor folder ?".
class TrleFinder
{
public:
    explicit TrleFinder(Session& session) : session_(session) {}

    /// True when the folder of the preferences passes: nothing needs to be asked.
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
