#include "app/library_findings.h"

#include "archive/library_notes.h"
#include "words/app.h"

namespace kestrova
{

void LibraryFindings(const Folders& folders, const Archive& archive, std::vector<Finding>& findings)
{
    LibraryNotes notes;
    notes.Follow(folders, archive);
    const std::string file = TextOf(LibraryFileOf(folders));
    const auto add = [&](std::string state, Message remedy) {
        findings.push_back({false, GetMsg(Msg::DoctorLibrary), std::move(state), GetMsg(remedy)});
    };
    if (notes.Trouble() && notes.Trouble()->code == ErrorCode::Damaged)
        add(GetMsg(Msg::DoctorLibraryDamaged, {file}), Msg::DoctorLibraryDamagedRemedy);
    else if (notes.Trouble())
        add(GetMsg(Msg::DoctorLibraryUnread, {file}), Msg::DoctorNotReadRemedy);
    else if (notes.DamagedEntries() > 0)
        add(GetMsg(Msg::DoctorLibraryEntries, {std::to_string(notes.DamagedEntries()), file}),
            Msg::DoctorLibraryEntriesRemedy);
}

} // namespace kestrova
