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

Path WavesNote(const Session& session)
{
    return InFolder(session.programFolder, OnDisk::FragWavesNote);
}

Result<std::vector<Path>> WavesOf(const Session& session)
{
    return ListFiles(InFolder(session.TrleFolder(), OnDisk::DirAudio), OnDisk::PatWav);
}

} // namespace

void NoteWaves(Session& session)
{
    std::string names = session.TrleFolder().native() + "\n";
    if (const auto files = WavesOf(session))
        for (const Path& file : *files)
            names += file.filename().native() + "\n";
    if (MakeFolders(InFolder(session.programFolder, OnDisk::DirSwap)))
        (void)WriteWholeFile(WavesNote(session), names); // without it they are not named
}

Result<std::vector<std::string>> MissingWaves(const Session& session)
{
    std::vector<std::string> missing;
    if (session.preferences.fullBackup)
        return missing;
    const auto noted = ReadFileIfThere(WavesNote(session), UINT64_C(1) << 20);
    if (!noted || !*noted)
        return noted ? Result<std::vector<std::string>>{missing} : noted.Error();
    const auto names = Split(**noted, '\n');
    if (names.empty() || names.front() != session.TrleFolder().native())
        return missing; // of another folder
    const auto files = WavesOf(session);
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
