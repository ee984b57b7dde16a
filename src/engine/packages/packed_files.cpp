#include "packages/packed_files.h"

#include "core/text.h"

#include <libdeflate.h>
#include <span>
#include <unordered_map>
#include <unordered_set>

namespace kestrova
{

namespace
{

Result<std::uint32_t> ChecksumOf(const Path& path, const Heartbeat& heartbeat)
{
    constexpr std::size_t pieceSize = std::size_t{1} << 20;
    platform::File file;
    if (const auto failure = platform::File::OpenForRead(path, file))
        return MakeFailure(ErrorCode::CannotRead, TextOf(path), failure);
    std::string piece(pieceSize, '\0');
    std::uint32_t checksum = 0;
    for (std::uint64_t place = 0;;) {
        if (heartbeat && !heartbeat())
            return MakeFailure(ErrorCode::Stopped, TextOf(path));
        std::size_t got = 0;
        if (const auto failure = file.ReadAt(place, std::as_writable_bytes(std::span{piece}), got))
            return MakeFailure(ErrorCode::CannotRead, TextOf(path), failure);
        if (got == 0)
            return checksum;
        checksum = libdeflate_crc32(checksum, piece.data(), got);
        place += got;
    }
}

} // namespace

Result<Proof> ProveUnpacked(const Path& folder, const std::vector<PackedFile>& packed,
                            const Heartbeat& heartbeat)
{
    std::unordered_map<std::string_view, std::size_t> last;
    for (std::size_t i = 0; i < packed.size(); ++i)
        last[packed[i].name] = i;
    std::unordered_set<std::uint32_t> wanted;
    for (const auto& [name, i] : last)
        if (packed[i].checksum)
            wanted.insert(*packed[i].checksum);
    Proof proof;
    std::unordered_set<std::uint32_t> found;
    std::vector<Path> folders{folder};
    while (!folders.empty()) {
        const Path place = std::move(folders.back());
        folders.pop_back();
        std::vector<platform::FolderEntry> entries;
        if (const auto failure = platform::ListFolder(place, entries))
            return MakeFailure(ErrorCode::CannotRead, TextOf(place), failure);
        for (const platform::FolderEntry& entry : entries) {
            Path path = place / entry.name;
            if (entry.kind == platform::FileKind::Folder) {
                folders.push_back(std::move(path));
            } else if (entry.kind == platform::FileKind::File) {
                const auto checksum = ChecksumOf(path, heartbeat);
                if (!checksum)
                    return checksum.Error();
                found.insert(*checksum);
                const bool right = wanted.contains(*checksum);
                proof.whole += right ? 1 : 0;
                if (!right)
                    proof.wrong.push_back(std::move(path));
            }
        }
    }
    for (std::size_t i = 0; i < packed.size(); ++i)
        if (last[packed[i].name] == i && packed[i].checksum && !found.contains(*packed[i].checksum))
            proof.lacking.push_back(Readable(packed[i].name));
    return proof;
}

} // namespace kestrova
