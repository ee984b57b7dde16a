#pragma once

#include "originals/import_return.h"

#include <map>
#include <set>

namespace kestrova
{

/// What an import does to the Level Editor's folder and to the backup of its originals. Before a
/// place changes it is noted, and what stands there is in the vault and beside the note, all of it
/// flushed; so the whole import can be taken back: by this run, after a kill at the next start, and
/// by the person once it is done. An import that is neither ended nor taken back is taken back at
/// the end of this object's life. One at a time.
class ImportedFiles
{
public:
    /// `subject`: what is imported, for a person.
    ImportedFiles(Machine& machine, Folders folders, std::string subject);
    ~ImportedFiles();
    ImportedFiles(const ImportedFiles&) = delete;
    ImportedFiles& operator=(const ImportedFiles&) = delete;

    /// Must be called, and be done, before anything changes at these places, or comes that matches
    /// one of the `swept` patterns. Of the places only tree, name and what comes count. What stands
    /// at one and cannot be kept must stay there: `MayChange` says so.
    Status Watch(const std::vector<ImportPlace>& places, const std::vector<ImportName>& swept = {},
                 const Heartbeat& beat = {});
    /// Makes a folder with those above it; goes when the import is taken back and nothing else is
    /// in it.
    Status MakeFolderOf(ImportTree tree, std::string_view name);
    /// True for a watched place, in whatever spelling, whose file may be replaced.
    [[nodiscard]] bool MayChange(ImportTree tree, std::string_view name) const;
    /// What stood at a watched place stands there again.
    Status PutBack(ImportTree tree, std::string_view name) const;

    /// All stands; the note becomes an entry that can be undone. An import that changed nothing
    /// leaves none.
    Status End(const Heartbeat& alive = {});
    /// Both trees as they were.
    Status TakeBack(const Heartbeat& alive = {});
    [[nodiscard]] bool IsOpen() const { return open_; }

private:
    struct Found {
        ImportPlace place;
        Path relative;
        bool mustBeKept = false; ///< an outside program may replace it
    };
    struct FoundPlaces {
        std::vector<Found> all;
        std::set<std::pair<ImportTree, std::string>> names;
    };
    Status Open();
    Status KeepAndNote(const std::vector<ImportPlace>& places, const std::vector<ImportName>& swept,
                       const Heartbeat& beat);
    void LookAtPlace(const ImportPlace& wish, FoundPlaces& found);
    Status LookAtSwept(const ImportName& name, FoundPlaces& found);
    Status AddFound(ImportTree tree, const Path& file, const std::string& came, FoundPlaces& found);
    Status KeepFound(std::vector<Found>& found, ImportTree tree, const Heartbeat& beat);
    Status WriteNote();
    Status LookAtWhatCame(const Heartbeat& alive);

    Machine& machine_;
    Folders folders_;
    ImportNote note_;
    std::map<std::pair<ImportTree, std::string>, std::size_t> numbers_; ///< by exact name
    std::set<std::pair<ImportTree, std::string>> free_; ///< folded names that may change
    bool open_ = false;
};

} // namespace kestrova
