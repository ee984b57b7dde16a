#include "archive/level_document.h"

#include "catalogue/message.h"
#include "core/text.h"

namespace kestrova
{

std::optional<Path> FindDocument(const Path& filesFolder, std::string_view field)
{
    const std::string_view text = Trim(field);
    // The name comes out of a file that somebody else may have made.
    if (const auto name = SafeName(text))
        if (Path file = ResolvePath(filesFolder / *name); FileExists(file))
            return file;
    if (text.find('?') == std::string_view::npos)
        return {};
    std::optional<Path> found;
    for (const Path& file : ListFiles(filesFolder, RowText(Msg::PatAll))) {
        const std::string name = file.filename().native();
        if (FitsWindows1252(name) || !EqualNames(FromWindows1252(ToWindows1252(name)), text))
            continue;
        if (found)
            return {}; // of two nobody can tell which is meant
        found = file;
    }
    return found;
}

} // namespace kestrova
