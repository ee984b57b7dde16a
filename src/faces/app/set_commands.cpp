#include "app/set_commands.h"

#include "app/languages.h"
#include "app/opening.h"
#include "app/result_text.h"
#include "app/settings_form.h"
#include "archive/archive_saving.h"
#include "core/look.h"
#include "core/text.h"
#include "history/undo_entries.h"
#include "online/url_update.h"
#include "platform/files.h"
#include "words/commands.h"
#include "words/discs_commands.h"
#include "words/menus.h"
#include "words/online_commands.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

constexpr std::size_t nameFieldSize = 256;

/// A value that can be set: how it reads, and how a word becomes it (False for nonsense).
struct SettingRow {
    std::string_view name;
    Message takes; ///< what it can be
    bool ofArchive = false;
    std::string (*get)(const Session&) = nullptr;
    bool (*set)(Session&, const std::string&) = nullptr;
};

std::string OnOff(bool on)
{
    return on ? "on" : "off";
}

bool SetFlag(bool& flag, const std::string& word)
{
    if (word != "on" && word != "off")
        return false;
    flag = word == "on";
    return true;
}

bool SetNumber(std::int32_t& number, const std::string& word)
{
    const auto value = WholeNumber<std::int32_t>(word);
    if (!value || *value < 0 || *value > mostThatIsKept)
        return false;
    number = *value;
    return true;
}

/// A name of a file in the Level Editor's folder.
bool SetFileName(std::string& name, const std::string& word)
{
    if (Trim(word).empty() || HasControl(word) || !SafeName(word) || HasWildcard(word) ||
        ToWindows1252(word).size() > nameFieldSize || !FitsWindows1252(word))
        return false;
    name = word;
    return true;
}

template <bool PreferencesRecord::*flag, bool inverted = false>
constexpr SettingRow PreferenceFlag(std::string_view name)
{
    return {name, Msg::TakesOnOff, false,
            [](const Session& session) { return OnOff(session.preferences.*flag != inverted); },
            [](Session& session, const std::string& word) {
                bool on = false;
                const bool known = SetFlag(on, word);
                if (known)
                    session.preferences.*flag = on != inverted;
                return known;
            }};
}

template <bool ArchiveHeader::*flag> constexpr SettingRow ArchiveFlag(std::string_view name)
{
    return {name, Msg::TakesOnOff, true,
            [](const Session& session) { return OnOff(session.archive.header.*flag); },
            [](Session& session, const std::string& word) {
                return SetFlag(session.archive.header.*flag, word);
            }};
}

template <bool ProgramSettings::*flag> constexpr SettingRow ProgramFlag(std::string_view name)
{
    return {name, Msg::TakesOnOff, false,
            [](const Session& session) { return OnOff(session.settings.*flag); },
            [](Session& session, const std::string& word) {
                return SetFlag(session.settings.*flag, word);
            }};
}

template <std::string PreferencesRecord::*field>
constexpr SettingRow FileNameRow(std::string_view name)
{
    return {name, Msg::TakesFileName, false,
            [](const Session& session) { return std::string{Trim(session.preferences.*field)}; },
            [](Session& session, const std::string& word) {
                return SetFileName(session.preferences.*field, word);
            }};
}

template <std::int32_t ProgramSettings::*field>
constexpr SettingRow NumberRow(std::string_view name)
{
    return {name, Msg::TakesNumber, false,
            [](const Session& session) { return std::to_string(session.settings.*field); },
            [](Session& session, const std::string& word) {
                return SetNumber(session.settings.*field, word);
            }};
}

bool SetServers(std::string& servers, const std::string& word, std::size_t most)
{
    auto text = ServersText(word, most);
    if (text)
        servers = std::move(*text);
    return text.has_value();
}

std::string DrivesText(const Session& session)
{
    std::vector<std::string> drives;
    for (const DriveSetting& drive : session.settings.drives)
        drives.push_back(drive.name + '=' + FormatDriveSetting(drive));
    return Join(drives, " ");
}

/// Two drives cannot hold one file, nor show their discs in one folder.
bool Collide(const DriveSetting& drive, const DriveSetting& other)
{
    const auto same = [](const Path& a, const Path& b) {
        if (a.empty() || b.empty())
            return false;
        const platform::FileFacts there = platform::FactsOf(a);
        return a.lexically_normal() == b.lexically_normal() ||
               (there.kind != platform::FileKind::Missing &&
                IsSameThing(there, platform::FactsOf(b)));
    };
    return drive.name != other.name &&
           (same(drive.medium, other.medium) || same(drive.folder, other.folder));
}

