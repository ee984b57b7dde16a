#pragma once

#include "core/names.h"
#include "formats/swap_journal.h"

/// The note of a Level Editor's folder that is lent: a level's sources are put into it so that an
/// outside program can work on them, and it is to come back as it was. JSON; names are kept exactly
/// (bytes that are no UTF-8, and the per cent sign, as %XX).
namespace kestrova
{

enum class LoanPhase {
    Planned, ///< what stands in the way goes aside; nothing was put there yet
    Lent,    ///< all of it is aside; what stands at the places was put there
    Kept,    ///< what was made there stays; what is aside is no longer wanted
};

/// A place in the folder. What stood there lies aside under the number of the place in the list.
struct LentPlace {
    std::string name;            ///< `\data\city.tr4`, exact
    bool stood = false;          ///< something stood there
    bool put = false;            ///< a file is copied there; otherwise a program makes one
    std::uint64_t size = 0;      ///< of the copied file
    std::int64_t modifiedNs = 0; ///< of the copied file
};

/// Rights of which a note of an earlier version says nothing.
inline constexpr std::uint32_t noRights = 0xFFFF'FFFF;

/// A file of a folder that is handed over whole, as it stood at first.
struct StandingFile {
    Path name;
    std::uint64_t size = 0;
    std::int64_t modifiedNs = 0;
    std::int64_t changedNs = 0;
    std::uint64_t inode = 0;
    bool kept = false; ///< a copy lies aside under its number in the list; the backup lacks it
    std::uint32_t rights = noRights;
};
struct StandingFolder {
    Path name;
    std::uint32_t rights = noRights;
};
struct StandingLink {
    Path name;
    Path target; ///< as the link says it
};
/// All that stood in a folder; what else stands there later came meanwhile. Names are relative.
struct StandingTree {
    std::uint32_t rights = noRights;     ///< of the folder itself
    std::vector<StandingFolder> folders; ///< parents before their children
    std::vector<StandingFile> files;
    std::vector<StandingLink> links;
    /// What nobody looks into: pipes and devices, names that no listing shows, and folders that lie
    /// deeper than a path is long.
    std::vector<Path> others;
};

struct LoanNote {
    FolderMark folder;
    LoanPhase phase = LoanPhase::Planned;
    std::vector<LentPlace> places;
    std::vector<std::string> made;  ///< folders that the loan made, `\sound\samples`
    std::vector<std::string> swept; ///< whatever else matches goes: `\script\*.dat`
    /// A program has the whole folder; there are no places then.
    std::optional<StandingTree> whole{};
    /// What stands there beside the places while a program is at work; `others` names what it may
    /// write as well.
    std::optional<StandingTree> rest{};
};

std::string FormatLoanNote(const LoanNote& note);
/// `Damaged` for anything that this program did not write.
Result<LoanNote> ParseLoanNote(std::string_view text);

} // namespace kestrova
