#include "formats/iso_directory.h"

#include "check.h"
#include "formats/sectors.h"

#include <algorithm>
#include <cstring>

using namespace kestrova;
using namespace kestrova::fuzz;

namespace
{

/// The input is what a disc holds behind its first, empty sectors.
constexpr std::uint64_t emptyBytes = 16 * discSector;

} // namespace

/// A disc of anybody's making: no name leads anywhere but down from its root, each folder was told
/// before what is in it, and nothing is read that does not make sense.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::uint64_t reads = 0;
    const auto found = ReadIsoDirectory([&](std::uint64_t offset, std::span<std::byte> into) {
        ++reads;
        if (offset < emptyBytes || offset - emptyBytes > size ||
            into.size() > size - (offset - emptyBytes))
            return false;
        std::memcpy(into.data(), data + (offset - emptyBytes), into.size());
        return true;
    });
    // Each sector of folders is read once, each of their records may have some pieces elsewhere.
    Promise(reads < 1000 + size * 4, "no disc keeps its reader busy");
    if (!found)
        return 0;
    for (const IsoFile& file : found->files) {
        const std::string_view path = file.path;
        Promise(!path.empty() && path.front() != '/' && path.back() != '/', "a path is relative");
        const std::string whole = "/" + file.path + "/";
        Promise(whole.find("//") == std::string::npos && whole.find("/../") == std::string::npos &&
                    whole.find("/./") == std::string::npos,
                "a path leads down");
        Promise(path.find('\0') == std::string_view::npos, "a path has no zero");
        std::uint64_t bytes = 0;
        for (const IsoExtent& extent : file.extents)
            bytes += extent.size;
        Promise(file.kind == IsoKind::Folder || bytes == file.size, "a size is that of its pieces");
    }
    return 0;
}
