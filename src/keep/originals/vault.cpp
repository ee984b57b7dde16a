#include "originals/vault.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "formats/program_folder.h"
#include "formats/record_json.h"
#include "history/undo_entries.h"
#include "words/originals.h"

#include <algorithm>
#include <array>
#include <set>

namespace kestrova
{

namespace
{

using Json = NoteJson;

constexpr std::array wordsForMaker{"person", "program"};

Path VaultFolder(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::DirHistoryOriginals);
}

Path VaultIndex(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::FragOriginalsIndex);
}

std::string Line(const Folders& folders, const KeptFile& entry)
{
    const Json json = {
        {"id", entry.id},
        {"file", Encoded(entry.file)},
        {"content", Encoded(entry.content.lexically_relative(VaultFolder(folders)).native())},
        {"size", entry.size},
        {"time", entry.modifiedNs},
        {"kept", entry.keptNs},
        {"folder", Encoded(entry.folder)},
        {"made", wordsForMaker.at(static_cast<std::size_t>(entry.madeBy))}};
    return WrittenLine(json);
}

std::optional<KeptFile> ParseLine(const Folders& folders, const std::string& line)
{
    const Json json = ParseNote(line);
    if (!json.is_object())
        return {};
    KeptFile entry;
    const auto text = [&](const char* name) {
        const auto found = json.find(name);
        return found != json.end() && found->is_string() ? Decoded(found->get<std::string>())
                                                         : std::string{};
    };
    const auto number = [&](const char* name, auto& value) {
        const auto found = json.find(name);
        if (found != json.end() && found->is_number_integer())
            value = found->get<std::remove_reference_t<decltype(value)>>();
    };
    entry.id = text("id");
    entry.file = text("file");
    entry.folder = text("folder");
    if (text("made") == wordsForMaker.back())
        entry.madeBy = MadeBy::Program;
    const auto content = SafeRelative(text("content"));
    number("size", entry.size);
    number("time", entry.modifiedNs);
    number("kept", entry.keptNs);
    if (entry.id.empty() || !content || !SafeRelative(entry.file))
        return {};
    entry.content = VaultFolder(folders) / *content;
    return entry;
}

struct VaultList {
    std::vector<KeptFile> entries;
    std::string strangeLines; ///< what this version cannot read is carried along
};

Result<VaultList> ReadVault(const Folders& folders)
{
    VaultList list;
    const auto text = ReadFileIfThere(VaultIndex(folders), UINT64_C(64) << 20);
    if (!text)
        return text.Error();
    if (!*text)
        return list;
    for (const std::string& line : Split(**text, '\n')) {
        if (line.empty())
            continue;
        if (auto entry = ParseLine(folders, line))
            list.entries.push_back(std::move(*entry));
        else
            list.strangeLines += line + "\n";
    }
    return list;
}

Status WriteVault(const Folders& folders, const VaultList& list)
{
    std::string text = list.strangeLines;
    for (const KeptFile& entry : list.entries)
        text += Line(folders, entry);
    return WriteWholeFile(VaultIndex(folders), text);
}

/// A place of the vault that holds the file's content already, or the next free one.
Result<Path> PlaceInVault(const Folders& folders, const Path& relative, const Path& file,
                          bool& held, const Heartbeat& beat)
{
    const Path plain = VaultFolder(folders) / relative;
    const auto nameOf = [&](int number) {
        return number == 1 ? plain : Path{plain.native() + "." + std::to_string(number)};
    };
    auto free = FirstFree(nameOf);
    held = false;
    for (int number = 1; free && nameOf(number) != *free; ++number)
        if (SameContent(nameOf(number), file, beat)) {
            held = true;
            return nameOf(number);
        }
    return free;
}

int LastNumber(const VaultList& list)
{
    int last = 0;
    for (const KeptFile& entry : list.entries)
        last = std::max(last, LeadingNumber(entry.id.substr(entry.id.find('-') + 1)));
    return last;
}

/// What may be passed over.
enum class HeldBy { Vault, VaultOrBackup };

