#include "editor/enclosed_folder.h"

#include "formats/program_folder.h"
#include "platform/real_path.h"

namespace kestrova
{

Enclosure EnclosureOfTrle(const Path& trle, const StandingTree& tree)
{
    // What is the builder's own lies there while others have its place.
    Enclosure enclosure{{trle}, {}, {InFolder(trle, OnDisk::DirLent)}};
    for (const StandingLink& link : tree.links) {
        Path real;
        if (platform::RealPath(trle / link.name, real))
            continue;
        const bool isFolder = platform::FactsOf(real).kind == platform::FileKind::Folder;
        (isFolder ? enclosure.writable : enclosure.readable).push_back(real);
    }
    return enclosure;
}

Enclosure EnclosureOfTrle(const Path& trle)
{
    const auto tree = TreeOf(trle, {true});
    return EnclosureOfTrle(ResolvePath(trle), tree ? *tree : StandingTree{});
}

} // namespace kestrova
