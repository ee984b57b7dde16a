#pragma once

#include "words/message.h"

#include <span>
#include <string>
#include <string_view>

/// The languages that a setup of the Level Editor knows.
namespace kestrova
{

struct SetupLanguage {
    std::string_view word; ///< as the terminal has it
    std::size_t row;       ///< in the list of their names
    std::size_t links;     ///< whose names the shortcuts take
    std::string_view loadScreen;
    std::string_view languageFile;
    std::string_view manual;
};

/// In the order in which they are offered; the first is the one that nobody has to choose.
std::span<const SetupLanguage> SetupLanguages();
/// Null when there is none of that word.
const SetupLanguage* FindSetupLanguage(std::string_view word);

/// As a person reads it.
std::string NameOf(const SetupLanguage& language);
/// What a row of names says in the language.
std::string LinkNameIn(Message names, const SetupLanguage& language);

} // namespace kestrova
