#pragma once

#include "intake/intake.h"

namespace kestrova
{

/// Where a package of wads comes from, and what a person is told of it.
struct WadPackage {
    std::string name; ///< of the file
    std::string url;  ///< empty: nobody knows where it is
    std::string text;
};

/// Asks whether the person has the package, fetches it, or has it fetched by hand. Empty when there
/// is none. Only addresses of the web are fetched, and handed to the desktop only those that it may
/// open. In a terminal nothing is fetched unless the draft says so.
Path AskWadPackage(Intake& intake, const WadPackage& package);

} // namespace kestrova
