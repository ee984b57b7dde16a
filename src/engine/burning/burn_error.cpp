#include "burning/burn_error.h"

#include "core/text.h"
#include "words/burning.h"

namespace kestrova
{

BurnError ErrorFrom(const Failure& failure, Message title, BurnCode code, BurnCode missing)
{
    BurnError error{GetMsg(title), {}, failure.details, code};
    if (failure.code == ErrorCode::Stopped) {
        error.code = BurnCode::Stopped;
        error.detail = GetMsg(Msg::BurnStopped);
        return error;
    }
    if (failure.code == ErrorCode::Missing)
        error.code = missing;
    error.detail = failure.sentence.empty() ? failure.subject : failure.sentence;
    if (!failure.reason.empty())
        error.detail.append(error.detail.empty() ? "" : lineBreak).append(failure.reason);
    return error;
}

} // namespace kestrova
