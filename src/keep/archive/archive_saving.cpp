#include "archive/archive_saving.h"

#include "core/look.h"
#include "core/staged_file.h"
#include "formats/exact_names.h"
#include "formats/level_folder.h"
#include "session/telling.h"
#include "words/archive.h"

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

Path ExactNamesFile(const ArchiveHeader& header)
{
    const Path folder = FolderFromText(Trim(header.secondaryFolder));
    return folder.empty() ? Path{} : InFolder(folder, OnDisk::FragExactNames);
}

namespace
{

/// Written before the records: without it they would come back with `?` for letters.
Status KeepExactNames(const Archive& archive)
{
    ExactNames names;
    if (!MergeExactNames(names, archive.levels))
        return {};
    const Path file = ExactNamesFile(archive.header);
    if (file.empty())
        return {}; // a list without a folder has no levels
    const auto bytes = ReadFileIfThere(file, longestExactNames);
    if (!bytes)
        return bytes.Error();
    if (*bytes) {
        names = ParseExactNames(**bytes);
        if (!MergeExactNames(names, archive.levels))
            return {};
    }
    return WriteWholeFile(file, FormatExactNames(names));
}

} // namespace

bool HasArchive(Host& host, const Archive& archive)
{
    if (archive.Loaded())
        return true;
    host.Tell(Tone::Error, GetMsg(Msg::MissingArchive));
    return false;
}

Status WriteArchive(const Folders& folders, ProgramSettings& settings, Archive& archive,
                    const Path& file)
{
    ArchiveHeader& header = archive.header;
    if (archive.Find(originalCode) == nullptr)
        return Failure{ErrorCode::Refused, TextOf(file), GetMsg(Msg::ListWithoutOriginal)};
    for (const std::string& folder : {header.mainFolder, header.secondaryFolder})
        if (ToWindows1252(folder).size() > folderFieldSize)
            return MakeFailure(ErrorCode::Refused, Readable(folder));
    if (ToWindows1252(file.native()).size() > folderFieldSize)
        return MakeFailure(ErrorCode::Refused, TextOf(file));

    // The exact folders first: an archive without them would be looked for in the wrong place.
    ProgramSettings exact = settings;
    KeepExactFolder(exact, ExactFolderField(ArchiveFolder::Main, file), header.mainFolder);
    KeepExactFolder(exact, ExactFolderField(ArchiveFolder::Secondary, file),
                    header.secondaryFolder);
    if (exact.exactFolders != settings.exactFolders) {
        if (auto status = WriteSettings(folders.program, exact); !status)
            return status;
        settings = std::move(exact);
    }
    if (auto status = KeepExactNames(archive); !status)
        return status;
    header.levelCount = static_cast<std::int32_t>(archive.levels.size());
    if (auto status = WriteDocument(file, FormatArchive(header, archive.levels)); !status)
        return status;
    archive.dirty = false;
    archive.file = file;
    return {};
}

Status WriteArchive(Session& session, const Path& file)
{
    auto status = WriteArchive(session.Folders(), session.settings, session.archive, file);
    if (status)
        RememberArchive(session);
    return status;
}

void RememberArchive(Session& session)
{
    session.preferences.archivePath = session.archive.file.native();
}

bool SaveArchiveNow(Session& session)
{
    if (!HasArchive(session.host, session.archive))
        return false;
    const Path file = session.ArchivePath();
    const auto status = WriteArchive(session, file);
    if (!status)
        TellFailure(session.host, GetMsg(Msg::ErrorSavingArchive) + TextOf(file), status.Error());
    return bool{status};
}

bool SaveArchive(Session& session)
{
    if (!session.archive.Loaded())
        return false;
    session.archive.dirty = true;
    return !session.preferences.autoSave || SaveArchiveNow(session);
}

Changes AskSaveChanges(Session& session)
{
    if (!session.archive.dirty)
        return Changes::Saved;
    const std::string name = TextOf(session.ArchivePath().filename());
    if (session.preferences.autoSave ||
        session.host.AskYesNo(GetMsg(Msg::AskSaveArchive, {name, lineBreak}), Consent::YesKeeps))
        return SaveArchiveNow(session) ? Changes::Saved : Changes::NotSaved;
    session.archive.dirty = false;
    return Changes::Dropped;
}

bool MayReplaceArchive(Session& session, bool& saved)
{
    saved = AskSaveChanges(session) == Changes::Saved;
    if (!session.archive.dirty)
        return true;
    if (!session.host.AskYesNo(GetMsg(Msg::AskDropChanges), Consent::Explicit))
        return false;
    session.archive.dirty = false;
    return true;
}

bool SaveArchiveOrPutBack(Session& session, const Archive& before)
{
    if (SaveArchive(session))
        return true;
    session.archive = before;
    (void)WriteArchive(session, before.file); // the failure has been told already
    session.archive.dirty = before.dirty;
    return false;
}

} // namespace kestrova
