#include "editor/folder_comparison.h"

#include "core/text.h"
#include "session/telling.h"
#include "words/editor.h"

namespace kestrova
{

FolderComparison::FolderComparison(Host& host, Machine& machine, const Folders& folders)
    : host_(host), machine_(machine), folders_{Path{}, folders.trle}
{
    if (FolderExists(folders.Backup()))
        SetFolder(Side::Before, folders.Backup());
}

void FolderComparison::SetFolder(Side side, const Path& folder)
{
    Path& old = folders_[static_cast<std::size_t>(side)];
    if (old == folder)
        return;
    old = folder;
    Forget();
}

void FolderComparison::Forget()
{
    compared_ = false;
    files_.clear();
    folded_.clear();
    counts_.fill(0);
    FindRows();
}

bool FolderComparison::Choose(Side side)
{
    const auto chosen = host_.ChooseFolder(
        GetMsg(side == Side::Before ? Msg::CompareChooseBefore : Msg::CompareChooseAfter),
        Folder(side));
    if (!chosen || *chosen == Folder(side))
        return false;
    SetFolder(side, *chosen);
    return true;
}

bool FolderComparison::Compare()
{
    Forget();
    for (const Path& folder : folders_)
        if (folder.empty() || !FolderExists(folder)) {
            host_.Tell(Tone::Error, folder.empty() ? GetMsg(Msg::CompareNoFolder)
                                                   : GetMsg(Msg::CompareMissing, {TextOf(folder)}));
            return false;
        }
    const auto progress = host_.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::Comparing));
    progress->AllowStop();
    auto files = CompareFolders(Folder(Side::Before), Folder(Side::After), *progress);
    if (!files) {
        if (files.Error().code != ErrorCode::Stopped)
            TellFolderNotRead(host_, files.Error());
        return false;
    }
    files_ = std::move(*files);
    for (const ComparedFile& file : files_)
        ++counts_[static_cast<std::size_t>(file.state)];
    compared_ = true;
    FindRows();
    return true;
}

bool FolderComparison::Shows(FileState state) const
{
    return shown_[static_cast<std::size_t>(state)];
}

void FolderComparison::Show(FileState state, bool shown)
{
    shown_[static_cast<std::size_t>(state)] = shown;
    FindRows();
}

void FolderComparison::Search(const std::string& text)
{
    search_ = FoldCase(Trim(text));
    FindRows();
}

std::size_t FolderComparison::Count(FileState state) const
{
    return counts_[static_cast<std::size_t>(state)];
}

void FolderComparison::FindRows()
{
    rows_.clear();
    if (!search_.empty() && folded_.empty())
        for (const ComparedFile& file : files_)
            folded_.push_back(FoldCase(file.name.native()));
    for (std::size_t i = 0; i < files_.size(); ++i)
        if (Shows(files_[i].state) &&
            (search_.empty() || folded_[i].find(search_) != std::string::npos))
            rows_.push_back(i);
}

std::string FolderComparison::NameOf(FileState state)
{
    constexpr Message names[fileStates] = {Msg::CompareNew, Msg::CompareGone, Msg::CompareChanged,
                                           Msg::CompareEqual, Msg::CompareUnread};
    return GetMsg(names[static_cast<std::size_t>(state)]);
}

std::string FolderComparison::ListText() const
{
    std::string text;
    for (const std::size_t row : rows_)
        text += NameOf(files_[row].state) + "\t" + OnOneLine(Readable(files_[row].name.native())) +
                "\n";
    return text;
}

bool FolderComparison::Open(std::size_t row, Side side)
{
    const ComparedFile& file = At(row);
    const Path& place = side == Side::Before ? file.before : file.after;
    if (place.empty()) {
        host_.Tell(Tone::Plain, GetMsg(Msg::CompareNotThere, {TextOf(file.name)}));
        return false;
    }
    const auto opened = machine_.Open(place.native(), place.parent_path());
    if (!opened)
        TellFailure(host_, GetMsg(Msg::CompareNotOpened, {TextOf(place)}), opened.Error());
    return static_cast<bool>(opened);
}

} // namespace kestrova
