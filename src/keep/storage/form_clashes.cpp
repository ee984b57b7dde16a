#include "storage/form_clashes.h"

#include "core/name_list.h"
#include "core/text.h"
#include "storage/zl_file.h"
#include "words/storage.h"

namespace kestrova
{

void NamesInUse::Add(const std::string& name)
{
    ++uses_[FoldCase(name)];
}

int NamesInUse::Uses(const std::string& name) const
{
    const auto found = uses_.find(FoldCase(name));
    return found == uses_.end() ? 0 : found->second;
}

bool StreamHolds(const Path& stream, const Path& plain)
{
    const auto bytes = ReadWholeFile(plain, maxZlContent);
    if (!bytes)
        return false;
    const auto expanded = ZlExpander::OfThisThread().ExpandFile(stream, bytes->size());
    return expanded && *expanded == *bytes;
}

void TellKeptForms(Host& host, const std::vector<std::string>& names)
{
    if (!names.empty())
        host.Tell(Tone::Warning, GetMsg(Msg::FormsKept, {ShownNames(names)}));
}

} // namespace kestrova
