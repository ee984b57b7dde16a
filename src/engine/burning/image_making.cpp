#include "burning/image_making.h"

#include "burning/disc_run.h"
#include "burning/image_plan.h"
#include "core/look.h"
#include "core/size_words.h"
#include "core/staged_file.h"
#include "formats/burn_lines.h"
#include "formats/sectors.h"
#include "platform/places.h"
#include "words/burning.h"

#include <optional>

namespace kestrova
{

namespace
{

/// That the folder takes a file of so many bytes beside an old image, which goes last.
Status HasRoom(const Path& image, std::uint64_t bytes)
{
    std::uint64_t room = 0;
    if (platform::FreeSpace(image.parent_path(), room) || room >= bytes)
        return {}; // what nobody can tell here, the tool finds out
    return InWords(
        ErrorCode::NoSpace,
        GetMsg(Msg::BurnNoRoomForImage, {TextOf(image), SizeInWords(static_cast<double>(bytes)),
                                         SizeInWords(static_cast<double>(room))}));
}

} // namespace

struct ImageMaking::Work {
    Work(const ImageTool& tool, Path target) : row(tool), image(std::move(target)), staged(image) {}

    /// The tool has ended: its image counts when everything says so.
    void End()
    {
        isOver = true;
        output = WithoutCountdown(run->Report().output);
        outcome = Judged();
        if (outcome)
            outcome = staged.MoveTo(image);
        if (outcome)
            warning = WarningIn(row.voice, output);
        else
            (void)DeleteFile(staged.Staged()); // unlisted, and no image
    }

    [[nodiscard]] Status Judged() const
    {
        const ToolReport& report = run->Report();
        if (report.trouble == ToolTrouble::Stopped)
            return Failure{ErrorCode::Stopped};
        const std::string error = ErrorIn(row.voice, output);
        if (!report.status) {
            Failure failure = report.status.Error();
            failure.reason = error.empty() ? failure.reason : error;
            return failure;
        }
        if (!error.empty())
            return InWords(ErrorCode::NotDone, error, {}, report.lastLines);
        const auto sectors = SectorsWritten(output);
        if (!sectors || FileSize(staged.Staged()) < *sectors * discSector)
            return InWords(ErrorCode::NotDone, GetMsg(Msg::BurnImageNotWhole), {},
                           report.lastLines);
        return {};
    }

    const ImageTool& row;
    Path image;
    StagedPlace staged;
    std::optional<ToolRun> run{};
    unsigned percent = 0;
    bool isOver = false;
    Status outcome{};
    std::string output{};
    std::string warning{};
};

ImageMaking::ImageMaking(std::unique_ptr<Work> work) : work_(std::move(work)) {}
ImageMaking::~ImageMaking() = default;

Result<std::unique_ptr<ImageMaking>>
ImageMaking::Start(const Tools& tools, const BurnSettings& settings, const Path& image)
{
    const auto plan = PlanImage(tools, settings);
    if (!plan)
        return plan.Error();
    const Path target = platform::AbsolutePath(ResolvePath(image));
    if (const auto replaced = LookAtReplaced(target); !replaced)
        return replaced.Error();
    ClearLeftoversOfKilled(target.parent_path()); // as large as a disc
    if (const Status room = HasRoom(target, LeastBytesOfImage(*plan)); !room)
        return room.Error();
    auto work = std::make_unique<Work>(*plan->row, target);
    auto order = ImageOrder(tools, settings, *plan, work->staged.Staged());
    if (!order)
        return order.Error();
    work->run.emplace(std::move(*order));
    if (const Status started = work->run->Start(); !started)
        return started.Error();
    return std::unique_ptr<ImageMaking>{new ImageMaking{std::move(work)}};
}

bool ImageMaking::Poll()
{
    if (work_->isOver)
        return false;
    const bool goes = work_->run->Poll([this](std::string_view, const LineAnswer& answer) {
        work_->percent = static_cast<unsigned>(answer.done.value_or(work_->percent));
    });
    if (!goes)
        work_->End();
    return goes;
}

unsigned ImageMaking::Percent() const
{
    return work_->percent;
}

void ImageMaking::Stop()
{
    work_->run->Stop(ToolTrouble::Stopped, GetMsg(Msg::BurnStopped));
}

Status ImageMaking::Finish(const BurnSettings& settings)
{
    if (!work_->isOver) {
        RunDiscTools(*work_->run, nullptr, settings);
        work_->End();
    }
    return work_->outcome;
}

const Status& ImageMaking::Outcome() const
{
    return work_->outcome;
}

const std::string& ImageMaking::Output() const
{
    return work_->output;
}

const std::string& ImageMaking::Warning() const
{
    return work_->warning;
}

Result<std::uint64_t> ImageSize(const Tools& tools, const BurnSettings& settings)
{
    const auto plan = PlanImage(tools, settings);
    return plan ? BytesOfImage(tools, settings, *plan) : plan.Error();
}

} // namespace kestrova
