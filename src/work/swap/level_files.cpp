#include "swap/level_files.h"

#include "archive/level_folders.h"
#include "core/copying.h"
#include "core/look.h"
#include "core/name_list.h"
#include "core/name_set.h"
#include "core/removal.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "history/swap_journal_file.h"
#include "session/telling.h"
#include "storage/ready_files.h"
#include "swap/placements.h"
#include "words/storage.h"
#include "words/swap.h"

#include <unordered_map>

namespace kestrova
{

namespace
{

bool TellNoSpace(Host& host, Machine& machine, const Folders& folders, double need)
{
    const auto free = machine.FreeSpace(folders.trle);
    const double bytes = free ? static_cast<double>(*free) : 0;
    host.Tell(Tone::Error, GetMsg(Msg::NoSpaceForLevel, {FormatSize(need), FormatSize(bytes)}));
    return false;
}

} // namespace

bool ReadyPlacements(Session& session, LevelCode code, const Path& staging,
                     std::vector<Placement>& placements)
{
    const auto home = LevelFolderOf(session.Folders(), session.archive, code);
    if (!home) {
        session.host.Tell(Tone::Error, home.Error().reason);
        return false;
    }
    const Path source = InFolder(*home, OnDisk::DirFiles);
    if (!FolderExists(source)) {
        session.host.Tell(Tone::Error, GetMsg(Msg::LevelFilesGone), TextOf(source));
        return false;
    }
    const auto progress =
        session.host.BeginProgress(ProgressWindow::Zip, GetMsg(Msg::DecompressingFiles));
    auto ready = ReadyLevelFiles(session, source, staging, true, progress.get());
    if (!ready) {
        if (ready.Error().code == ErrorCode::NoSpace) {
            double need = 0;
            if (const auto plan = PlanLevelFiles(source))
                for (const ReadyFile& file : *plan)
                    need += static_cast<double>(file.size);
            return TellNoSpace(session.host, session.machine, session.Folders(), need);
        }
        TellFailure(session.host, GetMsg(Msg::ErrorDecompressingFiles), ready.Error());
        return false;
    }
    std::vector<std::string> refused;
    placements = PlaceFiles(*ready, refused);
    if (!refused.empty())
        session.host.Tell(Tone::Warning, GetMsg(Msg::NamesLeftOut, {ShownNames(refused)}));

    // What the old level leaves makes room, but its own files come out one by one before.
    double need = 0;
    for (const Placement& placement : placements)
        if (!placement.file.moved)
            need += static_cast<double>(placement.file.size);
    double freed = 0;
    if (const auto owner = ReadOwner(session.Folders()); owner && *owner)
        for (const OwnedFile& file : (*owner)->added)
            freed += static_cast<double>(file.size);
    const auto free = session.machine.FreeSpace(session.TrleFolder());
    if (free && need > static_cast<double>(*free) + freed)
        return TellNoSpace(session.host, session.machine, session.Folders(), need);
    return true;
}

void MendAfterRestart(Session& session, LevelCode code)
{
    const auto found = ReadOwner(session.Folders()); // the next occasion may be able to
    const auto& owner = found ? *found : std::optional<OwnerRecord>{};
    if (!owner || owner->bootId == session.machine.BootId())
        return;
    WorkFolder staging{InFolder(session.TrleFolder(), OnDisk::DirReady)};
    std::vector<Placement> placements;
    if (!ReadyPlacements(session, code, staging.Folder(), placements))
        return;
    std::unordered_map<std::string, OwnedFile> listed; // by folded name
    for (const OwnedFile& file : owner->added)
        listed.emplace(FoldCase(file.name), file);
    NameSet again;
    std::vector<OwnedFile> standing;
    std::vector<std::string> mended;
    OwnerRecord record = *owner;
    for (const Placement& placement : placements) {
        const Path target = ResolvePath(session.TrleFolder() / placement.relative);
        const auto facts = LookAt(target);
        if (!facts) {
            TellFailure(session.host, GetMsg(Msg::SomeFilesNotCopied, {Readable(placement.target)}),
                        facts.Error());
            return;
        }
        const auto known = listed.find(FoldCase(placement.target));
        const bool ours = facts->kind == platform::FileKind::Missing || facts->size == 0 ||
                          (known != listed.end() && IsAsListed(known->second, *facts));
        if (!ours || SameContent(placement.file.path, target))
            continue;
        if (const auto status = CopyFileOver(placement.file.path, target); !status) {
            TellFailure(session.host, GetMsg(Msg::SomeFilesNotCopied, {Readable(placement.target)}),
                        status.Error());
            return;
        }
        mended.push_back(Readable(placement.target));
        again.Add(placement.target);
        standing.push_back(AsItStands(placement.target, target));
    }
    std::erase_if(record.added, [&](const OwnedFile& file) { return again.Has(file.name); });
    record.added.insert(record.added.end(), standing.begin(), standing.end());
    if (!mended.empty())
        session.host.Tell(Tone::Plain, GetMsg(Msg::MendedFiles, {ShownNames(mended)}));
    (void)WriteOwner(session.machine, session.Folders(),
                     std::move(record)); // otherwise the files are compared once more
}

} // namespace kestrova
