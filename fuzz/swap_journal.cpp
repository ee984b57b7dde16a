#include "formats/swap_journal.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// The journal of a swap: whatever parses is written and read the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto journal = ParseJournal(TextOfInput(data, size));
    if (!journal)
        return 0;
    Promise(journal->phase >= SwapPhase::Planned && journal->phase <= SwapPhase::Restore,
            "a phase that there is");
    const std::string written = FormatJournal(*journal);
    const auto again = ParseJournal(written);
    Promise(again && again->from == journal->from && again->to == journal->to &&
                again->phase == journal->phase && again->restore == journal->restore &&
                FormatJournal(*again) == written,
            "what was written reads the same");
    return 0;
}
