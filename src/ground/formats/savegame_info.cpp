#include "formats/savegame_info.h"

#include "core/files.h"
#include "core/text.h"
#include "words/formats.h"

#include <array>

namespace kestrova
{

namespace
{

constexpr std::size_t numberAt = 75;
constexpr std::size_t headSize = 4096;

} // namespace

SavegameInfo ParseSavegameInfo(std::string_view head)
{
    SavegameInfo info;
    const std::string_view raw = head.substr(0, head.find_first_of(std::string_view{"\0,\r\n", 4}));
    info.title = FromWindows1252(Trim(raw));
    if (head.size() >= numberAt + 2) {
        const auto low = static_cast<unsigned char>(head[numberAt]);
        const auto high = static_cast<unsigned char>(head[numberAt + 1]);
        info.number = static_cast<std::int16_t>(low | (high << 8));
    }
    return info;
}

SavegameInfo ReadSavegameInfo(const Path& file)
{
    platform::File handle;
    std::array<char, headSize> head{};
    std::size_t got = 0;
    auto failure = platform::File::OpenForRead(ResolvePath(file), handle);
    if (!failure)
        failure = handle.Read(std::as_writable_bytes(std::span(head)), got);
    if (failure)
        return {Told(Msg::NotReadableTitle), 0, failure};
    return ParseSavegameInfo({head.data(), got});
}

} // namespace kestrova
