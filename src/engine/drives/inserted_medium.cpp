#include "drives/inserted_medium.h"

#include "core/look.h"
#include "core/staged_file.h"
#include "drives/file_names.h"
#include "formats/program_folder.h"
#include "platform/places.h"
#include "words/message.h"

namespace kestrova
{

namespace
{

constexpr std::uint64_t longestInserted = 4096;

Path InsertedNote(const Path& programFolder, const std::string& drive)
{
    return InFolder(InFolder(programFolder, OnDisk::DirDiscs),
                    Filled(OnDisk::FragInserted, {drive}));
}

} // namespace

Path PathOfSetting(const Path& programFolder, const std::string& path)
{
    return path.empty() ? Path{} : programFolder / path; // an absolute one stands for itself
}

std::optional<Path> InsertedMedium(const Path& programFolder, const std::string& drive)
{
    const auto text = ReadFileIfThere(InsertedNote(programFolder, drive), longestInserted);
    // A note that cannot be read now says nothing: the settings do.
    if (!text || !*text || (*text)->find('\0') != std::string::npos)
        return std::nullopt;
    return PathOfSetting(programFolder, **text);
}

Status NoteInserted(const Path& programFolder, const std::string& drive, const Path& image)
{
    const Path note = InsertedNote(programFolder, drive);
    if (const auto made = MakeFolders(note.parent_path()); !made)
        return made;
    return WriteWholeFile(note, platform::AbsolutePath(image).native());
}

std::string DriveHolding(const Path& programFolder, const Path& image, const std::string& but)
{
    const platform::FileFacts facts = platform::FactsOf(image);
    std::vector<platform::FolderEntry> entries;
    (void)platform::ListFolder(InFolder(programFolder, OnDisk::DirDiscs), entries); // none yet
    for (const platform::FolderEntry& entry : entries) {
        if (!entry.name.ends_with(OnDisk::EndingInserted))
            continue;
        const std::string drive =
            entry.name.substr(0, entry.name.size() - OnDisk::EndingInserted.size());
        const auto held = InsertedMedium(programFolder, drive);
        if (drive != but && held && !held->empty() &&
            (*held == image || IsSameThing(platform::FactsOf(*held), facts)))
            return drive;
    }
    return {};
}

} // namespace kestrova
