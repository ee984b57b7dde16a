#include "core/result.h"

namespace kestrova
{

Failure MakeFailure(ErrorCode code, std::string subject, const std::error_code& reason)
{
    if (reason == std::errc::no_space_on_device)
        code = ErrorCode::NoSpace;
    else if (reason == std::errc::operation_canceled)
        code = ErrorCode::Stopped;
    return {code, std::move(subject), reason ? reason.message() : std::string{}};
}

Failure InWords(ErrorCode code, std::string sentence, std::string reason, std::string details)
{
    return {code, {}, std::move(reason), std::move(details), std::move(sentence)};
}

Failure Saying(std::string sentence, Failure failure)
{
    if (failure.sentence.empty() && failure.code != ErrorCode::Stopped)
        failure.sentence = std::move(sentence);
    return failure;
}

} // namespace kestrova
