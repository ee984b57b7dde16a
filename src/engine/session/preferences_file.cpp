#include "session/preferences_file.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "formats/program_folder.h"
#include "session/file_names.h"
#include "words/session.h"

namespace kestrova
{

namespace
{

/// The fields that hold folders, by the names under which their exact form is kept.
template <class Each> void ForEachFolder(PreferencesRecord& record, Each each)
{
    each("archive", record.archivePath);
    each("trle", record.trlePath);
    each("download", record.downloadFolder);
}

Path FileOf(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::FragPreferences);
}

/// Texts that no program wrote get their first-run values, the switches with them. True when there
/// were any.
bool DropDamaged(PreferencesRecord& preferences, const ProgramSettings& settings)
{
    PreferencesRecord sound = DefaultPreferences();
    bool damaged = false;
    const auto take = [&](std::string& into, const std::string& from, bool known = false) {
        damaged = damaged || (HasControl(from) && !known);
        if (!HasControl(from) || known)
            into = from;
    };
    const auto isKnown = [&](const char* name, const std::string& folder) {
        return settings.exactFolders.contains(name) &&
               ExactFolder(settings, name, folder) == settings.exactFolders.at(name);
    };
    take(sound.archivePath, preferences.archivePath, isKnown("archive", preferences.archivePath));
    take(sound.trlePath, preferences.trlePath, isKnown("trle", preferences.trlePath));
    take(sound.downloadFolder, preferences.downloadFolder,
         isKnown("download", preferences.downloadFolder));
    take(sound.tom2PcName, preferences.tom2PcName);
    take(sound.tombExeName, preferences.tombExeName);
    if (damaged)
        preferences = std::move(sound);
    return damaged;
}

/// The copy's name; empty where the file is whole, or not there.
Result<Path> KeepIf(bool damaged, const Path& file)
{
    if (!damaged)
        return Path{};
    auto copy = FreeNumbered(file);
    if (!copy)
        return copy;
    if (auto status = CopyFileOver(file, *copy, {Verify::Content, true, true, {}}); !status)
        return status.Error();
    return copy;
}

bool AreDamaged(const std::string& bytes, const ProgramSettings& settings)
{
    PreferencesRecord record = ParsePreferences(bytes);
    return IsCutOrEmpty(bytes) || DropDamaged(record, settings);
}

} // namespace

PreferencesFound ReadPreferencesFile(const Folders& folders, PreferencesRecord& preferences,
                                     const ProgramSettings& settings)
{
    const auto bytes = ReadWholeFile(FileOf(folders), 1 << 20);
    preferences = bytes ? ParsePreferences(*bytes) : DefaultPreferences();
    const bool damaged = bytes && (DropDamaged(preferences, settings) || IsCutOrEmpty(*bytes));
    ForEachFolder(preferences, [&](const char* name, std::string& folder) {
        folder = ExactFolder(settings, name, folder);
    });
    if (!bytes)
        return PreferencesFound::None;
    return damaged ? PreferencesFound::Damaged : PreferencesFound::Whole;
}

Result<std::vector<Path>> MendPreferences(const Folders& folders, PreferencesRecord& preferences,
                                          ProgramSettings& settings)
{
    std::vector<Path> copies;
    const auto bytes = ReadWholeFile(FileOf(folders), 1 << 20);
    const std::pair<bool, Path> files[] = {
        {bytes && AreDamaged(*bytes, settings), FileOf(folders)},
        {SettingsAreDamaged(folders.program), InFolder(folders.program, OnDisk::FragSettings)}};
    for (const auto& [damaged, file] : files) {
        auto copy = KeepIf(damaged, file);
        if (!copy)
            return copy.Error();
        if (!copy->empty())
            copies.push_back(std::move(*copy));
    }
    if (!copies.empty())
        if (auto status = WritePreferencesFile(folders, preferences, settings); !status)
            return status.Error();
    return copies;
}

Status WritePreferencesFile(const Folders& folders, PreferencesRecord& preferences,
                            ProgramSettings& settings)
{
    ForEachFolder(preferences, [&](const char* name, std::string& folder) {
        KeepExactFolder(settings, name, folder);
    });
    if (auto status = WriteSettings(folders.program, settings); !status)
        return status;
    const std::string bytes = FormatPreferences(preferences);
    if (const auto old = ReadWholeFile(FileOf(folders), 1 << 20); old && *old == bytes)
        return {};
    return WriteDocument(FileOf(folders), bytes);
}

Status SavePreferencesNow(const Folders& folders, PreferencesRecord& preferences,
                          ProgramSettings& settings)
{
    return Saying(GetMsg(Msg::PreferencesNotSaved),
                  WritePreferencesFile(folders, preferences, settings));
}

} // namespace kestrova
