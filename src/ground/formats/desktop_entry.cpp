#include "formats/desktop_entry.h"

#include "core/text.h"

namespace kestrova
{

namespace
{

constexpr std::string_view addressKey = "URL=";
constexpr std::size_t longestAddress = 2000;

/// A value of a key as the file has it.
std::string EntryValue(std::string_view text)
{
    std::string value;
    for (const char letter : text)
        switch (letter) {
        case '\\':
            value += "\\\\";
            break;
        case '\n':
            value += "\\n"; // not shown
            break;
        case '\r':
            value += "\\r"; // not shown
            break;
        case '\t':
            value += "\\t"; // not shown
            break;
        default:
            value += letter;
        }
    return value;
}

/// A word of a command, in quotes: some letters mean something even there.
std::string CommandWord(std::string_view word)
{
    std::string quoted = "\"";
    for (const char letter : word) {
        if (letter == '"' || letter == '`' || letter == '$' || letter == '\\')
            quoted += '\\';
        quoted += letter;
        if (letter == '%')
            quoted += letter;
    }
    return quoted + '"';
}

constexpr std::string_view folderKey = "Path=";

/// What `EntryValue` was made from.
std::string EntryText(std::string_view value)
{
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        switch (value[++i]) {
        case 'n':
            text += '\n';
            break;
        case 'r':
            text += '\r';
            break;
        case 't':
            text += '\t';
            break;
        case 's':
            text += ' ';
            break;
        default:
            text += value[i];
        }
    }
    return text;
}

} // namespace

std::string FolderOfDesktopEntry(std::string_view text)
{
    for (const std::string& line : Split(text, '\n'))
        if (line.starts_with(folderKey))
            return EntryText(std::string_view{line}.substr(folderKey.size()));
    return {};
}

std::string FormatDesktopEntry(const DesktopEntry& entry)
{
    std::string command;
    for (const std::string& word : entry.command)
        command += (command.empty() ? "" : " ") + CommandWord(word);
    if (!entry.mimeTypes.empty())
        command += " %f";
    std::string text = "[Desktop Entry]\nType=Application\nVersion=1.4\n"; // not shown
    const auto add = [&](std::string_view key, std::string_view value) {
        if (!value.empty())
            text += std::string{key} + '=' + EntryValue(value) + '\n';
    };
    add("Name", entry.name);
    add("Comment", entry.comment);
    add("Exec", command);
    add("Path", entry.folder);
    add("Icon", entry.icon);
    add("Categories", entry.categories);
    add("MimeType", entry.mimeTypes);
    add("Keywords", entry.keywords);
    add("StartupWMClass", entry.windowClass);
    if (!entry.windowClass.empty())
        text += "StartupNotify=true\n";
    return text + "Terminal=false\n";
}

std::string AddressOfShortcut(std::string_view bytes)
{
    while (!bytes.empty()) {
        const std::string_view line = bytes.substr(0, bytes.find_first_of("\r\n"));
        bytes.remove_prefix(std::min(bytes.size(), line.size() + 1));
        if (FindFolded(line.substr(0, addressKey.size()), addressKey) != 0)
            continue;
        const std::string address = OnOneLine(Readable(Trim(line.substr(addressKey.size()))));
        const bool isWeb = address.starts_with("http://") || address.starts_with("https://");
        return isWeb && address.size() < longestAddress ? address : std::string{};
    }
    return {};
}

} // namespace kestrova
