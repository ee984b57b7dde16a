#include "upkeep/archive_life.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "catalogue/message.h"
#include "swap/marker.h"
#include "upkeep/archive_folder.h"

namespace kestrova
{

namespace
{

/// Sizes of the levels on which the savegame tool was at work.
void MeasureStaleExtras(Session& session)
{
    bool changed = false;
    for (std::size_t i = 0; i < session.archive.levels.size(); ++i) {
        LevelRecord& level = session.archive.levels[i];
        if (!level.extrasDirty)
            continue;
        const double size = ExtrasSizeOf(LevelHomeOf(session, level.levelCode));
        CountLevelSize(session, size - level.extrasSize, SizeKind::Extras, i);
        level.extrasDirty = false;
        changed = true;
    }
    if (changed)
        SaveArchive(session);
}

/// `saved`: the file of the loaded archive holds all that memory holds.
bool ReadAfterAsking(Session& session, const Path& file, bool saved)
{
    if (const auto status = ReadArchiveRecords(session, file); !status) {
        session.archive.dirty = session.archive.dirty || !saved; // it is asked about again
        TellFailure(session, GetMsg(Msg::CannotOpenArchive, {TextOf(file)}), status.Error());
        return false;
    }
    if (!CheckArchiveFolders(session)) {
        session.loadFailedAskAnother = true;
        return false;
    }
    MeasureStaleExtras(session);
    session.list.Refresh();
    session.list.Select(CurrentLevelCode(session));
    return true;
}

} // namespace

Status ReadArchiveRecords(Session& session, const Path& file)
{
    const Path place = ResolvePath(file);
    auto content = ReadArchiveFile(place);
    if (!content)
        return content.Error();
    session.archive.header = std::move(content->header);
    session.archive.levels = std::move(content->levels);
    for (const auto& [folder, field] :
         {std::pair{&session.archive.header.mainFolder, ArchiveFolder::Main},
          std::pair{&session.archive.header.secondaryFolder, ArchiveFolder::Secondary}})
        *folder = ExactFolder(session.settings, ExactFolderField(field, place), *folder);
    session.preferences.archivePath = place.native();
    session.archive.dirty = false;
    return {};
}

bool ReadArchive(Session& session, const Path& file)
{
    const Operation operation{session};
    const bool saved = AskSaveChanges(session);
    return ReadAfterAsking(session, file, saved);
}

bool AskLoadArchive(Session& session)
{
    const Operation operation{session};
    const bool saved = AskSaveChanges(session);
    const auto file = session.host.ChooseOpenFile(
        GetMsg(Msg::LoadArchiveTitle), GetMsg(Msg::LoadArchiveFilter), session.programFolder);
    if (!file) {
        session.archive.dirty = session.archive.dirty || !saved;
        return false;
    }
    return ReadAfterAsking(session, *file, saved);
}

bool AskSaveArchiveAs(Session& session)
{
    const Operation operation{session};
    const auto file = session.host.ChooseSaveFile(
        GetMsg(Msg::SaveArchiveTitle), GetMsg(Msg::SaveArchiveFilter), session.programFolder,
        TextOf(session.ArchivePath().filename()));
    if (!file)
        return true;
    if (const auto status = WriteArchive(session, *file); !status) {
        TellFailure(session, GetMsg(Msg::ErrorSavingArchive) + TextOf(*file), status.Error());
        return false;
    }
    session.list.Refresh();
    return true;
}

namespace
{

/// The new folder when the person chose one; no value when the check refuses the archive.
std::optional<Path> AskForFolder(Session& session, Msg warning, const std::string& missing)
{
    const std::string line{lineBreak};
    session.host.Tell(Tone::Warning, GetMsg(warning, {line + Readable(missing) + line}));
    std::error_code none;
    const auto chosen = session.host.ChooseFolder(GetMsg(Msg::SelectFolder) + FileNameOf(missing),
                                                  std::filesystem::current_path(none));
    if (!chosen || !FitsArchive(session, *chosen))
        return {};
    return chosen;
}

} // namespace

bool CheckArchiveFolders(Session& session)
{
    if (session.archive.levels.empty())
        return true;
    ArchiveHeader& header = session.archive.header;
    const auto stands = [](const std::string& folder) {
        return FolderExists(FolderFromText(Trim(folder)));
    };
    if (!IsArchiveOnCd(session) && !stands(header.mainFolder)) {
        const auto chosen = AskForFolder(session, Msg::MainFolderMissing, header.mainFolder);
        if (!chosen)
            return false;
        const bool same = Trim(header.mainFolder) == Trim(header.secondaryFolder);
        header.mainFolder = chosen->native();
        if (same)
            header.secondaryFolder = chosen->native();
        SaveArchive(session);
        if (same)
            return true;
    }
    if (stands(header.secondaryFolder))
        return true;
    const auto chosen = AskForFolder(session, Msg::SecondaryFolderMissing, header.secondaryFolder);
    if (!chosen)
        return false;
    header.secondaryFolder = chosen->native();
    SaveArchive(session);
    return true;
}

} // namespace kestrova
