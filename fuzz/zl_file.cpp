#include "storage/zl_file.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

namespace
{

constexpr std::uint64_t limit = 1 << 20;

void PromiseRoundTrip(std::string_view content)
{
    const std::string stream = CompressZlBytes(content);
    const auto back = ExpandZlBytes(stream, limit);
    Promise(back && *back == content, "what was deflated comes back");
    Promise(!ExpandZlBytes(std::string_view{stream}.substr(0, stream.size() - 1), limit),
            "a cut stream is refused");
    Promise(!ExpandZlBytes(stream + '\0', limit), "junk behind a stream is refused");
}

} // namespace

/// `.zl`: the input as a stream, and as the content of one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    if (const auto expanded = ExpandZlBytes(bytes, limit)) {
        Promise(expanded->size() <= limit, "nothing expands beyond the limit");
        const auto exact = ExpandZlBytes(bytes, expanded->size());
        Promise(exact && *exact == *expanded, "the exact limit is enough");
        if (!expanded->empty()) {
            const auto less = ExpandZlBytes(bytes, expanded->size() - 1);
            Promise(!less && less.Error().code == ErrorCode::NoSpace, "one byte less is too few");
        }
        PromiseRoundTrip(*expanded);
    }
    if (size <= limit)
        PromiseRoundTrip(bytes);
    return 0;
}
