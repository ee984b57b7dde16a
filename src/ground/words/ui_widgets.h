#pragma once

#include "words/message.h"

// clang-format off

/// Widgets.
namespace kestrova::Msg
{

inline constexpr Message ShotDamaged{"the file is damaged, or is no picture"};
inline constexpr Message ShotTooLarge{"it is too large"};
inline constexpr Message AudioBitRate{"Bit rate (Kbps)"};
inline constexpr Message AudioChannels{"Channels"};
inline constexpr Message AudioFrequency{"Frequency (Hz)"};
inline constexpr Message SpokenWithin{"~1: ~2"};
inline constexpr Message ProgressName{"Progress of the work"};
inline constexpr Message AudioEstimate{"Size against the game's wave: "};

} // namespace kestrova::Msg
