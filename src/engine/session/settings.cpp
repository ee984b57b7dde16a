#include "session/settings.h"

#include "core/look.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "formats/program_folder.h"
#include "session/file_names.h"

#include <algorithm>
#include <glib.h>
#include <memory>

namespace kestrova
{

namespace
{

constexpr const char* programGroup = "program";
constexpr const char* exactGroup = "exact-folders";
constexpr const char* drivesGroup = "drives";

using KeyFile = std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)>;

/// Empty without a file; a failure for one that cannot be read now.
Result<KeyFile> LoadKeys(const Path& file)
{
    KeyFile keys{g_key_file_new(), &g_key_file_unref};
    const auto content = ReadFileIfThere(file, 1 << 20);
    if (!content)
        return content.Error();
    const std::string text = content->value_or(std::string{});
    if (!text.empty() && !g_key_file_load_from_data(keys.get(), text.data(), text.size(),
                                                    G_KEY_FILE_KEEP_COMMENTS, nullptr))
        keys.reset(g_key_file_new()); // no settings file: first-run values
    return keys;
}

Path FileOf(const Path& programFolder)
{
    return InFolder(programFolder, OnDisk::FragSettings);
}

std::string TextValue(GKeyFile* keys, const char* name, std::string fallback)
{
    char* value = g_key_file_get_string(keys, programGroup, name, nullptr);
    if (value == nullptr)
        return fallback;
    std::string text = value;
    g_free(value);
    return text;
}

std::int32_t NumberValue(GKeyFile* keys, const char* name, std::int32_t fallback)
{
    GError* error = nullptr;
    const int value = g_key_file_get_integer(keys, programGroup, name, &error);
    if (error != nullptr) {
        g_error_free(error);
        return fallback;
    }
    return std::clamp(value, 0, mostThatIsKept);
}

/// The lines of the group that name a drive.
std::vector<DriveSetting> DrivesIn(GKeyFile* keys)
{
    std::vector<DriveSetting> drives;
    char** const names = g_key_file_get_keys(keys, drivesGroup, nullptr, nullptr);
    for (char** name = names; name != nullptr && *name != nullptr; ++name)
        if (char* value = g_key_file_get_string(keys, drivesGroup, *name, nullptr)) {
            if (auto drive = ParseDriveSetting(*name, value);
                drive && drives.size() < mostDriveSettings)
                drives.push_back(std::move(*drive));
            g_free(value);
        }
    g_strfreev(names);
    return drives;
}

/// Lines that name no drive stay as they are.
void SetDrives(GKeyFile* keys, const std::vector<DriveSetting>& drives)
{
    for (const DriveSetting& old : DrivesIn(keys))
        if (std::none_of(drives.begin(), drives.end(),
                         [&](const DriveSetting& drive) { return drive.name == old.name; }))
            g_key_file_remove_key(keys, drivesGroup, old.name.c_str(), nullptr);
    for (const DriveSetting& drive : drives)
        g_key_file_set_string(keys, drivesGroup, drive.name.c_str(),
                              FormatDriveSetting(drive).c_str());
}

/// A folder may hold bytes that are no UTF-8; the settings file may not.
std::string Escaped(const std::string& text)
{
    char* escaped = g_uri_escape_string(text.c_str(), "/ ", TRUE);
    std::string result = escaped;
    g_free(escaped);
    return result;
}

std::string Unescaped(const char* text)
{
    std::string result;
    for (; *text != '\0'; ++text)
        if (*text == '%' && g_ascii_isxdigit(text[1]) && g_ascii_isxdigit(text[2])) {
            result += static_cast<char>(g_ascii_xdigit_value(text[1]) * 16 +
                                        g_ascii_xdigit_value(text[2]));
            text += 2;
        } else {
            result += *text;
        }
    return result;
}

} // namespace

ProgramSettings DefaultSettings()
{
    ProgramSettings settings;
    settings.wineCommand = std::string{OnDisk::DefaultWineCommand};
    return settings;
}

