#pragma once

#include "pictures/picture.h"

#include <string>

namespace kestrova
{

/// Grey, colour and print (CMYK) jpegs. Small faults that a picture survives are passed over; a
/// picture that is cut is `Damaged`.
Result<Picture> DecodeJpeg(std::string_view bytes);
/// At a half, a quarter or an eighth while the longer side is at least `side` then. `Refused` for
/// more than `mostPixels` in the file.
Result<Picture> DecodeSmallJpeg(std::string_view bytes, int side, std::int64_t mostPixels);

/// Quality from 1 to 100; colours are kept at the full resolution, since load pictures carry
/// lettering. `Refused` for a picture without pixels or wider or higher than 65,500.
Result<std::string> EncodeJpeg(const Picture& picture, int quality = 92);

} // namespace kestrova
