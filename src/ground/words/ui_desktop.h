#pragma once

#include "words/message.h"

// clang-format off

/// What the desktop gives to the windows.
namespace kestrova::Msg
{

inline constexpr Message AskMakeFolder{"There is no folder ~1 yet. Do you want to make it?"};
inline constexpr Message FolderNotMade{"The folder ~1 could not be made. Choose another place, or give yourself the right to write there."};
inline constexpr Message ButtonYes{"Yes"};
inline constexpr Message ButtonNo{"No"};
inline constexpr Message ButtonOk{"Ok"};
inline constexpr Message ButtonCancel{"Cancel"};
inline constexpr Message StoppingNow{"Stopping ..."};
inline constexpr Message ProgressPartName{"Progress of this step"};
inline constexpr Message AllFiles{"All files"};

} // namespace kestrova::Msg
