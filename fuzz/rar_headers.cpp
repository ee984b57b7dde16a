#include "formats/rar_headers.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// The headers of a rar: never more files than bytes, and no name longer than the input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    const auto bytesAt = [&](std::uint64_t place, std::size_t most) {
        return place < bytes.size() ? std::string{bytes.substr(place, most)} : std::string{};
    };
    const RarHeaders headers = ParseRarHeaders(bytesAt, bytes.size());
    Promise(headers.files.size() <= bytes.size(), "a file has its bytes");
    for (const PackedFile& file : headers.files)
        Promise(file.name.size() <= bytes.size(), "a name has its bytes");
    return 0;
}
