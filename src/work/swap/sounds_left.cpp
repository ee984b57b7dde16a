#include "swap/sounds_left.h"

#include "core/look.h"
#include "formats/program_folder.h"
#include "history/swap_journal_file.h"
#include "originals/vault.h"
#include "swap/owned_files.h"
#include "swap/placements.h"
#include "swap/swap_run.h"
#include "words/swap.h"

#include <algorithm>
#include <set>

namespace kestrova
{

SoundsLeft::SoundsLeft(const SwapParts& parts)
    : parts_(parts), trle_(ResolvePath(parts.folders.trle))
{
}

Status SoundsLeft::Find()
{
    auto owner = ReadOwner(parts_.folders);
    if (!owner)
        return owner.Error();
    owner_ = owner->value_or(OwnerRecord{});
    for (const OwnedFile& file : owner_.added) {
        const auto relative = SafeRelative(file.name);
        if (!relative)
            continue;
        const Path place = ResolvePath(trle_ / *relative);
        const auto facts = LookAt(place);
        if (!facts)
            return facts.Error();
        if (IsAsListed(file, *facts) && !SameContent(place, parts_.folders.Backup() / *relative))
            files_.push_back({file, *relative, place});
    }
    for (std::size_t i = 0; i < files_.size(); ++i)
        byPlace_.emplace(FoldCase(files_[i].place.native()), i);
    return {};
}

Path SoundsLeft::OriginalOf(const Path& file) const
{
    const auto left =
        byPlace_.empty() ? byPlace_.end() : byPlace_.find(FoldCase(ResolvePath(file).native()));
    if (left == byPlace_.end())
        return file;
    const Path vault = ResolvePath(InFolder(parts_.folders.program, OnDisk::DirHistoryOriginals) /
                                   files_[left->second].relative);
    return IsFile(vault).ValueOr(true) ? vault : Path{};
}

void SoundsLeft::Settle()
{
    if (files_.empty())
        return;
    std::set<std::string> settled;
    std::vector<std::string> names;
    for (const Left& left : files_) {
        names.push_back(Readable(left.listed.name));
        const auto original = IsFile(parts_.folders.Backup() / left.relative);
        const auto facts = LookAt(left.place);
        auto status = original ? Status{} : original.Error();
        const Path going =
            original && *original ? PlaceOfOriginal(parts_.folders, left.relative) : left.relative;
        const bool asPut =
            facts && IsAsPut(left.listed, *facts) && ResolvePath(trle_ / going) == left.place;
        if (status && !asPut) // touched since, or a twin of it
            status = KeepOriginal(parts_.machine, parts_.folders, going);
        if (status)
            status = *original ? RestoreOriginal(parts_.folders, left.relative)
                               : DeleteSpelled(left.place);
        if (status)
            settled.insert(left.listed.name);
    }
    std::erase_if(owner_.added, [&](const OwnedFile& file) { return settled.contains(file.name); });
    (void)WriteOwner(parts_.machine, parts_.folders,
                     owner_); // otherwise they are looked at once more
    parts_.host.Tell(Tone::Plain, GetMsg(Msg::BackupLeftSounds, {Join(names, ", ")}));
}

} // namespace kestrova
