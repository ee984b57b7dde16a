#pragma once

#include "session/session.h"

/// What a person's desktop knows of the program's files.
namespace kestrova
{

/// True when a package, or an earlier registration, has told the desktop.
bool AreFileTypesKnown();

/// Writes the kinds of files, their icon and the program's entry into the person's own data folder
/// and has the desktop's lists made anew, as far as there are programs for that. What was written;
/// `anew` tells whether the lists were made.
Result<std::vector<Path>> RegisterFileTypes(Session& session, bool& anew);

/// Whether a first start has to offer it: the desktop does not know them, and can be told. A
/// program's folder of one's own choice stays without.
bool OffersFileTypes(Session& session);
/// Registers them; tells when that failed.
void TeachFileTypes(Session& session);
/// Asks, where it has to be offered, and registers.
void OfferFileTypes(Session& session);

} // namespace kestrova
