#pragma once

#include "session/machine.h"

#include <map>
#include <set>

namespace kestrova::testing
{

/// A machine whose clock, drives and programs a test sets.
class FakeMachine : public Machine
{
public:
    std::int64_t now = 1'700'000'000'000'000'000;
    std::string bootId = "boot-1";
    std::uint64_t free = UINT64_C(1) << 40;
    std::vector<Drive> drives;
    std::vector<Path> discs;
    std::vector<std::string> opened;
    std::vector<platform::Launch> started;
    std::vector<platform::RunningProgram> running;
    std::map<std::string, Path> tools;
    bool startFails = false;
    int clipboardCleared = 0;
    bool seesKeys = true;
    std::set<GameKey> keysDown;
    std::string typed;
    std::string windowOfGame; ///< the title that `ActivateWindow` finds
    std::string clipboard;    ///< a picture's bytes
    int clipboardReads = 0;
    bool clipboardBusy = false;
    std::int64_t clipboardTakes = 0; ///< nanoseconds a read

    std::int64_t NowNs() override { return now; }
    std::string BootId() override { return bootId; }
    Result<std::uint64_t> FreeSpace(const Path&) override { return free; }
    std::vector<Drive> FixedDrives() override { return drives; }
    std::vector<Path> Discs() override { return discs; }
    std::vector<platform::OpticalDrive> opticalDrives;
    std::vector<std::pair<Path, platform::DoorMove>> doorsMoved;
    std::vector<platform::OpticalDrive> OpticalDrives() override { return opticalDrives; }
    Status MoveDoor(const Path& device, platform::DoorMove move) override
    {
        doorsMoved.emplace_back(device, move);
        return {};
    }
    Status Open(const std::string& fileOrAddress, const Path& folder) override;
    Result<std::int64_t> Start(const platform::Launch& launch) override;
    Status StartAndForget(const platform::Launch& launch) override
    {
        return StatusOf(Start(launch));
    }
    std::optional<int> exitCode = 0; ///< of every started program
    std::optional<int> ExitOf(std::int64_t) override { return exitCode; }
    bool IsRunning(std::int64_t) override { return !running.empty(); }
    std::vector<platform::RunningProgram> ProgramsRunningIn(const Path&) override
    {
        return running;
    }
    Path FindTool(const std::string& name) override;
    bool SeesKeys() override { return seesKeys; }
    bool IsKeyDown(GameKey key) override { return keysDown.contains(key); }
    void TypeKeys(std::string_view keys) override { typed += keys; }
    bool ActivateWindow(const std::string& title) override { return title == windowOfGame; }
    Result<std::string> ClipboardPicture() override;
    void ClearClipboard() override
    {
        clipboard.clear();
        ++clipboardCleared;
    }
    std::vector<std::string> notified; ///< the texts
    void Notify(const std::string&, const std::string& text) override { notified.push_back(text); }
    std::vector<std::pair<std::int64_t, bool>> endedPrograms; ///< and whether by force
    Status EndProgram(std::int64_t pid, bool byForce) override
    {
        endedPrograms.emplace_back(pid, byForce);
        return {};
    }
};

} // namespace kestrova::testing
