#include "originals/backup_waves.h"

#include "core/look.h"
#include "core/name_set.h"
#include "core/staged_file.h"
#include "formats/program_folder.h"
#include "formats/trle_folder.h"

namespace kestrova
{

namespace
{

Path WavesNote(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::FragWavesNote);
}

Result<std::vector<Path>> WavesOf(const Folders& folders)
{
    return ListFiles(InFolder(folders.trle, OnDisk::DirAudio), OnDisk::PatWav);
}

} // namespace

void NoteWaves(const Folders& folders)
{
    std::string names = folders.trle.native() + "\n";
    if (const auto files = WavesOf(folders))
        for (const Path& file : *files)
            names += file.filename().native() + "\n";
    if (MakeFolders(InFolder(folders.program, OnDisk::DirSwap)))
        (void)WriteWholeFile(WavesNote(folders), names); // without it they are not named
}

Result<std::vector<std::string>> MissingWaves(const Folders& folders,
                                              const PreferencesRecord& preferences)
{
    std::vector<std::string> missing;
    if (preferences.fullBackup)
        return missing;
    const auto noted = ReadFileIfThere(WavesNote(folders), UINT64_C(1) << 20);
    if (!noted || !*noted)
        return noted ? Result<std::vector<std::string>>{missing} : noted.Error();
    const auto names = Split(**noted, '\n');
    if (names.empty() || names.front() != folders.trle.native())
        return missing; // of another folder
    const auto files = WavesOf(folders);
    if (!files)
        return files.Error();
    NameSet there;
    for (const Path& file : *files)
        there.Add(file.filename().native());
    for (std::size_t i = 1; i < names.size(); ++i)
        if (!names[i].empty() && !there.Has(names[i]))
            missing.push_back(names[i]);
    return missing;
}

} // namespace kestrova
