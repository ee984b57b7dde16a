#pragma once

#include "burning/burn_error.h"
#include "burning/burn_settings.h"
#include "formats/iso_listing.h"
#include "tools/tools.h"

/// What lies on an image, and what should lie on a disc, as texts.
namespace kestrova
{

/// `kind`: "FlatList", "TreeList" or "ReferenceList", in any case. A tool that tells every letter
/// is asked first. `files` are what the report is made of; of a flat one a tool may tell names
/// alone.
bool ReportImage(const Tools& tools, const BurnSettings& settings, const Path& image,
                 const std::string& kind, std::vector<DiscEntry>& files, std::string& report,
                 BurnError& error);

/// `kind`: "Source" or "Target", in any case: a line for each file, its real path or its place on
/// the disc, with its size and its date.
bool ReportItems(const BurnSettings& settings, const std::string& kind, std::string& report,
                 BurnError& error);

/// The place on the disc of a file or folder that an item brings; empty when none does.
std::string PlaceOfFile(const BurnSettings& settings, const Path& file);

} // namespace kestrova
