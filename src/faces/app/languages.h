#pragma once

#include "core/names.h"

#include <span>
#include <string_view>

/// The languages that the texts can be shown in. Files, formats and the words of the terminal are
/// the same in all of them.
namespace kestrova
{

struct Language {
    std::string_view code;    ///< as the setting and the catalogue's folder have it
    std::string_view name;    ///< in its own words
    std::string_view qtWords; ///< the code of Qt's own texts in it; empty: Qt's English
};

/// The told English first; it needs no catalogue.
std::span<const Language> Languages();
/// The row of that code; the told English for a code that is none.
const Language& LanguageOf(std::string_view code);
bool IsLanguage(std::string_view code);

/// From now on every text is shown in it: told English where its catalogue has none, is damaged or
/// is not there.
void Speak(std::string_view code);
/// The code of the language that is spoken now.
std::string_view SpokenLanguage();
/// Speaks as the settings in the program's folder say; told English when they cannot be read.
void SpeakAsSet(const Path& programFolder);

} // namespace kestrova
