#include "discs/burn_set.h"

#include "burning/burn_cd.h"
#include "burning/image_making.h"
#include "core/leftovers.h"
#include "core/look.h"
#include "core/size_words.h"
#include "core/staged_file.h"
#include "discs/disc_progress.h"
#include "discs/image_set.h"
#include "drives/attached_discs.h"
#include "session/telling.h"

namespace kestrova
{

namespace
{

std::string LineBreaks()
{
    return std::string{lineBreak} + std::string{lineBreak};
}

/// A text that stands between others in a question, on a line of its own.
std::string OnItsLine(const std::string& text)
{
    return LineBreaks() + text;
}

/// Where images of discs lie until they are burnt.
struct ImageRoom {
    Path folder{};    ///< empty: no image is made
    bool two = false; ///< one more can be made while one is burnt
};

class SetBurning
{
public:
    SetBurning(const DiscParts& parts, DiscSet& set)
        : parts_(parts), host_(parts.host), choice_(set.Plan().choice), set_(set),
          burner_(parts.host, parts.machine, parts.tools, parts.archive.settings),
          progress_(parts.progress, [this] { PollNext(); }), speed_(choice_.speed.value_or(0))
    {
    }

    bool Burn()
    {
        parts_.progress.AllowStop();
        room_ = FindRoom();
        if (!room_.folder.empty())
            NotePlace(room_.folder);
        const auto& discs = set_.Plan().Discs();
        for (place_ = 0; place_ < discs.size(); ++place_) {
            progress_.Begin(Disc().label, place_ + 1, discs.size());
            const YesNoCancel answer = AskForDisc();
            if (answer == YesNoCancel::Cancel)
                return false;
            if (answer == YesNoCancel::No)
                set_.TakeEarlier(Disc());
            else if (!BurnOne())
                return false;
            image_.reset();
        }
        return true;
    }

private:
    /// An image that is there, or is being made.
    struct Image {
        std::size_t place = 0;
        std::unique_ptr<StagedPlace> staged{}; ///< outlives what is made there
        std::unique_ptr<ImageMaking> making{};
        bool whole = false;
    };
    enum class Answer { Retry, Ignored, Abort };

    [[nodiscard]] const PlannedDisc& Disc() const { return set_.Plan().Discs()[place_]; }

    void PollNext()
    {
        if (next_ && next_->making != nullptr)
            next_->making->Poll();
    }

    ImageRoom FindRoom()
    {
        if (!choice_.imageFirst)
            return {};
        std::uint64_t needed = 0;
        for (const PlannedDisc& disc : set_.Plan().Discs())
            needed = std::max(needed, disc.size.room + emptyDiscBytes);
        const auto here = parts_.machine.FreeSpace(parts_.folders.program);
        if (here && *here >= needed)
            return {parts_.folders.program, *here / 2 >= needed};
        const Drive largest = FindLargestDrive(parts_.machine);
        if (!largest.folder.empty() && largest.free >= needed)
            return {largest.folder, largest.free / 2 >= needed};
        host_.Tell(Tone::Plain, GetMsg(Msg::NoRoomForImage));
        return {};
    }

    YesNoCancel AskForDisc()
    {
        if (choice_.unattended)
            return YesNoCancel::Yes;
        const auto& discs = set_.Plan().Discs();
        const std::string next =
            place_ + 1 < discs.size() ? discs[place_ + 1].label : GetMsg(Msg::NoNextDisc);
        const std::string& label = Disc().label;
        return host_.AskYesNoCancel(
            GetMsg(Msg::InsertBlankDisc,
                   {label, choice_.drive + LineBreaks(), label + std::string{lineBreak}, label,
                    next + ")" + std::string{lineBreak}}));
    }

    /// The drive with a disc that takes what is written; what is wrong with it was told.
    std::optional<CdDrive> BlankDisc(std::uint64_t needed)
    {
        auto drive = ChosenDrive(parts_, choice_);
        if (drive && drive->emulated && drive->medium != DiscMedium::Blank) {
            const Path medium = MediumBeside(*drive);
            if (!DoneOrTold(host_, InsertMedium(parts_.tools, *drive, medium)))
                return std::nullopt;
            drive = ChosenDrive(parts_, choice_);
        }
        if (!drive) {
            TellFailure(host_, drive.Error());
            return std::nullopt;
        }
        const auto refuse = [&](const std::string& text) {
            host_.Tell(Tone::Error, text);
            return std::nullopt;
        };
        if (drive->medium == DiscMedium::None)
            return refuse(GetMsg(Msg::NoDiscInUnit, {drive->name}));
        if (drive->medium == DiscMedium::Written)
            return refuse(GetMsg(Msg::DiscIsNotBlank, {drive->name}));
        if (drive->free != 0 && drive->free < needed)
            return refuse(GetMsg(Msg::DiscIsTooSmall,
                                 {drive->name, SizeInWords(static_cast<double>(drive->free)),
                                  SizeInWords(static_cast<double>(needed))}));
        return *drive;
    }

