#pragma once

#include "burning/burn_error.h"
#include "burning/burn_settings.h"
#include "tools/tools.h"

/// Discs written and blanked. What is written for a drive of the settings stands under a name of
/// its own until it is whole, so that a medium is as it was or a whole disc.
namespace kestrova
{

/// The settings' speed becomes the one that the tool told. What the tool printed is in the error's
/// output in any case.
bool BurnImageFile(const Tools& tools, BurnSettings& settings, const Path& image, BurnError& error);

/// An image is made and written in one go: the tools are joined by a pipe, and no image touches the
/// disk.
bool BurnThroughPipe(const Tools& tools, BurnSettings& settings, BurnError& error);

/// "all" or "fast", in any case.
bool IsBlankExtent(const std::string& extent);

/// `extent`: "all" or "fast", in any case.
bool BlankDisc(const Tools& tools, const BurnSettings& settings, const std::string& extent,
               BurnError& error);

} // namespace kestrova
