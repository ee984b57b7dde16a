#pragma once

#include "app/init_program.h"
#include "app/start_up.h"

namespace kestrova
{

/// The start's own windows.
class StartDialogs : public StartWindows
{
public:
    bool ShowFirstStart(Session& session, FirstStart& page) override;
    bool FindLevelEditor(Session& session) override;
    bool SetUpLevelEditor(Session& session, const Path& source) override;
    ArchiveChoice AskNewOrLoad(Session& session) override;
};

} // namespace kestrova
