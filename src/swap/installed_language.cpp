#include "swap/installed_language.h"

#include "catalogue/message.h"
#include "swap/marker.h"
#include "swap/state_files.h"
#include "swap/swap_notes.h"
#include "swap/swap_run.h"

#include <algorithm>

namespace kestrova
{

Status PutInstalledLanguage(Session& session, const Path& file)
{
    const auto relative = SafeName(file.filename().native());
    if (!relative)
        return relative.Error();
    const std::string entry = GetMsg(Msg::FragRoot) + file.filename().native();
    const Path target = ResolvePath(session.TrleFolder() / *relative);
    const bool wasThere = FileExists(target);

    const auto before = OwnerThatCounts(session);
    OwnerRecord record = before.value_or(OwnerRecord{});
    if (!before)
        record.owner = CurrentLevelCode(session);
    const auto marker = ReadWholeFile(session.MarkerPath());
    const Belongings belongings =
        BelongingsOf(ParseMarker(marker ? *marker : std::string{}), before);
    const auto sameFile = [&](const OwnedFile& owned) { return EqualNames(owned.name, entry); };
    const auto listed = std::find_if(belongings.added.begin(), belongings.added.end(), sameFile);
    const bool isLevels = listed != belongings.added.end();
    if (wasThere && !(isLevels && IsAsListed(*listed, platform::FactsOf(target))))
        if (auto status = KeepOriginal(session, *relative); !status)
            return status;

    // Noted before it changes: whatever ends the program in between, the next swap takes it out.
    const platform::FileFacts facts = platform::FactsOf(ResolvePath(file));
    const OwnedFile owned{isLevels ? listed->name : entry, facts.size, facts.modifiedNs};
    std::erase_if(record.added, sameFile);
    record.added.push_back(owned);
    if (wasThere && !isLevels)
        record.overwritten.push_back(entry);
    if (auto status = WriteOwner(session, record); !status)
        return status;
    auto status = CopyFileOver(file, target, {Verify::Content, true, true, {}});
    if (!status && before)
        (void)WriteOwner(session, *before); // without it the next swap does no harm either
    return status;
}

} // namespace kestrova
