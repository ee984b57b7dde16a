#pragma once

#include "words/message.h"

// clang-format off

/// A list of files that a person works on.
namespace kestrova::Msg
{

inline constexpr Message CountOfFiles{" files ("};
inline constexpr Message ClosingRound{")"};
inline constexpr Message NoFileSelected{"No file selected"};
inline constexpr Message AskRemoveFile{"Are you sure to remove file: "};

} // namespace kestrova::Msg
