#include "editor/usual_places.h"

#include "core/files.h"
#include "core/look.h"
#include "core/text.h"
#include "editor/file_names.h"
#include "editor/folder_test.h"
#include "editor/trle_registry.h"
#include "editor/wine_prefixes.h"
#include "platform/places.h"
#include "platform/user_folders.h"

#include <algorithm>

namespace kestrova
{

namespace
{

void AddBelow(const Path& root, std::string_view places, std::vector<Path>& candidates)
{
    if (root.empty())
        return;
    for (const std::string& place : Split(places, '|'))
        candidates.push_back(ResolvePath(root / place));
}

} // namespace

std::vector<Path> FoundEditors(const Folders& folders)
{
    std::vector<Path> candidates;
    for (const RegisteredEditor& editor : RegisteredEditors(folders))
        candidates.push_back(editor.folder);
    for (const Path& prefix : KnownPrefixes(folders))
        AddBelow(prefix / OnDisk::WineDriveC, OnDisk::UsualOnDriveC, candidates);
    AddBelow(platform::HomeFolder(), OnDisk::UsualInHome, candidates);
    AddBelow(platform::UserDataFolder(), OnDisk::UsualInData, candidates);

    std::vector<Path> found;
    for (const Path& candidate : candidates) {
        const auto lacks = WhatTrleLacks(candidate);
        const bool known = std::any_of(found.begin(), found.end(), [&](const Path& other) {
            return IsSameFolder(other, candidate);
        });
        if (!known && lacks && lacks->empty())
            found.push_back(candidate);
    }
    return found;
}

} // namespace kestrova
