#include "formats/setup_list.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// `list.txt` of a setup: every name is one of its lines, and none leads out of its folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view rest = TextOfInput(data, size);
    const std::string_view all = rest;
    std::size_t names = 0;
    while (true) {
        const std::size_t before = rest.size();
        const std::string_view name = NextSetupName(rest);
        if (name.empty())
            break;
        ++names;
        Promise(rest.size() < before, "each name is taken off the list");
        Promise(all.find(name) != std::string_view::npos, "a name stands in the list");
        const std::string key = SetupKey(name);
        Promise(key.empty() || key.front() != '/', "a key is relative");
        Promise(("/" + key + "/").find("/../") == std::string::npos, "a key leads down");
    }
    Promise(rest.empty() && names <= size, "the list is read to its end");
    return 0;
}
