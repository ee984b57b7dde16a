#include "app/languages.h"

#include "app/file_names.h"
#include "core/look.h"
#include "platform/places.h"
#include "session/settings.h"
#include "words/catalogue.h"

#include <algorithm>
#include <map>
#include <mutex>

namespace kestrova
{

namespace
{

constexpr std::uint64_t longestCatalogue = UINT64_C(16) << 20;

constexpr Language languages[] = {
    {toldLanguage, "English (original)", {}},
    {"en@proofread", "English (proofread)", {}},
    {"de", "Deutsch", "de"},
    {"it", "Italiano", "it"},
};

std::atomic<const Language*> spokenLanguage{&languages[0]};

/// Read once a run, and kept to its end: threads may still show texts of it.
const Catalogue* CatalogueOf(std::string_view code)
{
    static std::mutex reading;
    static std::map<std::string_view, std::optional<Catalogue>> known;
    const std::lock_guard lock{reading};
    auto [place, isNew] = known.try_emplace(code);
    if (isNew) {
        const Path file = platform::ResourceFolder().parent_path() / OnDisk::DirLocale / code /
                          OnDisk::DirMessages / OnDisk::FileNameCatalogue;
        if (auto bytes = ReadFileIfThere(file, longestCatalogue); bytes && *bytes)
            place->second = Catalogue::Read(std::move(**bytes));
    }
    return place->second ? &*place->second : nullptr;
}

} // namespace

std::span<const Language> Languages()
{
    return languages;
}

bool IsLanguage(std::string_view code)
{
    return LanguageOf(code).code == code;
}

const Language& LanguageOf(std::string_view code)
{
    const auto* found = std::find_if(std::begin(languages), std::end(languages),
                                     [&](const Language& row) { return row.code == code; });
    return found == std::end(languages) ? languages[0] : *found;
}

void Speak(std::string_view code)
{
    const Language& language = LanguageOf(code);
    spokenLanguage.store(&language);
    SpeakBy(&language == &languages[0] ? nullptr : CatalogueOf(language.code));
}

std::string_view SpokenLanguage()
{
    return spokenLanguage.load()->code;
}

void SpeakAsSet(const Path& programFolder)
{
    const auto settings = ReadSettings(programFolder);
    Speak(settings ? settings->language : std::string{toldLanguage});
}

} // namespace kestrova
