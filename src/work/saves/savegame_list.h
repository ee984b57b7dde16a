#pragma once

#include "saves/savegame_moves.h"

namespace kestrova
{

enum class ListPurpose { Import, Export, Mail };

/// A savegame in one line: number, title, date and time.
std::string SavegameRow(const Path& file);

/// The rules of the list from which savegames of the selected level are imported, exported or sent.
class SavegameList
{
public:
    SavegameList(const ArchiveParts& parts, ListPurpose purpose) : parts_(parts), purpose_(purpose)
    {
    }

    /// Lists the savegames of `folder` for an import, otherwise of the level. False, with a
    /// message, when no level is selected or there are none.
    bool Prepare(const Path& folder = {});

    [[nodiscard]] ListPurpose Purpose() const { return purpose_; }
    [[nodiscard]] std::string Title() const;
    [[nodiscard]] std::vector<std::string> Rows() const;
    [[nodiscard]] const std::vector<Path>& Files() const { return files_; }
    /// Only what is exported can be deleted where it was.
    [[nodiscard]] bool OffersDelete() const { return purpose_ == ListPurpose::Export; }

    /// Does it with the chosen rows. True when the list may close.
    bool Take(const std::vector<std::size_t>& rows, bool deleteExported = false);

    /// The same for all of them and for a folder that is known.
    bool Import(const std::vector<Path>& files);
    bool Export(const std::vector<Path>& files, const Path& folder, bool deleteExported);

private:
    bool Mail(const std::vector<Path>& files);

    ArchiveParts parts_;
    ListPurpose purpose_;
    LevelCode code_ = 0;
    std::vector<Path> files_;
};

/// What a move came to, for a person.
std::string WordsOfArchived(const SavegamesMoved& moved);
std::string WordsOfRestored(const SavegamesMoved& moved);

/// When the words of a move's box, that it is done, are said: also where there was nothing to do,
/// or only of work that was done.
enum class BoxWords { Always, OfWork };
/// The menu's two moves, and what they came to.
bool ArchiveWithWords(const ArchiveParts& parts, BoxWords words = BoxWords::Always);
bool RestoreWithWords(const ArchiveParts& parts, BoxWords words = BoxWords::Always);

} // namespace kestrova
