#pragma once

#include "session/session.h"
#include "words/message.h"

namespace kestrova
{

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
    /// nothing changed, when a text has no room in its field or another program works on the Level
    /// Editor's folder.
    bool Accept();

private:
    void BrowseProgram(Message title, std::string& name);

    Session& session_;
};

} // namespace kestrova
