#include "burning/content_check.h"

#include "burning/disc_files.h"
#include "core/text.h"
#include "formats/iso_directory.h"
#include "platform/content_hash.h"
#include "platform/file_content.h"
#include "words/burning.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <unordered_map>

namespace kestrova
{

namespace
{

constexpr std::size_t pieceSize = std::size_t{1} << 20;
/// Enough for anybody to see what kind of damage it is.
constexpr std::size_t mostDifferences = 1000;

/// One file of the disc beside its source.
struct Pair {
    const DiscFile* wanted = nullptr;
    const IsoFile* found = nullptr;

    [[nodiscard]] std::uint64_t Begin() const
    {
        return found->extents.empty() ? 0 : found->extents.front().offset;
    }
};

class ContentCheck
{
public:
    ContentCheck(platform::File& disc, ProgressScope* progress, DiscComparison& comparison)
        : disc_(disc), progress_(progress), comparison_(comparison), onDisc_(pieceSize),
          ofSource_(pieceSize)
    {
    }

    Status Run(const std::vector<DiscFile>& wanted, const std::vector<IsoFile>& found)
    {
        total_ = BytesOf(wanted);
        for (const Pair& pair : PairsOf(wanted, found)) {
            const auto same = Compare(pair);
            if (!same)
                return same.Error();
            const DiscFile& file = *pair.wanted;
            if (*same)
                comparison_.same.push_back({file.target, file.source, file.size, hash_.Digits()});
        }
        return {};
    }

private:
    void Differs(Message why, const DiscFile& file, const std::string& reason = {})
    {
        if (comparison_.differences.size() < mostDifferences)
            comparison_.differences.push_back(GetMsg(why, {file.target, reason}));
    }

    /// In the order in which they lie on the disc; what is not there is noted.
    std::vector<Pair> PairsOf(const std::vector<DiscFile>& wanted,
                              const std::vector<IsoFile>& found)
    {
        std::unordered_map<std::string_view, const IsoFile*> byPath;
        for (const IsoFile& file : found)
            byPath.emplace(file.path, &file);
        std::vector<Pair> pairs;
        for (const DiscFile& file : wanted) {
            std::string_view path = file.target;
            if (path.ends_with('/'))
                path.remove_suffix(1);
            const auto at = byPath.find(path);
            const IsoKind kind = file.isFolder ? IsoKind::Folder : IsoKind::File;
            if (at == byPath.end() || at->second->kind != kind)
                Differs(file.isFolder ? Msg::BurnFolderNotOnDisc : Msg::BurnFileNotOnDisc, file);
            else if (at->second->size != file.size)
                Differs(Msg::BurnFileOtherSize, file);
            else if (!file.isFolder)
                pairs.push_back({&file, at->second});
        }
        std::sort(pairs.begin(), pairs.end(),
                  [](const Pair& a, const Pair& b) { return a.Begin() < b.Begin(); });
        return pairs;
    }

    Result<bool> Compare(const Pair& pair)
    {
        const DiscFile& file = *pair.wanted;
        hash_.Clear();
        platform::File source;
        if (const auto failure = platform::File::OpenForRead(file.real, source)) {
            Differs(Msg::BurnSourceNotRead, file, failure.message());
            return false;
        }
        for (const IsoExtent& extent : pair.found->extents)
            for (std::uint64_t at = 0; at < extent.size; at += pieceSize) {
                if (!Step())
                    return Failure{ErrorCode::Stopped};
                const auto size =
                    static_cast<std::size_t>(std::min<std::uint64_t>(pieceSize, extent.size - at));
                if (!ComparePiece(file, source, extent.offset + at, size))
                    return false;
                done_ += size;
            }
        if (source.Facts().size != file.size) {
            Differs(Msg::BurnSourceChanged, file);
            return false;
        }
        return true;
    }

    bool ComparePiece(const DiscFile& file, platform::File& source, std::uint64_t place,
                      std::size_t size)
    {
        const auto onDisc = std::span{onDisc_}.first(size);
        const auto ofSource = std::span{ofSource_}.first(size);
        std::size_t got = 0;
        if (const auto failure = disc_.ReadAt(place, onDisc, got); failure || got != size) {
            Differs(Msg::BurnSectorNotRead, file,
                    failure ? failure.message() : GetMsg(Msg::BurnDiscEnds));
            return false;
        }
        // `Read` may answer with less than a piece.
        for (std::size_t filled = 0; filled < size; filled += got)
            if (source.Read(ofSource.subspan(filled), got) || got == 0) {
                Differs(Msg::BurnSourceChanged, file);
                return false;
            }
        if (std::memcmp(onDisc.data(), ofSource.data(), size) != 0) {
            Differs(Msg::BurnContentDiffers, file);
            return false;
        }
        hash_.Add(ofSource);
        return true;
    }

    bool Step()
    {
        if (progress_ == nullptr)
            return true;
        progress_->SetBar(done_, total_);
        return progress_->Step();
    }

    platform::File& disc_;
    ProgressScope* progress_;
    DiscComparison& comparison_;
    std::vector<std::byte> onDisc_;
    std::vector<std::byte> ofSource_;
    platform::ContentHash hash_;
    std::uint64_t done_ = 0;
    std::uint64_t total_ = 0;
};

Status NotRead(const Path& disc, const std::error_code& failure)
{
    Failure unread = MakeFailure(ErrorCode::CannotRead, TextOf(disc), failure);
    unread.sentence = GetMsg(Msg::BurnDiscNotRead, {TextOf(disc)});
    return unread;
}

} // namespace

Status OpenDisc(const Path& imageOrDevice, platform::File& disc, IsoDirectory& directory)
{
    if (const auto failure = platform::File::OpenForRead(imageOrDevice, disc))
        return NotRead(imageOrDevice, failure);
    std::error_code fault;
    auto read = ReadIsoDirectory([&](std::uint64_t offset, std::span<std::byte> into) {
        std::size_t got = 0;
        const auto failure = disc.ReadAt(offset, into, got);
        fault = failure ? failure : fault;
        return !failure && got == into.size();
    });
    if (!read && fault)
        return NotRead(imageOrDevice, fault);
    if (!read)
        return read.Error();
    directory = std::move(*read);
    const platform::FileFacts facts = disc.Facts();
    if (facts.kind == platform::FileKind::File && facts.size < directory.bytes)
        return InWords(ErrorCode::Damaged, GetMsg(Msg::BurnImageCut, {TextOf(imageOrDevice)}));
    return {};
}

Status CompareWithSources(const Path& imageOrDevice, const std::vector<BurnItem>& items,
                          const std::vector<Path>& noItems, ProgressScope* progress,
                          DiscComparison& comparison)
{
    comparison = {};
    const auto wanted =
        DiscFilesOf(items, noItems, [progress] { return progress == nullptr || progress->Step(); });
    if (!wanted)
        return wanted.Error();
    platform::File disc;
    IsoDirectory directory;
    if (Status opened = OpenDisc(imageOrDevice, disc, directory); !opened)
        return opened;
    (void)disc.Sync(); // what waits in memory is no proof; a device has nothing of its own to flush
    ContentCheck check{disc, progress, comparison};
    if (Status checked = check.Run(*wanted, directory.files); !checked)
        return checked;
    if (comparison.differences.empty())
        return {};
    return InWords(ErrorCode::Differs, comparison.differences.front(), {},
                   Join(comparison.differences, lineBreak));
}

} // namespace kestrova
