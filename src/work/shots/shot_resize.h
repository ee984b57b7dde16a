#pragma once

#include "history/change_parts.h"
#include "pictures/picture.h"
#include "session/host.h"
#include "words/message.h"

#include <span>

namespace kestrova
{

struct ShotSize {
    Message text;
    int width;
    int height;
};
/// The sizes that a picture can be given, in the order in which they are offered.
std::span<const ShotSize> ShotSizes();

/// Asks where to and writes a picture that was drawn in its new size: a name that ends in `.jpg`
/// becomes a jpeg, by way of `_temp.bmp` in the program's folder, any other a bitmap. `shot` is the
/// picture of that level that it was made from. False when the person cancelled or, with words,
/// nothing was written.
bool SaveResizedShot(Host& host, const ChangeParts& parts, LevelCode code, const Picture& drawn,
                     const Path& shot);

} // namespace kestrova
