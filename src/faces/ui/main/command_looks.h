#pragma once

#include "ui/widgets/icons.h"

#include <optional>
#include <span>
#include <string_view>

namespace kestrova
{

/// How a command, or a menu inside of one, looks in its menu.
struct CommandLook {
    std::string_view name; ///< of the menu item
    std::optional<Drawing> drawing{};
    bool line = false; ///< stands before it
};
std::span<const CommandLook> CommandLooks();
/// A plain look when the table has none.
CommandLook LookOf(std::string_view name);

/// The commands that are at hand in the bar of buttons, in their order; empty: a line.
std::span<const std::string_view> ButtonsAtHand();

} // namespace kestrova
