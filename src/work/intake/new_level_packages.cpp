// The packages of a level on its way in: those among its sources, and those inside them.
#include "core/file_kinds.h"
#include "core/folder_names.h"
#include "core/name_list.h"
#include "intake/new_level.h"
#include "words/intake.h"

#include <algorithm>
#include <utility>

namespace kestrova
{

/// Packages within packages count together, however deep they lie and however often the folder is
/// looked at again; otherwise a small one could fill the disk step by step.
UnpackLimits NewLevel::LimitsInside() const
{
    UnpackLimits limits;
    const std::uint64_t most = std::max(
        limits.alwaysAllowed, static_cast<std::uint64_t>(bytesBeforeInside_) * limits.mostTimes);
    limits.alwaysAllowed = most - std::min(most, inside_.bytes);
    limits.mostTimes = 0;
    limits.mostFiles -= std::min(limits.mostFiles, inside_.entries);
    return limits;
}

void NewLevel::UnpackInside()
{
    report_.names.reset(); // other steps were in the folder since
    const auto files = ListFiles(workFolder_, OnDisk::PatAll);
    if (!files)
        return; // the refresh that follows tells of it
    for (const Path& file : *files) {
        if (!IsPackage(file))
            continue;
        if (!BeginChange())
            return;
        const std::string folded = FoldCase(file.filename().native());
        report_.placed.erase(folded);
        report_.came = {};
        SourceOptions options = Options();
        options.replace = Replace::KeepBoth;
        options.replaceByFile = Replace::Silent;
        options.limits = LimitsInside();
        const auto status =
            CopyOrUnzipSource(session_, file, workFolder_, options, progress_, report_);
        inside_.entries += report_.came.entries;
        inside_.bytes += report_.came.bytes;
        if (!status && status.Error().code == ErrorCode::Stopped) {
            report_.stopped = true;
            return; // it is still there for the next refresh
        }
        // What the archive held is nowhere else; what has just come in still is where it came from.
        const bool onlyHere = snapshot_.contains(folded);
        if (!status) {
            ++report_.failed;
            TellSourceFailure(session_,
                              GetMsg(Msg::ErrorDecompressingPackage) + TextOf(file.filename()) +
                                  std::string{lineBreak} +
                                  GetMsg(onlyHere ? Msg::PackageStays : Msg::PackageStillAtSource),
                              status.Error());
        }
        const bool replacedItself = report_.placed.contains(folded);
        if (!replacedItself && (status || !onlyHere)) {
            (void)platform::Unlink(file); // one that stays is met again by the next refresh
            if (report_.names != nullptr)
                report_.names->Remove(file.filename().native());
        }
    }
    ClearProgress();
}

bool NewLevel::UnpackAll()
{
    constexpr int deepest = 8;
    const auto packages = [&] {
        std::vector<std::string> names;
        for (const Path& file : files_)
            if (IsPackage(file))
                names.push_back(TextOf(file.filename()));
        return names;
    };
    bool all = !report_.stopped;
    for (int i = 0; i < deepest && !report_.stopped && !packages().empty(); ++i) {
        Refresh();
        all = all && report_.failed == 0 && !report_.stopped;
    }
    if (const auto names = packages(); all && !names.empty())
        session_.host.Tell(Tone::Warning, GetMsg(Msg::InnerPackagesStay,
                                                 {std::to_string(deepest), ShownNames(names)}));
    return all;
}

SourceOptions NewLevel::Options() const
{
    SourceOptions options;
    options.namesAs = namesPage;
    options.keepWhole = keepGoing;
    // Of a level of the archive the old file may be the player's own work.
    if (mode_ == LevelMode::Properties)
        options.replaceByFile = Replace::Ask;
    return options;
}

/// What came out of packages, as it stands now.
void NewLevel::NoteUnpacked()
{
    packages_.insert(packages_.end(), report_.packages.begin(), report_.packages.end());
    if (!report_.namesAs.empty())
        namesReadAs_ = report_.namesAs;
    for (const Path& file : files_) {
        const std::string folded = FoldCase(file.filename().native());
        if (!report_.unpacked.contains(folded))
            continue;
        const platform::FileFacts facts = platform::FactsOf(file);
        unpacked_[folded] = {facts.size, facts.modifiedNs};
    }
}

/// What came out of packages goes, as far as nobody changed it since.
void NewLevel::DropUnpacked()
{
    for (const Path& file : files_) {
        const auto known = unpacked_.find(FoldCase(file.filename().native()));
        const platform::FileFacts facts = platform::FactsOf(file);
        if (known != unpacked_.end() && known->second.size == facts.size &&
            known->second.modifiedNs == facts.modifiedNs)
            (void)DeleteFile(file); // one that stays is asked for when its twin comes in
    }
    unpacked_.clear();
}

bool NewLevel::ReadNamesAs(const std::string& page)
{
    for (const Path& package : packages_)
        if (!FileExists(package)) {
            session_.host.Tell(Tone::Error, GetMsg(Msg::PackagesGone, {TextOf(package)}));
            return false;
        }
    namesPage = page;
    report_ = {};
    DropUnpacked();
    for (const Path& package : std::exchange(packages_, {}))
        if (!report_.stopped)
            AddFile(session_, package, workFolder_, Options(), progress_, report_);
    AfterSource();
    return report_.failed == 0 && !report_.stopped;
}

} // namespace kestrova
