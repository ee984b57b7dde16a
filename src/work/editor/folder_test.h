#pragma once

#include "formats/preferences.h"
#include "session/folders.h"
#include "session/host.h"

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

} // namespace kestrova