Keeping KeepFiles(Machine& machine, const Folders& folders, const Path& root,
                  const std::vector<Path>& relatives, HeldBy heldBy, MadeBy madeBy,
                  const Heartbeat& beat)
{
    Keeping keeping;
    std::vector<KeptFile> fresh;
    const auto fail = [&](const Path& relative, const Failure& failure) {
        if (keeping.failed.empty())
            keeping.failure = failure;
        keeping.failed.push_back(relative);
    };
    const bool singly = relatives.size() <= flushedSingly;
    CopyOptions options{Verify::Content, singly, singly, {}};
    if (beat)
        options.progress = [&](std::uint64_t) { return beat(); };
    for (const Path& relative : relatives) {
        if (beat && !beat()) {
            fail(relative, MakeFailure(ErrorCode::Stopped, {}));
            continue;
        }
        const Path file = ResolvePath(root / relative);
        const auto facts = LookAt(file);
        if (!facts) {
            fail(relative, facts.Error());
            continue;
        }
        if (facts->kind != platform::FileKind::File ||
            (heldBy == HeldBy::VaultOrBackup &&
             SameContent(file, ResolvePath(folders.Backup() / relative))))
            continue;
        bool held = false;
        const auto place = PlaceInVault(folders, relative, file, held, beat);
        if (place)
            keeping.contents.emplace(relative, *place);
        if (held)
            continue;
        Status kept = place ? MakeFolders(place->parent_path()) : place.Error();
        if (kept)
            kept = CopyFileOver(file, *place, options);
        if (!kept) {
            keeping.contents.erase(relative);
            fail(relative, kept.Error());
            continue;
        }
        fresh.push_back({{},
                         ToBackslashes(relative),
                         *place,
                         facts->size,
                         facts->modifiedNs,
                         machine.NowNs(),
                         folders.trle.native(),
                         madeBy});
        keeping.kept.push_back(relative);
    }
    if (fresh.empty())
        return keeping;
    Status noted;
    if (const auto failure = singly ? std::error_code{}
                                    : platform::SyncFileSystem(ResolvePath(VaultFolder(folders))))
        noted = MakeFailure(ErrorCode::CannotWrite, TextOf(VaultFolder(folders)), failure);
    auto list = ReadVault(folders);
    if (noted && !list)
        noted = list.Error();
    if (noted) {
        int number = LastNumber(*list);
        for (KeptFile& entry : fresh) {
            entry.id = Told(Msg::OriginalsId, {std::to_string(++number)});
            list->entries.push_back(entry);
        }
        noted = WriteVault(folders, *list);
    }
    if (!noted) { // what is not on the disk and not listed is not kept
        for (const Path& relative : keeping.kept) {
            keeping.contents.erase(relative);
            fail(relative, noted.Error());
        }
        for (const KeptFile& entry : fresh)
            (void)platform::Unlink(entry.content); // an unlisted copy does no harm
        keeping.kept.clear();
    }
    return keeping;
}

} // namespace

Keeping KeepOriginals(Machine& machine, const Folders& folders, const std::vector<Path>& relatives,
                      MadeBy madeBy)
{
    return KeepFiles(machine, folders, folders.trle, relatives, HeldBy::VaultOrBackup, madeBy, {});
}

Keeping KeepReplaced(Machine& machine, const Folders& folders, const Path& root,
                     const std::vector<Path>& relatives, const Heartbeat& beat)
{
    return KeepFiles(machine, folders, root, relatives, HeldBy::Vault, MadeBy::Person, beat);
}

Status KeepOriginal(Machine& machine, const Folders& folders, const Path& relative)
{
    Keeping keeping = KeepOriginals(machine, folders, {relative});
    return keeping.failed.empty() ? Status{} : Status{std::move(keeping.failure)};
}

