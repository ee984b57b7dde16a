#pragma once

#include "core/names.h"
#include "pictures/picture.h"

namespace kestrova
{

/// What a file shows, whatever its name says. A failure names the file. Names are found without
/// regard to case.
Result<Picture> ReadPictureFile(const Path& file);

/// Both write the target whole or not at all and leave the source where it is. The source is taken
/// for what its content is, whatever its name says. Names are found without regard to case.
Status ConvertBitmapToJpeg(const Path& bitmap, const Path& jpeg);
Status ConvertJpegToBitmap(const Path& jpeg, const Path& bitmap);

/// The target whole or not at all.
Status SaveAsJpeg(const Picture& picture, const Path& jpeg);
Status SaveAsBitmap(const Picture& picture, const Path& bitmap);

} // namespace kestrova
