#include "app/doctor.h"

#include "app/check_findings.h"
#include "app/disc_findings.h"
#include "app/file_names.h"
#include "app/library_findings.h"
#include "app/start_up.h"
#include "app/vault_findings.h"
#include "archive/set_aside.h"
#include "conversion/sound_tools.h"
#include "core/look.h"
#include "core/name_list.h"
#include "core/size_words.h"
#include "editor/find_trle.h"
#include "editor/folder_test.h"
#include "history/undo_entries.h"
#include "levels/unfinished_intake.h"
#include "packages/package_tools.h"
#include "platform/places.h"
#include "play/game_launch.h"
#include "swap/backup_state.h"
#include "swap/level_gaps.h"
#include "swap/recovery.h"
#include "swap/waiting_in_trle.h"
#include "tools/tools.h"
#include "upkeep/leftovers.h"
#include "words/app.h"
#include "words/core.h"
#include "words/restore.h"
#include "words/tools.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Below it a level of ordinary size finds no room to be expanded.
constexpr std::uint64_t scarce = UINT64_C(512) << 20;

Finding Fine(Message name, std::string state)
{
    return {true, GetMsg(name), std::move(state), {}};
}

Finding Bad(Message name, std::string state, Message remedy)
{
    return {false, GetMsg(name), std::move(state), GetMsg(remedy)};
}

Finding Folder(Message name, const Path& folder, Message remedy)
{
    if (!platform::IsWritableFolder(ResolvePath(folder)))
        return Bad(name, GetMsg(Msg::DoctorNotWritable, {TextOf(folder)}), remedy);
    return Fine(name, GetMsg(Msg::DoctorWritable, {TextOf(folder)}));
}

/// The folder that this program makes itself.
Finding ProgramFolder(const Folders& folders)
{
    Path place = ResolvePath(folders.program);
    const auto isFree = IsFree(place);
    if (!isFree || !*isFree)
        return Folder(Msg::DoctorProgramFolder, place, Msg::DoctorNotWritableRemedy);
    while (place.has_relative_path() && !FolderExists(place))
        place = place.parent_path();
    if (!platform::IsWritableFolder(place))
        return Folder(Msg::DoctorProgramFolder, folders.program, Msg::DoctorNotWritableRemedy);
    return Fine(Msg::DoctorProgramFolder, GetMsg(Msg::DoctorNotYetMade, {TextOf(folders.program)}));
}

Finding LevelEditor(const Folders& folders, const PreferencesRecord& preferences)
{
    const Path trle = folders.trle;
    if (trle.empty())
        return Bad(Msg::LevelEditorsFolder, GetMsg(Msg::DoctorTrleNotSet), Msg::DoctorTrleRemedy);
    const auto lacks = WhatTrleLacks(trle);
    if (!lacks)
        return Bad(Msg::LevelEditorsFolder, GetMsg(Msg::DoctorNotRead, {lacks.Error().subject}),
                   Msg::DoctorNotReadRemedy);
    if (!lacks->empty()) {
        const auto backup = LookAtBackup(folders); // not read, it has a finding of its own
        if (FolderExists(trle) && backup && *backup == BackupState::Present &&
            !BackupSeemsOfAnother(folders).ValueOr(trle)) {
            if (const std::string waves = WavesToCopy(folders, preferences).ValueOr({});
                !waves.empty())
                return {false, GetMsg(Msg::LevelEditorsFolder),
                        GetMsg(Msg::DoctorTrleNotWhole, {TextOf(trle)}) + ": " + *lacks, waves};
            return Bad(Msg::LevelEditorsFolder,
                       GetMsg(Msg::DoctorTrleNotWhole, {TextOf(trle)}) + ": " + *lacks,
                       Msg::DoctorTrleNotWholeRemedy);
        }
        return Bad(Msg::LevelEditorsFolder, GetMsg(Msg::DoctorTrleWrong, {TextOf(trle)}),
                   Msg::DoctorTrleRemedy);
    }
    return Folder(Msg::LevelEditorsFolder, trle, Msg::DoctorTrleNotWritable);
}

