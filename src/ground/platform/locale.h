#pragma once

/// What the person's surroundings say of letters.
namespace kestrova::platform
{

/// Other programs take bytes of names for UTF-8. False where the surroundings name none that does,
/// or one that is not installed.
bool UsesUtf8();

} // namespace kestrova::platform
