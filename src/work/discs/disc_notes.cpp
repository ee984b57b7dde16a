#include "discs/disc_notes.h"

#include "core/look.h"
#include "core/staged_file.h"
#include "platform/file_content.h"
#include "words/disc_creation.h"

#include <algorithm>

namespace kestrova
{

namespace
{

using platform::FileKind;

/// Notes the files of one folder, without their hashes, and gathers its sub-folders.
Status NoteFolder(const Path& root, const std::string& below, std::vector<NotedFile>& files,
                  std::vector<std::string>& folders)
{
    const Path folder = below.empty() ? root : root / below;
    std::vector<platform::FolderEntry> entries;
    if (const auto failure = platform::ListFolder(folder, entries))
        return MakeFailure(ErrorCode::CannotRead, TextOf(folder), failure);
    for (const platform::FolderEntry& entry : entries) {
        if (entry.name.starts_with(stagedPrefix))
            continue;
        const std::string name = below.empty() ? entry.name : below + '/' + entry.name;
        if (entry.kind == FileKind::Folder)
            folders.push_back(name);
        else if (entry.kind == FileKind::File)
            files.push_back({name, platform::FactsOf(root / name).size, {}});
        else
            return MakeFailure(ErrorCode::Refused, TextOf(root / name));
    }
    return {};
}

Status NoteHash(const Path& root, NotedFile& file)
{
    if (const auto failure = platform::HashOfFile(root / file.name, file.hash))
        return MakeFailure(ErrorCode::CannotRead, TextOf(root / file.name), failure);
    return {};
}

/// The first name that the lists do not have in common, or that differs in its size.
const std::string* FirstOther(const std::vector<NotedFile>& now, const std::vector<NotedFile>& then)
{
    const std::size_t common = std::min(now.size(), then.size());
    for (std::size_t i = 0; i < common; ++i)
        if (now[i].name != then[i].name || now[i].size != then[i].size)
            return &std::min(now[i].name, then[i].name);
    if (now.size() == then.size())
        return nullptr;
    return now.size() > common ? &now[common].name : &then[common].name;
}

bool ByName(const NotedFile& a, const NotedFile& b)
{
    return a.name < b.name;
}

} // namespace

Path DiscNoteOf(const Path& levels)
{
    return InFolder(levels, OnDisk::FragDiscNote);
}

Result<DiscNote> ReadDiscNote(const Path& levels)
{
    const Path file = DiscNoteOf(levels);
    const auto text = ReadKeptFile(file, longestDiscNote);
    if (!text)
        return text.Error();
    if (!*text)
        return DiscNote{};
    auto note = ParseDiscNote(**text);
    if (!note)
        return InWords(ErrorCode::Damaged, GetMsg(Msg::DiscNoteDamaged, {TextOf(file)}));
    return note;
}

Status WriteDiscNote(const Path& levels, const DiscNote& note)
{
    const Path file = DiscNoteOf(levels);
    return note.discs.empty() ? DeleteSpelled(file) : WriteKeptFile(file, FormatDiscNote(note));
}

Result<std::vector<NotedFile>> ListFilesToNote(const Path& files, const Heartbeat& heartbeat,
                                               std::vector<std::string>* below)
{
    const auto root = FindPath(files);
    if (!root)
        return root.Error();
    const auto there = IsFolder(*root);
    if (!there)
        return there.Error();
    if (!*there)
        return MakeFailure(ErrorCode::Missing, TextOf(files));
    std::vector<NotedFile> found;
    std::vector<std::string> folders = {{}};
    for (std::size_t i = 0; i < folders.size(); ++i) {
        if (heartbeat && !heartbeat())
            return MakeFailure(ErrorCode::Stopped, TextOf(files));
        const std::string folder = folders[i];
        if (auto noted = NoteFolder(*root, folder, found, folders); !noted)
            return noted.Error();
    }
    std::sort(found.begin(), found.end(), ByName);
    if (below != nullptr)
        *below = std::move(folders);
    return found;
}

Result<std::vector<NotedFile>> NoteFilesOf(const Path& files, const Heartbeat& heartbeat)
{
    auto found = ListFilesToNote(files, heartbeat);
    if (!found)
        return found;
    for (NotedFile& file : *found) {
        if (heartbeat && !heartbeat())
            return MakeFailure(ErrorCode::Stopped, TextOf(files));
        if (auto noted = NoteHash(ResolvePath(files), file); !noted)
            return noted.Error();
    }
    return found;
}

Status HoldsNotedFiles(const Path& files, const NotedLevel& level, const Heartbeat& heartbeat)
{
    auto now = ListFilesToNote(files, heartbeat);
    if (!now)
        return now.Error();
    std::vector<NotedFile> then = level.files;
    std::sort(then.begin(), then.end(), ByName);
    if (const std::string* other = FirstOther(*now, then))
        return MakeFailure(ErrorCode::Differs, *other);
    const Path root = ResolvePath(files);
    for (std::size_t i = 0; i < then.size(); ++i) {
        if (heartbeat && !heartbeat())
            return MakeFailure(ErrorCode::Stopped, TextOf(files));
        if (auto noted = NoteHash(root, (*now)[i]); !noted)
            return noted;
        if ((*now)[i].hash != then[i].hash)
            return MakeFailure(ErrorCode::Differs, then[i].name);
    }
    return {};
}

const NotedLevel* FindNoted(const DiscNote& note, std::int32_t disc, LevelCode code)
{
    const NotedDisc* noted = note.Find(disc);
    return noted == nullptr ? nullptr : noted->Find(code);
}

} // namespace kestrova
