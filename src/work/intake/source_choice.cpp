#include "intake/source_choice.h"

#include "core/file_kinds.h"
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

std::optional<Path> ChooseSourceFile(Session& session, const std::string& audioType)
{
    const bool audio = !audioType.empty();
    auto chosen = session.host.ChooseOpenFile(
        audio ? GetMsg(Msg::SelectAudioFile, {audioType}) : GetMsg(Msg::SelectSourceFile),
        audio ? GetMsg(Msg::AudioFilesFilter, {audioType, audioType}) : PackagesFilter(),
        PlaceToStart(session.preferences));
    if (chosen)
        RememberPlace(session.preferences, chosen->parent_path());
    return chosen;
}

std::vector<Path> ChooseSourceFiles(Session& session)
{
    auto chosen = session.host.ChooseOpenFiles(GetMsg(Msg::SelectSourceFiles), PackagesFilter(),
                                               PlaceToStart(session.preferences));
    if (!chosen.empty())
        RememberPlace(session.preferences, chosen.front().parent_path());
    return chosen;
}

std::optional<Path> ChooseSourceFolder(Session& session)
{
    auto chosen = session.host.ChooseFolder(GetMsg(Msg::SelectSourceFolder),
                                            PlaceToStart(session.preferences));
    if (chosen)
        RememberPlace(session.preferences, *chosen);
    return chosen;
}

} // namespace kestrova
