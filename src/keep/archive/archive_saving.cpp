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
    const auto bytes = ReadKeptFile(file, longestExactNames);
    if (!bytes)
        return bytes.Error();
    bool isOurs = false; // and so is what a link leads to
    if (*bytes) {
        names = ParseExactNames(**bytes);
        isOurs = FormatExactNames(names) == **bytes;
        if (!MergeExactNames(names, archive.levels))
            return {};
    }
    const std::string text = FormatExactNames(names);
    return isOurs ? WriteKeptFile(file, text) : WriteWholeFile(file, text);
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

Status WriteArchive(const ArchiveParts& parts, const Path& file)
{
    auto status = WriteArchive(parts.folders, parts.settings, parts.archive, file);
    if (status)
        RememberArchive(parts);
    return status;
}

void RememberArchive(const ArchiveParts& parts)
{
    parts.preferences.archivePath = parts.archive.file.native();
}

bool SaveArchiveNow(const ArchiveParts& parts)
{
    if (!HasArchive(parts.host, parts.archive))
        return false;
    const Path file = parts.archive.file;
    const auto status = WriteArchive(parts, file);
    if (!status)
        TellFailure(parts.host, GetMsg(Msg::ErrorSavingArchive) + TextOf(file), status.Error());
    return bool{status};
}

bool SaveArchive(const ArchiveParts& parts)
{
    if (!parts.archive.Loaded())
        return false;
    parts.archive.dirty = true;
    return !parts.preferences.autoSave || SaveArchiveNow(parts);
}

Changes AskSaveChanges(const ArchiveParts& parts)
{
    if (!parts.archive.dirty)
        return Changes::Saved;
    const std::string name = TextOf(parts.archive.file.filename());
    if (parts.preferences.autoSave ||
        parts.host.AskYesNo(GetMsg(Msg::AskSaveArchive, {name, lineBreak}), Consent::YesKeeps))
        return SaveArchiveNow(parts) ? Changes::Saved : Changes::NotSaved;
    parts.archive.dirty = false;
    return Changes::Dropped;
}

bool MayReplaceArchive(const ArchiveParts& parts, bool& saved)
{
    saved = AskSaveChanges(parts) == Changes::Saved;
    if (!parts.archive.dirty)
        return true;
    if (!parts.host.AskYesNo(GetMsg(Msg::AskDropChanges), Consent::Explicit))
        return false;
    parts.archive.dirty = false;
    return true;
}

bool SaveArchiveOrPutBack(const ArchiveParts& parts, const Archive& before)
{
    if (SaveArchive(parts))
        return true;
    parts.archive = before;
    (void)WriteArchive(parts, before.file); // the failure has been told already
    parts.archive.dirty = before.dirty;
    return false;
}

} // namespace kestrova
