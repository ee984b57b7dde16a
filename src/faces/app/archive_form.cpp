#include "app/archive_form.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "core/size_words.h"
#include "session/held_folders.h"
#include "session/telling.h"
#include "upkeep/change_compression.h"
#include "upkeep/change_level_audio.h"
#include "upkeep/new_archive.h"
#include "words/app.h"
#include "words/upkeep.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Longer ones leave no room for the paths that grow from them.

bool AnyLevelOnCd(const Archive& archive)
{
    return std::any_of(archive.levels.begin(), archive.levels.end(),
                       [](const LevelRecord& level) { return level.cdNumber != 0; });
}

} // namespace

ArchiveForm::ArchiveForm(Session& session) : session_(session), kept_(session.archive.header)
{
    ArchiveHeader& archive = session_.archive.header;
    if (AnyLevelOnCd(session_.archive) || Trim(archive.mainFolder) == Trim(archive.secondaryFolder))
        return;
    archive.mainFolder = archive.secondaryFolder;
    SaveArchive(session_);
}

ArchiveFacts ArchiveForm::Facts() const
{
    const ArchiveHeader& archive = session_.archive.header;
    ArchiveFacts facts;
    facts.file = TextOf(session_.ArchivePath());
    facts.mainFolder = Readable(Trim(archive.mainFolder));
    facts.secondaryFolder = Readable(Trim(archive.secondaryFolder));
    facts.levels = session_.archive.levels.size();
    facts.onCd = AnyLevelOnCd(session_.archive);
    facts.cdCount = archive.cdCount;
    facts.size = FormatSize(archive.mainFolderSize) + "+" +
                 FormatSize(archive.secondaryFolderSize) + " = " +
                 FormatSize(archive.mainFolderSize + archive.secondaryFolderSize);
    double onCd = 0;
    double onDisk = 0;
    for (const LevelRecord& level : session_.archive.levels)
        (level.cdNumber != 0 ? onCd : onDisk) += level.filesSize;
    facts.sizeOnCd = FormatSize(onCd);
    facts.sizeOnDisk = FormatSize(onDisk);
    return facts;
}

void ArchiveForm::SetCompress(bool on)
{
    session_.archive.header.compressLevels = on;
}

void ArchiveForm::SetWavInMp3(bool on)
{
    session_.archive.header.wavInMp3 = on;
}

void ArchiveForm::BrowseMain()
{
    Browse(!AnyLevelOnCd(session_.archive));
}

void ArchiveForm::BrowseSecondary()
{
    Browse(true);
}

void ArchiveForm::Browse(bool secondary)
{
    ArchiveHeader& archive = session_.archive.header;
    const Path old{Trim(secondary ? archive.secondaryFolder : archive.mainFolder)};
    const auto chosen =
        session_.host.ChooseFolder(GetMsg(Msg::SelectFolder) + TextOf(old.filename()), old);
    if (!chosen || *chosen == old)
        return;
    if (ToWindows1252(chosen->native()).size() > longestArchiveFolder)
        return session_.host.Tell(Tone::Error,
                                  GetMsg(Msg::ArchiveFolderNotTaken, {TextOf(*chosen)}),
                                  GetMsg(Msg::WindowArchiveFolderTooLong));
    if (secondary && !HoldsLevels(*chosen))
        return session_.host.Tell(Tone::Error,
                                  GetMsg(Msg::ArchiveFolderNotTaken, {TextOf(*chosen)}),
                                  GetMsg(Msg::ArchiveFolderWithoutLevels));
    const bool both = !AnyLevelOnCd(session_.archive);
    if (secondary || both)
        archive.secondaryFolder = chosen->native();
    if (!secondary || both)
        archive.mainFolder = chosen->native();
}

bool ArchiveForm::HoldsLevels(const Path& folder) const
{
    bool custom = false;
    for (const LevelRecord& level : session_.archive.levels)
        if (level.levelCode != originalCode) {
            custom = true;
            if (FolderExists(InFolder(folder, LevelFolderName(level.levelCode))))
                return true;
        }
    return !custom;
}

void ArchiveForm::Cancel()
{
    session_.archive.header = kept_;
}

void ArchiveForm::Accept()
{
    const ArchiveHeader& now = session_.archive.header;
    const bool moved = now.secondaryFolder != kept_.secondaryFolder;
    if (moved && !DoneOrTold(session_.host, HoldFolders(session_.locks, session_.Folders())))
        return Cancel();
    if (moved || now.mainFolder != kept_.mainFolder || now.compressLevels != kept_.compressLevels ||
        now.wavInMp3 != kept_.wavInMp3)
        SaveArchive(session_);
    const bool sameAudio = now.wavInMp3 == kept_.wavInMp3;
    OfferChangeCompression(session_, kept_, [&](const std::string& name, const Path& files) {
        return sameAudio || ChangeLevelAudio(session_, name, files);
    });
}

} // namespace kestrova
