#include "editor/compile_one_tom.h"

#include "core/look.h"
#include "editor/enclosed_folder.h"
#include "tools/wine_paths.h"

namespace kestrova
{

Result<bool> IsCompiled(const Path& result)
{
    // What a link leads to is anybody's.
    const Path place = ResolvePath(result);
    platform::FileFacts facts;
    if (const auto failure = platform::LookAtLink(place, facts))
        return MakeFailure(ErrorCode::CannotRead, TextOf(place), failure);
    return facts.kind == platform::FileKind::File && facts.size > 0;
}

Status CompileOneTom(const Tools& tools, Machine& machine, const TomRun& run,
                     ProgressScope& progress, ToolReport& report)
{
    if (auto gone = DeleteFile(run.result); !gone)
        return gone;
    Enclosure enclosure = EnclosureOfTrle(run.trle);
    enclosure.readable.push_back(run.tom.parent_path());
    auto done = RunBounded(tools, machine,
                           {run.compiler,
                            {ShortPathForProgram(tools, run.compiler, run.tom, progress)},
                            run.trle,
                            run.bounds,
                            std::move(enclosure)},
                           progress, report);
    if (!done && done.Error().code == ErrorCode::Stopped)
        return done;
    const auto isThere = IsCompiled(run.result);
    // Of a compiler that was killed it may be half of one.
    if (done && report.end.signal == 0 && isThere && *isThere)
        return {};
    (void)DeleteFile(run.result); // half a result is none; it goes with the folder at the latest
    return done ? Failure{ErrorCode::NotDone, TextOf(run.tom)} : done.Error();
}

} // namespace kestrova
