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
    if (auto known = KnowsStandingLevel(session); !known)
        return known;
    const auto marker = ReadWholeFile(session.MarkerPath());
    const Belongings belongings =
        BelongingsOf(ParseMarker(marker ? *marker : std::string{}), before);
    if (!before) { // from now on the record speaks alone
        SetOwner(session, record, StateOwner(session));
        record.added = belongings.added;
        record.overwritten = belongings.overwritten;
    }
    const auto sameFile = [&](const OwnedFile& owned) { return EqualNames(owned.name, entry); };
    const auto listed = std::find_if(belongings.added.begin(), belongings.added.end(), sameFile);
    const bool isLevels = listed != belongings.added.end();
    if (wasThere && !(isLevels && IsAsPut(*listed, platform::FactsOf(target))))
        if (auto status = KeepOriginal(session, *relative); !status)
            return status;

    // Noted before it changes: whatever ends the program in between, the next swap takes it out.
    const platform::FileFacts facts = platform::FactsOf(ResolvePath(file));
    const std::string name = isLevels ? listed->name : entry;
    std::erase_if(record.added, sameFile);
    record.added.push_back({name, facts.size, facts.modifiedNs});
    if (wasThere && !isLevels)
        record.overwritten.push_back(entry);
    if (auto status = WriteOwner(session, record); !status)
        return status;
    auto status = CopyFileOver(file, target, {Verify::Content, true, true, {}});
    if (!status) {
        if (before)
            (void)WriteOwner(session, *before); // without it the next swap does no harm either
        return status;
    }
    record.added.back() = AsItStands(name, target);
    (void)WriteOwner(session, record); // size and time are noted already
    return {};
}

} // namespace kestrova
