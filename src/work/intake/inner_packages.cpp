#include "intake/inner_packages.h"

#include "core/file_kinds.h"
#include "core/folder_names.h"
#include "packages/package_tools.h"
#include "session/cleared_progress.h"
#include "words/sources.h"

namespace kestrova
{

namespace
{

/// The package's files beside it.
Status UnpackOne(Intake& intake, const Path& package)
{
    LevelDraft& draft = intake.draft;
    draft.report.placed.erase(FoldCase(package.filename().native()));
    draft.report.came = {};
    SourceOptions options = draft.Options();
    options.replace = Replace::KeepBoth;
    options.replaceByFile = Replace::Silent;
    options.limits = draft.inner.Rest();
    auto status = CopyOrUnzipSource(intake.session.host, intake.session.machine,
                                    intake.session.Folders(), ToolsOf(intake.session), package,
                                    draft.workFolder, options, intake.progress, draft.report);
    draft.inner.Count(draft.report.came);
    return status;
}

void TellInnerFailure(Intake& intake, const Path& package, bool onlyHere, const Failure& failure)
{
    ++intake.draft.report.failed;
    TellSourceFailure(intake.session.host,
                      GetMsg(Msg::ErrorDecompressingPackage) + TextOf(package.filename()) +
                          std::string{lineBreak} +
                          GetMsg(onlyHere ? Msg::PackageStays : Msg::PackageStillAtSource),
                      failure);
}

void DropPackage(SourceReport& report, const Path& package)
{
    (void)platform::Unlink(package); // one that stays is met again by the next refresh
    if (report.names != nullptr)
        report.names->Remove(package.filename().native());
}

} // namespace

Status UnpackInside(Intake& intake)
{
    LevelDraft& draft = intake.draft;
    draft.report.names.reset(); // other steps were in the folder since
    const auto files = ListFiles(draft.workFolder, OnDisk::PatAll);
    if (!files)
        return {}; // the refresh that follows tells of it
    for (const Path& file : *files) {
        if (!IsPackage(file))
            continue;
        if (!BeginChange(intake))
            return {};
        const auto status = UnpackOne(intake, file);
        if (IsStop(status))
            return status; // it is still there for the next refresh
        // What the archive held is nowhere else; what has just come in still is where it came from.
        const bool onlyHere = draft.opened.Knows(file);
        if (!status)
            TellInnerFailure(intake, file, onlyHere, status.Error());
        const bool replacedItself =
            draft.report.placed.contains(FoldCase(file.filename().native()));
        if (!replacedItself && (status || !onlyHere))
            DropPackage(draft.report, file);
    }
    ClearProgress(intake.progress);
    return {};
}

} // namespace kestrova
