#include "intake/compile_sources.h"

#include "conversion/level_audio.h"
#include "conversion/sound_converter.h"
#include "editor/compile_tom_file.h"
#include "intake/draft_files.h"
#include "intake/file_names.h"
#include "session/operation.h"
#include "session/telling.h"
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
           RefreshFiles(intake);
}

} // namespace

bool HasSourcesToCompile(const Intake& intake)
{
    const LevelDraft& draft = intake.draft;
    if (draft.compile == Compile::Never)
        return false;
    const auto toms = SourcesAmong(draft.files).toms;
    return std::any_of(toms.begin(), toms.end(), [&](const Path& tom) {
        return draft.compile == Compile::Always || !HasResult(draft, tom);
    });
}

StepAnswer CompileSources(Intake& intake)
{
    Session& session = intake.session;
    const Operation operation{session};
    if (!DecodeSamples(intake))
        return StepAnswer::Refused;
    const TomSources sources = SourcesAmong(intake.draft.files);
    for (const Path& wave : sources.misplaced)
        session.host.Tell(Tone::Error, GetMsg(Msg::WaveWithoutNumber,
                                              {TextOf(wave.filename()), lineBreak, lineBreak}));
    RemoveFromLevel(session.host, sources.misplaced);
    if (!HaveWads(session, sources) || !MayLend(session))
        return StepAnswer::Refused;
    TomCompile compile{CompilePartsOf(session, intake.progress)};
    compile.Prepare(sources, intake.draft.workFolder, true);
    compile.GiveUp(); // nobody goes on by hand here
    if (!compile.IsDone())
        return StepAnswer::Refused;
    RemoveFromLevel(session.host, sources.wads);
    RemoveFromLevel(session.host, sources.samples);
    return RefreshFiles(intake) ? StepAnswer::GoesOn : StepAnswer::Refused;
}

} // namespace kestrova
