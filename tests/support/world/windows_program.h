#pragma once

#include <string>

namespace kestrova::testing
{

inline constexpr int machine32 = 0x14C;
inline constexpr int machine64 = 0x8664;

/// The headers of a Windows program for that machine, as far as anybody reads them here.
inline std::string WindowsProgram(int machine)
{
    std::string bytes(0x90, '\0');
    bytes[0] = 'M';
    bytes[1] = 'Z';
    bytes[0x3C] = '\x80';
    bytes[0x80] = 'P';
    bytes[0x81] = 'E';
    bytes[0x84] = static_cast<char>(machine & 0xFF);
    bytes[0x85] = static_cast<char>(machine >> 8);
    return bytes;
}

} // namespace kestrova::testing
