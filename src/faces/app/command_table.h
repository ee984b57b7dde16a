#pragma once

#include "app/command.h"

namespace kestrova
{

/// All commands, in the order of the manual.
std::span<const CommandRow> CommandTable();
/// The menus that they stand in: those of the bar, and the ones inside of them.
std::span<const MenuRow> MenuTable();

/// The row that has usage and options of a word of the terminal; null when there is none.
const CommandRow* FindCommand(std::string_view word);
/// The rows that tell how a word is said: that of the verb where it has words of its own, otherwise
/// all of the word that have.
std::vector<const CommandRow*> RowsThatTell(std::string_view word, std::string_view verb);
/// Of a command or button of the window; null when there is none.
const CommandRow* FindControl(std::string_view name);
/// The row that a run's words mean; the first of that word when they mean none.
const CommandRow& RowOf(const CommandRow& first, const Run& run);
/// Every option of every command.
std::vector<OptionRow> AllOptions();

} // namespace kestrova
