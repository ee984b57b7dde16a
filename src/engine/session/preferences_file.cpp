#include "session/preferences_file.h"

#include "core/staged_file.h"
#include "formats/program_folder.h"
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

} // namespace

bool ReadPreferencesFile(const Folders& folders, PreferencesRecord& preferences,
                         const ProgramSettings& settings)
{
    const auto bytes = ReadWholeFile(FileOf(folders), 1 << 20);
    preferences = bytes ? ParsePreferences(*bytes) : DefaultPreferences();
    ForEachFolder(preferences, [&](const char* name, std::string& folder) {
        folder = ExactFolder(settings, name, folder);
    });
    return static_cast<bool>(bytes);
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
