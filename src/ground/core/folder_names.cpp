#include "core/folder_names.h"

#include "core/file_kinds.h"
#include "core/text.h"

namespace kestrova
{

FolderNames::FolderNames(const Path& folder) : folder_(ResolvePath(folder))
{
    std::vector<platform::FolderEntry> entries;
    const auto failure = platform::ListFolder(folder_, entries);
    if (failure && failure != std::errc::no_such_file_or_directory)
        state_ = MakeFailure(ErrorCode::CannotRead, TextOf(folder_), failure);
    for (const platform::FolderEntry& entry : entries)
        Add(entry.name);
}

Path FolderNames::PathOf(const std::string& name) const
{
    if (exact_.contains(name))
        return folder_ / name; // of two spellings the exact one counts
    const auto known = names_.find(FoldCase(name));
    return folder_ / (known == names_.end() ? name : known->second);
}

bool FolderNames::Has(const std::string& name) const
{
    return names_.contains(FoldCase(name));
}

void FolderNames::Add(const std::string& name)
{
    names_.emplace(FoldCase(name), name);
    exact_.insert(name);
}

void FolderNames::Remove(const std::string& name)
{
    names_.erase(FoldCase(name));
    exact_.erase(name);
}

std::string FolderNames::FreeName(const std::string& name)
{
    const Path file = name;
    const bool isData = EqualNames(file.extension().native(), OnDisk::EndingDat);
    const std::string head = isData ? name : file.stem().native();
    const std::string tail = isData ? std::string{} : file.extension().native();
    int& number = numbers_.try_emplace(FoldCase(name), 1).first->second;
    std::string free;
    do
        free = head + "_" + std::to_string(++number) + tail;
    while (Has(free));
    return free;
}

} // namespace kestrova
