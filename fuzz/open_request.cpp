#include "formats/open_request.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// What another program says to the windows: a request is bounded, and written as it was read.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    OpenRequest request;
    std::size_t used = 0;
    if (ParseOpenRequest(bytes, request, used) != Arrived::Whole)
        return 0;
    Promise(used <= bytes.size(), "no more than came is used");
    Promise(request.items.size() <= mostOpenItems, "the items are bounded");
    for (const std::string& item : request.items)
        Promise(item.starts_with('/'), "an item is a path from the root on");
    OpenRequest again;
    const std::string written = FormatOpenRequest(request);
    Promise(ParseOpenRequest(written, again, used) == Arrived::Whole && used == written.size(),
            "what is written is whole");
    Promise(again.activation == request.activation && again.items == request.items,
            "a request comes back");
    return 0;
}
