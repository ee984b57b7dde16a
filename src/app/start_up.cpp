#include "app/start_up.h"

#include "archive/archive_saving.h"
#include "catalogue/message.h"
#include "core/staged_file.h"
#include "platform/places.h"
#include "swap/recovery.h"

namespace kestrova
{

namespace
{

constexpr std::uint64_t preferencesLimit = 1 << 20;

Path PreferencesFile(const Path& programFolder)
{
    return InFolder(programFolder, RowText(Msg::FragPreferences));
}

/// The fields of the preferences that hold places, by the name under which the settings keep the
/// exact form.
struct PlaceField {
    Msg name;
    std::string PreferencesRecord::*text;
};
constexpr PlaceField placeFields[] = {
    {Msg::ExactFieldTrle, &PreferencesRecord::trlePath},
    {Msg::ExactFieldArchive, &PreferencesRecord::archivePath},
    {Msg::ExactFieldDownload, &PreferencesRecord::downloadFolder},
};

Result<bool> ReadPreferences(Session& session)
{
    session.preferences = DefaultPreferences();
    const Path file = PreferencesFile(session.programFolder);
    if (!FileExists(file))
        return false;
    const auto bytes = ReadWholeFile(file, preferencesLimit);
    if (!bytes)
        return bytes.Error();
    session.preferences = ParsePreferences(*bytes);
    for (const PlaceField& field : placeFields) {
        std::string& text = session.preferences.*field.text;
        text = ExactFolder(session.settings, GetMsg(field.name), std::string{Trim(text)});
    }
    return true;
}

Status WritePreferenceFiles(Session& session)
{
    for (const PlaceField& field : placeFields)
        KeepExactFolder(session.settings, GetMsg(field.name), session.preferences.*field.text);
    if (const auto status = WriteSettings(session.programFolder, session.settings); !status)
        return status;
    const Path file = PreferencesFile(session.programFolder);
    const std::string record = FormatPreferences(session.preferences);
    if (const auto old = ReadWholeFile(file, preferencesLimit); old && old->starts_with(record))
        return {};
    return WriteRecordFile(file, record);
}

bool HoldFolder(Session& session, const Path& folder)
{
    if (folder.empty() || !FolderExists(folder))
        return true;
    const auto status = session.locks.Hold(folder);
    if (status)
        return true;
    if (status.Error().code == ErrorCode::Refused)
        session.host.Tell(Tone::Error,
                          GetMsg(Msg::HeldByAnother, {TextOf(folder), status.Error().reason}));
    else
        TellFailure(session, GetMsg(Msg::FolderNotLocked, {TextOf(folder)}), status.Error());
    return false;
}

} // namespace

Result<Path> ChooseProgramFolder(const Path& home, bool make)
{
    Path folder;
    const Path own = platform::ExecutableFolder();
    if (!home.empty())
        folder = FolderFromText(std::filesystem::absolute(home).lexically_normal().native());
    else if (FileExists(PreferencesFile(own)) ||
             FileExists(InFolder(own, RowText(Msg::FragPortable))))
        folder = own;
    else
        folder = InFolder(platform::UserDataFolder(), RowText(Msg::DirProgramData));
    if (make)
        if (const auto status = MakeFolders(folder); !status)
            return status.Error();
    return folder;
}

bool HoldFolders(Session& session)
{
    return HoldFolder(session, session.programFolder) &&
           HoldFolder(session, session.TrleFolder()) &&
           HoldFolder(session, Path{Trim(session.archive.secondaryFolder)});
}

Status LoadArchiveToLook(Session& session)
{
    session.archive = {};
    session.levels.clear();
    session.archiveDirty = false;
    const Path file = session.ArchivePath();
    if (file.empty())
        return MakeFailure(ErrorCode::Missing, {});
    const auto bytes = ReadWholeFile(ResolvePath(file));
    if (!bytes)
        return bytes.Error();
    auto content = ParseArchive(*bytes);
    if (!content)
        return MakeFailure(ErrorCode::Damaged, TextOf(file));
    session.archive = std::move(content->header);
    session.levels = std::move(content->levels);
    return {};
}

bool OpenSession(Session& session, bool writing, bool& firstRun)
{
    // Locked before it is read: otherwise another program's last words would be overwritten.
    if (writing && !HoldFolder(session, session.programFolder))
        return false;
    if (auto settings = ReadSettings(session.programFolder))
        session.settings = std::move(*settings);
    const auto read = ReadPreferences(session);
    if (!read) {
        TellFailure(session, GetMsg(Msg::PreferencesNotRead), read.Error());
        return false;
    }
    firstRun = !*read;
    if (!writing)
        return true;
    // The stores of the levels are found through the archive; one that cannot be read has none.
    (void)LoadArchiveToLook(session);
    if (!HoldFolders(session))
        return false;
    RecoverInterruptedWork(session);
    return true;
}

void WritePreferences(Session& session)
{
    AskSaveChanges(session);
    (void)WritePreferenceFiles(session);
}

bool SavePreferencesNow(Session& session)
{
    const auto status = WritePreferenceFiles(session);
    if (!status)
        TellFailure(session, GetMsg(Msg::PreferencesNotSaved), status.Error());
    return static_cast<bool>(status);
}

} // namespace kestrova
