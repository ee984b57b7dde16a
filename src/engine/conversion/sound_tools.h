#pragma once

#include "session/mp3_settings.h"
#include "tools/tools.h"

/// The outside tools that sounds go through: what they are called and told.
namespace kestrova
{

/// Frames whose checksum does not match are silenced, or played as they are.
enum class Checksums { Heeded, Ignored };

/// Of mp3 files.
const Tool& Decoder();
const Tool& Encoder();

/// All paths are absolute, so none is taken for a switch.
ToolArguments DecoderArguments(const Path& source, const Path& wave, Checksums checksums);
ToolArguments EncoderArguments(const Path& wave, const Path& target, const Mp3Settings& settings);

} // namespace kestrova
