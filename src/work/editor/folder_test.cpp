#include "editor/folder_test.h"

#include "core/name_list.h"
#include "core/text.h"
#include "editor/kept_places.h"
#include "formats/trle_folder.h"
#include "originals/backup_waves.h"
#include "session/telling.h"
#include "swap/backup_state.h"
#include "words/editor.h"

namespace kestrova
{

namespace
{

/// The music tracks that a complete Level Editor brings.
constexpr std::size_t fullAudio = 54;

struct Lack {
    Tone tone;
    std::string words;  ///< empty: nothing is missing
    bool twins = false; ///< it is there, in a folder of nearly the same name
};

/// Words about folders whose names differ by case alone; the game reads one of them.
std::string TwinsOf(const Path& folder)
{
    const auto twins = CaseTwins(folder);
    std::vector<std::string> names;
    if (twins && twins->size() > 1)
        for (const Path& twin : *twins)
            names.push_back(Readable(twin.filename().native()));
    return names.empty() ? std::string{} : GetMsg(Msg::TrleTwinFolders, {ShownNames(names)});
}

/// The first test that fails. The last one, of the music, speaks in a plain box.
Result<Lack> FirstLack(const Path& folder)
{
    const std::string shown = TextOf(folder);
    if (!FileExists(InFolder(folder, OnDisk::FragTrleTomb4)))
        return Lack{Tone::Error, GetMsg(Msg::TrleNoTomb4) + shown};
    const auto levels = ListFiles(InFolder(folder, OnDisk::DirData), OnDisk::PatTr4);
    const auto scripts = ListFiles(folder, OnDisk::PatDat);
    const auto sounds = ListFiles(InFolder(folder, OnDisk::DirAudio), OnDisk::PatWav);
    for (const auto* listing : {&levels, &scripts, &sounds})
        if (!*listing)
            return listing->Error();
    if (levels->empty())
        return Lack{Tone::Error, GetMsg(Msg::TrleNoTr4, {shown})};
    if (scripts->empty())
        return Lack{Tone::Error, GetMsg(Msg::TrleNoDat) + shown};
    if (sounds->size() < fullAudio)
        if (std::string twins = TwinsOf(InFolder(folder, OnDisk::DirAudio)); !twins.empty())
            return Lack{Tone::Plain, std::move(twins), true};
    if (sounds->size() < fullAudio)
        return Lack{Tone::Plain,
                    GetMsg(Msg::TrleFewWaves, {std::to_string(fullAudio - sounds->size())})};
    return Lack{Tone::Plain, {}};
}

} // namespace

Result<std::string> WhatTrleLacks(const Path& folder)
{
    const auto lack = FirstLack(folder);
    return lack ? Result<std::string>{lack->words} : lack.Error();
}

Result<std::string> WavesToCopy(const Folders& folders, const PreferencesRecord& preferences)
{
    const Path trle = folders.trle;
    const auto lack = FirstLack(trle);
    if (!lack)
        return lack.Error();
    if (lack->words.empty() || lack->twins || lack->tone != Tone::Plain || preferences.fullBackup ||
        BackupIsAway(folders))
        return std::string{};
    const auto missing = MissingWaves(folders, preferences);
    if (!missing)
        return missing.Error();
    return GetMsg(Msg::FewWavesCompact,
                  {TextOf(InFolder(trle, OnDisk::DirAudio)),
                   missing->empty() ? GetMsg(Msg::FewWavesUnknown) : ShownNames(*missing)});
}

bool IsTrleFolder(Host& host, const Folders& folders, const PreferencesRecord& preferences,
                  const Path& folder, bool showErrors)
{
    // Originals that lie in their own backup are gone with the next one.
    if (LiesAmongKept(folders, folder)) {
        if (showErrors)
            host.Tell(Tone::Error, GetMsg(Msg::TrleAmongKept, {TextOf(folder)}));
        return false;
    }
    const auto lack = FirstLack(folder);
    if (!lack)
        return showErrors && TellFolderNotRead(host, lack.Error());
    if (showErrors && !lack->words.empty())
        host.Tell(lack->tone, lack->words);
    if (showErrors && !lack->words.empty() && folder == folders.trle)
        if (const std::string words = WavesToCopy(folders, preferences).ValueOr({}); !words.empty())
            host.Tell(Tone::Plain, words);
    return lack->words.empty();
}

} // namespace kestrova
