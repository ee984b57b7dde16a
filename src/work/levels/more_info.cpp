#include "levels/more_info.h"

#include "archive/level_document.h"
#include "archive/level_folders.h"
#include "core/copying.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "levels/file_names.h"
#include "session/documents.h"
#include "session/telling.h"
#include "words/levels.h"
#include "words/storage.h"

namespace kestrova
{

namespace
{

bool OpenReadme(Host& host, Machine& machine, const Path& file)
{
    const auto status = OpenOfLevel(host, machine, file);
    if (!status && status.Error().code != ErrorCode::Stopped)
        TellFailure(host, GetMsg(Msg::MoreInfoNotOpened), status.Error());
    return static_cast<bool>(status);
}

/// A page comes with the pictures and pages of its folder.
void KeepOnHardDisk(Host& host, const Path& file, const Path& folder)
{
    std::vector<Path> files{file};
    const std::string ending = ExtensionOf(file.filename().native());
    const auto patterns = Split(OnDisk::MoreInfoPatterns, '|');
    if (MatchesPattern(ending, patterns[2]) || MatchesPattern(ending, patterns[3]))
        for (const std::string& pattern : patterns) {
            const auto found = ListFiles(file.parent_path(), pattern);
            if (!found) { // a page without its pictures would stay so
                TellFolderNotRead(host, found.Error());
                return;
            }
            files.insert(files.end(), found->begin(), found->end());
        }
    (void)MakeFolders(folder); // the copies below say what is wrong
    for (const Path& source : files) {
        const Path target = folder / source.filename();
        CopyOptions plain;
        plain.rights = plainRights;
        if (const auto status = CopyFileOver(source, target, plain); !status) {
            TellFailure(host,
                        GetMsg(Msg::MoreInfoCopyFailed, {TextOf(source)}) + TextOf(target) +
                            GetMsg(Msg::MoreInfoCopyEnds),
                        status.Error());
            return;
        }
    }
}

} // namespace

bool ShowMoreInfo(Host& host, Machine& machine, const Folders& folders, const Archive& archive,
                  LevelCode code)
{
    const std::ptrdiff_t index = FindLevel(archive, code);
    if (index < 0) {
        host.Tell(Tone::Error, GetMsg(Msg::UnknownCodeInList) + std::to_string(code));
        return false;
    }
    const LevelRecord& level = archive.levels[static_cast<std::size_t>(index)];
    if (Trim(level.moreInfoFile).empty()) {
        host.Tell(Tone::Plain, GetMsg(Msg::NoMoreInfoFile, {lineBreak}));
        return false;
    }
    const auto notFound = [&](const Path& place) {
        host.Tell(Tone::Error, GetMsg(Msg::MoreInfoNotFound, {TextOf(place)}));
        return false;
    };
    const Path home = InFolder(LevelHomeOf(folders, code), OnDisk::DirFiles);
    const auto stored = FindDocument(home, level.moreInfoFile);
    if (!stored)
        return TellFolderNotRead(host, stored.Error());
    if (*stored)
        return OpenReadme(host, machine, **stored);
    const auto disc = LevelFolderOf(folders, archive, code);
    if (!disc) {
        TellFailure(host, disc.Error());
        return false;
    }
    const Path onDisc = InFolder(*disc, OnDisk::DirFiles);
    const auto file = FindDocument(onDisc, level.moreInfoFile);
    if (!file)
        return TellFolderNotRead(host, file.Error());
    if (!*file)
        return notFound(onDisc / Path{Trim(level.moreInfoFile)});
    const bool opened = OpenReadme(host, machine, **file);
    KeepOnHardDisk(host, **file, home);
    return opened;
}

} // namespace kestrova
