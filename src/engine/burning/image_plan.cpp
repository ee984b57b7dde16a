#include "burning/image_plan.h"

#include "burning/disc_run.h"
#include "formats/burn_lines.h"
#include "formats/sectors.h"
#include "words/burning.h"

namespace kestrova
{

namespace
{

Result<ToolOrder> OrderWith(const Tools& tools, const ImagePlan& plan, ToolArguments words)
{
    ToolWork work{.tool = plan.row->tool,
                  .arguments = std::move(words),
                  .parser = ImageLines,
                  .folder = tools.programFolder,
                  .input = FileList(plan.files)};
    return OrderOf(tools, work);
}

} // namespace

Result<ImagePlan> PlanImage(const Tools& tools, const BurnSettings& settings)
{
    ImagePlan plan;
    plan.row = FindImageTool(tools);
    if (plan.row == nullptr)
        return InWords(ErrorCode::Missing, GetMsg(Msg::BurnImagerMissing),
                       InstallHint(tools, ImageTools().front().tool));
    auto files = DiscFilesOf(settings.items, settings.noItems, [&settings] {
        return settings.progress == nullptr || settings.progress->Step();
    });
    if (!files)
        return files.Error();
    plan.files = std::move(*files);
    if (plan.files.empty())
        return InWords(ErrorCode::Refused, GetMsg(Msg::BurnNothingToInsert));
    if (const Status fits = CanHold(*plan.row, settings, plan.files); !fits)
        return fits.Error();
    return plan;
}

Result<ToolOrder> ImageOrder(const Tools& tools, const BurnSettings& settings,
                             const ImagePlan& plan, const Path& target)
{
    return OrderWith(tools, plan, ImageWords(*plan.row, settings, target));
}

Result<std::uint64_t> BytesOfImage(const Tools& tools, const BurnSettings& settings,
                                   const ImagePlan& plan)
{
    ToolArguments words = ImageWords(*plan.row, settings, {});
    words.insert(words.begin() + static_cast<std::ptrdiff_t>(plan.row->words.size()),
                 {"-print-size", "-quiet"});
    auto order = OrderWith(tools, plan, std::move(words));
    if (!order)
        return order.Error();
    ToolRun run{std::move(*order)};
    if (Status started = run.Start(); !started)
        return started.Error();
    RunDiscTools(run, nullptr, settings);
    const ToolReport& report = run.Report();
    if (!report.status)
        return report.status.Error();
    const auto sectors = SectorsToCome(report.output);
    if (!sectors)
        return InWords(ErrorCode::NotDone, GetMsg(Msg::BurnSizeUnknown), {}, report.lastLines);
    return *sectors * discSector;
}

std::uint64_t LeastBytesOfImage(const ImagePlan& plan)
{
    std::uint64_t bytes = 0;
    for (const DiscFile& file : plan.files)
        bytes += WholeSectors(file.size) + file.target.size();
    return bytes;
}

} // namespace kestrova
