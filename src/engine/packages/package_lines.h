#pragma once

#include "tools/line_parser.h"

#include <memory>
#include <span>

/// What the tools print while they pack and unpack, a line for each file.
namespace kestrova
{

/// What stands in a line that names one file; case is ignored.
struct ItemMark {
    std::string_view word;
    bool leads = false; ///< the line must begin with it
};

/// The bar shows the files that were named, of `total`. The marks outlive the parser.
std::unique_ptr<LineParser> GestioneUnzip(std::span<const ItemMark> marks, std::uint64_t total);

/// The same, and the last name asks to stop: its files are in the zip by then, as far as the lines
/// tell. Of no files at all any line is the last.
std::unique_ptr<LineParser> GestioneZip(std::span<const ItemMark> marks, std::uint64_t total);

} // namespace kestrova
