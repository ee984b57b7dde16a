#include "packages/unzip.h"

#include "core/file_kinds.h"
#include "core/name_list.h"
#include "packages/package_list.h"
#include "packages/package_verdict.h"
#include "packages/small_zip.h"
#include "packages/unpack_staging.h"
#include "platform/places.h"
#include "words/common.h"
#include "words/packages.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool CleanFolder(const Path& folder, const UnzipOptions& options)
{
    return !options.cleanDestination || DeleteMatching(folder, OnDisk::PatAll);
}

struct Staging {
    Path folder;
    bool isFilled = false; ///< with all that the package holds: no tool is needed
};

/// A small zip whose directory tells all that a tool's list would needs no tool.
Result<Staging> StagingFor(const PackagePlan& plan, const Path& package, const Path& folder,
                           const UnzipOptions& options)
{
    auto staging = EmptyStaging(folder);
    if (!staging)
        return staging.Error();
    if (!plan.listed || options.guard == nullptr || FileSize(package) > mostOfSmallZip)
        return Staging{*staging};
    if (UnpackSmallZip(package, *staging))
        return Staging{*staging, true};
    staging = EmptyStaging(folder);
    return staging ? Result<Staging>{Staging{*staging}} : staging.Error();
}

Failure BrokenOff(std::string details = {})
{
    return InWords(ErrorCode::Stopped, GetMsg(Msg::BreakUser), {}, std::move(details));
}

Failure DamagedOrLocked(const PackagePlan& plan, const Path& package)
{
    return InWords(ErrorCode::Damaged,
                   GetMsg(plan.locked ? Msg::PackageLocked : Msg::PackageDamaged,
                          {TextOf(package.filename())}));
}

/// Holds what came out against what the package says of its files. `byTool`: what the tool thinks
/// of its work. Fails when some of it is wrong, unless what is whole is wanted and there is some.
Status Prove(const PackagePlan& plan, const Path& package, const Path& staging,
             const UnzipOptions& options, const Status& byTool, const ToolProgressState& state)
{
    const auto proof = ProveUnpacked(
        staging, plan.files, [&] { return state.progress == nullptr || state.progress->Step(); });
    if (!proof && proof.Error().code == ErrorCode::Stopped)
        return BrokenOff();
    if (!proof)
        return InWords(ErrorCode::Damaged,
                       GetMsg(Msg::PackageDamaged, {TextOf(package.filename())}),
                       proof.Error().reason);
    if (byTool && proof->lacking.empty())
        return {};
    const bool tellsAll = std::all_of(plan.files.begin(), plan.files.end(),
                                      [](const PackedFile& file) { return file.checksum; });
    if (options.keepWhole && tellsAll && proof->whole > 0 && options.report != nullptr) {
        for (const Path& wrong : proof->wrong)
            (void)platform::Unlink(wrong); // one that stays shows when it is used
        options.report->lost = proof->lacking;
        return {};
    }
    if (!byTool)
        return byTool;
    Failure failure = DamagedOrLocked(plan, package);
    failure.details = ShownNames(proof->lacking);
    return failure;
}

/// The guard's refusal.
Failure RefusedBy(const UnpackGuard& guard, std::string refusal, std::string details = {})
{
    return InWords(guard.LacksRoom() ? ErrorCode::NoSpace : ErrorCode::Refused, std::move(refusal),
                   {}, std::move(details));
}

/// The tool's work in the staging folder, proved where it must be. `refusal`: the guard's words.
Status FillStaging(const Tools& tools, const PackagePlan& plan, const Path& package,
                   const Staging& place, const ToolWork& work, const UnzipOptions& options,
                   const ToolProgressState& state, std::string& refusal)
{
    ToolReport report;
    Status unpacked = place.isFilled ? Status{} : RunTool(tools, work, state, report);
    const bool endedBadly = !unpacked && refusal.empty() && report.end.signal == 0 &&
                            report.end.code != 0 && unpacked.Error().code != ErrorCode::Stopped;
    const bool noRoom =
        !unpacked && refusal.empty() &&
        JudgePackage(ToolOf(plan.unpacker), package, report) == PackageFault::NoRoom;
    unpacked = report.status;
    if ((unpacked && plan.needsProof) || (endedBadly && options.keepWhole && !noRoom))
        unpacked = Prove(plan, package, place.folder, options, unpacked, state);
    // What came within the last moments was not looked at yet.
    if (unpacked && options.guard != nullptr) {
        refusal = options.guard->Look();
        if (!refusal.empty())
            return RefusedBy(*options.guard, refusal, report.lastLines);
    }
    if (!unpacked && !refusal.empty())
        return RefusedBy(*options.guard, refusal, unpacked.Error().details);
    return unpacked;
}

