#include "session/session.h"

#include "core/text.h"

namespace kestrova
{

Folders Session::Folders() const
{
    return {programFolder, TrleFolder(), FolderFromText(Trim(archive.header.secondaryFolder)),
            discs};
}

} // namespace kestrova
