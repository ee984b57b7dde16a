#include "editor/tom_compile.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/text.h"
#include "editor/compile_one_tom.h"
#include "editor/failure_words.h"
#include "editor/file_names.h"
#include "editor/told_rest.h"
#include "formats/trle_folder.h"
#include "session/cleared_progress.h"
#include "session/telling.h"
#include "tools/program_launch.h"
#include "words/core.h"
#include "words/editor.h"

namespace kestrova
{

namespace
{

std::string Quoted(const std::string& text)
{
    return '"' + text + '"';
}

std::string ResultNameOf(const Path& tom)
{
    return StripExtension(tom.filename().native()) + std::string{OnDisk::Tr4Ending};
}

} // namespace

void TomCompile::Prepare(const TomSources& sources, const Path& results, bool automatic)
{
    sources_ = sources;
    results_ = results;
    if (sources_.toms.empty()) {
        parts_.host.Tell(Tone::Error, GetMsg(Msg::NoTomFiles, {lineBreak}));
        done_ = true;
        return;
    }
    for (const Path& tom : sources_.toms)
        wishes_.push_back({std::string{OnDisk::DirData} + '\\' + ResultNameOf(tom), {}});
    AddWishes(sources_.wads, OnDisk::DirWads, false);
    AddWishes(sources_.samples, OnDisk::DirSamples, true);
    parts_.progress.AllowStop();
    // What of Wine is missing is said before the folder is lent.
    if (const auto launch = LaunchOf(parts_.tools, ResolvePath(Compiler())); automatic && !launch) {
        TellFailure(parts_.host, GetMsg(Msg::AutoCompileFailed), launch.Error());
        return;
    }
    if (const auto begun = loan_.Begin(wishes_); !begun) {
        TellFailure(parts_.host, GetMsg(Msg::CompileNotLent), begun.Error());
        return;
    }
    // The sources are not there yet: what is kept is flushed, and they need not be.
    if (automatic && !KeepRest())
        return;
    if (!PutSources())
        return TellStopped();
    if (automatic && CompileAll() && loan_.IsOpen() && !TakeResults())
        parts_.host.Tell(Tone::Error, GetMsg(Msg::AutoCompileFailed));
    byHand_ = loan_.IsOpen();
}

/// A file that lies in its place already is no source to be put there.
void TomCompile::AddWishes(const std::vector<Path>& files, std::string_view folder, bool stays)
{
    const Path place = InFolder(parts_.folders.trle, folder);
    if (files.empty() || IsSameFolder(files.front().parent_path(), place))
        return;
    for (const Path& file : files)
        wishes_.push_back({std::string{folder} + '\\' + file.filename().native(), file, stays});
}

/// False when the person stopped it.
bool TomCompile::PutSources()
{
    for (std::size_t i = 0; i < wishes_.size(); ++i) {
        const Path& source = wishes_[i].source;
        if (source.empty())
            continue;
        parts_.progress.SetLabel(GetMsg(Msg::CompileCopying, {TextOf(source.filename())}));
        parts_.progress.SetBar(i, wishes_.size());
        bool goes = parts_.progress.Step();
        Status put;
        if (goes)
            put = loan_.Put(i, [&](std::uint64_t) { return goes = parts_.progress.Step(); });
        if (!goes)
            return false;
        if (!put)
            TellFailure(parts_.host,
                        GetMsg(Msg::CompileCopyInFailed, {TextOf(source)}) +
                            TextOf(loan_.PlaceOf(i)),
                        put.Error());
    }
    return true;
}

/// What else stands in the folder. False, with words, when it could not be kept; the folder is back
/// then.
bool TomCompile::KeepRest()
{
    parts_.progress.SetLabel(GetMsg(Msg::CompileKeeping));
    const auto kept = loan_.KeepRest(parts_.progress);
    if (kept)
        return true;
    if (kept.Error().code == ErrorCode::Stopped)
        return TellStopped(), false;
    Return(LoanEnd::Whole);
    TellFailure(parts_.host, GetMsg(Msg::CompileNotLent), kept.Error());
    return false;
}

bool TomCompile::CompileAll()
{
    const bool compiled = CompileEach();
    if (loan_.IsOpen())
        TellOthersChanged(loan_.ReturnRest());
    return compiled;
}

/// What the compiler did beside its work is undone by now, before a person goes on by hand.
void TomCompile::TellOthersChanged(const Result<RestReturn>& rest)
{
    if (rest)
        TellRest(parts_.host, *rest);
    else
        TellFailure(parts_.host, GetMsg(Msg::CompileNotReturned), rest.Error());
}

bool TomCompile::CompileEach()
{
    for (std::size_t i = 0; i < sources_.toms.size(); ++i) {
        parts_.progress.SetLabel(
            GetMsg(Msg::CompileRunning, {TextOf(sources_.toms[i].filename()), std::to_string(i + 1),
                                         std::to_string(sources_.toms.size())}));
        parts_.progress.SetBar(i, sources_.toms.size());
        if (!CompileOne(i))
            return false;
    }
    ClearProgress(parts_.progress);
    return true;
}

/// False, with words, when the tom file's result is not there afterwards.
bool TomCompile::CompileOne(std::size_t tom)
{
    ToolReport report;
    const auto done = CompileOneTom(
        parts_.tools, parts_.machine,
        {Compiler(), parts_.folders.trle, sources_.toms[tom], loan_.PlaceOf(tom), parts_.bounds},
        parts_.progress, report);
    if (done)
        return true;
    if (done.Error().code == ErrorCode::Stopped) {
        TellStopped();
        return false;
    }
    const Failure& failure = done.Error();
    parts_.host.Tell(Tone::Error, GetMsg(Msg::AutoCompileFailed), WordsOf(failure),
                     report.lastLines);
    return false;
}

std::string TomCompile::Instructions() const
{
    std::vector<std::string> lines{
        GetMsg(Msg::StartTom2Pc),
        {},
        GetMsg(Msg::Tom2PcAdd),
        GetMsg(Msg::Tom2PcBrowse, {'"' + TextOf(parts_.folders.trle), "\""})};
    if (sources_.toms.size() == 1) {
        lines.push_back(
            GetMsg(Msg::Tom2PcClickOne, {Quoted(TextOf(sources_.toms.front().filename()))}));
    } else {
        lines.push_back(GetMsg(Msg::Tom2PcClickMany));
        for (const Path& tom : sources_.toms)
            lines.push_back(GetMsg(Msg::Tom2PcClickName) + TextOf(tom.filename()));
    }
    for (const Message& line : {Msg::Tom2PcBuild, Msg::Tom2PcWait, Msg::Tom2PcDone})
        lines.push_back(GetMsg(line));
    return Join(lines, lineBreak);
}

void TomCompile::StartByHand()
{
    if (Trim(parts_.preferences.tom2PcName).empty())
        parts_.preferences.tom2PcName = OnDisk::DefaultTom2PcName;
    Path program = Compiler();
    if (!FileExists(program)) {
        parts_.host.Tell(Tone::Error,
                         GetMsg(Msg::CompilerMissing, {Quoted(TextOf(program)) + ' ', lineBreak}));
        const auto chosen = parts_.host.ChooseOpenFile(
            GetMsg(Msg::SelectCompiler), GetMsg(Msg::CompilerFilter), parts_.folders.trle);
        if (!chosen)
            return;
        program = *chosen;
        parts_.preferences.tom2PcName = IsSameFolder(program.parent_path(), parts_.folders.trle)
                                            ? program.filename().native()
                                            : program.native();
    }
    const auto launch = LaunchOf(parts_.tools, ResolvePath(program));
    const auto started = launch ? parts_.machine.StartAndForget(*launch) : launch.Error();
    if (!started)
        TellFailure(parts_.host, GetMsg(Msg::CompilerNotStarted) + TextOf(program),
                    started.Error());
}

bool TomCompile::TakeResults()
{
    for (std::size_t i = 0; i < sources_.toms.size(); ++i) {
        const auto isThere = IsCompiled(loan_.PlaceOf(i));
        if (isThere && *isThere)
            continue;
        parts_.host.Tell(
            Tone::Error,
            GetMsg(Msg::CompileIncomplete, {lineBreak, Quoted(ResultNameOf(sources_.toms[i]))}),
            isThere ? std::string{} : isThere.Error().reason);
        return false;
    }
    for (std::size_t i = 0; i < sources_.toms.size(); ++i) {
        const Path from = ResolvePath(loan_.PlaceOf(i));
        const Path to = results_ / ResultNameOf(sources_.toms[i]);
        if (const auto copied = CopyFileOver(from, to, {Verify::Content, true, true, {}});
            !copied) {
            TellFailure(parts_.host, GetMsg(Msg::ErrorCopyingFromTo, {TextOf(from)}) + TextOf(to),
                        copied.Error());
            return false;
        }
    }
    done_ = true;
    Return(LoanEnd::Whole);
    return true;
}

void TomCompile::Cancel()
{
    Return(LoanEnd::Cancelled);
}

void TomCompile::GiveUp()
{
    Return(LoanEnd::Whole);
}

void TomCompile::Return(LoanEnd end)
{
    if (!loan_.IsOpen())
        return;
    if (end == LoanEnd::Whole && !byHand_)
        end = LoanEnd::OfProgram;
    if (const auto back = loan_.GiveBack(end); !back)
        TellFailure(parts_.host, GetMsg(Msg::CompileNotReturned), back.Error());
    ClearProgress(parts_.progress);
}

void TomCompile::TellStopped()
{
    Return(LoanEnd::Whole);
    parts_.host.Tell(Tone::Warning, GetMsg(Msg::CompileStopped));
}

Path TomCompile::Compiler() const
{
    // A program that lies elsewhere is remembered by its whole path, which the folder gives way to.
    return parts_.folders.trle / Path{Trim(parts_.preferences.tom2PcName)};
}

} // namespace kestrova
