#include "archive/archive_saving.h"

#include "catalogue/message.h"
#include "core/staged_file.h"

#include <fmt/format.h>

namespace kestrova
{

namespace
{

/// A name as the part of a settings key: letters, digits and a few marks, the rest as %XX.
std::string KeyPart(std::string_view name)
{
    std::string key;
    for (const char c : name) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                           (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '_';
        key += plain ? std::string{c} : fmt::format("%{:02X}", static_cast<unsigned char>(c));
    }
    return key;
}

} // namespace

std::string ExactFolderField(ArchiveFolder folder, const Path& file)
{
    return (folder == ArchiveFolder::Main ? "archive-main:" : "archive-secondary:") +
           KeyPart(file.filename().native());
}

Status WriteArchive(Session& session, const Path& file)
{
    ArchiveHeader& header = session.archive.header;
    for (const std::string& folder : {header.mainFolder, header.secondaryFolder})
        if (ToWindows1252(folder).size() > folderFieldSize)
            return MakeFailure(ErrorCode::Refused, Readable(folder));
    if (ToWindows1252(file.native()).size() > folderFieldSize)
        return MakeFailure(ErrorCode::Refused, TextOf(file));

    // The exact folders first: an archive without them would be looked for in the wrong place.
    ProgramSettings settings = session.settings;
    KeepExactFolder(settings, ExactFolderField(ArchiveFolder::Main, file), header.mainFolder);
    KeepExactFolder(settings, ExactFolderField(ArchiveFolder::Secondary, file),
                    header.secondaryFolder);
    if (settings.exactFolders != session.settings.exactFolders) {
        if (auto status = WriteSettings(session.programFolder, settings); !status)
            return status;
        session.settings = std::move(settings);
    }
    header.levelCount = static_cast<std::int32_t>(session.archive.levels.size());
    if (auto status = WriteRecordFile(file, FormatArchive(header, session.archive.levels)); !status)
        return status;
    session.archive.dirty = false;
    session.preferences.archivePath = file.native();
    return {};
}

bool SaveArchiveNow(Session& session)
{
    const Path file = session.ArchivePath();
    const auto status = WriteArchive(session, file);
    if (!status)
        TellFailure(session, GetMsg(Msg::ErrorSavingArchive) + TextOf(file), status.Error());
    return bool{status};
}

bool SaveArchive(Session& session)
{
    session.archive.dirty = true;
    return !session.preferences.autoSave || SaveArchiveNow(session);
}

bool AskSaveChanges(Session& session)
{
    if (!session.archive.dirty)
        return true;
    const std::string name = TextOf(session.ArchivePath().filename());
    if (session.preferences.autoSave ||
        session.host.AskYesNo(GetMsg(Msg::AskSaveArchive, {name, lineBreak})))
        return SaveArchiveNow(session);
    session.archive.dirty = false;
    return false;
}

} // namespace kestrova
