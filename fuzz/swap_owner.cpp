#include "formats/swap_journal.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// The owner record: whatever parses is written and read the same; any bytes are names.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    if (const auto record = ParseOwner(bytes)) {
        const std::string written = FormatOwner(*record);
        const auto again = ParseOwner(written);
        Promise(again && again->owner == record->owner &&
                    again->overwritten == record->overwritten && FormatOwner(*again) == written,
                "what was written reads the same");
    }
    OwnerRecord named;
    named.folder.path = bytes;
    named.added = {{std::string{bytes}, size, -1}};
    named.overwritten = {std::string{bytes}};
    const auto back = ParseOwner(FormatOwner(named));
    Promise(back && back->folder.path == bytes && back->added.at(0).name == bytes &&
                back->overwritten.at(0) == bytes,
            "a name is kept exactly");
    return 0;
}
