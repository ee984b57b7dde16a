#pragma once

#include <string>
#include <string_view>

namespace kestrova::OnDisk
{

/// What is deflated in an archive; files of all other kinds are stored as they are.
inline constexpr std::string_view CompressedExtensions = ".tr4|.wav|.mp3";

} // namespace kestrova::OnDisk

namespace kestrova
{

/// True for a file of those kinds.
bool IsCompressed(const std::string& name);

} // namespace kestrova
