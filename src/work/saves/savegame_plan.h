#pragma once

#include "formats/change_note.h"
#include "formats/savegame_info.h"

#include <map>
#include <set>

namespace kestrova
{

/// The extension of a savegame's name as a number: its leading digits; 0 without any.
std::int32_t SlotNumberOf(const Path& file);
/// Names of the note and of the pictures that go with the savegame of that number.
std::vector<std::string> CompanionsOf(std::int32_t slot);
/// The name of the savegame in one of the game's slots.
std::string SlotName(std::size_t slot);
/// The newest of the savegames with these numbers; the first of all when no number is above 0.
std::string NewestOf(const std::vector<std::string>& names,
                     const std::vector<std::int32_t>& numbers);
/// Indices of the values in order, as an exchange sort leaves them: equal ones not always as they
/// were.
std::vector<std::size_t> SortIndex(const std::vector<std::int32_t>& values, bool descending);

/// Folders of savegames as they will be: moves are made here first, and nothing on the disk. What
/// they come to is one change that can be made and, where it was cut short, finished.
class SavegamePlan
{
public:
    using Folder = std::size_t;

    /// A folder as it stands on the disk; a failure when it cannot be listed.
    Result<Folder> AddFolder(const Path& folder);
    /// A folder that does not exist yet and is made by the change.
    Folder AddNew(const Path& folder);
    /// A folder that only the plan has, empty.
    Folder AddPassing();

    /// Names of the savegames, in listing order.
    [[nodiscard]] std::vector<std::string> Savegames(Folder folder) const;
    [[nodiscard]] bool Has(Folder folder, const std::string& name) const;
    /// 0 for a savegame that cannot be read; `Changes` fails then.
    [[nodiscard]] std::int32_t NumberOf(Folder folder, const std::string& name);
    [[nodiscard]] std::vector<std::int32_t> NumbersOf(Folder folder,
                                                      const std::vector<std::string>& names);

    /// Copies a savegame over `target` with its note and pictures, whose numbers follow; with
    /// `deleteSource` they are gone where they were.
    void MoveSavegame(Folder from, const std::string& name, Folder to, const std::string& target,
                      bool deleteSource);
    /// With its note and pictures.
    void DeleteSavegame(Folder folder, const std::string& name);

    /// What is different from the disk, each content that comes with the file that holds it now. A
    /// failure names the file that cannot be read.
    [[nodiscard]] Result<std::vector<ChangedFolder>> Changes() const;

    /// Hashes of what the folder holds under the same name before and after. What cannot be read is
    /// passed over.
    [[nodiscard]] std::set<std::string> Staying(Folder folder) const;

private:
    struct Entry {
        std::string name;
        Path source; ///< where its bytes lie now
    };
    using Entries = std::map<std::string, Entry>; ///< by folded name

    struct Place {
        Path folder; ///< empty for a passing one
        bool made = false;
        Entries before;
        Entries after;
    };
    void Copy(Folder from, const std::string& name, Folder to, const std::string& target,
              bool deleteSource);

    std::vector<Place> places_;
    std::optional<Failure> unread_; ///< what nobody could plan with
};

} // namespace kestrova
