#include "session/zip_names.h"

#include "core/text.h"
#include "session/zip_directory.h"

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr std::size_t entrySize = 46;
constexpr std::size_t longestTail = 22 + 0xFFFF;
constexpr std::size_t flagsInEntry = 8;
constexpr std::size_t flagsInHeader = 6;
constexpr std::uint32_t utf8Flag = 0x800;
constexpr std::string_view entryMark{"PK\1\2", 4};

std::uint32_t NumberAt(std::string_view bytes, std::size_t place, std::size_t width)
{
    std::uint32_t value = 0;
    for (std::size_t i = width; i > 0; --i)
        value = value << 8 | static_cast<unsigned char>(bytes[place + i - 1]);
    return value;
}

bool NeedsMark(std::string_view name)
{
    const bool plain = std::all_of(name.begin(), name.end(), [](char byte) {
        return static_cast<unsigned char>(byte) < 0x80;
    });
    return !plain && IsUtf8(name);
}

/// The last bytes of the file: at least the whole directory; empty when there is none.
std::error_code ReadDirectory(platform::File& file, std::string& tail)
{
    const std::uint64_t size = file.Facts().size;
    std::uint64_t wanted = longestTail;
    for (int round = 0; round < 2; ++round) {
        tail.resize(std::min(wanted, size));
        std::size_t got = 0;
        if (const auto failure =
                file.ReadAt(size - tail.size(), std::as_writable_bytes(std::span{tail}), got))
            return failure;
        tail.resize(got);
        wanted = ZipDirectorySize(tail);
        if (wanted <= tail.size())
            break;
    }
    tail.erase(0, tail.size() - std::min<std::uint64_t>(wanted, tail.size()));
    return {};
}

} // namespace

Status MarkUtf8Names(const Path& zip)
{
    const auto failed = [&](const std::error_code& failure) {
        return Status{MakeFailure(ErrorCode::CannotWrite, TextOf(zip), failure)};
    };
    platform::File file;
    if (const auto failure = platform::File::OpenForUpdate(zip, file))
        return failed(failure);
    std::string directory;
    if (const auto failure = ReadDirectory(file, directory))
        return failed(failure);
    const std::uint64_t begin = file.Facts().size - directory.size();
    for (std::size_t place = 0;
         place + entrySize <= directory.size() && directory.compare(place, 4, entryMark) == 0;) {
        const std::size_t nameSize = NumberAt(directory, place + 28, 2);
        const std::size_t whole = entrySize + nameSize + NumberAt(directory, place + 30, 2) +
                                  NumberAt(directory, place + 32, 2);
        if (NeedsMark(std::string_view{directory}.substr(place + entrySize, nameSize))) {
            const std::uint32_t flags = NumberAt(directory, place + flagsInEntry, 2) | utf8Flag;
            const char bytes[] = {static_cast<char>(flags & 0xFF), static_cast<char>(flags >> 8)};
            const std::uint64_t header = NumberAt(directory, place + 42, 4);
            for (const std::uint64_t target :
                 {header + flagsInHeader, begin + place + flagsInEntry})
                if (const auto failure = file.WriteAt(target, std::as_bytes(std::span{bytes})))
                    return failed(failure);
        }
        place += whole;
    }
    if (const auto failure = file.Close())
        return failed(failure);
    return {};
}

} // namespace kestrova
