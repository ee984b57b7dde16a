#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view DocumentEndings = ".txt|.rtf|.doc|.htm|.html|.pdf|.odt|.jpg|.jpeg|.bmp|.png|.gif";
inline constexpr std::string_view DefaultWineCommand = "wine";

} // namespace kestrova::OnDisk
