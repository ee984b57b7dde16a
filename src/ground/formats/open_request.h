#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// What a later start of the windows says to the program that has the folder open already.
///
///     kestrova open 1\n
///     LENGTH\n               of what follows, in decimal
///     activation NUL item NUL … item NUL
///
/// The activation is the desktop's leave to come to the front, letters of ASCII, empty without one.
/// An item is a path from the root on. The program answers `openTaken`; whoever asked then says
/// `openGo`, and only now it counts: who has gone away in the meantime has asked for nothing.
namespace kestrova
{

inline constexpr std::string_view openTaken = "taken\n";
inline constexpr std::string_view openGo = "go\n";
inline constexpr std::size_t longestOpenRequest = 1024 * 1024;
inline constexpr std::size_t mostOpenItems = 4096;

struct OpenRequest {
    std::string activation;
    std::vector<std::string> items;
};

/// Empty when an item is no such path, or the whole is larger than a request may be.
std::string FormatOpenRequest(const OpenRequest& request);

enum class Arrived { Part, Whole, Wrong };
/// What has come so far. `used`: the length of a whole request, which other bytes may follow.
Arrived ParseOpenRequest(std::string_view bytes, OpenRequest& request, std::size_t& used);

} // namespace kestrova
