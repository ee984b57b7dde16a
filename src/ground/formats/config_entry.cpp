#include "formats/config_entry.h"

#include "core/text.h"

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr char pieceMark = '-';
constexpr char pairMark = ';';

Path RelativeFrom(std::string_view name)
{
    auto relative = SafeRelative(name);
    return relative ? *relative : Path{};
}

} // namespace

std::optional<ConfigEntry> ParseConfigEntry(std::string_view description)
{
    const std::vector<std::string> pieces = Split(description, pieceMark);
    if (pieces.size() < 2)
        return std::nullopt;
    ConfigEntry entry;
    entry.level = Trim(pieces[0]);
    std::vector<std::string> words = Split(Trim(pieces[1]), pairMark);
    if (words.size() % 2 == 1 && Trim(words.back()).empty())
        words.pop_back(); // a mark behind the last pair, or no list
    for (std::size_t i = 0; i < words.size(); i += 2)
        entry.files.push_back(
            {RelativeFrom(Trim(words[i])),
             i + 1 < words.size() ? WholeNumber<std::uint64_t>(Trim(words[i + 1])) : std::nullopt});
    return entry;
}

bool Matches(const ConfigEntry& entry, const SizeOfFile& sizeOf)
{
    return std::all_of(entry.files.begin(), entry.files.end(), [&](const ConfigEntryFile& file) {
        return !file.relative.empty() && file.size && sizeOf(file.relative) == file.size;
    });
}

Result<std::string> FormatConfigEntry(const ConfigEntry& entry)
{
    const auto refused = [](std::string name) {
        return MakeFailure(ErrorCode::Refused, std::move(name));
    };
    const std::string level{Trim(OnOneLine(entry.level))};
    if (level.empty() || entry.files.empty() || level.find(pieceMark) != std::string::npos)
        return refused(level);
    std::string text = level + " - ";
    for (const ConfigEntryFile& file : entry.files) {
        const std::string name = ToBackslashes(file.relative);
        const std::string_view plain =
            name.starts_with('\\') ? std::string_view{name}.substr(1) : std::string_view{name};
        if (!file.size || !SafeRelative(plain) || Trim(plain) != plain ||
            name.find_first_of("-;") != std::string::npos || !FitsWindows1252(name))
            return refused(name);
        text += (text.ends_with(' ') ? "" : ";") + std::string{plain} + ";" +
                std::to_string(*file.size);
    }
    return text;
}

} // namespace kestrova
