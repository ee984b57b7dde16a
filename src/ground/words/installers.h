#pragma once

#include "words/message.h"

// clang-format off

/// Levels that come as a program, which installs them.
namespace kestrova::Msg
{

inline constexpr Message InstallerUnknown{"Unknown installer"};
inline constexpr Message InstallerFlyDrive{"FlyDrive Installer"};
inline constexpr Message InstallerWinAce{"WinAce Self Extractor"};
inline constexpr Message InstallerWinZip{"WinZip Self Extractor"};

} // namespace kestrova::Msg