Finding Backup(const Folders& folders, const PreferencesRecord& preferences)
{
    const auto backup = LookAtBackup(folders);
    if (!backup)
        return Bad(Msg::DoctorBackup, GetMsg(Msg::DoctorNotRead, {backup.Error().subject}),
                   Msg::DoctorNotReadRemedy);
    if (*backup == BackupState::Missing)
        return Bad(Msg::DoctorBackup, GetMsg(Msg::DoctorBackupMissing), Msg::DoctorBackupRemedy);
    const auto other = BackupSeemsOfAnother(folders);
    if (!other)
        return Bad(Msg::DoctorBackup, GetMsg(Msg::DoctorNotRead, {other.Error().subject}),
                   Msg::DoctorNotReadRemedy);
    if (*other)
        return Bad(Msg::DoctorBackup, GetMsg(Msg::DoctorBackupOther, {TextOf(**other)}),
                   Msg::DoctorBackupOtherRemedy);
    return Fine(Msg::DoctorBackup,
                GetMsg(preferences.fullBackup ? Msg::DoctorBackupFull : Msg::DoctorBackupCompact));
}

Finding ArchiveState(Session& session)
{
    if (session.RememberedArchive().empty())
        return Bad(Msg::DoctorArchive, GetMsg(Msg::DoctorArchiveNone),
                   Msg::DoctorArchiveNoneRemedy);
    const std::string shown = TextOf(session.RememberedArchive());
    if (!session.archive.Loaded() && !LoadArchiveToLook(session))
        return Bad(Msg::DoctorArchive, GetMsg(Msg::DoctorArchiveDamaged, {shown}),
                   Msg::DoctorArchiveDamagedRemedy);
    if (const Path folder{Trim(session.archive.header.secondaryFolder)}; !FolderExists(folder))
        return Bad(Msg::DoctorArchive, GetMsg(Msg::DoctorArchiveFolderGone, {TextOf(folder)}),
                   Msg::DoctorArchiveFolderRemedy);
    return Fine(Msg::DoctorArchive, GetMsg(Msg::DoctorArchiveFine,
                                           {shown, std::to_string(session.archive.levels.size())}));
}

/// What is kept so that changes can be undone, removed levels with it.
void UndoKept(const Folders& folders, const UndoList& list, std::vector<Finding>& findings)
{
    if (!list.unread.empty()) {
        std::vector<std::string> names;
        for (const Path& file : list.unread)
            names.push_back(TextOf(file));
        findings.push_back(Bad(Msg::DoctorUndo, GetMsg(Msg::DoctorUndoUnread, {ShownNames(names)}),
                               Msg::DoctorUndoUnreadRemedy));
    }
    if (list.entries.empty())
        return;
    std::uint64_t bytes = 0;
    std::vector<std::string> aside;
    for (const ChangeHead& entry : list.entries) {
        bytes += BytesOf(folders, entry);
        if (entry.moved && !entry.isUndone)
            aside.push_back(TextOf(entry.moved->to));
    }
    std::string state = GetMsg(Msg::DoctorUndoKeeps, {std::to_string(list.entries.size()),
                                                      SizeInWords(static_cast<double>(bytes))});
    if (!aside.empty())
        state = GetMsg(Msg::DoctorUndoAside, {state, ShownNames(aside)});
    findings.push_back(Fine(Msg::DoctorUndo, std::move(state)));
}

