#include "formats/installer_kind.h"

#include "check.h"
#include "formats/config_values.h"
#include "words/installers.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// Any file as the program that sets a level up: one of the kinds that there are, and the same for
/// what it is looked at by.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view file = TextOfInput(data, size);
    const InstallerBytes bytes = InstallerBytesOf(file);
    Promise(bytes.begin.size() <= file.size() && bytes.end.size() <= file.size(),
            "no more is looked at than is there");
    for (const std::string_view name : {"SETUP.exe", "level.exe"}) {
        const InstallerKind kind = DetectInstaller(name, bytes);
        Promise(kind.code.empty() == (kind.name == Msg::InstallerUnknown), "a kind has its name");
        Promise(kind.code.empty() || kind.code == OnDisk::ExeZip ||
                    (kind.code == OnDisk::ExeFlyDrive && name == "SETUP.exe" && size > 40'000),
                "a kind that there is");
    }
    return 0;
}