    /// A new disc for a drive of the settings: a file beside the one that lies in it.
    [[nodiscard]] Path MediumBeside(const CdDrive& drive) const
    {
        const Path folder =
            drive.device.empty() ? parts_.folders.program : drive.device.parent_path();
        const Path first = folder / ImageNameOf(set_.Name(), Disc().number);
        const auto nameOf = [&](int number) {
            Path name = first;
            return number == 1
                       ? name
                       : name.replace_filename(first.stem().native() + "-" +
                                               std::to_string(number) + first.extension().native());
        };
        return FirstFree(nameOf).ValueOr(first);
    }

    /// Of the image of that disc.
    BurnSettings SettingsOf(std::size_t place)
    {
        const PlannedDisc& disc = set_.Plan().Discs()[place];
        BurnSettings settings;
        settings.volumeId = disc.label;
        settings.items = set_.ItemsOf(disc);
        settings.progress = &progress_;
        return settings;
    }

    /// Starts the image of that disc.
    std::optional<Image> StartImage(std::size_t place)
    {
        const PlannedDisc& disc = set_.Plan().Discs()[place];
        Image image{place, std::make_unique<StagedPlace>(room_.folder /
                                                         ImageNameOf(set_.Name(), disc.number))};
        auto making = ImageMaking::Start(parts_.tools, SettingsOf(place), image.staged->Staged());
        if (!making) {
            TellFailure(host_, GetMsg(Msg::ImageNotMade, {disc.label}), making.Error());
            return std::nullopt;
        }
        image.making = std::move(making).Value();
        return image;
    }

    /// The image of the disc is there afterwards, where one is wanted.
    bool FinishImage()
    {
        if (room_.folder.empty())
            return true;
        if (!image_ && next_ && next_->place == place_)
            image_ = std::exchange(next_, std::nullopt);
        if (!image_ || image_->place != place_)
            image_ = StartImage(place_);
        if (!image_)
            return false;
        if (image_->whole)
            return true;
        const Status made = image_->making->Finish(SettingsOf(place_));
        image_->making.reset();
        image_->whole = bool{made};
        if (made)
            return true;
        stopped_ = made.Error().code == ErrorCode::Stopped;
        if (!stopped_)
            TellFailure(host_, GetMsg(Msg::ImageNotMade, {Disc().label}), made.Error());
        image_.reset();
        return false;
    }

    void StartNext()
    {
        if (room_.two && !next_ && place_ + 1 < set_.Plan().Discs().size())
            next_ = StartImage(place_ + 1);
    }

    /// True when the disc is dealt with, burnt or not; False ends the whole set.
    bool BurnOne()
    {
        for (;;) {
            if (WriteDisc())
                return true;
            if (stopped_) {
                host_.Tell(Tone::Plain, GetMsg(Msg::DiscsStopped));
                return false;
            }
            switch (AskAboutFailure()) {
            case Answer::Abort:
                return false;
            case Answer::Ignored:
                return ReadBackOther();
            case Answer::Retry:
                speed_ /= 2;
            }
            if (!choice_.unattended)
                host_.Tell(Tone::Plain,
                           GetMsg(Msg::InsertBlankAgain, {Disc().label}) + choice_.drive);
        }
    }

    /// One try: the image, the burning, the verifying, the note.
    bool WriteDisc()
    {
        if (!FinishImage())
            return false;
        const auto drive = BlankDisc(Disc().size.room);
        if (!drive)
            return false;
        if (!Prepare(*drive))
            return TellBurnError(GetMsg(Msg::ErrorPreparingDisc) + ": " + burner_.error.detail);
        StartNext();
        if (!burner_.Command(room_.folder.empty() ? CwCommand::BurnWithoutImage
                                                  : CwCommand::BurnImage))
            return TellBurnError(burner_.error.title + ": " + burner_.error.detail);
        if (!choice_.unattended && !host_.AskYesNo(GetMsg(Msg::AskVerifyDisc)))
            return NoteDisc(*drive, {});
        return ReadBack(*drive);
    }

