#include "intake/compile_sources.h"

#include "archive/level_folders.h"
#include "conversion/level_audio.h"
#include "conversion/sound_converter.h"
#include "editor/compile_tom_file.h"
#include "intake/draft_files.h"
#include "intake/file_names.h"
#include "intake/link_sources.h"
#include "originals/vault.h"
#include "session/cleared_progress.h"
#include "session/operation.h"
#include "session/telling.h"
#include "words/assistant.h"
#include "words/common.h"
#include "words/editor.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool HasResult(const LevelDraft& draft, const Path& tom)
{
    const std::string wanted =
        StripExtension(tom.filename().native()) + std::string{OnDisk::CompiledEnding};
    return std::any_of(draft.files.begin(), draft.files.end(), [&](const Path& file) {
        return EqualNames(file.filename().native(), wanted);
    });
}

void RemoveFromLevel(Host& host, const std::vector<Path>& files)
{
    for (const Path& file : files)
        if (const auto deleted = DeleteFile(file); !deleted)
            TellFailure(host, GetMsg(Msg::ErrorRemovingFile) + TextOf(file), deleted.Error());
}

/// The compiler reads waves alone.
bool DecodeSamples(Intake& intake)
{
    Session& session = intake.session;
    return DoneOrTold(session.host,
                      DecodeLevelMp3(session.host, SoundConverterOf(session), session.archive,
                                     intake.draft.workFolder, intake.draft.files, true, true)) &&
           ShowFiles(intake);
}

/// The sources that are none for the compiler, and would be no files of a level either.
void DropMisplaced(Host& host, const TomSources& sources)
{
    for (const Path& wave : sources.misplaced)
        host.Tell(Tone::Error,
                  GetMsg(Msg::WaveWithoutNumber, {TextOf(wave.filename()), lineBreak, lineBreak}));
    RemoveFromLevel(host, sources.misplaced);
}

/// True once the results lie in the level's folder, and the lent folder is back.
bool CompileHere(Intake& intake, const TomSources& sources)
{
    Session& session = intake.session;
    const auto& byHand = intake.windows.compile;
    TomCompile compile{CompilePartsOf(session, intake.progress)};
    compile.Prepare(sources, intake.draft.workFolder,
                    !byHand || !session.preferences.noAutoCompile);
    if (compile.NeedsPerson() && byHand) {
        ClearProgress(intake.progress);
        byHand(compile);
    }
    compile.GiveUp(); // where nobody could go on by hand
    BoundVault(session.Folders(), session.settings);
    return compile.IsDone();
}

} // namespace

bool HasSourcesToCompile(const Intake& intake)
{
    const LevelDraft& draft = intake.draft;
    if (draft.compile == Compile::Never || draft.OnCd())
        return false;
    const auto toms = SourcesAmong(draft.files).toms;
    return std::any_of(toms.begin(), toms.end(), [&](const Path& tom) {
        return draft.compile != Compile::WhereMissing || !HasResult(draft, tom);
    });
}

StepAnswer CompileSources(Intake& intake)
{
    if (intake.draft.compile != Compile::Asked)
        return CompileLevel(intake) ? StepAnswer::GoesOn : StepAnswer::Refused;
    if (!intake.session.host.AskToGoOn(GetMsg(Msg::SourcesAskConvert, {lineBreak})))
        return StepAnswer::Stopped;
    CompileLevel(intake);
    return StepAnswer::GoesOn;
}

bool CompileLevel(Intake& intake)
{
    Session& session = intake.session;
    const Operation operation{session};
    if (!DoneOrTold(session.host, GuardLevelOnCd(intake.draft.saved)) || !BeginChange(intake) ||
        !LinkSources(intake) || !DecodeSamples(intake))
        return false;
    const TomSources sources = SourcesAmong(intake.draft.files);
    DropMisplaced(session.host, sources);
    const bool compiled = MayLend(session) && CompileHere(intake, sources);
    if (compiled) {
        RemoveFromLevel(session.host, sources.wads);
        RemoveFromLevel(session.host, sources.samples);
    }
    return ShowFiles(intake) && compiled;
}

} // namespace kestrova
