#include "drives/drive_tools.h"

namespace kestrova
{

const Tool& FuseIso()
{
    static const Tool tool{.name = "fuseiso", .package = "fuseiso"};
    return tool;
}

const Tool& FuseUnmount()
{
    static const Tool tool{.name = "fusermount", .package = "fuse3"};
    return tool;
}

const Tool& UdisksControl()
{
    static const Tool tool{
        .name = "udisksctl", .package = "udisks2", .environment = {{"LC_ALL", "C.UTF-8"}}};
    return tool;
}

const Tool& XorrisoExtract()
{
    static const Tool tool{.name = "xorriso", .package = "xorriso"};
    return tool;
}

} // namespace kestrova
