#include "history/undo_tokens.h"

#include "archive/level_token.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "formats/program_folder.h"
#include "formats/record_json.h"

namespace kestrova
{

namespace
{

constexpr std::uint64_t longestToken = 64 << 10;

Path ProgramsFile(const Folders& folders)
{
    return InFolder(InFolder(folders.program, OnDisk::DirUndo), OnDisk::FragUndoToken);
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

} // namespace kestrova
