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

Path FileOf(const Session& session)
{
    return InFolder(session.programFolder, OnDisk::FragPreferences);
}

} // namespace

bool ReadPreferencesFile(Session& session)
{
    const auto bytes = ReadWholeFile(FileOf(session), 1 << 20);
    session.preferences = bytes ? ParsePreferences(*bytes) : DefaultPreferences();
    ForEachFolder(session.preferences, [&](const char* name, std::string& folder) {
        folder = ExactFolder(session.settings, name, folder);
    });
    return static_cast<bool>(bytes);
}

Status WritePreferencesFile(Session& session)
{
    ForEachFolder(session.preferences, [&](const char* name, std::string& folder) {
        KeepExactFolder(session.settings, name, folder);
    });
    if (auto status = WriteSettings(session.programFolder, session.settings); !status)
        return status;
    const std::string bytes = FormatPreferences(session.preferences);
    if (const auto old = ReadWholeFile(FileOf(session), 1 << 20); old && *old == bytes)
        return {};
    return WriteRecordFile(FileOf(session), bytes);
}

bool SavePreferencesNow(Session& session)
{
    const auto status = WritePreferencesFile(session);
    if (!status)
        TellFailure(session, GetMsg(Msg::PreferencesNotSaved), status.Error());
    return static_cast<bool>(status);
}

} // namespace kestrova
