#include "burning/disc_burning.h"

#include "burning/content_check.h"
#include "burning/disc_run.h"
#include "burning/file_names.h"
#include "burning/image_plan.h"
#include "core/look.h"
#include "core/size_words.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "formats/burn_lines.h"
#include "formats/sectors.h"
#include "platform/fifo.h"
#include "words/burning.h"

#include <optional>

namespace kestrova
{

namespace
{

/// Where a tool writes: a device, or a file beside the one that stands for an emulated medium.
class DiscInDrive
{
public:
    explicit DiscInDrive(const BurnDevice& device) : device_(device)
    {
        if (!device.emulated)
            return;
        ClearLeftoversOfKilled(device.place.parent_path()); // as large as a disc
        staged_.emplace(device.place);
    }

    [[nodiscard]] const Path& Place() const { return staged_ ? staged_->Staged() : device_.place; }

    /// That so many bytes can be written there, as far as anybody knows beforehand.
    [[nodiscard]] Status Takes(std::uint64_t bytes, bool overburn) const
    {
        if (device_.place.empty())
            return InWords(ErrorCode::Missing, GetMsg(Msg::BurnNoWriter));
        if (device_.emulated && FileSize(device_.place) > 0)
            return InWords(ErrorCode::Refused, GetMsg(Msg::BurnNotBlank, {device_.drive}));
        if (device_.capacity != 0 && bytes > device_.capacity && !overburn)
            return InWords(
                ErrorCode::NoSpace,
                GetMsg(Msg::BurnMediumFull, {SizeInWords(static_cast<double>(bytes)),
                                             SizeInWords(static_cast<double>(device_.capacity))}));
        return {};
    }

    /// What was written counts when it has so many bytes; the medium is it from now on.
    Status Take(std::uint64_t bytes, bool dummy)
    {
        if (!staged_ || dummy)
            return {};
        if (FileSize(staged_->Staged()) < bytes)
            return InWords(ErrorCode::NotDone, GetMsg(Msg::BurnDiscNotWhole));
        return staged_->MoveTo(device_.place);
    }

private:
    const BurnDevice& device_;
    std::optional<StagedPlace> staged_;
};

Failure BurnerMissing(const Tools& tools)
{
    return InWords(ErrorCode::Missing, GetMsg(Msg::BurnBurnerMissing),
                   InstallHint(tools, BurnTools().front().tool));
}

Failure FailureOf(const BurnTool& row, const ToolReport& report, const std::string& output)
{
    if (report.trouble == ToolTrouble::Stopped)
        return Failure{ErrorCode::Stopped};
    Failure failure =
        InWords(ErrorCode::NotDone, ScanToolErrors(row.voice, output), {}, report.lastLines);
    if (failure.sentence.empty())
        failure.sentence =
            report.status ? GetMsg(Msg::BurnDiscNotWhole) : report.status.Error().sentence;
    return failure;
}

/// By the told times where the tool prints all of them, otherwise by how it ended, what it said and
/// how much it says it wrote.
Status JudgeBurnReport(const BurnTool& row, const ToolReport& report, BurnSettings& settings,
                       std::uint64_t bytes)
{
    const std::string output = WithoutCountdown(report.output);
    const BurnTimes times = BurnTimesIn(output);
    if (times.speed && *times.speed >= 1)
        settings.speed = static_cast<int>(*times.speed);
    if (!report.status)
        return FailureOf(row, report, output);
    const bool isWhole =
        row.tellsTimes
            ? IsWholeBurn(times, settings.dummy)
            : ErrorIn(row.voice, output).empty() &&
                  SectorsWritten(output).value_or(bytes / discSector) * discSector >= bytes;
    return isWhole ? Status{} : FailureOf(row, report, output);
}

/// A pipe that has a name for as long as this lives.
class NamedPipe
{
public:
    explicit NamedPipe(const Path& folder) : path_(StagedNameFor(folder / OnDisk::PipeName))
    {
        ClearLeftoversOfKilled(folder);
    }
    ~NamedPipe() { (void)platform::Unlink(path_); } // it may never have been made
    NamedPipe(const NamedPipe&) = delete;
    NamedPipe& operator=(const NamedPipe&) = delete;

