#include "app/disc_install.h"

#include "app/result_text.h"
#include "core/look.h"
#include "discs/install_from_disc.h"
#include "formats/program_folder.h"
#include "session/disc_reader.h"
#include "session/telling.h"
#include "upkeep/load_archive.h"
#include "words/discs_commands.h"

#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

/// The archive's file, which the person named, or which lies on the image that was named.
Result<Path> ArchiveOnDisc(DiscReader& discs, const Path& named)
{
    if (EndsWithName(named.native(), OnDisk::ExtensionArchive)) {
        if (!FileExists(named))
            return InWords(ErrorCode::Missing, GetMsg(Msg::NoFileToInstall, {TextOf(named)}));
        return discs.DiscOf(named)
                   ? Result<Path>{named}
                   : InWords(ErrorCode::Refused, GetMsg(Msg::FileOnNoDisc, {TextOf(named)}));
    }
    const auto root = discs.RootOfImage(named);
    if (!root)
        return root.Error();
    const auto files = ListFiles(*root, "*" + std::string{OnDisk::ExtensionArchive});
    if (!files)
        return files.Error();
    if (files->empty())
        return InWords(ErrorCode::Missing, GetMsg(Msg::NoArchiveOnImage, {TextOf(named)}));
    return files->front();
}

} // namespace

std::string WrongInstallOptions(const Run& run)
{
    const bool both = run.arguments.Has("--full") && run.arguments.Has("--compact");
    return both ? GetMsg(Msg::WrongBothSetups) : std::string{};
}

bool InstallFromWords(Run& run)
{
    Session& session = run.session;
    const auto& words = run.arguments.words;
    const auto file = ArchiveOnDisc(*session.discs, PlaceFromWord(words[1]));
    if (!file) {
        TellFailure(session.host, file.Error());
        return false;
    }
    const auto installed =
        InstallArchive(session, *file, {PlaceFromWord(words[2]), run.arguments.Has("--full")});
    if (!installed || !ReadArchive(session, *installed))
        return false;
    if (run.json != nullptr)
        *run.json = {{"archive", TextOf(session.ArchivePath())},
                     {"folder", Readable(Trim(session.archive.header.secondaryFolder))},
                     {"levels", session.archive.levels.size()}};
    else
        AddLine(run, TextOf(session.ArchivePath()));
    return true;
}

bool TakeImageFromWords(Run& run)
{
    DiscReader* const discs = run.session.discs;
    const auto taken = discs != nullptr ? discs->TakeImage(run.session.archive,
                                                           PlaceFromWord(run.arguments.words[1]))
                                        : Status{MakeFailure(ErrorCode::Missing, {})};
    if (!taken)
        TellFailure(run.session.host, Saying(GetMsg(Msg::ImageNotTaken), taken.Error()));
    return bool{taken};
}

} // namespace kestrova
