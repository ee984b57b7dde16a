#pragma once

#include "pictures/picture.h"

#include <string>

namespace kestrova
{

/// Grey, colour and print (CMYK) jpegs. Small faults that a picture survives are passed over; a
/// picture that is cut is `Damaged`.
Result<Picture> DecodeJpeg(std::string_view bytes);

/// Quality from 1 to 100; colours are kept at the full resolution, since load pictures carry
/// lettering. `Refused` for a picture without pixels or wider or higher than 65,500.
Result<std::string> EncodeJpeg(const Picture& picture, int quality = 92);

} // namespace kestrova
