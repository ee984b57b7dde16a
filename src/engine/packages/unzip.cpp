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

/// Holds what came out against what the package says of its files. False, with the words in the
/// state, when some of it is wrong, unless what is whole is wanted and there is some.
bool Prove(const PackagePlan& plan, const Path& package, const Path& staging,
           const UnzipOptions& options, bool toolIsContent, ToolProgressState& state)
{
    const auto proof = ProveUnpacked(
        staging, plan.files, [&] { return state.progress == nullptr || state.progress->Step(); });
    if (!proof)
        return proof.Error().code == ErrorCode::Stopped
                   ? state.Fail(ToolTrouble::Stopped, GetMsg(Msg::BreakUser), proof.Error().reason)
                   : state.Fail(ToolTrouble::Content,
                                GetMsg(Msg::PackageDamaged, {TextOf(package.filename())}),
                                proof.Error().reason);
    if (toolIsContent && proof->lacking.empty())
        return true;
    const bool tellsAll = std::all_of(plan.files.begin(), plan.files.end(),
                                      [](const PackedFile& file) { return file.checksum; });
    if (options.keepWhole && tellsAll && proof->whole > 0 && options.report != nullptr) {
        for (const Path& wrong : proof->wrong)
            (void)platform::Unlink(wrong); // one that stays shows when it is used
        options.report->lost = proof->lacking;
        state.trouble = ToolTrouble::None;
        state.error.clear();
        return true;
    }
    if (toolIsContent)
        state.Fail(ToolTrouble::Content,
                   GetMsg(plan.locked ? Msg::PackageLocked : Msg::PackageDamaged,
                          {TextOf(package.filename())}),
                   ShownNames(proof->lacking));
    return false;
}

/// Runs the tool into a staging folder and moves in what came, `always` or when the tool did its
/// work.
bool UnpackInto(const Tools& tools, const PackagePlan& plan, const Path& package,
                const Path& folder, ToolWork work, const UnzipOptions& options,
                const std::vector<PackageEntry>& entries, bool always, ToolProgressState& state)
{
    if (plan.locked && !options.keepWhole)
        return state.Fail(ToolTrouble::Content,
                          GetMsg(Msg::PackageLocked, {TextOf(package.filename())}), state.details);
    const auto failed = [&](const Failure& failure) {
        return state.Fail(ToolTrouble::Content,
                          GetMsg(Msg::UnpackNotMoved, {TextOf(package.filename())}),
                          failure.subject + ": " + failure.reason);
    };
    const auto place = StagingFor(plan, package, folder, options);
    if (!place)
        return failed(place.Error());
    const Path& staging = place->folder;
    std::string stopped;
    if (options.guard != nullptr)
        work.watch = [&] { return stopped = options.guard->Watch(); };
    const bool flatten = options.junkPaths && (always || CollideWhenFlat(entries));
    const UnpackTool& unpacker = ToolOf(plan.unpacker);
    work.arguments =
        unpacker.unpack({package, staging, options.junkPaths && !flatten, plan.page, plan.skip});
    bool unpacked = place->isFilled || RunTool(tools, work, state);
    const bool toolIsContent = unpacked;
    const bool endedBadly = !unpacked && stopped.empty() && state.end.signal == 0 &&
                            state.end.code != 0 && state.trouble != ToolTrouble::Stopped;
    const bool noRoom = !unpacked && stopped.empty() &&
                        JudgePackage(unpacker, package, state) == PackageFault::NoRoom;
    if ((unpacked && plan.needsProof) || (endedBadly && options.keepWhole && !noRoom))
        unpacked = Prove(plan, package, staging, options, toolIsContent, state);
    // What came within the last moments was not looked at yet.
    if (unpacked && options.guard != nullptr)
        stopped = options.guard->Look();
    if (unpacked && !stopped.empty())
        state.Fail(ToolTrouble::Refused, stopped, state.details);
    if (!stopped.empty() || !(unpacked || always)) {
        DropStaging(staging, false, state.progress);
        return false;
    }
    if (options.report != nullptr) {
        options.report->namesAs = plan.namesAs;
        options.report->notFiles = NotFilesBelow(staging);
        options.report->twice = NamesTwice(entries);
    }
    if (!MakePlain(staging, [&] { return state.progress == nullptr || state.progress->Step(); })) {
        DropStaging(staging, false, state.progress);
        return state.Fail(ToolTrouble::Stopped, GetMsg(Msg::BreakUser), state.details);
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

bool UnzipWithProgress(const Tools& tools, const Path& package, const Path& folder,
                       const UnzipOptions& options, ToolProgressState& state)
{
    const Path source = platform::AbsolutePath(ResolvePath(package));
    const Path target = platform::AbsolutePath(ResolvePath(folder));
    state.ClearReport();
    if (const auto status = MakeFolders(target); !status)
        return state.Fail(ToolTrouble::Content, GetMsg(Msg::CannotCreateFolder, {TextOf(target)}),
                          status.Error().reason);
    if (!CleanFolder(target, options))
        return state.Fail(ToolTrouble::Content,
                          GetMsg(Msg::ErrorDeletingOldFiles) + TextOf(target));
    if (!state.quiet && state.progress != nullptr)
        state.progress->SetLabel(GetMsg(Msg::ExtractFileList) + TextOf(source.filename()));
    platform::File readable;
    if (const auto failure = platform::File::OpenForRead(source, readable))
        return state.Fail(ToolTrouble::Content,
                          GetMsg(Msg::PackageNotRead, {TextOf(source.filename())}),
                          failure.message());
    PackagePlan plan = PlanFor(tools, source, options.namesAs);
    if (plan.locked && !options.keepWhole)
        return state.Fail(ToolTrouble::Content,
                          GetMsg(Msg::PackageLocked, {TextOf(source.filename())}));
    std::vector<PackageEntry> entries;
    if (plan.listed && options.guard != nullptr)
        entries = plan.entries;
    else if (!ListEntries(tools, plan, source, options.namesAs, entries, state))
        return false;
    // A list can be made to say less than what comes out; so can the directory, in another way.
    if (options.guard != nullptr) {
        std::string words = options.guard->Refuses(entries);
        if (words.empty())
            words = options.guard->Refuses(plan.entries);
        if (!words.empty())
            return state.Fail(ToolTrouble::Refused, std::move(words), state.details);
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
    const bool unpacked =
        UnpackInto(tools, plan, source, target, work, options, entries, false, state);
    if (unpacked)
        ClearToolProgress(state);
    return unpacked;
}

bool UnzipQuick(const Tools& tools, Host& host, const Path& package, const Path& folder,
                const UnzipOptions& options, ToolProgressState& state)
{
    const Path source = platform::AbsolutePath(ResolvePath(package));
    const Path target = platform::AbsolutePath(ResolvePath(folder));
    const Tool& usual = ToolOf(UnpackerOf(source)).tool;
    if (FindTool(tools, usual).empty()) {
        host.Tell(Tone::Error,
                  GetMsg(Msg::UnzipProgramMissing, {lineBreak}) + TextOf(tools.programFolder),
                  InstallHint(tools, usual));
        return false;
    }
    if (!FileExists(source) || !FolderExists(target))
        return false;
    if (!CleanFolder(target, options)) {
        host.Tell(Tone::Error, GetMsg(Msg::ErrorDeletingOldFiles) + TextOf(target));
        return false;
    }
    const PackagePlan plan = PlanFor(tools, source, options.namesAs);
    // The caller looks for the files.
    (void)UnpackInto(tools, plan, source, target, {ToolOf(plan.unpacker).tool}, options, {}, true,
                     state);
    return true;
}

} // namespace kestrova