Result<ProgramSettings> ReadSettings(const Path& programFolder)
{
    ProgramSettings settings = DefaultSettings();
    const auto loaded = LoadKeys(FileOf(programFolder));
    if (!loaded)
        return loaded.Error();
    GKeyFile* const keys = loaded->get();
    settings.language = TextValue(keys, "language", settings.language);
    settings.wineCommand = TextValue(keys, "wine-command", settings.wineCommand);
    settings.wineWords = TextValue(keys, "wine-words", settings.wineWords);
    settings.historyCount = NumberValue(keys, "history-count", settings.historyCount);
    settings.historyMegabytes = NumberValue(keys, "history-megabytes", settings.historyMegabytes);
    settings.undoCount = NumberValue(keys, "undo-count", settings.undoCount);
    settings.undoMegabytes = NumberValue(keys, "undo-megabytes", settings.undoMegabytes);
    settings.unseenKeysTold = NumberValue(keys, "unseen-keys-told", 0) != 0;
    settings.exportSavegames = NumberValue(keys, "export-savegames", 0) != 0;
    settings.updateServers = TextValue(keys, "update-servers", {});
    settings.wadServer = TextValue(keys, "wad-server", {});
    settings.drives = DrivesIn(keys);
    if (char** names = g_key_file_get_keys(keys, exactGroup, nullptr, nullptr)) {
        for (char** name = names; *name != nullptr; ++name)
            if (char* value = g_key_file_get_string(keys, exactGroup, *name, nullptr)) {
                // No folder has a NUL in its name; the record's form serves then.
                if (std::string folder = Unescaped(value); folder.find('\0') == std::string::npos)
                    settings.exactFolders[*name] = std::move(folder);
                g_free(value);
            }
        g_strfreev(names);
    }
    return settings;
}

bool SettingsAreDamaged(const Path& programFolder)
{
    const auto content = ReadFileIfThere(FileOf(programFolder), 1 << 20);
    const std::string text = content ? content->value_or(std::string{}) : std::string{};
    const KeyFile keys{g_key_file_new(), &g_key_file_unref};
    return !text.empty() && !g_key_file_load_from_data(keys.get(), text.data(), text.size(),
                                                       G_KEY_FILE_NONE, nullptr);
}

Status WriteSettings(const Path& programFolder, const ProgramSettings& settings)
{
    const auto loaded = LoadKeys(FileOf(programFolder));
    if (!loaded)
        return loaded.Error();
    GKeyFile* const keys = loaded->get();
    if (settings.language != toldLanguage ||
        g_key_file_has_key(keys, programGroup, "language", nullptr))
        g_key_file_set_string(keys, programGroup, "language", settings.language.c_str());
    g_key_file_set_string(keys, programGroup, "wine-command", settings.wineCommand.c_str());
    g_key_file_set_string(keys, programGroup, "wine-words", settings.wineWords.c_str());
    g_key_file_set_integer(keys, programGroup, "history-count", settings.historyCount);
    g_key_file_set_integer(keys, programGroup, "history-megabytes", settings.historyMegabytes);
    g_key_file_set_integer(keys, programGroup, "undo-count", settings.undoCount);
    g_key_file_set_integer(keys, programGroup, "undo-megabytes", settings.undoMegabytes);
    if (settings.unseenKeysTold)
        g_key_file_set_integer(keys, programGroup, "unseen-keys-told", 1);
    g_key_file_set_integer(keys, programGroup, "export-savegames",
                           settings.exportSavegames ? 1 : 0);
    for (const auto& [name, value] : {std::pair{"update-servers", &settings.updateServers},
                                      std::pair{"wad-server", &settings.wadServer}})
        if (!value->empty() || g_key_file_has_key(keys, programGroup, name, nullptr))
            g_key_file_set_string(keys, programGroup, name, value->c_str());
    SetDrives(keys, settings.drives);
    g_key_file_remove_group(keys, exactGroup, nullptr);
    for (const auto& [field, folder] : settings.exactFolders)
        g_key_file_set_string(keys, exactGroup, field.c_str(), Escaped(folder).c_str());
    gsize length = 0;
    char* data = g_key_file_to_data(keys, &length, nullptr);
    const std::string content{data, length};
    g_free(data);
    const Path file = FileOf(programFolder);
    if (const auto old = ReadWholeFile(file, 1 << 20); old && *old == content)
        return {};
    return WriteKeptFile(file, content);
}

void KeepExactFolder(ProgramSettings& settings, const std::string& field, const std::string& folder)
{
    if (FitsWindows1252(folder) && !HasControl(folder))
        settings.exactFolders.erase(field);
    else
        settings.exactFolders[field] = folder;
}

std::string ExactFolder(const ProgramSettings& settings, const std::string& field,
                        const std::string& fromRecord)
{
    const auto found = settings.exactFolders.find(field);
    const bool same = found != settings.exactFolders.end() &&
                      FromWindows1252(ToWindows1252(found->second)) == fromRecord;
    return same ? found->second : fromRecord;
}

} // namespace kestrova
