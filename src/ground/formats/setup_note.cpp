#include "formats/setup_note.h"

#include "core/text.h"

namespace kestrova
{

std::string FormatSetupNote(const SetupNote& note)
{
    return note.target + '\n' + note.language + '\n' + std::to_string(note.device) + ' ' +
           std::to_string(note.inode) + '\n';
}

std::optional<SetupNote> ParseSetupNote(std::string_view text)
{
    const auto lines = Split(text, '\n');
    if (lines.size() != 4 || !lines[3].empty() || !lines[0].starts_with('/'))
        return std::nullopt;
    const auto numbers = Split(lines[2], ' ');
    if (numbers.size() != 2)
        return std::nullopt;
    const auto device = WholeNumber<std::uint64_t>(numbers[0]);
    const auto inode = WholeNumber<std::uint64_t>(numbers[1]);
    if (!device || !inode)
        return std::nullopt;
    return SetupNote{lines[0], lines[1], *device, *inode};
}

} // namespace kestrova
