#include "app/settings_form.h"

#include "app/result_text.h"
#include "core/text.h"
#include "formats/url_text.h"
#include "history/undo_entries.h"
#include "online/url_update.h"
#include "session/held_folders.h"
#include "session/telling.h"
#include "words/app.h"
#include "words/editor.h"

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr std::size_t textFieldSize = 256;

} // namespace

std::optional<std::string> ServersText(const std::string& text, std::size_t most)
{
    std::vector<std::string> addresses = Split(text, ' ');
    std::erase(addresses, std::string{});
    const bool sound =
        std::all_of(addresses.begin(), addresses.end(),
                    [](const std::string& address) { return IsServerAddress(address); });
    if (addresses.size() > most || !sound || !IsUtf8(text) || ForTerminal(text) != text)
        return std::nullopt;
    return Join(addresses, " ");
}

SettingsForm::SettingsForm(Session& session)
    : preferences(session.preferences), settings(session.settings), session_(session)
{
    for (std::string* field : {&preferences.trlePath, &preferences.downloadFolder,
                               &preferences.tom2PcName, &preferences.tombExeName})
        *field = std::string{Trim(*field)};
}

void SettingsForm::BrowseDownloadFolder()
{
    if (const auto chosen = session_.host.ChooseFolder(GetMsg(Msg::ChooseDownloadFolder),
                                                       Path{preferences.downloadFolder}))
        preferences.downloadFolder = chosen->native();
}

void SettingsForm::BrowseTrle()
{
    if (const auto chosen = session_.host.ChooseFolder(GetMsg(Msg::ChooseTrlePath),
                                                       FolderFromText(preferences.trlePath)))
        preferences.trlePath = chosen->native();
}

void SettingsForm::BrowseProgram(Message title, std::string& name)
{
    if (const auto chosen = session_.host.ChooseOpenFile(GetMsg(title), GetMsg(Msg::FilterPrograms),
                                                         FolderFromText(preferences.trlePath)))
        name = chosen->filename().native();
}

void SettingsForm::BrowseGame()
{
    BrowseProgram(Msg::ChooseGame, preferences.tombExeName);
}

void SettingsForm::BrowseTom2Pc()
{
    BrowseProgram(Msg::ChooseTom2Pc, preferences.tom2PcName);
}

bool SettingsForm::TakeServers(std::string& servers, std::size_t most)
{
    auto text = ServersText(servers, most);
    if (text)
        servers = std::move(*text);
    else
        session_.host.Tell(Tone::Error, GetMsg(Msg::ServersNotUsable, {servers}));
    return text.has_value();
}

bool SettingsForm::Accept()
{
    if (!TakeServers(settings.updateServers, mostUpdateServers) ||
        !TakeServers(settings.wadServer, 1))
        return false;
    for (const std::string* field : {&preferences.trlePath, &preferences.downloadFolder,
                                     &preferences.tom2PcName, &preferences.tombExeName})
        if (ToWindows1252(*field).size() > textFieldSize) {
            session_.host.Tell(Tone::Error, GetMsg(Msg::FolderTooLong, {*field}));
            return false;
        }
    const PreferencesRecord& before = session_.preferences;
    // These two belong to the archive and to the backup.
    preferences.archivePath = before.archivePath;
    preferences.fullBackup = before.fullBackup;
    Folders folders = session_.Folders();
    const Path oldFolder = std::exchange(folders.trle, FolderFromText(Trim(preferences.trlePath)));
    if (folders.trle != oldFolder) {
        if (!DoneOrTold(session_.host, HoldFolders(session_.locks, folders)))
            return false;
        if (!oldFolder.empty())
            session_.locks.Release(oldFolder);
    }
    session_.preferences = preferences;
    session_.settings = settings;
    BoundUndo(session_.Folders(), settings);
    return true;
}

} // namespace kestrova