    bool Prepare(const CdDrive& drive)
    {
        burner_.Command(CwCommand::Reset, std::to_string(speed_));
        burner_.settings.speed = speed_;
        burner_.settings.volumeId = Disc().label;
        burner_.settings.device = {drive.device, drive.emulated, drive.free, drive.name};
        burner_.settings.progress = &progress_;
        burner_.settings.meanwhile = [this] { PollNext(); };
        if (image_)
            burner_.settings.image = image_->staged->Staged();
        for (const BurnItem& item : set_.ItemsOf(Disc()))
            if (!burner_.Add(item))
                return false;
        return true;
    }

    bool TellBurnError(const std::string& text)
    {
        stopped_ = burner_.error.code == BurnCode::Stopped;
        if (!stopped_)
            host_.Tell(Tone::Error, text, {}, burner_.error.output);
        return false;
    }

    bool ReadBack(const CdDrive& drive)
    {
        if (!burner_.Command(CwCommand::VerifyCd, "All")) // not shown
            return TellBurnError(burner_.error.title + ": " + burner_.error.detail);
        progress_.SetLabel(GetMsg(Msg::DiscReadBack, {Disc().label}));
        DiscComparison comparison;
        const Status compared =
            CompareWithSources(drive.device, set_.ItemsOf(Disc()), {}, &progress_, comparison);
        if (compared)
            return NoteDisc(drive, comparison.same);
        stopped_ = compared.Error().code == ErrorCode::Stopped;
        TellFailure(host_, compared.Error());
        return false;
    }

    bool NoteDisc(const CdDrive& drive, const std::vector<SameFile>& same)
    {
        return DoneOrTold(host_, set_.Note(Disc(), drive.emulated ? drive.device : Path{}, same));
    }

    Answer AskAboutFailure()
    {
        if (choice_.unattended)
            return Answer::Abort;
        std::string text = GetMsg(Msg::BurningFailed,
                                  {Disc().label + ")" + LineBreaks(), OnItsLine(GetMsg(Msg::OnYes)),
                                   OnItsLine(GetMsg(Msg::OnCancel)), OnItsLine(GetMsg(Msg::OnNo))});
        if (speed_ < 2)
            text += OnItsLine(GetMsg(Msg::LowestSpeed, {std::to_string(speed_)}));
        switch (host_.AskYesNoCancel(text)) {
        case YesNoCancel::Yes:
            return Answer::Retry;
        case YesNoCancel::Cancel:
            return Answer::Abort;
        case YesNoCancel::No:
            break;
        }
        if (!image_ || !image_->whole) {
            host_.Tell(Tone::Error, GetMsg(Msg::NoImageToBurn));
            return Answer::Abort;
        }
        return host_.AskOkCancel(GetMsg(Msg::BurnImageYourself, {TextOf(image_->staged->Staged()) +
                                                                 std::string{lineBreak}}))
                   ? Answer::Ignored
                   : Answer::Abort;
    }

    /// A disc that another program burnt: what can be read back of it is proved, and whatever
    /// cannot is asked about at the end.
    bool ReadBackOther()
    {
        const auto drive = ChosenDrive(parts_, choice_);
        if (!drive || !ReadBack(*drive))
            return !stopped_ && DoneOrTold(host_, set_.Note(Disc(), {}, {}));
        return true;
    }

    const DiscParts& parts_;
    Host& host_;
    const DiscChoice& choice_;
    DiscSet& set_;
    BurnCd burner_;
    DiscProgress progress_;
    int speed_;
    ImageRoom room_;
    std::size_t place_ = 0;
    std::optional<Image> image_;
    std::optional<Image> next_;
    bool stopped_ = false;
};

} // namespace

Result<CdDrive> ChosenDrive(const DiscParts& parts, const DiscChoice& choice)
{
    auto drive =
        FindCdDrive(parts.machine, parts.folders.program, parts.archive.settings, choice.drive);
    if (!drive)
        return InWords(ErrorCode::Missing, GetMsg(Msg::UnitIsGone, {choice.drive}));
    return std::move(*drive);
}

bool BurnDiscs(const DiscParts& parts, DiscSet& set)
{
    return SetBurning{parts, set}.Burn();
}

} // namespace kestrova
