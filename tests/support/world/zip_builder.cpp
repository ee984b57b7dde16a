#include "world/zip_builder.h"

#include "storage/zl_file.h"

#include <array>

namespace kestrova::testing
{

namespace
{

void Put(std::string& bytes, std::uint32_t value, int width)
{
    for (; width > 0; --width, value >>= 8)
        bytes += static_cast<char>(value & 0xFF);
}

std::uint32_t Crc(const std::string& content)
{
    static const auto table = [] {
        std::array<std::uint32_t, 256> values{};
        for (std::uint32_t i = 0; i < values.size(); ++i) {
            values[i] = i;
            for (int bit = 0; bit < 8; ++bit)
                values[i] = values[i] >> 1 ^ ((values[i] & 1) != 0 ? 0xEDB88320U : 0U);
        }
        return values;
    }();
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : content)
        crc = table[(crc ^ static_cast<unsigned char>(byte)) & 0xFF] ^ crc >> 8;
    return ~crc;
}

/// A stream without the head of two bytes and the sum of four.
std::string Deflated(const std::string& content)
{
    const std::string stream = CompressZlBytes(content);
    return stream.substr(2, stream.size() - 6);
}

} // namespace

std::string BuildZip(const std::vector<BuiltEntry>& entries, const std::string& comment)
{
    std::string local;
    std::string directory;
    for (const BuiltEntry& entry : entries) {
        const std::string packed = entry.packed     ? *entry.packed
                                   : entry.deflated ? Deflated(entry.content)
                                                    : entry.content;
        std::string common;
        Put(common, 20, 2);
        Put(common, entry.flags, 2);
        Put(common, entry.deflated ? 8U : entry.method, 2);
        Put(common, 0x21'0000, 4);
        Put(common, Crc(entry.content), 4);
        Put(common, static_cast<std::uint32_t>(packed.size()), 4);
        Put(common, entry.claimedSize.value_or(static_cast<std::uint32_t>(entry.content.size())),
            4);
        Put(common, static_cast<std::uint32_t>(entry.name.size()), 2);
        Put(common, 0, 2);
        directory += "PK\x01\x02";
        Put(directory, entry.madeBy, 2);
        directory += common;
        Put(directory, 0, 6);
        Put(directory, entry.mode << 16 | entry.dosAttributes, 4);
        Put(directory, static_cast<std::uint32_t>(local.size()), 4);
        directory += entry.name;
        local += "PK\x03\x04" + common + entry.name + packed;
    }
    std::string end = "PK\x05\x06";
    Put(end, 0, 4);
    Put(end, static_cast<std::uint32_t>(entries.size() & 0xFFFF), 2);
    Put(end, static_cast<std::uint32_t>(entries.size() & 0xFFFF), 2);
    Put(end, static_cast<std::uint32_t>(directory.size()), 4);
    Put(end, static_cast<std::uint32_t>(local.size()), 4);
    Put(end, static_cast<std::uint32_t>(comment.size()), 2);
    return local + directory + end + comment;
}

} // namespace kestrova::testing
