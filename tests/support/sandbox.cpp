#include "support/sandbox.h"

#include "core/staged_file.h"
#include "platform/file_content.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <unistd.h>

namespace kestrova::testing
{

namespace fs = std::filesystem;

ScriptedHost::~ScriptedHost()
{
    if (!answerAll_)
        for (const Answer& answer : answers_)
            ADD_FAILURE() << "nobody asked: " << answer.part;
}

void ScriptedHost::WillAsk(const std::string& part, bool yes)
{
    answers_.push_back({part, yes ? YesNoCancel::Yes : YesNoCancel::No, {}, {}, 'q'});
}

void ScriptedHost::WillAskYesNoCancel(const std::string& part, YesNoCancel answer)
{
    answers_.push_back({part, answer, {}, {}, 'q'});
}

void ScriptedHost::WillAskText(const std::string& part, std::optional<std::string> answer)
{
    answers_.push_back({part, YesNoCancel::No, std::move(answer), {}, 't'});
}

void ScriptedHost::WillChoose(const std::string& part, std::optional<Path> answer)
{
    answers_.push_back({part, YesNoCancel::No, {}, std::move(answer), 'c'});
}

bool ScriptedHost::WasTold(const std::string& part) const
{
    for (const Told& entry : told)
        if (entry.text.find(part) != std::string::npos ||
            entry.reason.find(part) != std::string::npos)
            return true;
    return false;
}

std::string ScriptedHost::AllTold() const
{
    std::string all;
    for (const Told& entry : told)
        all += entry.text + " | " + entry.reason + "\n";
    return all;
}

std::optional<ScriptedHost::Answer> ScriptedHost::Next(char kind, const std::string& text)
{
    if (!answers_.empty() && answers_.front().kind == kind &&
        text.find(answers_.front().part) != std::string::npos) {
        Answer answer = answers_.front();
        answers_.pop_front();
        return answer;
    }
    if (!answerAll_)
        ADD_FAILURE() << "unexpected question: " << text;
    return {};
}

void ScriptedHost::Tell(Tone tone, const std::string& text, const std::string& reason)
{
    told.push_back({tone, text, reason});
}

bool ScriptedHost::AskYesNo(const std::string& text, Consent)
{
    const auto answer = Next('q', text);
    return answer ? answer->answer == YesNoCancel::Yes : answerAll_.value_or(false);
}

bool ScriptedHost::AskOkCancel(const std::string& text)
{
    return AskYesNo(text);
}

YesNoCancel ScriptedHost::AskYesNoCancel(const std::string& text)
{
    const auto answer = Next('q', text);
    return answer ? answer->answer : YesNoCancel::Cancel;
}

std::optional<std::string> ScriptedHost::AskText(const std::string& text, const std::string&,
                                                 const std::string&)
{
    const auto answer = Next('t', text);
    return answer ? answer->text : std::nullopt;
}

std::optional<Path> ScriptedHost::ChooseFolder(const std::string& title, const Path& start)
{
    lastStart = start;
    const auto answer = Next('c', title);
    return answer ? answer->path : std::nullopt;
}

std::optional<Path> ScriptedHost::ChooseOpenFile(const std::string& title, const std::string&,
                                                 const Path& start)
{
    return ChooseFolder(title, start);
}

std::optional<Path> ScriptedHost::ChooseSaveFile(const std::string& title, const std::string&,
                                                 const Path& start, const std::string&)
{
    return ChooseFolder(title, start);
}

class ScriptedProgress : public ProgressScope
{
public:
    explicit ScriptedProgress(ScriptedHost& host) : host_(host) {}
    void SetLabel(const std::string& text) override { host_.progressTexts.push_back(text); }
    void SetBar(std::uint64_t done, std::uint64_t total) override
    {
        if (total > 0) {
            EXPECT_LE(done, total);
        }
    }
    void AllowStop() override { allowed_ = true; }
    bool Step() override
    {
        return !allowed_ || host_.stopAt_ == 0 || ++host_.steps_ < host_.stopAt_;
    }

private:
    ScriptedHost& host_;
    bool allowed_ = false;
};

std::unique_ptr<ProgressScope> ScriptedHost::BeginProgress(ProgressWindow, const std::string& text)
{
    progressTexts.push_back(text);
    return std::make_unique<ScriptedProgress>(*this);
}

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

namespace
{

Path NewFolder()
{
    // Thousands of flushes are the point of some tests; memory takes them faster than a disk.
    const Path memory = "/dev/shm";
    const Path top = platform::IsWritableFolder(memory) ? memory : fs::temp_directory_path();
    std::string name = (top / "kestrova-test-XXXXXX").native();
    if (::mkdtemp(name.data()) == nullptr)
        std::abort();
    return name;
}

} // namespace

Sandbox::Sandbox() : root(NewFolder()), session{host, machine, list, root / "home"}
{
    for (const char* folder : {"home", "trle", "levels"})
        fs::create_directories(root / folder);
    session.preferences.trlePath = (root / "trle").native();
    session.archive.header.mainFolder = session.archive.header.secondaryFolder =
        (root / "levels").native();
    machine.drives = {{root, UINT64_C(1) << 40, true}};
}

Sandbox::~Sandbox()
{
    std::error_code failure;
    // Tests take rights away; they are given back so that the folder can go.
    for (auto entry = fs::recursive_directory_iterator(
             root, fs::directory_options::skip_permission_denied, failure);
         entry != fs::end(entry); entry.increment(failure))
        if (entry->is_directory(failure) && !entry->is_symlink(failure))
            fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add, failure);
    fs::remove_all(root, failure);
}

