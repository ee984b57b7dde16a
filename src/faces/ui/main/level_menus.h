#pragma once

#include "ui/main/main_menu.h"

namespace kestrova
{

/// Fills the menu of a right click: the commands on the one chosen level, or those that several can
/// be given.
void FillChosenMenu(QMenu& menu, std::size_t chosen, const Invoke& one, const Invoke& several);

} // namespace kestrova
