#pragma once

#include "session/mp3_settings.h"
#include "tools/run_to_end.h"

/// Mp3 through the outside decoder and encoder. A failure stands in the state: the reason in
/// `error`, beside it in `details` what helps. The source is never changed, and the destination is
/// written whole or not at all, and only when it holds as much sound as the source.
namespace kestrova
{

/// Decodes to a wave of 16 bits with the source's rate and channels.
bool DecodeMp3(const Tools& tools, const Path& source, const Path& destination,
               ToolProgressState& state);

/// Encodes a standard wave.
bool EncodeMp3(const Tools& tools, const Mp3Settings& settings, const Path& source,
               const Path& destination, ToolProgressState& state);

} // namespace kestrova
