#pragma once

#include "words/message.h"

// clang-format off

/// Outside programs.
namespace kestrova::Msg
{

inline constexpr Message WineMissing{"this is a Windows program, and '~1' that should start it was not found. Install Wine (on Debian: apt-get install wine), or name another command in the settings"};
inline constexpr Message Wine32Missing{"this is a 32-bit Windows program, and Wine has no 32-bit part here, so it would end at once without a word. Install it (on Debian: dpkg --add-architecture i386, apt-get update, apt-get install wine32:i386)"};
inline constexpr Message WineAwaited{"Before '~1' starts, what Wine has running is awaited ..."};
inline constexpr Message WineBusy{"another Windows program runs in the same Wine prefix (~1), and both would write over each other's registry; end that program, then try again"};
inline constexpr Message UtilityMissing{"Utility \"~1\" doesn't exist"};
inline constexpr Message MissingUtility{"Missing utility \"~1\""};
inline constexpr Message ErrorCreatingSubprocess{"Error creating subprocess: \"~1\"~2With command line: \"~3\""};
inline constexpr Message ErrorExecutingUtility{"Error executing utility: "};
inline constexpr Message ErrorLaunchingShell{"Error launching Shell()"};
inline constexpr Message ToolTimeout{"Timeout"};
inline constexpr Message NoTextOnOutput{"No text on standard output"};
inline constexpr Message ByteOfValueZero{"Valore 0"};
inline constexpr Message ToolLineTooLong{"The program '~1' wrote a line of more than ~2 characters. That is not what it writes when all is well, so it was stopped."};
inline constexpr Message ToolTooMuchOutput{"The program '~1' wrote more than ~2. That is not what it writes when all is well, so it was stopped."};
inline constexpr Message ToolEndedWithCode{"The program '~1' did not do its work: it ended with the code ~2."};
inline constexpr Message ToolEndedBySignal{"The program '~1' did not do its work: it was ended by the signal ~2."};
inline constexpr Message ToolLeftOut{"The program '~1' left something out."};
inline constexpr Message ToolInstallHint{"The program '~1' is neither in the folder '~2' nor among the system's programs. Install the package '~3', then try again."};

inline constexpr Message ToolLeftOthers{"'~1' has ended; what it started is still at work, and is waited for: ~2. Stop ends it."};
inline constexpr Message ToolTookTheDisk{"The program '~1' took so much room on the disk that it was stopped."};

} // namespace kestrova::Msg
