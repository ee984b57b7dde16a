#pragma once

#include <string>

namespace kestrova
{

/// True for the extensions that are deflated in an archive; all others are stored as they are.
bool IsCompressed(const std::string& name);

} // namespace kestrova