/// Folders named as a level's that the list does not know, and those that were set aside.
void FoldersOfNoLevel(const Folders& folders, const Archive& archive,
                      std::vector<Finding>& findings)
{
    const auto named = [](const std::vector<Path>& some) {
        std::vector<std::string> names;
        for (const Path& folder : some)
            names.push_back(TextOf(folder));
        return ShownNames(names);
    };
    const auto found = FindUnknownFolders(archive);
    if (!found) {
        findings.push_back(Bad(Msg::DoctorUnlisted,
                               GetMsg(Msg::DoctorNotRead, {found.Error().subject}),
                               Msg::DoctorNotReadRemedy));
        return;
    }
    const std::vector<Path> cutShort = UnfinishedIntakes(folders, archive);
    std::vector<Path> unlisted = found->unlisted;
    std::erase_if(unlisted, [&](const Path& folder) {
        return std::find(cutShort.begin(), cutShort.end(), folder) != cutShort.end();
    });
    if (!cutShort.empty())
        findings.push_back(
            Bad(Msg::DoctorLeftIntake, named(cutShort), Msg::DoctorLeftIntakeRemedy));
    if (!unlisted.empty())
        findings.push_back(Bad(Msg::DoctorUnlisted, named(unlisted), Msg::DoctorUnlistedRemedy));
    const auto list = ReadUndoList(folders).ValueOr({});
    UndoKept(folders, list, findings);
    VaultFindings(folders, findings);
    std::vector<Path> aside = found->setAside;
    std::erase_if(aside, [&](const Path& folder) {
        return std::any_of(list.entries.begin(), list.entries.end(), [&](const ChangeHead& entry) {
            return entry.moved && Path{entry.moved->to} == folder;
        });
    });
    if (!aside.empty())
        findings.push_back(Fine(Msg::DoctorSetAside, named(aside)));
}

/// Levels whose stored files are not all that they are known to have.
Finding Levels(const Folders& folders, const Archive& archive)
{
    std::vector<std::string> lacking;
    std::string notRead;
    for (const LevelRecord& level : archive.levels) {
        const auto gaps = GapsOf(folders, level);
        if (!gaps && notRead.empty())
            notRead = gaps.Error().subject;
        if (!gaps || AllGaps(*gaps).empty())
            continue;
        lacking.push_back(ZeroPadded(level.levelCode, 4));
    }
    if (lacking.empty() && !notRead.empty())
        return Bad(Msg::DoctorLevels, GetMsg(Msg::DoctorNotRead, {notRead}),
                   Msg::DoctorNotReadRemedy);
    if (lacking.empty())
        return Fine(Msg::DoctorLevels, GetMsg(Msg::DoctorLevelsWhole));
    return Bad(Msg::DoctorLevels, GetMsg(Msg::DoctorLevelsLack, {ShownNames(lacking)}),
               Msg::DoctorLevelsRemedy);
}

Finding Interrupted(const Folders& folders, const Archive& archive,
                    const PreferencesRecord& preferences)
{
    const std::string waiting = InterruptedWork(folders, archive);
    if (!waiting.empty())
        return Bad(Msg::DoctorInterrupted, waiting,
                   WhatMendingLacks(folders, archive).ValueOr({}) ? Msg::DoctorWaitsRemedy
                                                                  : Msg::DoctorInterruptedRemedy);
    if (std::string left = WhatWaitsInTrle(folders, archive, preferences); !left.empty())
        return {false, GetMsg(Msg::DoctorInterrupted), std::move(left),
                RemedyInTrle(folders, archive) + " " + GetMsg(Msg::DoctorInterruptedRemedy)};
    return Fine(Msg::DoctorInterrupted, GetMsg(Msg::DoctorInterruptedNone));
}

void Game(const Folders& folders, const PreferencesRecord& preferences, const Tools& tools,
          std::vector<Finding>& findings)
{
    const auto launch = GameLaunch(folders, preferences, tools);
    if (!launch) {
        findings.push_back(Bad(Msg::DoctorGame,
                               launch.Error().subject + ": " + launch.Error().reason,
                               Msg::DoctorGameRemedy));
        return;
    }
    if (launch->argv.size() == 1) {
        findings.push_back(Fine(Msg::DoctorGame, GetMsg(Msg::DoctorGameNative)));
        findings.push_back(Fine(Msg::DoctorWine, GetMsg(Msg::DoctorWineNotNeeded)));
        return;
    }
    findings.push_back(Fine(Msg::DoctorGame, GetMsg(Msg::DoctorGameWine, {launch->argv.front()})));
}

Finding Program(Machine& machine, std::string_view tool, Message remedy)
{
    const Path found = machine.FindTool(std::string{tool});
    const std::string name = GetMsg(Msg::DoctorTool, {tool});
    if (found.empty())
        return {false, name, GetMsg(Msg::DoctorToolMissing), GetMsg(remedy)};
    return {true, name, TextOf(found), {}};
}

