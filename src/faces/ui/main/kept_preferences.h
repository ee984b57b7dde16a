#pragma once

#include "session/session.h"

namespace kestrova
{

/// Preferences are written as soon as they are different, so that a program that is killed has
/// them. Where that fails it is told once, until it has succeeded again.
class KeptPreferences
{
public:
    explicit KeptPreferences(Session& session) : session_(session) {}

    void Keep();

private:
    Session& session_;
    bool told_ = false;
};

} // namespace kestrova
