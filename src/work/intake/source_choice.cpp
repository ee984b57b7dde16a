#include "intake/source_choice.h"

#include "core/file_kinds.h"
#include "core/text.h"
#include "packages/package_tools.h"
#include "words/sources.h"

namespace kestrova
{

namespace
{

/// A chosen place becomes the one where the next chooser opens, as long as none was set.
void RememberPlace(PreferencesRecord& preferences, const Path& place)
{
    if (Trim(preferences.downloadFolder) == OnDisk::DefaultDownloadFolder)
        preferences.downloadFolder = place.native();
}

Path PlaceToStart(const PreferencesRecord& preferences)
{
    return FolderFromText(Trim(preferences.downloadFolder));
}

// A kind that the first row hides would be taken for one that cannot be added.
std::string PackagesFilter()
{
    return GetMsg(Msg::SourcePackagesFilter, {PackagePatterns()}) + GetMsg(Msg::SourceFilesFilter);
}

} // namespace

std::optional<Path> ChooseSourceFile(Host& host, PreferencesRecord& preferences,
                                     const std::string& audioType)
{
    const bool audio = !audioType.empty();
    auto chosen = host.ChooseOpenFile(
        audio ? GetMsg(Msg::SelectAudioFile, {audioType}) : GetMsg(Msg::SelectSourceFile),
        audio ? GetMsg(Msg::AudioFilesFilter, {audioType, audioType}) : PackagesFilter(),
        PlaceToStart(preferences));
    if (chosen)
        RememberPlace(preferences, chosen->parent_path());
    return chosen;
}

std::vector<Path> ChooseSourceFiles(Host& host, PreferencesRecord& preferences)
{
    auto chosen = host.ChooseOpenFiles(GetMsg(Msg::SelectSourceFiles), PackagesFilter(),
                                       PlaceToStart(preferences));
    if (!chosen.empty())
        RememberPlace(preferences, chosen.front().parent_path());
    return chosen;
}

std::optional<Path> ChooseSourceFolder(Host& host, PreferencesRecord& preferences)
{
    auto chosen = host.ChooseFolder(GetMsg(Msg::SelectSourceFolder), PlaceToStart(preferences));
    if (chosen)
        RememberPlace(preferences, *chosen);
    return chosen;
}

} // namespace kestrova
