#include "formats/seen_note.h"

#include "core/text.h"

#include <algorithm>
#include <array>

namespace kestrova
{

namespace
{

constexpr std::array<std::string_view, 3> wayWords{"fuse", "loop", "copy"};
constexpr std::size_t noteTexts = 9;

} // namespace

std::string FormatSeenNote(const SeenNote& note)
{
    std::string text;
    for (const std::string& part :
         {std::string{wayWords[static_cast<std::size_t>(note.way)]}, note.folder, note.loop,
          note.image, std::to_string(note.imageSize), std::to_string(note.imageTime),
          std::to_string(note.device), std::to_string(note.inode), note.hash})
        text += part + '\0';
    return text;
}

std::optional<SeenNote> ParseSeenNote(std::string_view text)
{
    const std::vector<std::string> parts = Split(text, '\0');
    const auto* const way =
        parts.empty() ? wayWords.end() : std::find(wayWords.begin(), wayWords.end(), parts[0]);
    if (parts.size() != noteTexts + 1 || !parts.back().empty() || way == wayWords.end() ||
        !parts[1].starts_with('/') || !parts[3].starts_with('/'))
        return std::nullopt;
    const auto size = WholeNumber<std::uint64_t>(parts[4]);
    const auto time = WholeNumber<std::int64_t>(parts[5]);
    const auto device = WholeNumber<std::uint64_t>(parts[6]);
    const auto inode = WholeNumber<std::uint64_t>(parts[7]);
    if (!size || !time || !device || !inode)
        return std::nullopt;
    return SeenNote{static_cast<SeenNote::Way>(way - wayWords.begin()),
                    parts[1],
                    parts[2],
                    parts[3],
                    *size,
                    *time,
                    *device,
                    *inode,
                    parts[8]};
}

} // namespace kestrova
