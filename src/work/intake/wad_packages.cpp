#include "intake/wad_packages.h"

#include "intake/folder_sources.h"
#include "intake/source_choice.h"
#include "session/operation.h"
#include "session/telling.h"
#include "words/wads.h"

namespace kestrova
{

bool AddChosenWadFile(WadImport& import)
{
    const auto chosen = ChooseSourceFile(import.Owner().host, import.Owner().preferences);
    return chosen && AddWadSources(import, {*chosen});
}

bool AddChosenWadFolder(WadImport& import)
{
    const auto chosen = ChooseSourceFolder(import.Owner().host, import.Owner().preferences);
    return chosen && AddWadSources(import, {*chosen});
}

bool AddWadSources(WadImport& import, const std::vector<Path>& sources, Subfolders subfolders)
{
    Session& session = import.Owner();
    const Operation operation{session};
    SourceReport report;
    std::vector<std::string> names;
    Status taken;
    for (const Path& source : sources)
        if (taken) {
            taken = AddSource(session.host, session.machine, session.Folders(), ToolsOf(session),
                              source, import.Folder(), {}, import.Progress(), subfolders, report);
            names.push_back(TextOf(source.filename()));
        }
    NoteChangedSources(report);
    report.unpacking.reset();
    import.AddSubject(Join(names, ", "));
    const bool listed = import.Refresh();
    TellReport(session.host, report);
    return listed && report.failed == 0 && taken;
}

bool PrepareWadImport(WadImport& import, const Path& package)
{
    if (!import.Prepare())
        return false;
    if (!package.empty())
        (void)AddWadSources(import, {package}); // it has told; the import goes on with what came
    return true;
}

bool ImportWadZip(Session& session, const Path& package, const WadWindows& windows)
{
    if (windows.show)
        return windows.show(package);
    const Operation operation{session};
    const auto progress = session.host.BeginProgress(ProgressWindow::Progress, {});
    WadImport import{session, *progress};
    if (!PrepareWadImport(import, package))
        return false;
    import.Run(windows.askName);
    return import.IsDone();
}

bool ImportWads(Session& session, const std::vector<Path>& packages, const AskLevelName& askName,
                std::string& report)
{
    const Operation operation{session};
    const auto progress = session.host.BeginProgress(ProgressWindow::Progress, {});
    WadImport import{session, *progress};
    if (!import.Prepare() ||
        (!AddWadSources(import, packages, Subfolders::Take) && import.Files().empty()))
        return false;
    import.Run(askName);
    report = import.Report();
    return import.IsDone();
}

} // namespace kestrova
