#include "swap/folder_guard.h"

#include "archive/level_folders.h"
#include "core/name_list.h"
#include "history/standing.h"
#include "history/swap_journal_file.h"
#include "swap/recovery.h"
#include "words/swap.h"

namespace kestrova
{

namespace
{

bool Agrees(const SwapParts& parts, const Folders& folders, Message question)
{
    if (parts.running.agreedToProgramsInTrle)
        return true;
    std::vector<std::string> names;
    for (const platform::RunningProgram& program : ProgramsInTrle(parts, folders))
        names.push_back(program.name);
    if (names.empty())
        return true;
    const bool agreed =
        parts.host.AskYesNo(GetMsg(question, {ShownNames(names), lineBreak, lineBreak}));
    parts.running.agreedToProgramsInTrle = agreed && parts.running.operations > 0;
    return agreed;
}

} // namespace

std::vector<platform::RunningProgram> ProgramsInTrle(const SwapParts& parts, const Folders& folders)
{
    std::vector<platform::RunningProgram> programs;
    if (const Path folder = folders.trle; !folder.empty())
        programs = parts.machine.ProgramsRunningIn(folder);
    if (programs.empty() && parts.running.game != 0 && parts.machine.IsRunning(parts.running.game))
        programs.push_back({parts.running.game, std::string{Trim(parts.preferences.tombExeName)}});
    return programs;
}

bool MayChangeTrle(const SwapParts& parts, const Folders& folders)
{
    return Agrees(parts, folders, Msg::ProgramsRunInTrle);
}

bool MayStartBesideOthers(const SwapParts& parts, const Folders& folders)
{
    return Agrees(parts, folders, Msg::GameRunsAlready);
}

bool StandsInTrle(Machine& machine, const Folders& folders, const Archive& archive, LevelCode code)
{
    if (code == originalCode || FindLevel(archive, code) < 0 ||
        CurrentLevelCode(folders, archive) != code || !InterruptedWork(folders, archive).empty())
        return false;
    // After a new start of the machine the files in the folder are looked at once more.
    const auto owner = ReadOwner(folders);
    return owner && *owner && (*owner)->owner == code && (*owner)->bootId == machine.BootId();
}

} // namespace kestrova
