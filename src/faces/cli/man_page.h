#pragma once

#include <string>
#include <string_view>

namespace kestrova
{

/// The terminal's page for man(1), from the same rows and words as its other forms.
std::string ManPage(std::string_view version);

/// The page of the program with the windows: its words, and what its menus hold.
std::string WindowsManPage(std::string_view version);

/// A text in the simple Markdown of this program's documents as the language of man pages:
/// headings, paragraphs, items, indented lines, and `code`.
std::string AsRoff(std::string_view markdown);

} // namespace kestrova
