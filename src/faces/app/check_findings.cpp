#include "app/check_findings.h"

#include "archive/level_folders.h"
#include "archive/stored_notes.h"
#include "core/name_list.h"
#include "core/text.h"
#include "upkeep/last_check.h"
#include "words/check.h"

namespace kestrova
{

namespace
{

/// Levels whose note is something that no check can read, as one look at each tells.
std::vector<std::string> UnreadNotes(const Folders& folders, const Archive& archive)
{
    std::vector<std::string> codes;
    for (const LevelRecord& level : archive.levels) {
        const auto facts = platform::FactsOf(StoredNoteOf(LevelHomeOf(folders, level.levelCode)));
        const bool isFile =
            facts.kind == platform::FileKind::File && facts.size <= longestStoredNote;
        if (facts.kind != platform::FileKind::Missing && !isFile)
            codes.push_back(ZeroPadded(level.levelCode, 4));
    }
    return codes;
}

} // namespace

void CheckFindings(const Folders& folders, const Archive& archive, std::vector<Finding>& findings)
{
    std::vector<std::string> codes;
    for (const LevelCode code : HarmedAtLastCheck(folders, archive))
        codes.push_back(ZeroPadded(code, 4));
    if (!codes.empty())
        findings.push_back({false, GetMsg(Msg::DoctorChecked),
                            GetMsg(Msg::DoctorCheckedHarmed, {ShownNames(codes)}),
                            GetMsg(Msg::DoctorCheckedRemedy)});
    if (const auto unread = UnreadNotes(folders, archive); !unread.empty())
        findings.push_back({false, GetMsg(Msg::DoctorChecked),
                            GetMsg(Msg::DoctorNotesUnread, {ShownNames(unread)}),
                            GetMsg(Msg::DoctorNotesRemedy)});
}

} // namespace kestrova
