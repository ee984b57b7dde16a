#pragma once

#include "session/session.h"

#include <deque>
#include <map>
#include <set>

namespace kestrova::testing
{

/// A host that answers as a test said it would. An unexpected question fails the test, and so does,
/// at the end, an answer that nobody asked for.
class ScriptedHost : public Host
{
public:
    ~ScriptedHost() override;

    /// The next question must hold `part` of a text; it is answered so.
    void WillAsk(const std::string& part, bool yes);
    void WillAskYesNoCancel(const std::string& part, YesNoCancel answer);
    void WillAskText(const std::string& part, std::optional<std::string> answer);
    /// The next chooser must hold `part` in its title.
    void WillChoose(const std::string& part, std::optional<Path> answer);
    /// Every further question is answered so, without a failure (for runs that break anywhere).
    void AnswerAll(bool yes) { answerAll_ = yes; }
    /// Stop is pressed at the n-th step of a progress that allows it, counted from 1.
    void StopAtStep(int step) { stopAt_ = step; }

    struct Told {
        Tone tone;
        std::string text;
        std::string reason;
    };
    std::vector<Told> told;
    /// True when something was told that holds `part`.
    [[nodiscard]] bool WasTold(const std::string& part) const;
    /// All that was told, for a failing test's message.
    [[nodiscard]] std::string AllTold() const;

    void Tell(Tone tone, const std::string& text, const std::string& reason = {}) override;
    bool AskYesNo(const std::string& text, Consent consent = Consent::Ordinary) override;
    bool AskOkCancel(const std::string& text) override;
    YesNoCancel AskYesNoCancel(const std::string& text) override;
    std::optional<std::string> AskText(const std::string& text, const std::string& suggestion,
                                       const std::string& title = {}) override;
    std::optional<Path> ChooseFolder(const std::string& title, const Path& start) override;
    std::optional<Path> ChooseOpenFile(const std::string& title, const std::string& filter,
                                       const Path& start) override;
    std::optional<Path> ChooseSaveFile(const std::string& title, const std::string& filter,
                                       const Path& start, const std::string& suggestion) override;
    std::unique_ptr<ProgressScope> BeginProgress(ProgressWindow window,
                                                 const std::string& text) override;
    std::vector<std::string> progressTexts;
    Path lastStart; ///< where the last chooser opened

private:
    struct Answer {
        std::string part;
        YesNoCancel answer = YesNoCancel::No;
        std::optional<std::string> text;
        std::optional<Path> path;
        char kind = 'q';
    };
    std::optional<Answer> Next(char kind, const std::string& text);
    std::deque<Answer> answers_;
    std::optional<bool> answerAll_;
    int stopAt_ = 0;
    int steps_ = 0;
    friend class ScriptedProgress;
};

/// A machine whose clock, drives and programs a test sets.
class FakeMachine : public Machine
{
public:
    std::int64_t now = 1'700'000'000'000'000'000;
    std::string bootId = "boot-1";
    std::uint64_t free = UINT64_C(1) << 40;
    std::vector<Drive> drives;
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
    Status Open(const std::string& fileOrAddress, const Path& folder) override;
    Result<std::int64_t> Start(const platform::Launch& launch) override;
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
};

class PlainList : public LevelList
{
public:
    int refreshes = 0;
    std::optional<LevelCode> selected;
    void Refresh() override { ++refreshes; }
    void Select(LevelCode code) override { selected = code; }
    [[nodiscard]] std::optional<LevelCode> Selected() const override { return selected; }
    void ShowActivity(const std::string&) override {}
};

/// A folder of its own below the system's temporary folder, removed at the end, with a session
/// whose program folder is `home`, Level Editor's folder `trle`, archive folder `levels`.
class Sandbox
{
public:
    Sandbox();
    ~Sandbox();
    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;

    Path root;
    ScriptedHost host;
    FakeMachine machine;
    PlainList list;
    Session session;

    /// A path below the sandbox.
    Path operator/(const std::string& relative) const { return root / relative; }
    /// Writes a file, making its folders.
    void Write(const std::string& relative, std::string_view content) const;
    [[nodiscard]] std::string Read(const std::string& relative) const;
    [[nodiscard]] bool Has(const std::string& relative) const;
    /// All files below a folder as relative path and content; staged and lock files left out.
    [[nodiscard]] std::map<std::string, std::string> Snapshot(const std::string& relative) const;

    /// A small original Level Editor's folder in `trle`; it passes the folder test with 54 waves.
    void MakeTrle(int waves = 54) const;
    /// A full backup of it in `home/backup_trle`, the level 0000 folder and an archive with the
    /// original configuration.
    void MakeBackupAndArchive();
    /// A level with these files in its `files` folder, as a record of the session.
    LevelCode AddLevel(const std::string& name, const std::map<std::string, std::string>& files);
    /// A second session over the same folders, as a new start of the program has it.
    [[nodiscard]] Session Reopened();
};

/// A savegame file as the game writes it: title, save number at byte 75, some data.
std::string SavegameBytes(const std::string& title, int number, const std::string& data = "data");

} // namespace kestrova::testing
