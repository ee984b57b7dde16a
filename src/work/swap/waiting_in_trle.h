#pragma once

#include "formats/preferences.h"
#include "session/archive.h"
#include "session/folders.h"

/// What waits for a better moment in the Level Editor's folder, in words.
namespace kestrova
{

/// What waits for a better moment while the original configuration stands, in words; empty when
/// nothing does.
std::string WhatWaitsInTrle(const Folders& folders, const Archive& archive,
                            const PreferencesRecord& preferences);
/// What the person can do about it.
std::string RemedyInTrle(const Folders& folders, const Archive& archive);
/// Originals that the standing level does not replace and that are not back, as they are shown.
std::vector<std::string> OwedOriginals(const Folders& folders);

} // namespace kestrova
