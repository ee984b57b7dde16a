#pragma once

#include "catalogue/message.h"

#include <initializer_list>
#include <string>

namespace kestrova
{

/// The parts as one line of the activity log.
inline std::string LogLine(std::initializer_list<std::string> parts)
{
    std::string text;
    for (const std::string& part : parts)
        text += part;
    return text + std::string{lineBreak};
}

} // namespace kestrova
