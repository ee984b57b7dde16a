#include "formats/drive_setting.h"
#include "formats/seen_note.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// A drive of the settings, and the note of a disc that is seen: what is read is written the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text = TextOfInput(data, size);
    const std::size_t sign = std::min(text.find('='), text.size());
    const std::string_view name = text.substr(0, sign);
    if (const auto drive = ParseDriveSetting(name, text.substr(std::min(sign + 1, text.size())))) {
        Promise(!drive->folder.empty() && IsDriveName(drive->name), "a drive has name and folder");
        Promise(drive->name.find('/') == std::string::npos, "a name stays in its folder");
        const std::string line = FormatDriveSetting(*drive);
        Promise(line.find_first_of("\r\n") == std::string::npos, "a drive is one line");
        Promise(ParseDriveSetting(name, line) == drive, "a drive comes back");
    }
    if (const auto note = ParseSeenNote(text)) {
        Promise(note->folder.front() == '/' && note->image.front() == '/', "paths are absolute");
        Promise(ParseSeenNote(FormatSeenNote(*note)) == note, "a note comes back");
    }
    return 0;
}
