#pragma once

#include "burning/burn_settings.h"

#include <string_view>

/// The rules of what may be put on a disc, and its two lists.
namespace kestrova
{

/// Why something was refused; both texts are empty when it was not.
struct Refusal {
    std::string title{};
    std::string detail{};

    [[nodiscard]] bool IsNone() const { return title.empty(); }
};

/// `target=source`, or a source alone: a text that begins with "/" has no target, any other one is
/// parted before the first "/" that follows a "=". Backslashes of the target are slashes; those of
/// the source are letters of its name.
BurnItem ItemFromText(std::string_view text);
/// The target as a path with backslashes; empty when it has none.
std::string TargetText(const BurnItem& item);

/// Adds what `text` says unless its source is among the items already, which is no fault.
Refusal AddItemText(BurnSettings& settings, std::string_view text);
/// The same for an item as it is, whose names may hold any letter.
Refusal AddItem(BurnSettings& settings, BurnItem item);
Refusal AddNoItem(BurnSettings& settings, std::string_view text);
/// Takes out what has that source.
Refusal RemoveItem(BurnSettings& settings, std::string_view source);
Refusal RemoveNoItem(BurnSettings& settings, std::string_view source);

/// The item with that text, or with that source; null when there is none.
const BurnItem* FindItem(const BurnSettings& settings, std::string_view text);

} // namespace kestrova
