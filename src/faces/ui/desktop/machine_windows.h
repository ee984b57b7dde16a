#pragma once

#include "session/machine.h"

namespace kestrova
{

class XDesktop;

/// The machine with what the windows reach beside: the desktop's keys and clipboard.
class WindowMachine : public DesktopMachine
{
public:
    WindowMachine();
    ~WindowMachine() override;

    bool SeesKeys() override;
    bool IsKeyDown(GameKey key) override;
    void TypeKeys(std::string_view keys) override;
    bool ActivateWindow(const std::string& title) override;
    Result<std::string> ClipboardPicture() override;
    void ClearClipboard() override;

private:
    std::unique_ptr<XDesktop> desktop_;
};

} // namespace kestrova
