#include "archive/level_document.h"

#include "core/file_kinds.h"
#include "core/text.h"

namespace kestrova
{

Result<std::optional<Path>> FindDocument(const Path& filesFolder, std::string_view field)
{
    const std::string_view text = Trim(field);
    // The name comes out of a file that somebody else may have made.
    if (const auto name = SafeName(text)) {
        const auto file = FindPath(filesFolder / *name);
        if (!file)
            return file.Error();
        if (FileExists(*file))
            return std::optional<Path>{*file};
    }
    std::optional<Path> found;
    if (text.find('?') == std::string_view::npos)
        return found;
    const auto files = ListFiles(filesFolder, OnDisk::PatAll);
    if (!files)
        return files.Error();
    for (const Path& file : *files) {
        const std::string name = file.filename().native();
        if (FitsWindows1252(name) || !EqualNames(FromWindows1252(ToWindows1252(name)), text))
            continue;
        if (found)
            return std::optional<Path>{}; // of two nobody can tell which is meant
        found = file;
    }
    return found;
}

} // namespace kestrova
