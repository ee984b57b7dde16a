#include "swap/installed_language.h"

#include "core/copying.h"
#include "core/look.h"
#include "formats/marker.h"
#include "history/standing.h"
#include "history/swap_journal_file.h"
#include "originals/vault.h"
#include "swap/file_names.h"
#include "swap/placements.h"

#include <algorithm>

namespace kestrova
{

Status PutInstalledLanguage(Machine& machine, const Folders& folders, const Archive& archive,
                            const Path& file)
{
    const auto relative = SafeName(file.filename().native());
    if (!relative)
        return relative.Error();
    const std::string entry = std::string{OnDisk::FragRoot} + file.filename().native();
    const Path target = ResolvePath(folders.trle / *relative);
    const auto now = LookAt(target);
    if (!now)
        return now.Error();
    const bool wasThere = now->kind == platform::FileKind::File;
    const auto standing = LookAtStanding(folders, archive);
    if (!standing)
        return standing.Error();
    const auto marker = ReadFileIfThere(folders.Marker());
    if (!marker)
        return marker.Error();
    const auto& before = standing->owner;
    OwnerRecord record = before.value_or(OwnerRecord{});
    const Belongings belongings =
        BelongingsOf(ParseMarker(marker->value_or(std::string{})), before);
    if (!before) { // from now on the record speaks alone
        SetOwner(folders, archive, record, standing->state);
        record.added = belongings.added;
        record.overwritten = belongings.overwritten;
    }
    const auto sameFile = [&](const OwnedFile& owned) { return EqualNames(owned.name, entry); };
    const auto listed = std::find_if(belongings.added.begin(), belongings.added.end(), sameFile);
    const bool isLevels = listed != belongings.added.end();
    if (wasThere && !(isLevels && IsAsPut(*listed, *now)))
        if (auto status = KeepOriginal(machine, folders, *relative); !status)
            return status;

    // Noted before it changes: whatever ends the program in between, the next swap takes it out.
    const auto facts = LookAt(file);
    if (!facts)
        return facts.Error();
    const std::string name = isLevels ? listed->name : entry;
    std::erase_if(record.added, sameFile);
    record.added.push_back({name, facts->size, facts->modifiedNs});
    if (wasThere && !isLevels)
        record.overwritten.push_back(entry);
    if (auto status = WriteOwner(machine, folders, record); !status)
        return status;
    auto status = CopyFileOver(file, target, {Verify::Content, true, true, {}});
    if (!status) {
        if (before)
            (void)WriteOwner(machine, folders,
                             *before); // without it the next swap does no harm either
        return status;
    }
    record.added.back() = AsItStands(name, target);
    (void)WriteOwner(machine, folders, record); // size and time are noted already
    return {};
}

} // namespace kestrova
