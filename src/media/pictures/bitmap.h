#pragma once

#include "pictures/picture.h"

#include <string>

/// Windows and OS/2 bitmaps, little-endian:
///
///      0  2  "BM"
///      2  4  size of the file (not trusted)
///     10  4  where the pixels begin
///     14  4  size of the header: 12 (OS/2 1), 16 to 64 (OS/2 2), 40, 52, 56, 108, 124
///     18     12: width 2, height 2, planes 2, bits 2; others: width 4, height 4 (below 0: rows
///            from the top), planes 2, bits 2, packing 4, size 4, resolution 8, colours used 4,
///            colours that matter 4
///     54     colour masks for packing 3 and 6 (in the header itself from size 52 on), then the
///            palette: blue, green, red (and a spare byte, not for header 12)
///
/// Rows are padded to 4 bytes and stand from the bottom up.
namespace kestrova
{

/// 1, 4 and 8 bits with palette, plain or run-length packed, 16 and 32 bits plain or with masks,
/// 24 bits. Transparency is ignored. What run-length packing leaves out has the palette's colour 0.
/// `Refused` for more than `mostPixels`.
Result<Picture> DecodeBitmap(std::string_view bytes, std::int64_t mostPixels = maxPicturePixels);

/// 24 bits, header 40, rows from the bottom up: the form in which the game reads its load picture.
std::string EncodeBitmap(const Picture& picture);

} // namespace kestrova
