#include "formats/loan_note.h"

#include "check.h"

#include <algorithm>

using namespace kestrova;
using namespace kestrova::fuzz;

/// The note of a lent folder: whatever parses is written and read the same, and names no place
/// outside of that folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto note = ParseLoanNote(TextOfInput(data, size));
    if (!note)
        return 0;
    const std::string written = FormatLoanNote(*note);
    const auto again = ParseLoanNote(written);
    Promise(again && FormatLoanNote(*again) == written, "what was written reads the same");
    for (const LentPlace& place : note->places)
        Promise(bool{SafeRelative(place.name)}, "a place lies in the folder");
    const auto isInside = [](const auto& one) {
        return one.name.is_relative() && !one.name.empty() && *one.name.begin() != "..";
    };
    for (const auto* tree : {&note->whole, &note->rest})
        if (*tree)
            Promise(std::all_of((*tree)->files.begin(), (*tree)->files.end(), isInside) &&
                        std::all_of((*tree)->folders.begin(), (*tree)->folders.end(), isInside) &&
                        std::all_of((*tree)->links.begin(), (*tree)->links.end(), isInside),
                    "what stood there stands in the folder");
    return 0;
}
