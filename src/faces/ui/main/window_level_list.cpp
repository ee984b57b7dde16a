#include "ui/main/window_level_list.h"

#include "ui/main/main_window.h"
#include "ui/widgets/qt_text.h"

namespace kestrova
{

void WindowLevelList::Refresh()
{
    if (window_ != nullptr)
        window_->RefreshList();
}

void WindowLevelList::Select(LevelCode code)
{
    if (window_ != nullptr)
        window_->Choose(code);
}

std::optional<LevelCode> WindowLevelList::Selected() const
{
    return window_ == nullptr ? std::nullopt : window_->Chosen();
}

void WindowLevelList::ShowActivity(const std::string& text)
{
    if (window_ != nullptr)
        window_->ShowActivity(ToQt(text));
}

} // namespace kestrova
