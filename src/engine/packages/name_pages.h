#pragma once

#include "words/message.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The code pages that names in packages may be written in where the package does not say which.
namespace kestrova
{

struct NamePage {
    std::string_view name; ///< as converters and tools know it: `CP932`
    Message words;         ///< the languages that it is used for
};

/// In the order in which they are offered.
std::span<const NamePage> NamePages();
/// The row of that name, case ignored; null when there is none.
const NamePage* FindNamePage(std::string_view name);
/// "Japanese (CP932)"; the name alone when no row has it.
std::string NamePageText(std::string_view name);

/// The page in which the names, taken together, look most like names: by their content, by the
/// letters and scripts that become of them. `ofDos`: they come from a program of DOS, whose pages
/// count first where several look as good. ASCII names do not matter; `UTF-8` when they are that.
std::string GuessNamePage(const std::vector<std::string_view>& names, bool ofDos);

} // namespace kestrova