Finding Keys()
{
    switch (platform::SessionDesktop()) {
    case platform::Desktop::None:
        return Fine(Msg::DoctorKeys, GetMsg(Msg::DoctorKeysNone));
    case platform::Desktop::X:
        return Fine(Msg::DoctorKeys, GetMsg(Msg::DoctorKeysX));
    case platform::Desktop::WaylandWithX:
        return Fine(Msg::DoctorKeys, GetMsg(Msg::DoctorKeysWaylandX));
    case platform::Desktop::Wayland:
        break;
    }
    return Bad(Msg::DoctorKeys, GetMsg(Msg::DoctorKeysWayland), Msg::DoctorKeysRemedy);
}

/// The programs that packages and sounds go through.
void OutsideTools(const Tools& tools, std::vector<Finding>& findings)
{
    std::vector<const Tool*> all = PackageTools();
    all.insert(all.end(), {&Decoder(), &Encoder()});
    for (const Tool* const tool : all) {
        const Path found = FindTool(tools, *tool);
        const std::string name = GetMsg(Msg::DoctorTool, {tool->name});
        if (found.empty())
            findings.push_back(
                {false, name, GetMsg(Msg::DoctorToolMissing), InstallHint(tools, *tool)});
        else
            findings.push_back({true, name, TextOf(found), {}});
    }
}

/// The drives that a swap writes to, each once.
void Drives(Machine& machine, const Folders& folders, const Archive& archive,
            std::vector<Finding>& findings)
{
    std::vector<std::uint64_t> seen;
    for (const Path& folder :
         {folders.program, folders.trle, Path{Trim(archive.header.secondaryFolder)}}) {
        const platform::FileFacts facts = platform::FactsOf(ResolvePath(folder));
        if (folder.empty() || facts.kind != platform::FileKind::Folder ||
            std::find(seen.begin(), seen.end(), facts.device) != seen.end())
            continue;
        seen.push_back(facts.device);
        const std::string name = GetMsg(Msg::DoctorDrive, {TextOf(folder)});
        const auto free = machine.FreeSpace(folder);
        if (!free) {
            findings.push_back({false, name, GetMsg(Msg::DoctorDriveUnknown), free.Error().reason});
            continue;
        }
        const std::string state =
            GetMsg(Msg::DoctorDriveFree, {SizeInWords(static_cast<double>(*free))});
        const bool enough = *free >= scarce;
        findings.push_back({enough, name, state, enough ? "" : GetMsg(Msg::DoctorDriveRemedy)});
    }
}

/// Folders to work in that were renamed aside since they could not go, and what else killed
/// programs left.
void Leftovers(const Folders& folders, std::vector<Finding>& findings)
{
    std::vector<std::string> names;
    for (const Path& left : LeftoversThatStay(folders))
        names.push_back(TextOf(left));
    if (!names.empty())
        findings.push_back(Bad(Msg::DoctorLeftovers,
                               GetMsg(Msg::DoctorLeftoversThere, {ShownNames(names)}),
                               Msg::DoctorLeftoversRemedy));
}

} // namespace

std::vector<Finding> Examine(Session& session)
{
    std::vector<Finding> findings;
    findings.push_back(ProgramFolder(session.Folders()));
    findings.push_back(LevelEditor(session.Folders(), session.preferences));
    findings.push_back(Backup(session.Folders(), session.preferences));
    findings.push_back(ArchiveState(session));
    if (findings.back().fine)
        findings.push_back(Levels(session.Folders(), session.archive));
    FoldersOfNoLevel(session.Folders(), session.archive, findings);
    LibraryFindings(session.Folders(), session.archive, findings);
    CheckFindings(session.Folders(), session.archive, findings);
    findings.push_back(Interrupted(session.Folders(), session.archive, session.preferences));
    if (findings[1].fine)
        Game(session.Folders(), session.preferences, ToolsOf(session), findings);
    findings.push_back(Program(session.machine, OnDisk::DoctorToolOpen, Msg::DoctorToolOpenRemedy));
    findings.push_back(Keys());
    OutsideTools(ToolsOf(session), findings);
    Drives(session.machine, session.Folders(), session.archive, findings);
    DiscDriveFindings(session, findings);
    Leftovers(session.Folders(), findings);
    return findings;
}

} // namespace kestrova
