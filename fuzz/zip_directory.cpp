#include "formats/zip_directory.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// The directory at the end of a zip: never more names than bytes, the same however much of the
/// file stands in front of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    constexpr std::size_t leastEntry = 46;
    const auto names = ParseZipDirectory(bytes);
    Promise(names.size() <= bytes.size() / leastEntry, "a name has its bytes");
    const std::uint64_t whole = ZipDirectorySize(bytes);
    if (whole == 0 || whole > bytes.size())
        return 0;
    Promise(ParseZipDirectory(bytes.substr(bytes.size() - whole)) == names,
            "the directory's own bytes are enough");
    return 0;
}
