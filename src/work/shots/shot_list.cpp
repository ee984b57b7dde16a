#include "shots/shot_list.h"

#include "archive/level_folders.h"
#include "core/file_kinds.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "shots/file_names.h"
#include "words/message.h"

namespace kestrova
{

Status ShotList::Load(const Folders& folders, LevelCode code)
{
    code_ = code;
    const Path folder = InFolder(LevelHomeOf(folders, code), OnDisk::DirScreenshots);
    Status status;
    files_.clear();
    for (const std::string_view pattern : {OnDisk::PatBmp, OnDisk::PatShotJpg}) {
        auto files = ListFiles(folder, pattern);
        if (files)
            files_.insert(files_.end(), files->begin(), files->end());
        else
            status = files.Error();
    }
    default_ = InFolder(LevelHomeOf(folders, originalCode), OnDisk::FragDefaultScreenshot);
    index_ = -2;
    ShowPair(0);
    return status;
}

const Path& ShotList::At(std::ptrdiff_t index) const
{
    return Has(index) ? files_[static_cast<std::size_t>(index)] : default_;
}

std::ptrdiff_t ShotList::Find(std::string_view name) const
{
    std::ptrdiff_t found = -1;
    for (std::ptrdiff_t i = 0; i < Count(); ++i) {
        const std::string other = At(i).filename().native();
        if (other == name)
            return i;
        if (found < 0 && EqualNames(other, name))
            found = i;
    }
    return found;
}

void ShotList::ShowPair(std::ptrdiff_t index)
{
    if (index < Count())
        index_ = index;
    left_ = At(index);
    right_ = At(index + 1);
}

bool ShotList::Previous()
{
    if (!HasPrevious())
        return false;
    ShowPair(index_ - 2);
    return true;
}

bool ShotList::Next()
{
    if (!HasNext())
        return false;
    ShowPair(index_ + 2);
    return true;
}

} // namespace kestrova
