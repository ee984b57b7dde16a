#pragma once

#include "library/library_levels.h"
#include "library/mark_levels.h"
#include "ui/main/main_menu.h"

namespace kestrova
{

/// What a right click on chosen levels can set going.
struct LevelMenuWork {
    Invoke invoke;  ///< on the chosen level
    Invoke several; ///< on all chosen ones
    std::function<void(const LevelMarks&)> mark;
    std::function<void()> newTag;
};

/// Fills the menu of a right click: the commands on the one chosen level, or those that several can
/// be given; and what a person may say of them. `tags`: all that there are.
void FillChosenMenu(QMenu& menu, const std::vector<LibraryLevel>& chosen,
                    const std::vector<std::string>& tags, const LevelMenuWork& work);

} // namespace kestrova
