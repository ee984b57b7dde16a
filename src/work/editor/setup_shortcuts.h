#pragma once

#include "core/files.h"
#include "editor/setup_languages.h"
#include "tools/tools.h"

#include <vector>

/// The entries by which the desktop starts what belongs to the Level Editor.
namespace kestrova
{

struct Shortcut {
    Path place; ///< below the folder of the group
    std::string text;
};

/// For what the tree has, which will stand at `target`: names in the language. A Windows program is
/// started through Wine, in the prefix on whose drive it lies.
std::vector<Shortcut> ShortcutsFor(const Tools& tools, const Path& tree, const Path& target,
                                   const SetupLanguage& language);

/// Where the groups of this maker lie among the person's own entries.
Path ShortcutsFolder();

/// Writes all of them below `folder`; the failure names the folder that could not be made.
Status WriteShortcuts(const std::vector<Shortcut>& shortcuts, const Path& folder);

/// What was written becomes the group of that name, or of the first free one behind it. A group of
/// an earlier setup into the same folder, or into one that is no more, gives way; entries of
/// another installation, and whatever else lies there, stay. Where the very same group is there
/// already, nothing is to be done.
Status PlaceShortcuts(const std::vector<Shortcut>& shortcuts, const Path& written,
                      const std::string& group, const Path& target);

} // namespace kestrova
