#include "intake/installer_leave.h"

#include "core/inside.h"
#include "core/look.h"
#include "core/text.h"
#include "editor/compile_tom_file.h"
#include "platform/files.h"
#include "platform/real_path.h"
#include "tools/enclosure.h"
#include "tools/program_launch.h"
#include "words/installers.h"

#include <algorithm>
#include <array>

namespace kestrova
{

namespace
{

/// Behind all links, as the enclosure opens it; as it is named where that cannot be told.
Path RealPlace(const Path& folder)
{
    Path real;
    return platform::RealPath(ResolvePath(folder), real) ? ResolvePath(folder) : real;
}

/// Somebody's whole disk, or anything that this program keeps, is nothing to give to a stranger.
/// What lies in the Level Editor's folder is handed over with all that stands there.
bool IsNothingToGive(const Folders& folders, const Path& wished)
{
    const Path folder = RealPlace(wished);
    const Path trle = RealPlace(folders.trle);
    if (LiesInside(folder, trle))
        return false;
    const std::array kept{RealPlace(folders.program), RealPlace(folders.levels)};
    return LiesInside(trle, folder) || std::any_of(kept.begin(), kept.end(), [&](const Path& own) {
               return LiesInside(own, folder) || LiesInside(folder, own);
           });
}

} // namespace

bool MayRunInstaller(Intake& intake, const Path& program)
{
    Session& session = intake.session;
    const auto refuses = [&](const std::string& words, const std::string& reason = {}) {
        session.host.Tell(Tone::Error, words, reason);
        return false;
    };
    if (!FolderExists(session.TrleFolder()))
        return refuses(GetMsg(Msg::InstallerNoTrle));
    const auto launch = LaunchOf(ToolsOf(session), program);
    if (!launch)
        return refuses(GetMsg(Msg::InstallerNotStarted) + TextOf(program), launch.Error().reason);
    if (!intake.draft.installer)
        return true;
    const Path& folder = intake.draft.installer->folder;
    if (!FolderExists(folder))
        return refuses(GetMsg(Msg::InstallerFolderMissing, {TextOf(folder)}));
    if (IsNothingToGive(session.Folders(), folder))
        return refuses(GetMsg(Msg::InstallerFolderWide, {TextOf(folder)}));
    return true;
}

Status MakeStartable(const Path& program)
{
    constexpr std::uint32_t everybodyStarts = 0111;
    const auto facts = LookAt(program);
    if (!facts)
        return facts.Error();
    if (IsWindowsProgram(program) || (facts->mode & everybodyStarts) == everybodyStarts)
        return {};
    const auto failure = platform::SetMode(program, facts->mode | everybodyStarts);
    return failure ? MakeFailure(ErrorCode::CannotWrite, TextOf(program), failure) : Status{};
}

std::string WhatProgramsReach(const Folders& folders, const Tools& tools)
{
    if (EncloserOf(tools).empty())
        return GetMsg(Msg::InstallerReachesAll);
    return GetMsg(Msg::InstallerReachesLittle, {TextOf(WinePrefixFor(folders.trle))});
}

} // namespace kestrova
