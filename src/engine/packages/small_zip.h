#pragma once

#include "core/files.h"

/// Small zips of the plainest kind, unpacked by the program itself: packages come with thousands of
/// them, and to start a tool takes longer than such a zip takes.
namespace kestrova
{

/// Beyond this a zip is worth a tool.
constexpr std::uint64_t mostOfSmallZip = std::uint64_t{256} << 10;

/// The files of the zip, with their folders and times, into `folder`, which is empty. False when
/// the zip is not of that kind or not whole in every respect, or something could not be written: a
/// tool is to be asked then, which has words for it, and what lies in `folder` is worth nothing.
///
/// Of that kind is what has names of plain ASCII that lead down, each once, and files that are
/// stored or deflated, without a password, a few hundred at most, of some megabytes together.
bool UnpackSmallZip(const Path& zip, const Path& folder);

} // namespace kestrova
