#pragma once

#include "session/machine.h"

namespace kestrova
{

/// The machine with the desktop's clipboard.
class WindowMachine : public DesktopMachine
{
public:
    void ClearClipboard() override;
};

} // namespace kestrova
