#include "packages/package_list.h"

#include "core/parallel.h"
#include "packages/package_verdict.h"
#include "platform/places.h"

namespace kestrova
{

namespace
{

constexpr std::chrono::seconds listLimit{20};

/// Before the listing of a compressed tape is there, all of it was expanded.
std::chrono::milliseconds ListLimit(Unpacker unpacker, const Path& package)
{
    constexpr std::uint64_t megabyte = std::uint64_t{1} << 20;
    const std::chrono::seconds more{FileSize(package) / megabyte};
    return unpacker == Unpacker::Unzip ? listLimit : listLimit + more;
}

} // namespace

Result<std::vector<PackageEntry>> ListZip(const Tools& tools, const Path& package,
                                          const ToolProgressState& state)
{
    const Path source = platform::AbsolutePath(ResolvePath(package));
    PackagePlan plan = PlanFor(tools, source, {});
    return ListEntries(tools, plan, source, {}, state);
}

Result<std::vector<PackageEntry>> ListEntries(const Tools& tools, PackagePlan& plan,
                                              const Path& package, const std::string& namesAs,
                                              const ToolProgressState& state)
{
    const UnpackTool& unpacker = ToolOf(plan.unpacker);
    ToolReport report;
    const auto list = [&](const std::string& page) {
        return RunToolBatch(tools, unpacker.tool, unpacker.list(package, page),
                            ListLimit(unpacker.id, package), state, report);
    };
    Status listed = list(plan.page);
    // Of some kinds the tool gives no name without being told a code page; in this one every byte
    // is a letter, so that the bytes can be had back.
    constexpr const char* allBytes = "CP437";
    const bool nameless = !listed && !plan.isZip && plan.page.empty() && AsksForCodePage(report);
    if (nameless)
        listed = list(allBytes);
    if (!listed) {
        JudgePackage(unpacker, package, report);
        return report.status.Error();
    }
    std::vector<PackageEntry> entries;
    // A list of a million names takes longer than a window may stand still.
    RunOnAllCores(
        1, [&](std::size_t) { entries = unpacker.parseList(report.output); },
        [&] { return state.progress == nullptr || (state.progress->Step(), true); });
    if (nameless)
        for (PackageEntry& entry : entries)
            entry.name = BytesIn(entry.name, allBytes);
    if (!plan.isZip)
        PlanNames(plan, entries, namesAs);
    if (nameless && plan.page.empty())
        plan.page = allBytes;
    ReadNames(entries, plan.page);
    return entries;
}

} // namespace kestrova
