#include "formats/import_note.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// The note of an import: whatever parses is written and read the same, and names no place outside
/// of its trees.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    if (const auto note = ParseImportNote(bytes)) {
        const std::string written = FormatImportNote(*note);
        const auto again = ParseImportNote(written);
        Promise(again && again->places == note->places && again->made == note->made &&
                    again->swept == note->swept && FormatImportNote(*again) == written,
                "what was written reads the same");
        for (const ImportPlace& place : note->places)
            Promise(bool{SafeRelative(place.name)}, "a place lies in its tree");
    }
    ImportNote named;
    named.id = 1;
    named.subject = bytes;
    named.places = {{ImportTree::Backup, std::string{bytes}, {}, {}}};
    const auto back = ParseImportNote(FormatImportNote(named));
    Promise(bool{back} == bool{SafeRelative(bytes)}, "a name that leads out is refused");
    Promise(!back || (back->subject == bytes && back->places == named.places),
            "a name is kept exactly");
    return 0;
}
