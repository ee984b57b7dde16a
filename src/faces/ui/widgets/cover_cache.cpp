#include "ui/widgets/cover_cache.h"

#include "pictures/jpeg.h"
#include "platform/user_folders.h"
#include "ui/desktop/file_names.h"
#include "ui/widgets/picture_reading.h"

#include <QThread>

#include <algorithm>

namespace kestrova
{

namespace
{

/// Each may hold a large picture for a moment.
constexpr int mostWorkers = 2;
constexpr int kilobytesInMemory = 96 * 1024;
/// More than any screen shows at once.
constexpr std::size_t mostWaiting = 400;
constexpr std::uint64_t sourceBytes = 100U << 20;
constexpr int coverQuality = 88;

bool IsSame(const platform::FileFacts& a, const platform::FileFacts& b)
{
    return a.size == b.size && a.modifiedNs == b.modifiedNs && a.inode == b.inode;
}

/// From the shelf, or else from the picture itself, which goes onto the shelf then; null for what
/// is no picture.
QImage MakeCover(CoverShelf& shelf, const Path& file, const platform::FileFacts& facts)
{
    const std::string name = CoverShelf::NameOf(file, facts);
    if (auto bytes = shelf.Find(name))
        if (auto kept = ReadSmallPicture(*bytes, CoverCache::side))
            return *kept;
    auto bytes = ReadWholeFile(file, sourceBytes);
    if (!bytes)
        return {};
    auto cover = ReadSmallPicture(*bytes, CoverCache::side);
    if (!cover)
        return {};
    if (const auto packed = EncodeJpeg(PictureOf(*cover), coverQuality))
        shelf.Keep(name, *packed);
    return *cover;
}

} // namespace

CoverCache::CoverCache(const Path& shelf, QObject* parent)
    : QObject(parent), shelf_(shelf), entries_(kilobytesInMemory)
{
    pool_.setMaxThreadCount(std::clamp(QThread::idealThreadCount(), 1, mostWorkers));
}

CoverCache::~CoverCache()
{
    waiting_.clear();
    pool_.waitForDone();
}

Path CoverCache::UsualShelf()
{
    const Path cache = platform::UserCacheFolder();
    return cache.empty() ? Path{} : InFolder(cache, OnDisk::DirCovers);
}

QPixmap CoverCache::Cover(LevelCode code)
{
    Entry* entry = entries_.object(code);
    const auto checked = checked_.find(code);
    if (checked != checked_.end() && checked->second == round_ && entry != nullptr)
        return entry->cover;
    // Of another archive, of a folder that was moved, or not the chosen one any more.
    if (entry != nullptr && entry->places != places(code)) {
        entries_.remove(code);
        entry = nullptr;
    }
    if (wanted_.insert(code).second) {
        waiting_.push_back(code);
        if (waiting_.size() > mostWaiting) {
            wanted_.erase(waiting_.front());
            waiting_.pop_front();
        }
        Begin();
    }
    return entry != nullptr ? entry->cover : QPixmap{};
}

void CoverCache::WantOnly(const std::set<LevelCode>& seen)
{
    std::erase_if(waiting_, [&](LevelCode code) {
        const bool drop = seen.count(code) == 0;
        if (drop)
            wanted_.erase(code);
        return drop;
    });
}

void CoverCache::LookAgain()
{
    ++round_;
}

void CoverCache::LookAgain(LevelCode code)
{
    checked_.erase(code);
}

void CoverCache::Begin()
{
    while (working_ < pool_.maxThreadCount() && !waiting_.empty()) {
        Found found{waiting_.front(), places(waiting_.front()), {}, {}};
        waiting_.pop_front();
        if (const Entry* entry = entries_.object(found.code);
            entry != nullptr && entry->places == found.places)
            found.source = entry->source;
        checked_[found.code] = round_;
        ++working_;
        pool_.start([this, found = std::move(found)] {
            QMetaObject::invokeMethod(
                this, [this, seen = Look(shelf_, found)] { Take(seen); }, Qt::QueuedConnection);
        });
    }
}

CoverCache::Found CoverCache::Look(CoverShelf& shelf, Found found)
{
    const Source before = std::move(found.source);
    found.source.file = FindCover(found.places);
    found.source.facts = platform::FactsOf(found.source.file);
    if (before.file == found.source.file && IsSame(before.facts, found.source.facts) &&
        !before.file.empty())
        return found;
    found.cover = found.source.file.empty()
                      ? QImage{}
                      : MakeCover(shelf, found.source.file, found.source.facts);
    return found;
}

void CoverCache::Take(const Found& found)
{
    --working_;
    wanted_.erase(found.code);
    const Entry* before = entries_.object(found.code);
    const bool had = before != nullptr && !before->cover.isNull();
    if (found.cover && places(found.code) == found.places) {
        auto* entry = new Entry{found.places, found.source, QPixmap::fromImage(*found.cover)};
        const int kilobytes = 1 + static_cast<int>(found.cover->sizeInBytes() / 1024);
        entries_.insert(found.code, entry, kilobytes);
        if (had || !found.cover->isNull())
            came(found.code);
    }
    Begin();
}

} // namespace kestrova
