#include "burning/burn_items.h"

#include "core/files.h"
#include "core/text.h"
#include "words/burning.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool EndsAsFolder(std::string_view text)
{
    return text.ends_with('/') || text.ends_with('\\');
}

Refusal NotInserted(std::string detail)
{
    return {GetMsg(Msg::BurnItemNotInserted), std::move(detail)};
}

/// A target leads down from the disc's root, part by part.
bool StaysOnDisc(std::string_view target)
{
    if (target.ends_with('/'))
        target.remove_suffix(1);
    const auto parts = Split(target, '/');
    return std::none_of(parts.begin(), parts.end(), [](const std::string& part) {
        return part.empty() || part == "." || part == "..";
    });
}

/// A path without the slashes at its end, by which sources are compared.
Path Plain(std::string_view text)
{
    while (text.size() > 1 && text.ends_with('/'))
        text.remove_suffix(1);
    return Path{text};
}

} // namespace

BurnItem ItemFromText(std::string_view text)
{
    const std::size_t sign = text.starts_with('/') ? std::string_view::npos : text.find("=/");
    if (sign == std::string_view::npos) {
        const std::size_t relative = text.starts_with('/') ? sign : text.find('=');
        if (relative == std::string_view::npos)
            return {{}, Path{Trim(text)}};
        return {ReplaceAll(std::string{text.substr(0, relative)}, "\\", "/"),
                Path{Trim(text.substr(relative + 1))}};
    }
    std::string target = ReplaceAll(std::string{Trim(text.substr(0, sign))}, "\\", "/");
    target.erase(0, std::min(target.find_first_not_of('/'), target.size()));
    return {std::move(target), Path{Trim(text.substr(sign + 1))}};
}

std::string TargetText(const BurnItem& item)
{
    return ReplaceAll(item.target, "/", "\\");
}

Refusal AddItemText(BurnSettings& settings, std::string_view text)
{
    if (EndsAsFolder(text))
        return {GetMsg(Msg::BurnPathNotValid), GetMsg(Msg::BurnPathEnds)};
    if (HasWildcard(text))
        return NotInserted(GetMsg(Msg::BurnNoWildcards));
    return AddItem(settings, ItemFromText(text));
}

Refusal AddItem(BurnSettings& settings, BurnItem item)
{
    if (!item.source.is_absolute())
        return NotInserted(GetMsg(Msg::BurnNotAbsolute));
    const bool isFolder = FolderExists(item.source);
    if (!isFolder && !FileExists(item.source))
        return NotInserted(GetMsg(Msg::BurnPathMissing, {TextOf(item.source)}));
    item.source = ResolvePath(Plain(item.source.native()));
    if (isFolder && !item.target.empty() && !item.target.ends_with('/'))
        return NotInserted(GetMsg(Msg::BurnFolderTarget));
    if (!item.target.empty() && !StaysOnDisc(item.target))
        return NotInserted(GetMsg(Msg::BurnTargetOutside, {item.target}));
    if (isFolder && item.target.empty() && settings.autoFolder)
        item.target = item.source.filename().native() + "/";
    const bool isThere =
        std::any_of(settings.items.begin(), settings.items.end(),
                    [&](const BurnItem& other) { return other.source == item.source; });
    if (!isThere)
        settings.items.push_back(std::move(item));
    return {};
}

Refusal AddNoItem(BurnSettings& settings, std::string_view text)
{
    const auto refused = [](std::string detail) {
        return Refusal{GetMsg(Msg::BurnNoItemNotInserted), std::move(detail)};
    };
    if (!text.starts_with('/') && text.find('=') != std::string_view::npos)
        return refused(GetMsg(Msg::BurnNoItemTarget));
    if (HasWildcard(text))
        return refused(GetMsg(Msg::BurnNoWildcards));
    const Path given = Plain(Trim(text));
    if (!FileExists(given) && !FolderExists(given))
        return refused(GetMsg(Msg::BurnPathMissing, {text}));
    const Path path = ResolvePath(given);
    if (std::find(settings.noItems.begin(), settings.noItems.end(), path) != settings.noItems.end())
        return {GetMsg(Msg::BurnNoItemTwiceTitle), GetMsg(Msg::BurnNoItemTwice, {text})};
    settings.noItems.push_back(path);
    return {};
}

const BurnItem* FindItem(const BurnSettings& settings, std::string_view text)
{
    const BurnItem wanted = ItemFromText(text);
    const Path source = Plain(wanted.source.native());
    const auto found =
        std::find_if(settings.items.begin(), settings.items.end(), [&](const BurnItem& item) {
            return EqualNames(item.source.native(), source.native());
        });
    return found == settings.items.end() ? nullptr : &*found;
}

Refusal RemoveItem(BurnSettings& settings, std::string_view source)
{
    if (source.empty())
        return {GetMsg(Msg::BurnItemNotFound), GetMsg(Msg::BurnNoArgument)};
    const BurnItem* const item = FindItem(settings, source);
    if (item == nullptr)
        return {GetMsg(Msg::BurnItemNotFound), GetMsg(Msg::BurnItemUnknown, {source})};
    settings.items.erase(settings.items.begin() + (item - settings.items.data()));
    return {};
}

Refusal RemoveNoItem(BurnSettings& settings, std::string_view source)
{
    if (source.empty())
        return {GetMsg(Msg::BurnItemNotFound), GetMsg(Msg::BurnNoArgument)};
    if (std::erase(settings.noItems, ResolvePath(Plain(source))) == 0)
        return {GetMsg(Msg::BurnItemNotFound), GetMsg(Msg::BurnItemUnknown, {source})};
    return {};
}

} // namespace kestrova
