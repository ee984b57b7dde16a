#include "archive/level_token.h"

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

constexpr std::uint64_t longestLevelToken = 64 << 10;

Path TokenFileOf(const Path& home)
{
    return InFolder(InFolder(home, OnDisk::DirUndoOfLevel), OnDisk::FragUndoToken);
}

} // namespace

std::string NewToken(const Path& folder, const platform::FileFacts& facts)
{
    const std::string text = folder.native() + '\n' + std::to_string(facts.device) + '\n' +
                             std::to_string(facts.inode) + '\n' + std::to_string(facts.changedNs) +
                             '\n' + std::to_string(platform::NowNs()) + platform::BootId();
    return platform::HashOf(std::as_bytes(std::span{text}));
}

Result<std::string> KnownTokenOfLevel(const Path& home)
{
    const auto text = ReadFileIfThere(TokenFileOf(home), longestLevelToken);
    if (!text)
        return text.Error();
    std::string token = text->value_or(std::string{});
    return IsContentHash(token) ? token : std::string{};
}

Result<std::string> TokenOfLevel(const Path& home, bool flush)
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
    const Path file = TokenFileOf(home);
    if (auto status = MakeFolders(file.parent_path()); !status)
        return status.Error();
    if (auto status = WriteWholeFile(file, token, flush); !status)
        return status.Error();
    return token;
}

} // namespace kestrova
