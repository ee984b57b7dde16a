#include "world/fake_machine.h"

namespace kestrova::testing
{

Status FakeMachine::Open(const std::string& fileOrAddress, const Path&)
{
    opened.push_back(fileOrAddress);
    return {};
}

Result<std::int64_t> FakeMachine::Start(const platform::Launch& launch)
{
    if (startFails)
        return Failure{ErrorCode::CannotOpen, launch.argv.front(), "no such program"};
    started.push_back(launch);
    return std::int64_t{4711};
}

Result<std::string> FakeMachine::ClipboardPicture()
{
    ++clipboardReads;
    now += clipboardTakes;
    if (clipboardBusy)
        return Failure{ErrorCode::CannotRead, {}, "in use"};
    return clipboard;
}

Path FakeMachine::FindTool(const std::string& name)
{
    const auto found = tools.find(name);
    return found == tools.end() ? Path{} : found->second;
}

} // namespace kestrova::testing
