#include "core/look.h"

#include "core/text.h"
#include "platform/file_content.h"
#include "platform/files.h"

#include <algorithm>
#include <cstring>

namespace kestrova
{

using platform::FileFacts;
using platform::FileKind;

namespace
{

using LookCall = std::error_code (*)(const Path&, FileFacts&);

Result<FileFacts> LookExactly(LookCall call, const Path& path)
{
    FileFacts facts;
    if (const auto failure = call(path, facts))
        return MakeFailure(ErrorCode::CannotRead, TextOf(path), failure);
    return facts;
}

Result<FileFacts> LookWith(LookCall call, const Path& path)
{
    const auto place = FindPath(path);
    return place ? LookExactly(call, *place) : place.Error();
}

Result<bool> IsOfKind(const Path& path, FileKind kind)
{
    const auto facts = LookWith(&platform::Look, path);
    return facts ? Result<bool>{facts->kind == kind} : facts.Error();
}

bool SaysMissing(const std::error_code& failure)
{
    return failure == std::errc::no_such_file_or_directory || failure == std::errc::not_a_directory;
}

} // namespace

Result<FileFacts> LookAt(const Path& path)
{
    return LookWith(&platform::Look, path);
}

Result<FileFacts> LookAtSpelled(const Path& path)
{
    return LookExactly(&platform::Look, path);
}

Result<bool> IsFile(const Path& file)
{
    return IsOfKind(file, FileKind::File);
}

Result<bool> IsFolder(const Path& folder)
{
    return IsOfKind(folder, FileKind::Folder);
}

Result<bool> IsFree(const Path& path)
{
    const auto facts = LookWith(&platform::LookAtLink, path);
    return facts ? Result<bool>{facts->kind == FileKind::Missing} : facts.Error();
}

Result<Path> FirstFree(const std::function<Path(int)>& nameOf, int first, int last)
{
    for (int number = first; number <= last; ++number) {
        Path name = nameOf(number);
        const auto isFree = IsFree(name);
        if (!isFree)
            return isFree.Error();
        if (*isFree)
            return name;
    }
    return Path{};
}

Result<Path> FreeNumbered(const Path& file)
{
    return FirstFree([&](int number) { return file.native() + "." + std::to_string(number); });
}

bool IsSameThing(const platform::FileFacts& a, const platform::FileFacts& b)
{
    return a.kind != FileKind::Missing && a.kind == b.kind && a.device == b.device &&
           a.inode == b.inode;
}

bool IsSameFolder(const Path& a, const Path& b)
{
    const platform::FileFacts facts = platform::FactsOf(ResolvePath(a));
    return facts.kind == FileKind::Folder && IsSameThing(facts, platform::FactsOf(ResolvePath(b)));
}

namespace
{

/// Fills the buffer as far as the file goes.
std::error_code Fill(platform::File& file, std::span<std::byte> into, std::size_t& got)
{
    got = 0;
    for (std::size_t count = 1; count > 0 && got < into.size(); got += count)
        if (const auto failure = file.Read(into.subspan(got), count))
            return failure;
    return {};
}

} // namespace

Result<bool> HoldSameBytes(const Path& a, const Path& b, const Heartbeat& heartbeat)
{
    const auto failed = [](const Path& file, const std::error_code& failure) {
        return MakeFailure(ErrorCode::CannotRead, TextOf(file), failure);
    };
    platform::File first;
    platform::File second;
    if (const auto failure = platform::File::OpenForRead(a, first))
        return failed(a, failure);
    if (const auto failure = platform::File::OpenForRead(b, second))
        return failed(b, failure);
    if (first.Facts().size != second.Facts().size)
        return false;
    // Two buffers that stay in a core's own cache.
    constexpr std::size_t most = std::size_t{1} << 17;
    std::vector<std::byte> left(std::min(platform::BufferSize(first.Facts().size), most));
    std::vector<std::byte> right(left.size());
    for (;;) {
        std::size_t leftGot = 0;
        std::size_t rightGot = 0;
        if (const auto failure = Fill(first, left, leftGot))
            return failed(a, failure);
        if (const auto failure = Fill(second, right, rightGot))
            return failed(b, failure);
        if (leftGot != rightGot || std::memcmp(left.data(), right.data(), leftGot) != 0)
            return false;
        if (leftGot < left.size())
            return true;
        if (heartbeat && !heartbeat())
            return MakeFailure(ErrorCode::Stopped, TextOf(a));
    }
}

Result<std::optional<std::string>> ReadFileIfThere(const Path& file, std::uint64_t limit)
{
    const auto place = FindPath(file);
    if (!place)
        return place.Error();
    std::string content;
    const auto failure = platform::ReadAll(*place, content, limit);
    if (!failure)
        return std::optional{std::move(content)};
    if (SaysMissing(failure))
        return std::optional<std::string>{};
    return MakeFailure(ErrorCode::CannotRead, TextOf(*place), failure);
}

Result<std::optional<std::string>> ReadKeptFile(const Path& file, std::uint64_t limit)
{
    auto content = ReadFileIfThere(file, limit);
    if (!content || *content)
        return content;
    const auto place = FindPath(file);
    const auto free = place ? IsFree(*place) : Result<bool>{place.Error()};
    if (!free)
        return free.Error();
    if (!*free)
        return MakeFailure(ErrorCode::CannotRead, TextOf(*place),
                           std::make_error_code(std::errc::no_such_file_or_directory));
    return content;
}

Result<std::string> HashIfThere(const Path& file)
{
    const auto place = FindPath(file);
    if (!place)
        return place.Error();
    std::string hash;
    const auto failure = platform::HashOfFile(*place, hash);
    if (!failure)
        return hash;
    if (SaysMissing(failure))
        return std::string{};
    return MakeFailure(ErrorCode::CannotRead, TextOf(*place), failure);
}

} // namespace kestrova
