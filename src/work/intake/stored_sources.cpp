#include "intake/stored_sources.h"

#include "core/file_kinds.h"
#include "core/folder_names.h"
#include "core/size_words.h"
#include "core/staged_file.h"
#include "storage/zl_file.h"
#include "words/levels.h"
#include "words/packages.h"
#include "words/sources.h"

#include <algorithm>
#include <limits>
#include <map>

namespace kestrova
{

namespace
{

std::string SizeShown(std::uint64_t bytes)
{
    return SizeInWords(static_cast<double>(bytes));
}

/// The words for a stream that is not taken; any other failure stays what it is.
Failure NotExpanded(const Failure& failure, const Path& stored, const ExpandLimit& limit,
                    bool beyondLimit)
{
    const std::string source = TextOf(limit.source.filename());
    const std::string details = failure.subject + ": " + failure.reason;
    const auto said = [&](std::string sentence) {
        return Failure{failure.code, TextOf(stored), details, {}, std::move(sentence)};
    };
    if (failure.code == ErrorCode::Damaged)
        return said(GetMsg(Msg::StoredFormDamaged, {TextOf(stored.filename()), source}));
    if (failure.code == ErrorCode::NoSpace && beyondLimit)
        return said(GetMsg(Msg::UnpackTooBig,
                           {source, SizeShown(FileSize(limit.source)), SizeShown(limit.most)}));
    if (failure.code == ErrorCode::NoSpace)
        return said(GetMsg(Msg::StoredFormNoRoom, {TextOf(stored.filename()), source}));
    return failure;
}

} // namespace

bool IsStoredForm(const Path& file)
{
    return EndsWithName(file.filename().native(), OnDisk::ZlExtension);
}

std::uint64_t MostBytesOf(std::uint64_t sourceSize, const UnpackLimits& limits)
{
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    const bool fits = limits.mostTimes == 0 || sourceSize <= most / limits.mostTimes;
    return std::max(limits.alwaysAllowed, fits ? sourceSize * limits.mostTimes : most);
}

Status ExpandStored(Machine& machine, const Path& stored, const Path& target, ExpandLimit& limit,
                    ProgressScope& progress)
{
    const auto free = machine.FreeSpace(target.parent_path());
    if (!free)
        return free.Error();
    const std::uint64_t keepFree = UnpackLimits{}.keepFree;
    const std::uint64_t room = *free > keepFree ? *free - keepFree : 0;
    StagedFile staged{target};
    if (auto status = staged.Open(); !status)
        return status;
    std::uint64_t made = 0;
    const auto write = [&](std::string_view piece) {
        made += piece.size();
        return progress.Step() ? staged.Write(piece) : Status{MakeFailure(ErrorCode::Stopped, {})};
    };
    if (const auto status = StreamZl(stored, std::min(limit.most, room), write); !status)
        return NotExpanded(status.Error(), stored, limit, limit.most <= room);
    limit.most -= std::min(limit.most, made);
    // Some disks keep no times; the bytes are what counts.
    (void)platform::SetModified(staged.StagedPath(), platform::FactsOf(stored).modifiedNs);
    return staged.Commit(false);
}

Status ExpandStoredFiles(Machine& machine, std::vector<Path>& files, ExpandLimit limit,
                         ProgressScope& progress, SourceReport& report)
{
    std::map<Path, FolderNames> folders;
    const std::uint64_t most = limit.most;
    for (Path& file : files)
        while (IsStoredForm(file)) {
            const Path folder = file.parent_path();
            FolderNames& names = folders.try_emplace(folder, folder).first->second;
            if (!names.State())
                return names.State();
            const std::string stored = file.filename().native();
            std::string name = StripExtension(stored);
            if (names.Has(name)) {
                name = names.FreeName(name);
                report.renamed.push_back(GetMsg(Msg::RenamedPair, {stored, name}));
            }
            const Path target = folder / name;
            if (auto status = ExpandStored(machine, file, target, limit, progress); !status)
                return status;
            if (const auto failure = platform::Unlink(file))
                return MakeFailure(ErrorCode::CannotDelete, TextOf(file), failure);
            names.Remove(stored);
            names.Add(name);
            file = target;
        }
    report.came.bytes += most - limit.most;
    return {};
}

} // namespace kestrova
