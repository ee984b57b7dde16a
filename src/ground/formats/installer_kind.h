#pragma once

#include "words/message.h"

#include <cstdint>
#include <string_view>

/// What kind of program sets a level up, told by a few of its bytes.
///
/// | from | bytes | what stands there |
/// |---|---|---|
/// | 0 | 624 | `Compressed by Petite` or `Winzip`, in any case: a package that unpacks itself |
/// | 30,272 | 208 | `Indigo` with a NUL behind each letter: FlyDrive |
/// | the end | 8 | three or more of the value 128: FlyDrive |
///
/// The last two count in a file called `setup.exe` of 40,001 bytes and more alone.
namespace kestrova
{

/// The places of a program that are looked at; shorter where the file ends before.
struct InstallerBytes {
    static constexpr std::size_t beginSize = 624;
    static constexpr std::size_t middleOffset = 30'272;
    static constexpr std::size_t middleSize = 208;
    static constexpr std::size_t endSize = 8;

    std::uint64_t size = 0; ///< of the file
    std::string_view begin;
    std::string_view middle;
    std::string_view end;
};
/// The places of a program that is in memory whole.
InstallerBytes InstallerBytesOf(std::string_view program);

struct InstallerKind {
    std::string_view code; ///< as a level's configuration file has it; empty: nobody can tell
    Message name;
};
InstallerKind DetectInstaller(std::string_view fileName, const InstallerBytes& bytes);

} // namespace kestrova