/// One drive is named anew or changed, or forgotten when nothing stands behind its name.
bool SetDrive(Session& session, const std::string& word)
{
    const std::size_t sign = std::min(word.find('='), word.size());
    const std::string name = word.substr(0, sign);
    std::vector<DriveSetting>& drives = session.settings.drives;
    const auto old = std::find_if(drives.begin(), drives.end(),
                                  [&](const DriveSetting& drive) { return drive.name == name; });
    if (sign + 1 == word.size() && IsDriveName(name)) {
        if (old != drives.end())
            drives.erase(old);
        return true;
    }
    auto drive =
        ParseDriveSetting(name, std::string_view{word}.substr(std::min(sign + 1, word.size())));
    if (!drive || (old == drives.end() && drives.size() == mostDriveSettings))
        return false;
    // From the terminal paths count from where it stands.
    drive->medium = drive->medium.empty() ? "" : PlaceFromWord(drive->medium).native();
    drive->folder = PlaceFromWord(drive->folder).native();
    if (std::any_of(drives.begin(), drives.end(),
                    [&](const DriveSetting& other) { return Collide(*drive, other); }))
        return false;
    if (old == drives.end())
        drives.push_back(std::move(*drive));
    else
        *old = std::move(*drive);
    return true;
}

constexpr SettingRow settingRows[] = {
    PreferenceFlag<&PreferencesRecord::captureEnabled>("capture"),
    PreferenceFlag<&PreferencesRecord::promptCapture>("capture-prompt"),
    PreferenceFlag<&PreferencesRecord::noAutoCompile, true>("auto-compile"),
    PreferenceFlag<&PreferencesRecord::checkEqualLevels>("check-equal"),
    PreferenceFlag<&PreferencesRecord::writeLogFiles>("log-files"),
    PreferenceFlag<&PreferencesRecord::noDecompressInProperties, true>("unpack-in-properties"),
    PreferenceFlag<&PreferencesRecord::autoSave>("auto-save"),
    FileNameRow<&PreferencesRecord::tombExeName>("game"),
    FileNameRow<&PreferencesRecord::tom2PcName>("tom2pc"),
    {"download-folder", Msg::TakesFolder, false,
     [](const Session& session) { return std::string{Trim(session.preferences.downloadFolder)}; },
     [](Session& session, const std::string& word) {
         const Path folder = PlaceFromWord(word);
         if (word.empty() || !FolderExists(folder) ||
             ToWindows1252(folder.native()).size() > nameFieldSize)
             return false;
         session.preferences.downloadFolder = folder.native();
         return true;
     }},
    ArchiveFlag<&ArchiveHeader::compressLevels>("compress"),
    ArchiveFlag<&ArchiveHeader::wavInMp3>("mp3"),
    {"wine-command", Msg::TakesCommand, false,
     [](const Session& session) { return session.settings.wineCommand; },
     [](Session& session, const std::string& word) {
         if (Trim(word).empty() || !IsUtf8(word) || ForTerminal(word) != word)
             return false;
         session.settings.wineCommand = Trim(word);
         return true;
     }},
    {"wine-words", Msg::TakesWords, false,
     [](const Session& session) { return session.settings.wineWords; },
     [](Session& session, const std::string& word) {
         if (!IsUtf8(word) || ForTerminal(word) != word)
             return false;
         session.settings.wineWords = Trim(word);
         return true;
     }},
    {"language", Msg::TakesLanguage, false,
     [](const Session& session) { return session.settings.language; },
     [](Session& session, const std::string& word) {
         if (!IsLanguage(word))
             return false;
         session.settings.language = word;
         return true;
     }},
    ProgramFlag<&ProgramSettings::exportSavegames>("export-savegames"),
    NumberRow<&ProgramSettings::historyCount>("history-count"),
    NumberRow<&ProgramSettings::historyMegabytes>("history-megabytes"),
    NumberRow<&ProgramSettings::undoCount>("undo-count"),
    NumberRow<&ProgramSettings::undoMegabytes>("undo-megabytes"),
    {"update-servers", Msg::TakesServers, false,
     [](const Session& session) { return session.settings.updateServers; },
     [](Session& session, const std::string& word) {
         return SetServers(session.settings.updateServers, word, mostUpdateServers);
     }},
    {"wad-server", Msg::TakesServer, false,
     [](const Session& session) { return session.settings.wadServer; },
     [](Session& session, const std::string& word) {
         return SetServers(session.settings.wadServer, word, 1);
     }},
    {"drives", Msg::TakesDrive, false, DrivesText, SetDrive},
};

