#include "editor/compile_script.h"

#include "core/look.h"
#include "editor/compile_one_tom.h"
#include "editor/enclosed_folder.h"
#include "editor/file_names.h"
#include "formats/trle_folder.h"
#include "originals/folder_loan.h"
#include "originals/vault.h"
#include "tools/program_launch.h"
#include "words/editor.h"

namespace kestrova
{

namespace
{

/// The results that the next ones will replace, as far as nothing else holds them.
Status KeepOldResults(Machine& machine, const Folders& folders, const Path& sources)
{
    const auto old = ListFiles(sources, OnDisk::PatDat);
    if (!old)
        return old.Error();
    std::vector<Path> relatives;
    for (const Path& file : *old)
        relatives.push_back(file.lexically_relative(folders.trle));
    Keeping keeping = KeepOriginals(machine, folders, relatives);
    return keeping.failed.empty() ? Status{} : Status{std::move(keeping.failure)};
}

/// The first result that did not come out; empty when both did.
Result<std::string> MissingResult(const Path& sources, const std::string& languageDat)
{
    for (const std::string& name : {std::string{OnDisk::ScriptDat}, languageDat}) {
        const auto isThere = IsCompiled(sources / name);
        if (!isThere)
            return isThere.Error();
        if (!*isThere)
            return name;
    }
    return std::string{};
}

} // namespace

Status CompileScript(Machine& machine, const Folders& folders, const Tools& tools,
                     const std::string& languageDat, ProgressScope& progress, RestReturn& rest,
                     const RunBounds& bounds)
{
    const Path sources = ResolvePath(InFolder(folders.trle, OnDisk::DirScript));
    const Path program = InFolder(folders.trle, OnDisk::FragScriptExe);
    const auto isThere = IsFile(program);
    if (isThere && !*isThere)
        return InWords(ErrorCode::Missing, GetMsg(Msg::ScriptExeMissing) + TextOf(program));
    Status begun = isThere ? StatusOf(LaunchOf(tools, ResolvePath(program))) : isThere.Error();
    if (begun)
        begun = KeepOldResults(machine, folders, sources);
    FolderLoan loan{machine, folders};
    if (begun)
        begun = loan.Begin({}, {std::string{OnDisk::PatScriptResults}});
    if (begun)
        begun = loan.KeepRest(progress, {std::string{OnDisk::DirScript}});
    if (!begun)
        return Saying(GetMsg(Msg::ScriptNotBegun), begun);

    ToolReport report;
    const Status run = RunBounded(
        tools, machine,
        {program, {std::string{OnDisk::ScriptTxt}}, sources, bounds, EnclosureOfTrle(folders.trle)},
        progress, report);
    const auto missing = MissingResult(sources, languageDat);
    auto returned = loan.ReturnRest();
    if (returned)
        rest = *returned;
    if (returned && run && missing && missing->empty())
        return loan.Keep();
    const Status back = loan.GiveBack();
    if (!back || !missing)
        return back ? Status{missing.Error()} : back;
    if (!returned)
        return returned.Error();
    if (!run)
        return run;
    return InWords(ErrorCode::NotDone, GetMsg(Msg::ScriptNotCompiled, {*missing}), {},
                   report.lastLines);
}

} // namespace kestrova
