#include "core/names.h"

#include "core/text.h"

#include <algorithm>

namespace kestrova
{

std::string FileNameOf(std::string_view path)
{
    return std::string{path.substr(path.find_last_of("\\/:") + 1)};
}

std::string ExtensionOf(std::string_view name)
{
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string{} : std::string{name.substr(dot)};
}

std::string StripExtension(std::string_view name)
{
    return std::string{name.substr(0, name.rfind('.'))};
}

std::string BaseNameOf(std::string_view path)
{
    return StripExtension(FileNameOf(path));
}

bool HasWildcard(std::string_view name)
{
    return name.find_first_of("*?") != std::string_view::npos;
}

std::string ReplaceForbiddenChars(std::string_view name)
{
    std::string result{name};
    for (char& c : result)
        if (std::string_view{"/\\<>:?|\""}.find(c) != std::string_view::npos)
            c = ' ';
    return result;
}

std::string ListableName(std::string_view name)
{
    std::string result = Readable(name);
    std::replace_if(
        result.begin(), result.end(), [](char c) { return IsControl(c) || c == '|'; }, '_');
    return result;
}

namespace
{

bool Matches(std::string_view name, std::string_view pattern)
{
    std::size_t n = 0;
    std::size_t p = 0;
    std::size_t star = std::string_view::npos;
    std::size_t resume = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            resume = n;
        } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
            ++n;
            ++p;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*')
        ++p;
    return p == pattern.size();
}

} // namespace

bool MatchesPattern(std::string_view name, std::string_view pattern)
{
    if (pattern == "*" || pattern == "*.*")
        return true;
    const std::string foldedName = FoldCase(name);
    const std::string foldedPattern = FoldCase(pattern);
    if (Matches(foldedName, foldedPattern))
        return true;
    return foldedPattern.ends_with(".*") && name.find('.') == std::string_view::npos &&
           Matches(foldedName, std::string_view{foldedPattern}.substr(0, foldedPattern.size() - 2));
}

Result<Path> SafeRelative(std::string_view name)
{
    const auto refused = [&] { return MakeFailure(ErrorCode::Refused, Readable(name)); };
    std::string_view rest = name;
    if (rest.starts_with('\\') || rest.starts_with('/'))
        rest.remove_prefix(1);
    if (rest.empty())
        return refused();
    Path path;
    for (;;) {
        const std::size_t end = rest.find_first_of("\\/");
        const std::string_view part = rest.substr(0, end);
        const bool control = std::any_of(
            part.begin(), part.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; });
        if (part.empty() || part == "." || part == ".." || control ||
            part.find(':') != std::string_view::npos)
            return refused();
        path /= Path{part};
        if (end == std::string_view::npos)
            return path;
        rest.remove_prefix(end + 1);
    }
}

Result<Path> SafeName(std::string_view name)
{
    if (name.find_first_of("\\/") != std::string_view::npos)
        return MakeFailure(ErrorCode::Refused, Readable(name));
    return SafeRelative(name);
}

std::string ToBackslashes(const Path& relative)
{
    std::string text = relative.native();
    std::replace(text.begin(), text.end(), '/', '\\');
    return "\\" + text;
}

Path InFolder(const Path& folder, std::string_view fragment)
{
    std::string text{fragment};
    std::replace(text.begin(), text.end(), '\\', '/');
    const std::string above = folder == "/" ? std::string{} : folder.native();
    return above + (text.starts_with('/') ? text : "/" + text);
}

std::string TextOf(const Path& path)
{
    return Readable(path.native());
}

Path FolderFromText(std::string_view text)
{
    while (text.size() > 1 && text.ends_with('/'))
        text.remove_suffix(1);
    return Path{text};
}

} // namespace kestrova
