#include "intake/folder_state.h"

#include "core/text.h"

#include <algorithm>

namespace kestrova
{

void FolderState::Note(const Path& file)
{
    const platform::FileFacts facts = platform::FactsOf(file);
    files_[FoldCase(file.filename().native())] = {facts.size, facts.modifiedNs};
}

bool FolderState::Knows(const Path& file) const
{
    return files_.contains(FoldCase(file.filename().native()));
}

bool FolderState::IsUnchanged(const Path& file) const
{
    const auto known = files_.find(FoldCase(file.filename().native()));
    if (known == files_.end())
        return false;
    const platform::FileFacts facts = platform::FactsOf(file);
    return known->second.size == facts.size && known->second.modifiedNs == facts.modifiedNs;
}

bool FolderState::AreTheSame(const std::vector<Path>& files) const
{
    return files.size() == files_.size() &&
           std::all_of(files.begin(), files.end(),
                       [&](const Path& file) { return IsUnchanged(file); });
}

} // namespace kestrova
