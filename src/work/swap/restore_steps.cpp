#include "swap/restore_steps.h"

#include "core/file_kinds.h"
#include "core/look.h"
#include "core/name_list.h"
#include "core/name_set.h"
#include "formats/trle_folder.h"
#include "history/swap_journal_file.h"
#include "originals/vault.h"
#include "swap/file_names.h"
#include "swap/homeless_state.h"
#include "swap/live_state.h"
#include "swap/owned_files.h"
#include "swap/placements.h"
#include "words/restore.h"

namespace kestrova
{

namespace
{

struct Critical {
    std::string_view folder;
    std::string_view pattern;
};
constexpr Critical criticalFiles[] = {{OnDisk::FragRoot, OnDisk::PatDat},
                                      {OnDisk::FragRoot, OnDisk::PatH},
                                      {OnDisk::DirData, OnDisk::PatTr4},
                                      {OnDisk::DirData, OnDisk::PatPak}};

void Show(ProgressScope* progress, Message label)
{
    if (progress == nullptr)
        return;
    progress->SetLabel(GetMsg(label));
    progress->Step();
}

void NoteReason(RestoreReport& report, const Failure& failure)
{
    if (report.reason.empty())
        report.reason = failure.reason;
}

void Note(RestoreReport& report, std::vector<std::string>& list, const Path& relative,
          const Failure& failure)
{
    std::string name = ToBackslashes(relative);
    for (const std::string& known : list)
        if (EqualNames(known, name))
            return;
    list.push_back(std::move(name));
    NoteReason(report, failure);
}

/// Keeps a file that is about to go; the report names what was newly kept.
Status KeepNoting(Machine& machine, const Folders& folders, const Path& relative,
                  RestoreReport& report)
{
    Keeping keeping = KeepOriginals(machine, folders, {relative});
    for (const Path& kept : keeping.kept)
        report.kept.push_back(Readable(ToBackslashes(kept)));
    return keeping.failed.empty() ? Status{} : Status{std::move(keeping.failure)};
}

/// One original back in its place. What stood there and is not the original is kept first.
void BringBack(Machine& machine, const Folders& folders, const Path& relative,
               RestoreReport& report)
{
    const Path source = ResolvePath(folders.Backup() / relative);
    const Path place = PlaceOfOriginal(folders, relative);
    const Path target = ResolvePath(folders.trle / place);
    if (SameContent(source, target)) {
        if (target.filename() != source.filename()) // the backup's spelling is the original one
            (void)platform::Rename(target, target.parent_path() / source.filename());
        return;
    }
    if (const auto kept = KeepNoting(machine, folders, place, report); !kept)
        Note(report, report.left, relative, kept.Error());
    else if (const auto back = RestoreOriginal(folders, relative); !back)
        Note(report, report.missing, relative, back.Error());
}

/// What stands in the Level Editor's folder and no original may stand beside.
Result<std::vector<Path>> CriticalFiles(const Path& trle)
{
    std::vector<Path> critical;
    for (const Critical& kind : criticalFiles) {
        const auto files = ListFiles(InFolder(trle, kind.folder), kind.pattern);
        if (!files)
            return files.Error();
        critical.insert(critical.end(), files->begin(), files->end());
    }
    return critical;
}

Status DeleteCritical(Machine& machine, const Folders& folders, RestoreReport& report)
{
    const Path trle = ResolvePath(folders.trle);
    const auto files = CriticalFiles(trle);
    if (!files)
        return files.Error();
    for (const Path& file : *files) {
        const Path relative = file.lexically_relative(trle).lexically_normal();
        if (SameContent(file, folders.Backup() / relative))
            continue; // deleted and copied back it would be the same
        auto status = KeepNoting(machine, folders, relative, report);
        if (status)
            status = DeleteSpelled(file);
        if (!status)
            Note(report, report.left, relative, status.Error());
    }
    return {};
}

Path Relative(std::string_view fragment)
{
    return InFolder({}, fragment).relative_path();
}

/// What the level replaced in other folders than the critical ones (its sounds).
void RestoreListed(Machine& machine, const Folders& folders, const SwapJournal& journal,
                   RestoreReport& report)
{
    std::vector<std::string> names = journal.restore;
    for (const OwnedFile& file : journal.remove)
        names.push_back(file.name);
    for (const std::string& name : names) {
        const auto relative = SafeRelative(name);
        if (relative && IsFile(folders.Backup() / *relative).ValueOr(true) &&
            !IsPlayersPlace(*relative))
            BringBack(machine, folders, *relative, report);
    }
}

} // namespace

std::vector<OwnedFile> DeleteListed(const PreferencesRecord& preferences, const Folders& folders,
                                    const std::vector<OwnedFile>& files, RestoreReport& report)
{
    std::vector<OwnedFile> left;
    for (const OwnedFile& file : files) {
        const auto found = FindListed(folders, file);
        if (!found) { // it stays noted
            Note(report, report.left, *SafeRelative(file.name), found.Error());
            left.push_back(file);
            continue;
        }
        if (!*found)
            continue;
        if (StaysWithCompactBackup(preferences, file.name)) {
            left.push_back(file);
            continue;
        }
        // Only a file that is as it was put there goes like this; others are kept where they are
        // about to be replaced.
        const auto& [relative, place, facts] = **found;
        if (!IsAsPut(file, facts) || SameContent(place, folders.Backup() / relative))
            continue;
        if (const auto status = DeleteSpelled(place); !status) {
            Note(report, report.left, relative, status.Error());
            left.push_back(file);
        }
    }
    return left;
}

Status RestoreFolder(Machine& machine, const Folders& folders, const Path& folder,
                     RestoreReport& report, ProgressScope* progress)
{
    const auto listed = ListFiles(folders.Backup() / folder, OnDisk::PatAll);
    if (!listed)
        return listed.Error();
    const std::vector<Path>& files = *listed;
    for (std::size_t i = 0; i < files.size(); ++i) {
        // A savegame of the time of the backup is no original: what the player has now stays.
        if (!IsPlayersPlace(folder / files[i].filename()))
            BringBack(machine, folders, folder / files[i].filename(), report);
        if (progress != nullptr) {
            progress->SetBar(i + 1, files.size());
            progress->Step();
        }
    }
    return {};
}

Status FinishRestore(const SwapParts& parts, const Folders& folders, const SwapJournal& journal,
                     RestoreReport& report, ProgressScope* progress)
{
    Show(progress, Msg::RestoreRemovingCritical);
    const Path places[] = {Path{}, Relative(OnDisk::DirData)};
    // Nothing goes while nobody can tell what comes back.
    for (const Path& folder : places)
        if (const auto files = ListFiles(folders.Backup() / folder, OnDisk::PatAll); !files)
            return files.Error();
    OwnerRecord owner;
    // First of all, since it makes room for what comes back.
    owner.added = DeleteListed(parts.preferences, folders, journal.remove, report);
    if (auto status = DeleteCritical(parts.machine, folders, report); !status)
        return status;
    if (auto status = DeleteFile(folders.Marker()); !status)
        return status;
    Show(progress, Msg::RestoreCopyingOriginal);
    for (const Path& folder : places)
        if (auto status = RestoreFolder(parts.machine, folders, folder, report, progress); !status)
            return status;
    RestoreListed(parts.machine, folders, journal, report);
    if (journal.from >= 0)
        SetOwner(folders, parts.archive, owner,
                 LevelPlace{journal.from, Path{journal.fromStore}.parent_path()});
    owner.overwritten = report.missing;
    owner.strangers = StrangersThere(folders, journal.strangers).ValueOr(journal.strangers);
    if (auto status = WriteOwner(parts.machine, folders, std::move(owner)); !status)
        return status;
    if (auto status = DropJournal(folders); !status)
        return status;
    HomelessLeft left = ReturnHomelessState(parts, folders);
    report.state = std::move(left.names);
    if (left.failure)
        NoteReason(report, *left.failure);
    return {};
}

void TellKept(Host& host, const RestoreReport& report)
{
    if (!report.kept.empty())
        host.Tell(Tone::Warning, GetMsg(Msg::FilesKept, {ShownNames(report.kept)}));
}

void TellIncompleteRestore(Host& host, const RestoreReport& report,
                           const std::vector<std::string>& told)
{
    if (report.Whole())
        return;
    std::string text = GetMsg(Msg::RestoreIncomplete);
    NameSet named;
    for (const std::string& name : told)
        named.Add(name);
    std::vector<std::string> missing = report.missing;
    std::erase_if(missing, [&](const std::string& name) { return named.Has(name); });
    if (!missing.empty())
        text += std::string{lineBreak} + GetMsg(Msg::RestoreStillMissing, {ShownNames(missing)});
    if (!report.left.empty())
        text += std::string{lineBreak} + GetMsg(Msg::RestoreLeft, {ShownNames(report.left)});
    if (!report.state.empty())
        text += std::string{lineBreak} + GetMsg(Msg::RestoreStateLeft, {ShownNames(report.state)});
    host.Tell(Tone::Error, text, report.reason);
}

} // namespace kestrova
