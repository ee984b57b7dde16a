#include "editor/setup_languages.h"

#include "core/text.h"
#include "words/level_setup.h"

namespace kestrova
{

namespace
{

constexpr SetupLanguage setupLanguages[] = {
    {"english", 0, 0, "load_eng.jpg", "english.dat", "manual_eng.pdf"},
    {"italian", 1, 1, "load_eng.jpg", "italian.dat", "manual_ita.pdf"},
    {"french", 2, 2, "load_fr.jpg", "french.dat", "manual_fr.pdf"},
    {"german", 3, 3, "load_eng.jpg", "german.dat", "manual_ger.pdf"},
    {"spanish", 4, 4, "load_eng.jpg", "spanish.dat", "manual_esp.pdf"},
    {"russian", 5, 0, "load_eng.jpg", "english.dat", "manual_rus.pdf"},
};

} // namespace

std::span<const SetupLanguage> SetupLanguages()
{
    return setupLanguages;
}

const SetupLanguage* FindSetupLanguage(std::string_view word)
{
    for (const SetupLanguage& language : setupLanguages)
        if (EqualNames(language.word, word))
            return &language;
    return nullptr;
}

std::string NameOf(const SetupLanguage& language)
{
    const std::vector<std::string> names = Split(Shown(Msg::SetupLanguageNames), '|');
    return language.row < names.size() ? names[language.row] : std::string{language.word};
}

std::string LinkNameIn(Message names, const SetupLanguage& language)
{
    return Split(names.text, '|')[language.links];
}

} // namespace kestrova
