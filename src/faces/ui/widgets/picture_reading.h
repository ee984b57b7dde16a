#pragma once

#include "core/names.h"
#include "pictures/picture.h"

#include <QImage>

namespace kestrova
{

/// A picture file decoded by its content; the failure's reason is in words for people.
Result<QImage> LoadPicture(const Path& file);
/// The same for bytes that came another way; `Refused` for more pixels than any picture has.
Result<QImage> ReadPicture(std::string& bytes);
/// The same with the longer side `side` at most, for a list of many pictures: more pixels than any
/// player's screen has are refused, and little memory is taken.
Result<QImage> ReadSmallPicture(std::string& bytes, int side);

/// For the encoders, which know no window library.
Picture PictureOf(const QImage& image);

} // namespace kestrova
