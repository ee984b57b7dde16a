#pragma once

#include "formats/swap_journal.h"

/// The note of an import into the Level Editor's folder and into the backup of its originals: what
/// stood at each place before, and what stands there since. While the import goes on it lies in the
/// program's folder, so that a killed one is taken back; afterwards the same note is the entry by
/// which the whole import can be undone. JSON; names are kept exactly (bytes that are no UTF-8, and
/// the per cent sign, as %XX).
namespace kestrova
{

enum class ImportPhase {
    Underway, ///< places may have changed
    Done,     ///< all of it stands
    Undoing,  ///< it is being taken back
};

/// Whether an import stands, or was undone and can be done again.
enum class UndoState { Done, Undone };

/// Numbers of imports are below it.
inline constexpr std::int32_t importIdLimit = 1'000'000'000;

/// The two trees that an import writes into.
enum class ImportTree { LevelEditor, Backup };

struct ImportPlace {
    ImportTree tree = ImportTree::LevelEditor;
    std::string name;   ///< `\graphics\wads\city.wad`, exact
    std::string was{};  ///< hash of what stood there; empty: nothing did
    std::string came{}; ///< of what the import puts there; empty: nobody knows yet, or nothing
    bool operator==(const ImportPlace&) const = default;
};

/// A folder, or a pattern of files, of one of the trees.
struct ImportName {
    ImportTree tree = ImportTree::LevelEditor;
    std::string name;
    bool operator==(const ImportName&) const = default;
};

struct ImportNote {
    FolderMark folder; ///< the Level Editor's
    FolderMark backup; ///< of its originals
    ImportPhase phase = ImportPhase::Underway;
    std::int32_t id = 0; ///< larger is newer
    std::int64_t madeNs = 0;
    std::string subject; ///< what was imported, for who reads the entry
    /// The import was undone: what came are the files from before, and what was there its own.
    bool isUndone = false;
    std::int32_t undoes = 0; ///< the entry that it undoes, or does again; 0: none
    std::int32_t next = 0;   ///< while it is undone: number of the entry that leads back
    std::vector<ImportPlace> places;
    std::vector<ImportName> made;  ///< folders that the import makes, those above first
    std::vector<ImportName> swept; ///< whatever else matches came with the import: `\script\*.dat`
};

std::string FormatImportNote(const ImportNote& note);
/// `Damaged` for anything that this program did not write, and for a name that leads out of a tree.
Result<ImportNote> ParseImportNote(std::string_view text);

} // namespace kestrova