    Status Make()
    {
        if (const auto failure = platform::MakeFifo(path_))
            return Saying(GetMsg(Msg::BurnPipeFailed),
                          MakeFailure(ErrorCode::CannotOpen, TextOf(path_), failure));
        return {};
    }

    /// The order's program has it as the stream that the shell's words name.
    void Join(ToolOrder& order, std::string_view words) const
    {
        platform::Launch& launch = order.launch;
        launch.argv.insert(
            launch.argv.begin(),
            {std::string{OnDisk::Shell}, std::string{OnDisk::ShellCommand}, std::string{words}});
        launch.environment.emplace_back(OnDisk::PipeVariable, path_.native());
    }

private:
    Path path_;
};

Result<ToolOrder> BurnOrder(const Tools& tools, const BurnTool& row, ToolArguments words)
{
    return OrderOf(tools, {.tool = row.tool,
                           .arguments = std::move(words),
                           .parser = BurnLines,
                           .folder = tools.programFolder});
}

Status BurnWhole(const Tools& tools, BurnSettings& settings, const Path& image, BurnError& error)
{
    const BurnTool* const row = FindBurnTool(tools, settings.device.emulated);
    if (row == nullptr)
        return BurnerMissing(tools);
    platform::File opened;
    IsoDirectory directory;
    if (Status whole = OpenDisc(image, opened, directory); !whole)
        return whole;
    const std::uint64_t bytes = opened.Facts().size;
    DiscInDrive medium{settings.device};
    if (Status takes = medium.Takes(bytes, settings.overburn); !takes)
        return takes;
    auto order =
        BurnOrder(tools, *row, BurnWords(*row, settings, medium.Place(), image.native(), bytes));
    if (!order)
        return order.Error();
    ToolRun run{std::move(*order)};
    if (Status started = run.Start(); !started)
        return started;
    RunDiscTools(run, nullptr, settings);
    error.output = WithoutCountdown(run.Report().output);
    if (Status judged = JudgeBurnReport(*row, run.Report(), settings, bytes); !judged)
        return judged;
    return medium.Take(bytes, settings.dummy);
}

/// The two tools, once all is known.
Status RunPipe(const Tools& tools, BurnSettings& settings, const BurnTool& row,
               const ImagePlan& plan, std::uint64_t bytes, BurnError& error)
{
    DiscInDrive medium{settings.device};
    if (Status takes = medium.Takes(bytes, settings.overburn); !takes)
        return takes;
    NamedPipe pipe{tools.programFolder};
    auto making = ImageOrder(tools, settings, plan, {});
    auto burning = BurnOrder(
        tools, row,
        BurnWords(row, settings, medium.Place(), std::string{OnDisk::StandardInput}, bytes));
    if (!making || !burning)
        return making ? burning.Error() : making.Error();
    if (Status made = pipe.Make(); !made)
        return made;
    pipe.Join(*making, OnDisk::ShellWrites);
    pipe.Join(*burning, OnDisk::ShellReads);
    ToolRun feeder{std::move(*making)};
    ToolRun run{std::move(*burning)};
    if (Status started = feeder.Start(); !started)
        return started;
    if (Status started = run.Start(); !started)
        return started;
    RunDiscTools(run, &feeder, settings);
    error.output = WithoutCountdown(run.Report().output);
    const ToolReport& fed = feeder.Report();
    // A tool whose reader went away is not the one at fault.
    const bool isFault = !fed.status && fed.trouble != ToolTrouble::Refused &&
                         fed.trouble != ToolTrouble::Stopped &&
                         (run.Report().status || run.Report().trouble == ToolTrouble::Refused);
    if (isFault) {
        Failure failure = fed.status.Error();
        const std::string words = ErrorIn(plan.row->voice, fed.output);
        failure.reason = words.empty() ? failure.reason : words;
        return failure;
    }
    if (Status judged = JudgeBurnReport(row, run.Report(), settings, bytes); !judged)
        return judged;
    if (!fed.status)
        return fed.status;
    return medium.Take(bytes, settings.dummy);
}

Status BurnAtFly(const Tools& tools, BurnSettings& settings, BurnError& error)
{
    const auto plan = PlanImage(tools, settings);
    if (!plan)
        return plan.Error();
    const BurnTool* const row = FindBurnTool(tools, settings.device.emulated);
    if (row == nullptr)
        return BurnerMissing(tools);
    const auto bytes = BytesOfImage(tools, settings, *plan);
    return bytes ? RunPipe(tools, settings, *row, *plan, *bytes, error) : bytes.Error();
}

/// The file that stands for a medium is emptied, when it is a disc.
Status BlankFile(const BurnDevice& device)
{
    if (FileSize(device.place) == 0)
        return {};
    platform::File file;
    IsoDirectory directory;
    // One that was cut is one as well.
    if (!OpenDisc(device.place, file, directory) && directory.bytes == 0)
        return InWords(ErrorCode::Refused, GetMsg(Msg::BurnNoDiscToBlank, {TextOf(device.place)}));
    auto failure = platform::File::OpenForUpdate(device.place, file);
    if (!failure)
        failure = file.Truncate(0);
    if (!failure)
        failure = file.Sync();
    return failure ? Status{MakeFailure(ErrorCode::CannotWrite, TextOf(device.place), failure)}
                   : Status{};
}

} // namespace

bool BurnImageFile(const Tools& tools, BurnSettings& settings, const Path& image, BurnError& error)
{
    Status burned;
    if (image.empty() || !FileExists(image))
        burned = InWords(ErrorCode::Refused, GetMsg(Msg::BurnNoImage));
    else
        burned = BurnWhole(tools, settings, image, error);
    if (burned)
        return true;
    const std::string output = std::move(error.output);
    error = ErrorFrom(burned.Error(), Msg::BurnFailedTitle, BurnCode::BurnFailed,
                      BurnCode::BurnerMissing);
    error.output = output.empty() ? error.output : output;
    return false;
}

bool BurnThroughPipe(const Tools& tools, BurnSettings& settings, BurnError& error)
{
    const Status burned = BurnAtFly(tools, settings, error);
    if (burned)
        return true;
    const std::string output = std::move(error.output);
    const bool hasImager = FindImageTool(tools) != nullptr;
    error = ErrorFrom(burned.Error(), Msg::BurnPipeFailedTitle, BurnCode::PipeBurnFailed,
                      hasImager ? BurnCode::BurnerMissing : BurnCode::ImagerMissing);
    error.output = output.empty() ? error.output : output;
    return false;
}

bool IsBlankExtent(const std::string& extent)
{
    return EqualNames(extent, OnDisk::BlankAll) || EqualNames(extent, OnDisk::BlankFast);
}

bool BlankDisc(const Tools& tools, const BurnSettings& settings, const std::string& extent,
               BurnError& error)
{
    const auto fail = [&](const Failure& failure, Message title) {
        error = ErrorFrom(failure, title, BurnCode::BlankFailed, BurnCode::BurnerMissing);
        return false;
    };
    if (!IsBlankExtent(extent)) {
        error = {GetMsg(Msg::BurnArgumentNotValid), GetMsg(Msg::BlankArguments)};
        return false;
    }
    if (settings.device.place.empty())
        return fail(InWords(ErrorCode::NotDone, GetMsg(Msg::BurnNoWriter)), Msg::BlankFailedTitle);
    if (settings.device.emulated) {
        const Status blanked = BlankFile(settings.device);
        return blanked || fail(blanked.Error(), Msg::BlankFailedTitle);
    }
    const BurnTool* const row = FindBurnTool(tools, false);
    if (row == nullptr)
        return fail(BurnerMissing(tools), Msg::BlankRunFailedTitle);
    auto order = BurnOrder(
        tools, *row,
        BlankWords(*row, settings,
                   std::string{EqualNames(extent, OnDisk::BlankAll) ? OnDisk::BlankAll
                                                                    : OnDisk::BlankFast}));
    if (!order)
        return fail(order.Error(), Msg::BlankRunFailedTitle);
    ToolRun run{std::move(*order)};
    if (const Status started = run.Start(); !started)
        return fail(started.Error(), Msg::BlankRunFailedTitle);
    RunDiscTools(run, nullptr, settings);
    const std::string output = WithoutCountdown(run.Report().output);
    bool isBlank = bool{run.Report().status};
    if (isBlank && row->tellsTimes)
        isBlank = IsWholeBlanking(BurnTimesIn(output));
    if (!isBlank)
        fail(FailureOf(*row, run.Report(), output),
             run.Report().status ? Msg::BlankFailedTitle : Msg::BlankRunFailedTitle);
    error.output = output;
    return isBlank;
}

} // namespace kestrova
