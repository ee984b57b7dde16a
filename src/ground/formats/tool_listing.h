#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The printed lists of packages, read without trust: they come out of files of anybody's making.
namespace kestrova
{

struct PackageEntry {
    std::string name; ///< bytes; `unzip` alone makes control characters visible
    std::uint64_t size = 0;
};

/// `unzip -l`: the entries between the two dashed lines behind the head with the four columns'
/// names. The name begins three blanks behind the time, wherever a long size has pushed it. Without
/// a head there are no entries.
std::vector<PackageEntry> ParseZipListing(std::string_view text);

/// `bsdtar -tv --numeric-owner`: mode, links, owner, group, size, three words of a date, one blank,
/// the name, of a link also where it leads, which is left out. What the tool writes with
/// backslashes
/// (`\\`, `\n`, `\303`) becomes the bytes that it stands for. Other lines are passed over.
std::vector<PackageEntry> ParseTarListing(std::string_view text);

} // namespace kestrova
