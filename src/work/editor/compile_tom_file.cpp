#include "editor/compile_tom_file.h"

#include "core/file_kinds.h"
#include "core/look.h"
#include "editor/file_names.h"
#include "formats/trle_folder.h"
#include "originals/vault.h"
#include "session/file_to_write.h"
#include "session/operation.h"
#include "session/telling.h"
#include "swap/folder_guard.h"
#include "swap/recovery.h"
#include "words/editor.h"

namespace kestrova
{

namespace
{

/// Tells of a tom file without wads; True when there is none.
bool HaveWads(Host& host, const Folders& folders, const TomSources& sources)
{
    const auto lacking = TomWithoutWads(folders, sources);
    if (!lacking)
        return TellFolderNotRead(host, lacking.Error());
    if (lacking->empty())
        return true;
    const std::string stem = StripExtension(TextOf(lacking->filename()));
    host.Tell(Tone::Error, GetMsg(Msg::WadsMissing, {TextOf(lacking->filename()),
                                                     stem + std::string{OnDisk::WadEnding}}));
    return false;
}

} // namespace

CompileParts CompilePartsOf(Session& session, ProgressScope& progress)
{
    return {session.host,        session.machine,  session.Folders(),
            session.preferences, ToolsOf(session), progress};
}

bool MayLend(Session& session)
{
    return RecoverInterruptedWork(session) && MayChangeTrle(session, session.Folders());
}

bool CompileTomFile(Session& session, const Path& tom, Path& result)
{
    const Operation operation{session};
    const auto isThere = IsFile(tom);
    if (!isThere || !*isThere || !EndsWithName(tom.native(), OnDisk::TomEnding)) {
        session.host.Tell(Tone::Error, GetMsg(Msg::NotATomFile) + TextOf(tom),
                          isThere ? std::string{} : isThere.Error().reason);
        return false;
    }
    const auto files = ListFiles(tom.parent_path(), OnDisk::PatAllFiles);
    if (!files)
        return TellFolderNotRead(session.host, files.Error());
    const TomSources sources = SourcesOfTom(SourcesAmong(*files), ResolvePath(tom));
    for (const Path& wave : sources.misplaced)
        session.host.Tell(Tone::Warning, GetMsg(Msg::WaveWithoutNumber,
                                                {TextOf(wave.filename()), lineBreak, lineBreak}));
    const auto target =
        FileToReplace(session.host, tom.parent_path() / (StripExtension(tom.filename().native()) +
                                                         std::string{OnDisk::Tr4Ending}));
    if (!target)
        return DoneOrTold(session.host, target.Error());
    if (!MayLend(session) || !HaveWads(session.host, session.Folders(), sources))
        return false;
    const auto progress = session.host.BeginProgress(ProgressWindow::Progress, {});
    TomCompile compile{CompilePartsOf(session, *progress)};
    compile.Prepare(sources, tom.parent_path(), true);
    compile.GiveUp(); // nobody goes on by hand
    BoundVault(session.Folders(), session.settings);
    result = *target;
    return compile.IsDone();
}

} // namespace kestrova
