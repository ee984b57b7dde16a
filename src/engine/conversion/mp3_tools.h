#pragma once

#include "session/mp3_settings.h"
#include "tools/run_to_end.h"

/// Mp3 through the outside decoder and encoder. The source is never changed, and the destination is
/// written whole or not at all, and only when it holds as much sound as the source.
namespace kestrova
{

/// Decodes to a wave of 16 bits with the source's rate and channels.
Status DecodeMp3(const Tools& tools, const Path& source, const Path& destination,
                 const ToolProgressState& state);

/// Encodes a standard wave.
Status EncodeMp3(const Tools& tools, const Mp3Settings& settings, const Path& source,
                 const Path& destination, const ToolProgressState& state);

} // namespace kestrova
