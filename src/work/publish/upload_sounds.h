#pragma once

#include "publish/upload_wizard.h"

/// What makes the package smaller: load picture and sounds in denser forms. Only the package's own
/// copies change.
namespace kestrova
{

/// There is something for each of them to do.
bool HasLoadPicture(const UploadWizard& wizard);
bool HasSounds(const UploadWizard& wizard);

/// `load.bmp` becomes `load.jpg`. False, with a message, when it does not.
bool CompressLoadPicture(UploadWizard& wizard);

/// The waves become mp3 by the session's settings. `withDecoder`: the programs that turn them into
/// waves again come along, as far as the program's folder has them. False, with a message, when
/// that failed or was stopped; waves that were not converted are still there.
bool CompressSounds(UploadWizard& wizard, bool withDecoder);
/// The program's folder has all of those programs.
bool HasDecoderUtilities(const Path& programFolder);

} // namespace kestrova
