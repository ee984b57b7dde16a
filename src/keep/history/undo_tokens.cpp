#include "history/undo_tokens.h"

#include "core/look.h"
#include "core/staged_file.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "formats/record_json.h"
#include "platform/clock.h"
#include "platform/file_content.h"

namespace kestrova
{

namespace
{

constexpr std::uint64_t longestToken = 64 << 10;

Path ProgramsFile(const Folders& folders)
{
    return InFolder(InFolder(folders.program, OnDisk::DirUndo), OnDisk::FragUndoToken);
}

Path LevelsFile(const Path& home)
{
    return InFolder(InFolder(home, OnDisk::DirUndoOfLevel), OnDisk::FragUndoToken);
}

/// No other folder has it: of where and what the folder is, and of when.
std::string NewToken(const Path& folder, const platform::FileFacts& facts)
{
    const std::string text = folder.native() + '\n' + std::to_string(facts.device) + '\n' +
                             std::to_string(facts.inode) + '\n' + std::to_string(facts.changedNs) +
                             '\n' + std::to_string(platform::NowNs()) + platform::BootId();
    return platform::HashOf(std::as_bytes(std::span{text}));
}

/// The token, while its note speaks of this folder: by its path, or by its identity after a move.
std::string TokenHere(const Folders& folders, std::uint64_t inode)
{
    const auto text = ReadFileIfThere(ProgramsFile(folders), longestToken);
    const NoteJson json = ParseNote(text && *text ? **text : std::string{});
    NoteReader reader{json};
    std::string token = reader.Text("token");
    const std::string path = reader.Text("path");
    const auto noted = reader.Number<std::uint64_t>("inode");
    const bool counts = reader.Good() && IsContentHash(token) &&
                        (path == folders.program.native() || noted == inode);
    return counts ? token : std::string{};
}

} // namespace

std::string KnownTokenOfProgram(const Folders& folders)
{
    const auto facts = LookAt(folders.program);
    return facts ? TokenHere(folders, facts->inode) : std::string{};
}

Result<std::string> TokenOfProgram(const Folders& folders)
{
    const auto facts = LookAt(folders.program);
    if (!facts)
        return facts.Error();
    if (auto token = TokenHere(folders, facts->inode); !token.empty())
        return token;
    const std::string token = NewToken(folders.program, *facts);
    const Path file = ProgramsFile(folders);
    if (auto status = MakeFolders(file.parent_path()); !status)
        return status.Error();
    const NoteJson json = {
        {"token", token}, {"path", Encoded(folders.program.native())}, {"inode", facts->inode}};
    if (auto status = WriteWholeFile(file, Written(json)); !status)
        return status.Error();
    return token;
}

Result<std::string> KnownTokenOfLevel(const Path& home)
{
    const auto text = ReadFileIfThere(LevelsFile(home), longestToken);
    if (!text)
        return text.Error();
    std::string token = text->value_or(std::string{});
    return IsContentHash(token) ? token : std::string{};
}

Result<std::string> TokenOfLevel(const Path& home)
{
    auto known = KnownTokenOfLevel(home);
    if (!known || !known->empty())
        return known;
    const auto facts = LookAt(home);
    if (!facts)
        return facts.Error();
    if (facts->kind != platform::FileKind::Folder)
        return MakeFailure(ErrorCode::Missing, TextOf(home));
    std::string token = NewToken(home, *facts);
    const Path file = LevelsFile(home);
    if (auto status = MakeFolders(file.parent_path()); !status)
        return status.Error();
    if (auto status = WriteWholeFile(file, token); !status)
        return status.Error();
    return token;
}

} // namespace kestrova