/// Runs the tool into a staging folder and moves in what came when the tool did its work.
Status UnpackInto(const Tools& tools, const PackagePlan& plan, const Path& package,
                  const Path& folder, ToolWork work, const UnzipOptions& options,
                  const std::vector<PackageEntry>& entries, const ToolProgressState& state)
{
    if (plan.locked && !options.keepWhole)
        return DamagedOrLocked(plan, package);
    const auto failed = [&](const Failure& failure) {
        return InWords(failure.code, GetMsg(Msg::UnpackNotMoved, {TextOf(package.filename())}),
                       failure.subject + ": " + failure.reason);
    };
    const auto place = StagingFor(plan, package, folder, options);
    if (!place)
        return failed(place.Error());
    const Path& staging = place->folder;
    std::string refusal;
    if (options.guard != nullptr)
        work.watch = [&] { return refusal = options.guard->Watch(); };
    const bool flatten = options.junkPaths && CollideWhenFlat(entries);
    work.arguments =
        ToolOf(plan.unpacker)
            .unpack({package, staging, options.junkPaths && !flatten, plan.page, plan.skip});
    Status unpacked = FillStaging(tools, plan, package, *place, work, options, state, refusal);
    if (!refusal.empty() || !unpacked) {
        DropStaging(staging, false, state.progress);
        return unpacked;
    }
    if (options.report != nullptr) {
        options.report->namesAs = plan.namesAs;
        options.report->notFiles = NotFilesBelow(staging);
        options.report->twice = NamesTwice(entries);
    }
    if (!MakePlain(staging, [&] { return state.progress == nullptr || state.progress->Step(); })) {
        DropStaging(staging, false, state.progress);
        return BrokenOff();
    }
    const auto placed = PlaceUnpacked(staging, folder, options.junkPaths, entries, state.progress);
    if (!placed) {
        DropStaging(staging, false, state.progress);
        return failed(placed.Error());
    }
    if (options.report != nullptr)
        options.report->renamed = *placed;
    DropStaging(staging, options.keepStaging, state.progress);
    return unpacked;
}

} // namespace

Status UnzipWithProgress(const Tools& tools, const Path& package, const Path& folder,
                         const UnzipOptions& options, const ToolProgressState& state)
{
    const Path source = platform::AbsolutePath(ResolvePath(package));
    const Path target = platform::AbsolutePath(ResolvePath(folder));
    if (auto status = MakeFolders(target); !status)
        return InWords(status.Error().code, GetMsg(Msg::CannotCreateFolder, {TextOf(target)}),
                       status.Error().reason);
    if (!CleanFolder(target, options))
        return InWords(ErrorCode::CannotDelete,
                       GetMsg(Msg::ErrorDeletingOldFiles) + TextOf(target));
    if (!state.quiet && state.progress != nullptr)
        state.progress->SetLabel(GetMsg(Msg::ExtractFileList) + TextOf(source.filename()));
    platform::File readable;
    if (const auto failure = platform::File::OpenForRead(source, readable))
        return InWords(ErrorCode::CannotOpen,
                       GetMsg(Msg::PackageNotRead, {TextOf(source.filename())}), failure.message());
    PackagePlan plan = PlanFor(tools, source, options.namesAs);
    if (plan.locked && !options.keepWhole)
        return DamagedOrLocked(plan, source);
    std::vector<PackageEntry> entries;
    if (plan.listed && options.guard != nullptr) {
        entries = plan.entries;
    } else {
        auto listed = ListEntries(tools, plan, source, options.namesAs, state);
        if (!listed)
            return listed.Error();
        entries = std::move(*listed);
    }
    // A list can be made to say less than what comes out; so can the directory, in another way.
    if (options.guard != nullptr) {
        std::string words = options.guard->Refuses(entries);
        if (words.empty())
            words = options.guard->Refuses(plan.entries);
        if (!words.empty())
            return RefusedBy(*options.guard, std::move(words));
    }
    // The names in the directory are exact, those of the list are made harmless.
    if (plan.entries.size() == entries.size())
        entries = std::move(plan.entries);

    std::vector<std::string> ledOut = LeaveOutWhatLeadsOut(plan, entries);
    if (options.report != nullptr)
        options.report->ledOut = std::move(ledOut);
    // Entries of size 0 are folders.
    const auto total = static_cast<std::uint64_t>(std::count_if(
        entries.begin(), entries.end(), [](const PackageEntry& entry) { return entry.size != 0; }));
    const UnpackTool& unpacker = ToolOf(plan.unpacker);
    const ToolWork work{.tool = unpacker.tool,
                        .parser = [&] { return GestioneUnzip(unpacker.marks, total); }};
    Status unpacked = UnpackInto(tools, plan, source, target, work, options, entries, state);
    if (unpacked)
        ClearToolProgress(state);
    return unpacked;
}

} // namespace kestrova
