#include "packages/small_zip.h"

#include "core/staged_file.h"
#include "work_folder.h"

using namespace kestrova;
using namespace kestrova::fuzz;

namespace
{

constexpr std::uint64_t mostBytes = std::uint64_t{4} << 20;

std::uint64_t BytesBelow(const Path& folder)
{
    std::uint64_t bytes = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator{folder}) {
        Promise(!entry.is_symlink() && (entry.is_directory() || entry.is_regular_file()),
                "files and folders are all that comes out");
        if (entry.is_regular_file())
            bytes += entry.file_size();
    }
    return bytes;
}

} // namespace

/// A small zip: whatever it says, what comes out lies in its folder and is not too much.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const WorkFolder work;
    const Path zip = work.path / "in.zip";
    const Path out = work.path / "out";
    Promise(bool{WriteWholeFile(zip, TextOfInput(data, size))}, "the input is written");
    std::filesystem::create_directory(out);
    (void)UnpackSmallZip(zip, out);
    Promise(BytesBelow(out) <= mostBytes, "no zip becomes more than is allowed");
    std::filesystem::remove_all(out);
    std::size_t others = 0;
    for (const auto& entry : std::filesystem::directory_iterator{work.path})
        others += entry.path() != zip ? 1 : 0;
    Promise(others == 0, "nothing comes out beside the folder");
    return 0;
}
