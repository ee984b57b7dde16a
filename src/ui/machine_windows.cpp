#include "ui/machine_windows.h"

#include <QClipboard>
#include <QGuiApplication>

namespace kestrova
{

void WindowMachine::ClearClipboard()
{
    QGuiApplication::clipboard()->clear();
}

} // namespace kestrova
