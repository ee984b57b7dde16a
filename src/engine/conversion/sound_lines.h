#pragma once

#include "tools/line_parser.h"

#include <memory>

/// What decoder and encoder print of how far they are.
namespace kestrova
{

/// ` 00:01:03 Layer III, …`: what was decoded so far, of `total` seconds; hours are passed over.
std::unique_ptr<LineParser> GestioneMadPlay(std::uint64_t total);

/// `100/8336   ( 1%)| …`: the percentage between "(" and "%)".
std::unique_ptr<LineParser> GestioneLame();

} // namespace kestrova
