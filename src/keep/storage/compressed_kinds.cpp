#include "storage/compressed_kinds.h"

#include "core/text.h"

namespace kestrova
{

bool IsCompressed(const std::string& name)
{
    for (const std::string& extension : Split(OnDisk::CompressedExtensions, '|'))
        if (EndsWithName(name, extension))
            return true;
    return false;
}

} // namespace kestrova
