#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestrova
{

/// Bytes in a code page, named as the system's converter knows it (`CP866`), as UTF-8; no value
/// when the converter does not know it, or when some of the bytes mean nothing there.
std::optional<std::string> FromCodePage(std::string_view bytes, const std::string& page);

} // namespace kestrova
