#pragma once

#include "discs/disc_set.h"

/// A set of discs as images in a folder.
namespace kestrova
{

/// The name of a disc's image: `Kestrova 01 NAME.iso`.
std::string ImageNameOf(const std::string& archive, std::int32_t number);

/// The folder can take the set: it is there, belongs to nobody else, holds no file of those names,
/// and has room. The failure says which of it is not so.
Status CanTakeImages(const DiscParts& parts, const DiscSet& set);

/// Makes the images one after the other, the next one while the last is read back and compared with
/// its sources. Each takes its name when it was proved, and is noted then. When it fails, or is
/// stopped, the images of this set that were made are removed again.
Status MakeImages(const DiscParts& parts, DiscSet& set);

} // namespace kestrova
