#include "formats/savegame_info.h"
#include "core/text.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// What is shown of a savegame that any program may have written.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const SavegameInfo info = ParseSavegameInfo(TextOfInput(data, size));
    Promise(IsUtf8(info.title), "a title can be shown");
    Promise(info.title.find_first_of(std::string_view{"\0,\r\n", 4}) == std::string::npos,
            "a title is one line");
    const int number = size < 77 ? 0 : data[75] + 256 * data[76];
    Promise(info.number == (number < 0x8000 ? number : number - 0x10000), "the save number");
    return 0;
}
