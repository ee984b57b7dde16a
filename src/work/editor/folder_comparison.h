#pragma once

#include "editor/compare_folders.h"
#include "session/folders.h"
#include "session/machine.h"

#include <array>

namespace kestrova
{

/// The two sides of a comparison.
enum class Side { Before, After };

/// Two folders while a person compares them: what `Dialog_CompareTrle` shows and does. Nothing is
/// changed anywhere.
class FolderComparison
{
public:
    /// Proposes the backup of the Level Editor's folder, and that folder.
    FolderComparison(Host& host, Machine& machine, const Folders& folders);

    [[nodiscard]] const Path& Folder(Side side) const
    {
        return folders_[static_cast<std::size_t>(side)];
    }
    /// What was compared before goes when it is another one.
    void SetFolder(Side side, const Path& folder);
    /// Lets the person choose a folder. True when there is another one.
    bool Choose(Side side);
    /// Compares both. False, in words, when it could not be done; then nothing is shown. A Stop
    /// needs none.
    bool Compare();
    [[nodiscard]] bool IsCompared() const { return compared_; }

    /// Whether the list shows files of a state; those that are equal are not, at first.
    [[nodiscard]] bool Shows(FileState state) const;
    void Show(FileState state, bool shown);
    /// Shows only names that hold this text, without regard to case; all for an empty one.
    void Search(const std::string& text);

    [[nodiscard]] const std::vector<ComparedFile>& Files() const { return files_; }
    /// How many files of a state there are.
    [[nodiscard]] std::size_t Count(FileState state) const;
    /// Places of the shown files.
    [[nodiscard]] const std::vector<std::size_t>& Rows() const { return rows_; }
    [[nodiscard]] const ComparedFile& At(std::size_t row) const { return files_[rows_[row]]; }

    /// What a list says of a state.
    static std::string NameOf(FileState state);
    /// The shown files as text, one a line, for the clipboard.
    [[nodiscard]] std::string ListText() const;
    /// Opens the file of a side with the desktop. False, in words, when it could not be done.
    bool Open(std::size_t row, Side side);

private:
    void Forget();
    void FindRows();

    Host& host_;
    Machine& machine_;
    std::array<Path, 2> folders_; ///< by their side
    bool compared_ = false;
    std::vector<ComparedFile> files_;
    std::vector<std::string> folded_; ///< names of the files; filled by the first search
    std::array<std::size_t, fileStates> counts_{};
    std::array<bool, fileStates> shown_{true, true, true, false, true};
    std::string search_; ///< folded
    std::vector<std::size_t> rows_;
};

} // namespace kestrova
