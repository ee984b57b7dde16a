#pragma once

#include "burning/disc_files.h"
#include "burning/disc_tools.h"
#include "tools/tool_run.h"

/// What goes into an image, and by which tool, before anything is written.
namespace kestrova
{

struct ImagePlan {
    const ImageTool* row = nullptr;
    std::vector<DiscFile> files{};
};

/// `Missing`, in words, when there is no tool that makes images; the words of `DiscFilesOf` and
/// `CanHold` for what cannot be on a disc. Whoever wants to stop does so by the settings' progress.
Result<ImagePlan> PlanImage(const Tools& tools, const BurnSettings& settings);

/// The order for the image, to `target` or, when that is empty, to standard output.
Result<ToolOrder> ImageOrder(const Tools& tools, const BurnSettings& settings,
                             const ImagePlan& plan, const Path& target);

/// The bytes that the image will have, as its tool counts them. Nothing is written.
Result<std::uint64_t> BytesOfImage(const Tools& tools, const BurnSettings& settings,
                                   const ImagePlan& plan);
/// At least so many, without asking the tool.
std::uint64_t LeastBytesOfImage(const ImagePlan& plan);

} // namespace kestrova