void Sandbox::Write(const std::string& relative, std::string_view content) const
{
    const Path file = root / relative;
    fs::create_directories(file.parent_path());
    platform::File handle;
    ASSERT_FALSE(platform::File::Create(file, handle)) << file;
    ASSERT_FALSE(handle.Write(std::as_bytes(std::span(content)))) << file;
}

std::string Sandbox::Read(const std::string& relative) const
{
    std::string content;
    return platform::ReadAll(root / relative, content) ? "(missing)" : content;
}

bool Sandbox::Has(const std::string& relative) const
{
    return platform::FactsOfLink(root / relative).kind != platform::FileKind::Missing;
}

std::map<std::string, std::string> Sandbox::Snapshot(const std::string& relative) const
{
    std::map<std::string, std::string> files;
    const Path top = root / relative;
    const auto tree = ScanTree(top);
    if (tree)
        for (const Path& file : tree->files)
            files[file.lexically_relative(top).native()] =
                Read(file.lexically_relative(root).native());
    return files;
}

void Sandbox::MakeTrle(int waves) const
{
    Write("trle/tomb4.exe", "the game");
    Write("trle/Script.dat", "original script");
    Write("trle/English.DAT", "original english");
    Write("trle/LOAD.BMP", "original load picture");
    Write("trle/DATA/Title.tr4", "original title");
    Write("trle/DATA/tut1.tr4", "original tutorial");
    for (int track = 0; track < waves; ++track)
        Write("trle/Audio/" + ZeroPadded(track, 3) + ".wav", "wave " + std::to_string(track));
    Write("trle/script/script.txt", "script source");
    Write("trle/graphics/wads/city.was", "wad");
    Write("trle/sound/samples/step.wav", "sample");
    Write("trle/manual/manual.htm", "manual");
}

void Sandbox::MakeBackupAndArchive()
{
    fs::copy(root / "trle", root / "home/backup_trle", fs::copy_options::recursive);
    session.preferences.fullBackup = true;
    for (const char* folder : {"savegames", "backup_savegames", "files", "screenshots"})
        fs::create_directories(root / "home/LEVEL_0000" / folder);
    LevelRecord original;
    original.levelName = "- TRLE: Original configuration -";
    session.archive.levels = {original};
    session.archive.file = root / "home/LevelArchive.kva";
    session.preferences.archivePath = session.archive.file.native();
    ASSERT_TRUE(WriteWholeFile(session.ArchivePath(),
                               FormatArchive({session.archive.header, session.archive.levels})));
}

LevelCode Sandbox::AddLevel(const std::string& name,
                            const std::map<std::string, std::string>& files)
{
    LevelRecord level;
    level.levelName = name;
    for (const LevelRecord& other : session.archive.levels)
        level.levelCode = std::max(level.levelCode, other.levelCode + 1);
    const std::string folder = "levels/LEVEL_" + ZeroPadded(level.levelCode, 4);
    for (const char* part : {"savegames", "backup_savegames", "files", "screenshots"})
        fs::create_directories(root / folder / part);
    for (const auto& [file, content] : files)
        Write(folder + "/files/" + file, content);
    session.archive.levels.push_back(level);
    return level.levelCode;
}

Session Sandbox::Reopened()
{
    Session fresh{host, machine, list, session.programFolder};
    fresh.preferences = session.preferences;
    fresh.settings = session.settings;
    fresh.archive = session.archive;
    return fresh;
}

std::string SavegameBytes(const std::string& title, int number, const std::string& data)
{
    std::string bytes = title;
    bytes.resize(77, '\0');
    bytes[75] = static_cast<char>(number & 0xFF);
    bytes[76] = static_cast<char>((number >> 8) & 0xFF);
    return bytes + data;
}

} // namespace kestrova::testing
