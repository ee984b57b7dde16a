#pragma once

#include <string>
#include <string_view>
#include <vector>

/// A desktop entry (freedesktop.org, version 1.4): what a menu or a desktop shows to be started.
///
///     [Desktop Entry]
///     Type=Application
///     Name=Room Editor
///     Exec="/place/a b" "-setup"      each word quoted; % stands twice
///     Path=/place
///     Icon=applications-games
namespace kestrova
{

struct DesktopEntry {
    std::string name;
    std::vector<std::string> command; ///< the program and its words
    std::string folder;               ///< it works here
    std::string icon;                 ///< by the name that icon themes have it under
    std::string_view categories;      ///< each ended by a semicolon
    /// The kinds of files that it opens, each ended by a semicolon; a file's name stands behind the
    /// command then.
    std::string_view mimeTypes{};
    std::string comment{};          ///< what it is for, in a line
    std::string_view keywords{};    ///< it is found by these too, each ended by a semicolon
    std::string_view windowClass{}; ///< of its windows, so that a desktop knows them as its own
};

std::string FormatDesktopEntry(const DesktopEntry& entry);

/// The folder that such an entry works in; empty when it names none.
std::string FolderOfDesktopEntry(std::string_view text);

/// The address that a shortcut to a web page (`[InternetShortcut]`, `URL=`) holds; empty when it
/// holds none of the web.
std::string AddressOfShortcut(std::string_view bytes);

} // namespace kestrova
