#include "packages/zip_names.h"

#include "core/text.h"
#include "formats/zip_directory.h"

#include <algorithm>
#include <span>

namespace kestrova
{

Status MarkUtf8Names(const Path& zip)
{
    constexpr std::size_t flagsInEntry = 8;
    constexpr std::size_t flagsInHeader = 6;
    constexpr int utf8InUpperByte = 0x8;
    constexpr int bitsOfByte = 8;
    auto names = ReadZipDirectory(zip).names;
    std::erase_if(names, [](const ZipName& name) {
        return name.isUtf8 || name.header == zipBeyond || IsAscii(name.bytes) ||
               !IsUtf8(name.bytes);
    });
    if (names.empty())
        return {};
    const auto failed = [&](const std::error_code& failure) {
        return Status{MakeFailure(ErrorCode::CannotWrite, TextOf(zip), failure)};
    };
    platform::File file;
    if (const auto failure = platform::File::OpenForUpdate(zip, file))
        return failed(failure);
    const std::uint64_t size = file.Facts().size;
    for (const ZipName& name : names) {
        const char bytes[] = {static_cast<char>(name.flags),
                              static_cast<char>(name.flags >> bitsOfByte | utf8InUpperByte)};
        for (const std::uint64_t place :
             {name.header + std::uint64_t{flagsInHeader}, size - name.fromEnd + flagsInEntry})
            if (const auto failure = file.WriteAt(place, std::as_bytes(std::span{bytes})))
                return failed(failure);
    }
    if (const auto failure = file.Close())
        return failed(failure);
    return {};
}

} // namespace kestrova
