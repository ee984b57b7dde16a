#include "formats/disc_note.h"

#include "check.h"
#include "formats/backup_note.h"

using namespace kestrova;
using namespace kestrova::fuzz;

static bool LiesBelow(const NotedFile& file)
{
    const Path below = Path{file.name}.lexically_normal();
    return below.is_relative() && *below.begin() != "..";
}

/// The notes of an archive's discs and of the backup: whatever parses is written and read the same,
/// and no file of it lies outside of its level's folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    if (const auto note = ParseDiscNote(bytes)) {
        const std::string written = FormatDiscNote(*note);
        const auto again = ParseDiscNote(written);
        Promise(again && *again == *note, "what was written reads the same");
        for (const NotedDisc& disc : note->discs)
            for (const NotedLevel& level : disc.levels)
                for (const NotedFile& file : level.files)
                    Promise(LiesBelow(file), "a file lies below its level's folder");
        Promise(note->Find(0) == nullptr, "no disc has the number 0");
    }
    if (const auto note = ParseBackupNote(bytes)) {
        const auto again = ParseBackupNote(FormatBackupNote(*note));
        Promise(again && again->files == note->files && again->backup.path == note->backup.path,
                "what was written reads the same");
        for (const NotedFile& file : note->files)
            Promise(LiesBelow(file), "a file lies below the backup");
    }
    return 0;
}
