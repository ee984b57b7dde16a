#pragma once

#include "platform/file_hook.h"

#include <string>
#include <string_view>
#include <vector>

namespace kestrova::platform
{

/// While one stands, a folder whose names are asked for is listed once and not once a name: this
/// program's own changes are kept up with, those of others are seen by the folder's times. Who
/// works through thousands of files holds one; they may stand within each other and count for all
/// threads.
class FolderMemory
{
public:
    FolderMemory();
    ~FolderMemory();
    FolderMemory(const FolderMemory&) = delete;
    FolderMemory& operator=(const FolderMemory&) = delete;
};

/// What names are compared by; one function for the whole program.
using NameKey = std::string (*)(std::string_view name);

/// The folder's names whose key is that of `name`, in the order of their bytes. Fails as
/// `ListFolder`.
std::error_code NamesLike(const Path& folder, std::string_view name, NameKey key,
                          std::vector<std::string>& names);

/// Told by whatever adds or removes a name, after it did.
void NoteName(const Path& file, bool isThere);
/// Told by whatever removed much of a tree at once, its root maybe.
void ForgetTree(const Path& root);

} // namespace kestrova::platform
