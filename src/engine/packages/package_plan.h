#pragma once

#include "packages/package_tools.h"
#include "packages/packed_files.h"

namespace kestrova
{

/// How one package is to be read: what its directory tells before any tool has looked at it.
struct PackagePlan {
    Unpacker unpacker = Unpacker::Unzip;
    /// The code page that the tool must be told for the names; empty: as the tool thinks.
    std::string page{};
    /// The code page that names without one of their own were read in; empty when all names say
    /// theirs. Guessed unless the person chose it.
    std::string namesAs{};
    /// What the program itself reads in a zip's directory; empty for another kind of package.
    std::vector<PackageEntry> entries{};
    /// Entries without content that other entries use as a folder: not to be unpacked as files.
    std::vector<std::string> skip{};
    bool isZip = true;
    /// The directory alone tells what the tool's own list would.
    bool listed = false;
    /// Of a zip or rar: its plain files, and whether a password is needed.
    std::vector<PackedFile> files{};
    bool locked = false;
    /// The tool does not prove each file by its checksum.
    bool needsProof = false;
};

/// `wanted`: the code page that the person chose for names; empty: to be guessed.
///
/// `unzip` reads the usual zip, and some methods of old programs that nothing else reads. What it
/// would spoil or refuse goes to `bsdtar`, where that is installed: names that need a code page,
/// newer methods, folders whose names do not end with a slash, names that `unzip` would make equal,
/// comments that it would print among its lines.
PackagePlan PlanFor(const Tools& tools, const Path& package, const std::string& wanted);

/// The same for the names of another kind of package, as its list has them.
void PlanNames(PackagePlan& plan, const std::vector<PackageEntry>& listed,
               const std::string& wanted);

/// Entries whose names climb out of the folder (`../x`) stay packed where the tool would refuse the
/// whole package for them; their names. None when they are all there is, or too many to be named.
std::vector<std::string> LeaveOutWhatLeadsOut(PackagePlan& plan,
                                              const std::vector<PackageEntry>& entries);

/// The names that the package has for more than one file.
std::vector<std::string> NamesTwice(const std::vector<PackageEntry>& entries);

/// The bytes that a text was read from, in a code page in which each byte is one letter.
std::string BytesIn(const std::string& text, const std::string& page);

/// The list's names as text, read in the code page where they are none.
void ReadNames(std::vector<PackageEntry>& entries, const std::string& page);

} // namespace kestrova
