#include "discs/image_set.h"

#include "archive/archive_place.h"
#include "burning/image_making.h"
#include "core/inside.h"
#include "core/leftovers.h"
#include "core/look.h"
#include "core/size_words.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "discs/disc_progress.h"
#include "words/disc_creation.h"

namespace kestrova
{

namespace
{

constexpr int digitsOfNumber = 2;

/// Names the disc, beside what its tool had to say. A Stop stays one.
Failure ImageNotMade(const PlannedDisc& disc, Failure failure)
{
    if (failure.code == ErrorCode::Stopped)
        return failure;
    if (!failure.sentence.empty())
        failure.reason = failure.sentence + (failure.reason.empty() ? "" : ": ") + failure.reason;
    failure.sentence = GetMsg(Msg::ImageNotMade, {disc.label});
    return failure;
}

/// The images of one set, as they come.
class ImageSet
{
public:
    ImageSet(const DiscParts& parts, DiscSet& set)
        : parts_(parts), set_(set), folder_(ResolvePath(set.Plan().choice.images)),
          progress_(parts.progress, [this] { PollNext(); })
    {
    }

    Status Make()
    {
        if (auto made = MakeFolders(folder_); !made)
            return made;
        NotePlace(folder_);
        parts_.progress.AllowStop();
        const auto& discs = set_.Plan().Discs();
        Status status = Start(0);
        for (std::size_t i = 0; status && i < discs.size(); ++i)
            status = MakeOne(i);
        if (!status) {
            making_.reset();
            TakeBack();
        }
        return status;
    }

private:
    void PollNext()
    {
        if (making_ != nullptr)
            making_->Poll();
    }
    [[nodiscard]] const PlannedDisc& Disc(std::size_t place) const
    {
        return set_.Plan().Discs()[place];
    }
    [[nodiscard]] Path ImageOf(const PlannedDisc& disc) const
    {
        return folder_ / ImageNameOf(set_.Name(), disc.number);
    }

    BurnSettings SettingsOf(const PlannedDisc& disc)
    {
        BurnSettings settings;
        settings.volumeId = disc.label;
        settings.items = set_.ItemsOf(disc);
        settings.progress = &progress_;
        return settings;
    }

    Status Start(std::size_t place)
    {
        const PlannedDisc& disc = Disc(place);
        coming_ = std::make_unique<StagedPlace>(ImageOf(disc));
        auto making = ImageMaking::Start(parts_.tools, SettingsOf(disc), coming_->Staged());
        if (!making)
            return ImageNotMade(disc, making.Error());
        making_ = std::move(making).Value();
        return {};
    }

    Status MakeOne(std::size_t place)
    {
        const PlannedDisc& disc = Disc(place);
        progress_.Begin(disc.label, place + 1, set_.Plan().Discs().size());
        const std::unique_ptr<ImageMaking> making = std::move(making_);
        const std::unique_ptr<StagedPlace> image = std::move(coming_);
        if (auto made = making->Finish(SettingsOf(disc)); !made)
            return ImageNotMade(disc, made.Error());
        if (place + 1 < set_.Plan().Discs().size())
            if (auto started = Start(place + 1); !started)
                return started;
        progress_.SetLabel(GetMsg(Msg::DiscReadBack, {disc.label}));
        DiscComparison comparison;
        if (auto compared =
                CompareWithSources(image->Staged(), set_.ItemsOf(disc), {}, &progress_, comparison);
            !compared)
            return compared;
        return Keep(disc, *image, comparison);
    }

    Status Keep(const PlannedDisc& disc, StagedPlace& image, const DiscComparison& comparison)
    {
        const Path target = ImageOf(disc);
        const auto isFree = IsFree(target);
        if (!isFree)
            return isFree.Error();
        if (!*isFree)
            return InWords(ErrorCode::Refused, GetMsg(Msg::ImageIsThere, {TextOf(target)}));
        if (auto moved = image.MoveTo(target); !moved)
            return moved;
        made_.push_back(&disc);
        if (const auto failure = platform::SyncFileSystem(folder_))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(target), failure);
        return set_.Note(disc, target, comparison.same);
    }

    /// The levels are on the hard disk: nothing is lost with the images.
    void TakeBack()
    {
        for (const PlannedDisc* disc : made_) {
            // A note that stays tells of an image that is not there, which proves nothing.
            static_cast<void>(set_.Forget(*disc));
            static_cast<void>(DeleteSpelled(ImageOf(*disc)));
        }
    }

    const DiscParts& parts_;
    DiscSet& set_;
    Path folder_;
    DiscProgress progress_;
    std::unique_ptr<StagedPlace> coming_; ///< outlives what is made there
    std::unique_ptr<ImageMaking> making_;
    std::vector<const PlannedDisc*> made_;
};

} // namespace

std::string ImageNameOf(const std::string& archive, std::int32_t number)
{
    return ReplaceForbiddenChars(
        Told(Msg::ImageName, {ZeroPadded(number, digitsOfNumber), archive}));
}

Status CanTakeImages(const DiscParts& parts, const DiscSet& set)
{
    const Path folder = ResolvePath(set.Plan().choice.images);
    const auto there = IsFolder(folder);
    if (!there)
        return there.Error();
    if (!*there) {
        const auto isFree = IsFree(folder);
        if (!isFree)
            return isFree.Error();
        if (!*isFree)
            return InWords(ErrorCode::Refused, GetMsg(Msg::ImagesFolderIsFile, {TextOf(folder)}));
    }
    if (LiesInside(folder, ResolvePath(parts.folders.levels)) ||
        !MayHoldLevels(parts.folders, folder))
        return InWords(ErrorCode::Refused, GetMsg(Msg::ImagesInsideOthers, {TextOf(folder)}));
    for (const PlannedDisc& disc : set.Plan().Discs()) {
        const Path image = folder / ImageNameOf(set.Name(), disc.number);
        const auto isFree = IsFree(image);
        if (!isFree)
            return isFree.Error();
        if (!*isFree)
            return InWords(ErrorCode::Refused, GetMsg(Msg::ImageIsThere, {TextOf(image)}));
    }
    const auto free = parts.machine.FreeSpace(folder);
    if (!free)
        return free.Error();
    const std::uint64_t needed = set.Plan().RoomOfImages();
    return *free >= needed
               ? Status{}
               : InWords(ErrorCode::NoSpace,
                         GetMsg(Msg::NoRoomForImages,
                                {SizeInWords(static_cast<double>(needed)),
                                 SizeInWords(static_cast<double>(*free)), TextOf(folder)}));
}

Status MakeImages(const DiscParts& parts, DiscSet& set)
{
    return ImageSet{parts, set}.Make();
}

} // namespace kestrova
