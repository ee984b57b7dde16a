#pragma once

#include "session/shown_list.h"

namespace kestrova
{

class MainWindow;

/// Hands what the operations say about the list to the main window, which comes later than the
/// session and may go before it.
class WindowLevelList : public LevelList
{
public:
    void Show(MainWindow* window) { window_ = window; }
    void Refresh() override;
    void Select(LevelCode code) override;
    [[nodiscard]] std::optional<LevelCode> Selected() const override;
    void ShowActivity(const std::string& text) override;

private:
    MainWindow* window_ = nullptr;
};

} // namespace kestrova
