#pragma once

#include "core/result.h"
#include "words/message.h"

#include <string>

namespace kestrova
{

enum class BurnCode {
    None = 0,
    ImageFailed = 1,
    BurnFailed = 2,
    PipeBurnFailed = 3,
    Stopped = 5,
    BlankFailed = 9,
    BurnerMissing = 11,
    ImagerMissing = 12,
    ReportFailed = 15
};

/// The last failure, in words. A warning of a command that went well has a title and no code.
struct BurnError {
    std::string title{};
    std::string detail{};
    std::string output{}; ///< of the tool
    BurnCode code = BurnCode::None;
};

/// The failure under that title: a stop and a missing tool have codes of their own.
BurnError ErrorFrom(const Failure& failure, Message title, BurnCode code,
                    BurnCode missing = BurnCode::ImagerMissing);

} // namespace kestrova
