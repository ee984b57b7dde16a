#pragma once

#include "session/session.h"
#include "words/message.h"

#include <optional>
#include <string>

namespace kestrova
{

/// Servers as a setting holds them: up to `most` addresses of the web, parted by single blanks. No
/// value for a text that is anything else; an empty one is none.
std::optional<std::string> ServersText(const std::string& text, std::size_t most);

/// What "Kestrova Settings" edits: a copy, taken over when the person accepts it. Nothing is
/// written to a file here.
class SettingsForm
{
public:
    explicit SettingsForm(Session& session);

    PreferencesRecord preferences;
    ProgramSettings settings;

    /// Choosers; cancelling leaves the field as it is. The two programs are kept by name alone.
    void BrowseDownloadFolder();
    void BrowseTrle();
    void BrowseGame();
    void BrowseTom2Pc();

    /// Into the session, but for the fields that this form only shows. False, with words and with
    /// nothing changed, when a text has no room in its field, a server's address is none, or
    /// another program works on the Level Editor's folder.
    bool Accept();

private:
    bool TakeServers(std::string& servers, std::size_t most);
    void BrowseProgram(Message title, std::string& name);

    Session& session_;
};

} // namespace kestrova