bool ListSets(Run& run)
{
    if (run.json != nullptr)
        *run.json = Json::object();
    for (const SettingRow& row : settingRows) {
        if (row.ofArchive && !run.session.archive.Loaded())
            continue;
        const std::string value = Readable(row.get(run.session));
        if (run.json != nullptr)
            (*run.json)[std::string{row.name}] = value;
        else
            AddLine(run, std::string{row.name} + "\t" + value);
    }
    return true;
}

const SettingRow* FindSetting(std::string_view name)
{
    for (const SettingRow& row : settingRows)
        if (row.name == name)
            return &row;
    return nullptr;
}

std::string AllNames()
{
    std::vector<std::string> names;
    for (const SettingRow& row : settingRows)
        names.emplace_back(row.name);
    return Join(names, ", ");
}

/// The row of the words; null when there is none.
const SettingRow* SettingOf(const Run& run)
{
    const auto& words = run.arguments.words;
    return words.empty() ? nullptr : FindSetting(words.front());
}

std::string WrongSet(Run& run)
{
    const auto& words = run.arguments.words;
    if (words.empty())
        return {};
    const SettingRow* row = SettingOf(run);
    if (row == nullptr)
        return GetMsg(Msg::WrongSetting, {words.front(), AllNames()});
    if (words.size() < 2)
        return GetMsg(Msg::WrongWordMissing, {"set"});
    if (run.json != nullptr)
        return GetMsg(Msg::WrongOptionHere, {"--json", words.front()});
    // Tried before anything is opened: a wrong word is wrong whoever holds the folders.
    return row->set(run.session, words[1])
               ? std::string{}
               : GetMsg(Msg::WrongSettingValue, {words[1], row->name, Shown(row->takes)});
}

bool OfProgram(const Run& run)
{
    const SettingRow* row = SettingOf(run);
    return row != nullptr && !row->ofArchive;
}

bool OfArchive(const Run& run)
{
    const SettingRow* row = SettingOf(run);
    return row != nullptr && row->ofArchive;
}

bool SetInProgram(Run& run)
{
    RestoreAutoSave(run); // which may be what is set
    const SettingRow* row = SettingOf(run);
    const std::string& word = run.arguments.words[1];
    if (!row->set(run.session, word)) { // it was tried without the settings that there are
        run.session.host.Tell(Tone::Error,
                              GetMsg(Msg::WrongSettingValue, {word, row->name, Shown(row->takes)}));
        return false;
    }
    BoundUndo(run.session.Folders(), run.session.settings);
    return true;
}

bool SetInArchive(Run& run)
{
    (void)SettingOf(run)->set(run.session, run.arguments.words[1]);
    SaveArchive(run.session);
    return !run.session.archive.dirty;
}

} // namespace

std::span<const CommandRow> SetCommands()
{
    static const CommandRow rows[] = {
        {.window = {.control = "mnu_Settings",
                    .caption = Msg::MenuSettings,
                    .keys = "Ctrl+,",
                    .menu = "mnu_Pref"},
         .terminal = {.word = "set",
                      .usage = Msg::UseSet,
                      .summary = Msg::SumSet,
                      .json = Msg::KeysSet,
                      .mostWords = 2,
                      .mayBeEmpty = true,
                      .wrong = WrongSet},
         .run = ListSets},
        {.terminal = {.word = "set", .when = OfProgram},
         .touches = Touches::Stores,
         .run = SetInProgram},
        {.window = {.control = "mnu_PrefArchive",
                    .caption = Msg::MenuPrefArchive,
                    .menu = "mnu_Pref"},
         .terminal = {.word = "set", .when = OfArchive},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .run = SetInArchive,
         .help = HelpTag::ArchivePreferences},
    };
    return rows;
}

} // namespace kestrova