Result<std::vector<KeptFile>> KeptFiles(const Folders& folders)
{
    auto list = ReadVault(folders);
    if (!list)
        return list.Error();
    const Path vault = ResolvePath(VaultFolder(folders));
    std::set<Path> listed;
    std::vector<KeptFile> files;
    const auto tree = ScanTreeIfThere(vault);
    if (!tree)
        return tree.Error();
    for (KeptFile& entry : list->entries) {
        const auto isKept = IsFile(entry.content);
        if (!isKept)
            return isKept.Error();
        // Its folders may have been made in another spelling.
        entry.content = ResolvePath(entry.content);
        if (listed.insert(entry.content).second && *isKept)
            files.push_back(std::move(entry));
    }
    std::vector<KeptFile> unlisted; // kept before there was a list
    for (const Path& file : tree->files) {
        if (listed.contains(file))
            continue;
        const Path relative = file.lexically_relative(vault);
        const std::string ending = ExtensionOf(relative.native());
        Path stood = relative;
        if (!ending.empty() && AreDigits(std::string_view{ending}.substr(1)) &&
            FileExists(vault / StripExtension(relative.native())))
            stood = StripExtension(relative.native());
        const platform::FileFacts facts = platform::FactsOf(file);
        unlisted.push_back({Readable(relative.native()),
                            ToBackslashes(stood),
                            file,
                            facts.size,
                            facts.modifiedNs,
                            facts.changedNs,
                            {}});
    }
    files.insert(files.begin(), unlisted.begin(), unlisted.end());
    return files;
}

namespace
{

Result<KeptFile> KeptFileOf(const Folders& folders, const std::string& id)
{
    auto files = KeptFiles(folders);
    if (!files)
        return files.Error();
    const auto entry = std::find_if(files->begin(), files->end(),
                                    [&](const KeptFile& file) { return file.id == id; });
    if (entry == files->end())
        return Failure{ErrorCode::Missing, GetMsg(Msg::OriginalsUnknownId, {id}), {}};
    return std::move(*entry);
}

} // namespace

Status DeleteKept(const Folders& folders, const std::string& id)
{
    const auto entry = KeptFileOf(folders, id);
    if (!entry)
        return entry.Error();
    // The content first: a line of the list without its file is no entry.
    if (const auto failure = platform::Unlink(entry->content))
        return MakeFailure(ErrorCode::CannotDelete, TextOf(entry->content), failure);
    auto list = ReadVault(folders);
    if (!list)
        return list.Error();
    std::erase_if(list->entries, [&](const KeptFile& one) { return one.id == id; });
    return WriteVault(folders, *list);
}

void BoundVault(const Folders& folders, const ProgramSettings& settings)
{
    const auto list = ReadVault(folders);
    if (!list)
        return;
    std::int32_t count = 0;
    std::uint64_t bytes = 0;
    for (auto entry = list->entries.rbegin(); entry != list->entries.rend(); ++entry) {
        if (entry->madeBy != MadeBy::Program)
            continue;
        ++count;
        bytes += entry->size;
        if (count > settings.undoCount || !HasUndoRoom(settings, bytes))
            (void)DeleteKept(folders, entry->id); // it is tried again with the next one
    }
}

Result<Path> FolderOfKept(const Folders& folders, const std::string& id)
{
    const auto entry = KeptFileOf(folders, id);
    if (!entry)
        return entry.Error();
    const auto isThere = IsFolder(entry->folder);
    if (!isThere)
        return isThere.Error();
    return !entry->folder.empty() && *isThere ? Path{entry->folder} : folders.trle;
}

Result<Path> BringOriginalBack(Machine& machine, const Folders& folders, const std::string& id)
{
    const auto entry = KeptFileOf(folders, id);
    if (!entry)
        return entry.Error();
    const auto relative = SafeRelative(entry->file);
    if (!relative)
        return relative.Error();
    if (auto status = KeepOriginal(machine, folders, *relative); !status)
        return status.Error();
    const Path target = ResolvePath(folders.trle / *relative);
    if (auto status = MakeFolders(target.parent_path()); !status)
        return status.Error();
    if (auto status = CopyFileOver(entry->content, target, {Verify::Content, true, true, {}});
        !status)
        return status.Error();
    return target;
}

} // namespace kestrova
