#pragma once

#include "platform/notifier.h"
#include "session/machine.h"

#include <functional>
#include <memory>

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
    void Notify(const std::string& title, const std::string& text) override;

    /// Called from the event loop when the desktop says late that it opens nothing.
    std::function<void(const Failure& failure)> refusedLate;

protected:
    platform::LateRefusal WhenRefusedLate() override;

private:
    struct Listener;
    std::unique_ptr<XDesktop> desktop_;
    platform::Notifier notifier_;
    std::shared_ptr<Listener> listener_; ///< outlives this machine in who may call it late
};

} // namespace kestrova
