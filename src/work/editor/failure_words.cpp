#include "editor/failure_words.h"

namespace kestrova
{

std::string WordsOf(const Failure& failure)
{
    const bool both = !failure.sentence.empty() && !failure.reason.empty();
    return failure.sentence + (both ? ": " : "") + failure.reason;
}

} // namespace kestrova
