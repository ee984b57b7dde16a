#include "world.h"

#include "core/text.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>;

bool IsState(const std::string& file)
{
    const std::string name = FoldCase(file);
    return name.find('/') == std::string::npos &&
           (name.starts_with("savegame") || name.starts_with("note") || name.starts_with("shot"));
}

/// A path's own level folder: `levels_a/LEVEL_0003`, or one that was set aside from it.
bool IsBelow(const std::string& file, const std::string& folder)
{
    return file.starts_with(folder) && file.size() > folder.size() &&
           (file[folder.size()] == '/' || file[folder.size()] == '.');
}

std::string FolderOf(const ModelLevel& level)
{
    return (level.archive.empty() ? "home" : "levels_" + level.archive) + "/LEVEL_" +
           ZeroPadded(level.code, 4);
}

std::string FirstWord(const std::string& name)
{
    return name.substr(0, name.find(' '));
}

} // namespace

ModelWorld::ModelWorld(std::uint32_t seed) : scratch_(box_.root / "scratch"), random_(seed)
{
    fs::create_directories(scratch_);
    box_.MakeTrle(54);
    original_ = box_.Snapshot("trle");
    fs::remove_all(box_.root / "levels");
    levels_["-"] = {};
    Must({"setup", "--trle", (box_ / "trle").native(), "--full", "--folder-is-original"});
    for (const std::string archive : {"b", "a"}) {
        fs::create_directories(box_.root / ("levels_" + archive));
        Must({"new", "--folder", (box_ / ("levels_" + archive)).native(),
              (box_ / (archive + ".kva")).native()});
        loaded_ = archive;
        for (int i = 0; i < 2; ++i)
            AddLevel({});
    }
}

std::string ModelWorld::Trail() const
{
    std::string text;
    const std::size_t shown = 60;
    for (std::size_t i = trail_.size() > shown ? trail_.size() - shown : 0; i < trail_.size(); ++i)
        text += trail_[i] + "\n";
    return text;
}

Trouble ModelWorld::RandomTrouble()
{
    if (Roll(3) != 0)
        return {};
    constexpr std::errc errors[] = {std::errc::io_error, std::errc::permission_denied,
                                    std::errc::no_space_on_device};
    Trouble trouble;
    trouble.kind = static_cast<Trouble::Kind>(1 + Roll(4));
    trouble.call = 1 + Roll(1 << (1 + Roll(8)));
    trouble.error = errors[Roll(3)];
    return trouble;
}

Outcome ModelWorld::Run(const Words& words, const Trouble& trouble)
{
    Words all{"--home", (box_ / "home").native(), "--yes"};
    all.insert(all.end(), words.begin(), words.end());
    Outcome outcome = RunProgram(scratch_, all, trouble);
    NoteStrangers(outcome.said);
    trail_.push_back(Join(words, " ") + ": " + NameOf(trouble) +
                     (outcome.Untroubled() ? "" : " [" + outcome.call + "]") + " -> " +
                     std::to_string(outcome.exitCode) + "\n    " +
                     ReplaceAll(outcome.said.substr(0, 600), "\n", "\n    "));
    return outcome;
}

Outcome ModelWorld::Must(const Words& words)
{
    Outcome outcome = Run(words);
    EXPECT_TRUE(outcome.Done()) << "refused: " << Join(words, " ") << "\n" << outcome.said;
    return outcome;
}

/// The level whose marker stands in the Level Editor's folder; "-" for the original configuration.
std::string ModelWorld::Standing() const
{
    const std::string marker = box_.Read("trle/Kestrva.txt");
    const std::string tag = "\n#LEVEL_NAME=";
    const std::size_t at = marker.find(tag);
    if (at == std::string::npos)
        return "-";
    const std::size_t from = at + tag.size();
    const std::string name = FirstWord(marker.substr(from, marker.find('#', from) - from));
    return levels_.contains(name) ? name : "-";
}

/// A level of the loaded archive.
std::string ModelWorld::PickLevel(bool originalToo)
{
    std::vector<std::string> names;
    for (const auto& [name, level] : levels_)
        if (level.archive == loaded_ || (originalToo && level.archive.empty()))
            names.push_back(name);
    return names.empty() ? std::string{}
                         : names[static_cast<std::size_t>(Roll(static_cast<int>(names.size())))];
}

void ModelWorld::LearnLevels(const std::string& archive)
{
    const Outcome outcome = Must({"levels", "--json"});
    const auto rows = nlohmann::json::parse(outcome.said, nullptr, false);
    ASSERT_TRUE(rows.is_array()) << outcome.said;
    std::set<std::string> seen;
    for (const auto& row : rows) {
        const std::string name = FirstWord(row.value("name", std::string{}));
        const auto level = levels_.find(name);
        if (level == levels_.end() || level->second.archive != archive)
            continue;
        level->second.code = row.value("code", -1);
        EXPECT_TRUE(seen.insert(name).second) << "twice in the list: " << name;
    }
    std::erase_if(levels_, [&](const auto& level) {
        return level.second.archive == archive && level.second.code < 0 &&
               !seen.contains(level.first);
    });
    for (const auto& [name, level] : levels_) {
        if (level.archive == archive) {
            EXPECT_TRUE(seen.contains(name)) << "gone from the list: " << name;
        }
    }
}

void ModelWorld::AddLevel(const Trouble& trouble)
{
    const std::string archive = loaded_;
    const std::string number = std::to_string(++made_);
    const std::string name = UpperCase(archive) + number;
    ModelLevel level{archive, -1, {}};
    level.files = {{"script.dat", "script of " + name},
                   {"data/shot_" + number + ".tr4", "level of " + name + std::string(3000, 'x')},
                   {"data/tut1.tr4", "tutorial of " + name}};
    if (Roll(2) == 0)
        level.files["english.dat"] = "english of " + name;
    if (Roll(2) == 0)
        level.files["data/title.tr4"] = "title of " + name;
    const std::string source = "scratch/source/" + name;
    for (const auto& [file, content] : level.files)
        box_.Write(source + "/" + Path{file}.filename().native(), content);
    levels_[name] = level;
    const Outcome outcome =
        Run({"add", "--name", name + " added", (box_ / source).native()}, trouble);
    fs::remove_all(box_ / source);
    Mend();
    LearnLevels(archive);
    if (outcome.Done() || outcome.Untroubled()) {
        EXPECT_TRUE(outcome.Done() && levels_.contains(name)) << "not added: " << outcome.said;
    }
}

void ModelWorld::RemoveLevel(const Trouble& trouble)
{
    const std::string name = PickLevel(false);
    if (name.empty() || levels_.size() < 4)
        return;
    const bool keep = Roll(2) == 0;
    Words words{"remove", std::to_string(levels_[name].code)};
    if (keep)
        words.push_back("--keep-files");
    else
        std::erase_if(treasures_, [&](const auto& row) {
            return row.second.kind == Treasure::State && row.second.owner == name;
        });
    const Outcome outcome = Run(words, trouble);
    Mend();
    const std::string archive = levels_[name].archive;
    const ModelLevel before = levels_[name];
    levels_[name].code = -1; // gone, unless the list has it still
    LearnLevels(archive);
    removed_[name] = before;
    if (outcome.Done()) {
        EXPECT_FALSE(levels_.contains(name)) << "told as removed, and still there";
    } else if (levels_.contains(name) && !keep && Standing() == name)
        (void)before; // its savegames may be gone already, as the person wanted
}

void ModelWorld::Play(const Trouble& trouble)
{
    const std::string name = PickLevel(true);
    const Outcome outcome =
        Run({"play", std::to_string(levels_[name].code), "--no-start"}, trouble);
    Mend();
    if (outcome.Untroubled()) {
        EXPECT_TRUE(outcome.Done()) << "refused without a reason: " << outcome.said;
    }
    if (outcome.Done())
        name == "-" ? ExpectOriginal() : ExpectInstalled(name);
}

void ModelWorld::Original(const Trouble& trouble)
{
    Words words{"original"};
    if (Roll(3) == 0)
        words.push_back("--full");
    const Outcome outcome = Run(words, trouble);
    Mend();
    if (outcome.Untroubled()) {
        EXPECT_TRUE(outcome.Done()) << "refused without a reason: " << outcome.said;
    }
    if (outcome.Done())
        ExpectOriginal();
}

void ModelWorld::Savegames(const Trouble& trouble)
{
    const std::string code = std::to_string(levels_[PickLevel(true)].code);
    const std::string folder = (scratch_ / "export").native();
    fs::create_directories(folder);
    const std::vector<Words> commands{{"saves", "archive", code},
                                      {"saves", "archive", code},
                                      {"saves", "restore", code},
                                      {"saves", "export", code, folder},
                                      {"saves", "import", code, folder}};
    (void)Run(commands[static_cast<std::size_t>(Roll(3))], trouble);
    Mend();
}

void ModelWorld::Edit(const Trouble& trouble)
{
    const std::string name = PickLevel(false);
    if (name.empty())
        return;
    const Outcome outcome = Run({"edit", std::to_string(levels_[name].code), "--name",
                                 name + " edited " + std::to_string(++made_)},
                                trouble);
    Mend();
    LearnLevels(levels_[name].archive);
    if (outcome.Untroubled()) {
        EXPECT_TRUE(outcome.Done()) << "refused without a reason: " << outcome.said;
    }
}

/// What it takes back, and whether it can, is the program's word; nothing may get lost by it.
void ModelWorld::Undo(const Trouble& trouble)
{
    Words words{"undo"};
    if (Roll(3) == 0)
        words.push_back("--redo");
    (void)Run(words, trouble);
    Mend();
    for (auto& [name, level] : removed_)
        if (level.archive == loaded_)
            levels_.emplace(name, level);
    for (auto& [name, level] : levels_)
        if (level.archive == loaded_) {
            removed_[name] = level;
            level.code = -1; // gone, unless the list has it
        }
    LearnLevels(loaded_);
    std::erase_if(removed_, [&](const auto& row) { return levels_.contains(row.first); });
}

void ModelWorld::Compress(const Trouble& trouble)
{
    const Outcome outcome = Run({"set", "compress", Roll(2) == 0 ? "on" : "off"}, trouble);
    Mend();
    const Outcome changed = Run({"recompress"}, RandomTrouble());
    Mend();
    if (outcome.Untroubled() && changed.Untroubled()) {
        EXPECT_TRUE(outcome.Done() && changed.Done()) << outcome.said << changed.said;
    }
}

void ModelWorld::LoadOther(const Trouble& trouble)
{
    const std::string other = loaded_ == "a" ? "b" : "a";
    const Outcome outcome = Run({"load", (box_ / (other + ".kva")).native()}, trouble);
    Mend();
    if (!outcome.Done())
        Must({"load", (box_ / (other + ".kva")).native()});
    loaded_ = other;
    LearnLevels(loaded_);
}

/// Commands that only look, or that change nothing in what the player made.
void ModelWorld::ReadAgain(const Trouble& trouble)
{
    const std::vector<Words> commands{{"verify"},  {"current"}, {"doctor"},
                                      {"history"}, {"sizes"},   {"index"}};
    (void)Run(commands[static_cast<std::size_t>(Roll(static_cast<int>(commands.size())))], trouble);
    Mend();
}

/// What the player writes over is the player's own loss.
void ModelWorld::Forget(const std::string& file)
{
    if (box_.Has(file))
        treasures_.erase(box_.Read(file));
}

void ModelWorld::GameSaves()
{
    const std::string owner = Standing();
    for (int count = 1 + Roll(4); count > 0; --count) {
        const std::string slot = std::to_string(Roll(15));
        const std::string mark = owner + " " + std::to_string(++made_);
        const int kind = Roll(6);
        const std::string file = "trle/" + (kind == 0   ? "note" + slot + ".txt"
                                            : kind == 1 ? "shot" + slot + ".jpg"
                                                        : "savegame." + slot);
        const std::string content =
            kind < 2 ? "made in " + mark : SavegameBytes(mark, made_ % 30000);
        Forget(file);
        box_.Write(file, content);
        treasures_[content] = {Treasure::State, owner};
        trail_.push_back("the game writes " + file + ": " + mark);
    }
}

/// A file of the player's own work beside, or in place of, what stands in the folder.
void ModelWorld::PlayerWorks()
{
    std::vector<std::string> places{"trle/DATA/own" + std::to_string(Roll(3)) + ".tr4"};
    for (const auto& [file, content] : box_.Snapshot("trle"))
        if (!IsState(file) && FoldCase(file) != "kestrva.txt" && !file.starts_with("Audio"))
            places.push_back("trle/" + file);
    const std::string file =
        places[static_cast<std::size_t>(Roll(static_cast<int>(places.size())))];
    const std::string content = "own work " + std::to_string(++made_);
    Forget(file);
    box_.Write(file, content);
    treasures_[content] = {Treasure::Own, {}};
    trail_.push_back("the player writes " + file + ": " + content);
}

void ModelWorld::Mend()
{
    Must({"mend"});
}

void ModelWorld::ExpectNothingLost()
{
    std::set<std::string> there;
    for (const auto& [file, content] : box_.Snapshot(""))
        if (!file.starts_with("scratch/"))
            there.insert(content);
    for (const auto& [content, treasure] : treasures_)
        EXPECT_TRUE(there.contains(content)) << "lost: " << content.substr(0, 30);
}

/// A file that the disk does not let go stays, provided that this was said.
void ModelWorld::NoteStrangers(const std::string& said)
{
    const std::size_t at = said.find("could not be taken out");
    const std::string named = at == std::string::npos ? std::string{} : said.substr(at);
    std::set<std::string> now;
    for (const auto& [file, content] : box_.Snapshot("trle"))
        if (IsState(file) && (strangers_.contains(file) || named.find(file) != std::string::npos))
            now.insert(file);
    strangers_ = std::move(now);
}

void ModelWorld::ExpectStateWhereItBelongs()
{
    const std::string standing = Standing();
    for (const auto& [file, content] : box_.Snapshot("")) {
        const auto treasure = treasures_.find(content);
        if (treasure == treasures_.end() || treasure->second.kind != Treasure::State ||
            file.starts_with("home/history/") || file.starts_with("scratch/"))
            continue;
        const auto owner = levels_.find(treasure->second.owner);
        if (owner == levels_.end())
            continue;
        const bool here = file.starts_with("trle/")
                              ? standing == owner->first || strangers_.contains(file.substr(5))
                              : IsBelow(file, FolderOf(owner->second));
        EXPECT_TRUE(here) << content.substr(0, 12) << " lies in " << file << " while " << standing
                          << " stands";
    }
}

ModelWorld::Slots ModelWorld::SlotsOfAll(Store store) const
{
    Slots slots;
    const std::string standing = Standing();
    for (const auto& [file, content] : box_.Snapshot("")) {
        const auto treasure = treasures_.find(content);
        if (treasure == treasures_.end() || treasure->second.kind != Treasure::State)
            continue;
        const Path path{file};
        const std::string parent = path.parent_path().filename().native();
        const std::string& owner = treasure->second.owner;
        const bool stored =
            parent == "backup_savegames" && (store == Store::Counts || owner != standing);
        if (parent == "trle" || stored)
            slots[owner].emplace(path.filename().native(), content);
    }
    return slots;
}

/// What belongs into the slots of a level stays there, whichever level stands in the folder.
void ModelWorld::ExpectSameSlots(const Slots& before)
{
    const Slots now = SlotsOfAll(Store::Counts);
    for (const auto& [level, files] : before) {
        if (!levels_.contains(level))
            continue;
        const auto found = now.find(level);
        for (const auto& file : files)
            EXPECT_TRUE(found != now.end() && found->second.contains(file))
                << file.first << " is no longer among the savegames of " << level;
    }
}

void ModelWorld::ExpectInstalled(const std::string& name)
{
    EXPECT_EQ(Standing(), name);
    Files wanted = levels_[name].files;
    for (const auto& [file, content] : box_.Snapshot("trle")) {
        const std::string folded = FoldCase(file);
        if (IsState(file) || folded == "kestrva.txt")
            continue;
        const auto treasure = treasures_.find(content);
        const bool own = treasure != treasures_.end() && treasure->second.kind == Treasure::Own;
        const auto original = original_.find(file);
        if (const auto brought = wanted.find(folded); brought != wanted.end()) {
            EXPECT_TRUE(content == brought->second || own) << file << " is not the level's";
            wanted.erase(brought);
        } else {
            EXPECT_TRUE(own || (original != original_.end() && original->second == content))
                << file << " holds " << content.substr(0, 30);
        }
    }
    for (const auto& [file, content] : wanted)
        ADD_FAILURE() << name << " was told as installed without " << file;
}

void ModelWorld::ExpectOriginal()
{
    levels_["-"].files.clear();
    ExpectInstalled("-");
    const Files now = box_.Snapshot("trle");
    for (const auto& [file, content] : original_)
        EXPECT_TRUE(now.contains(file)) << "the original lacks " << file;
}

void ModelWorld::ExpectNoLeftovers()
{
    for (const auto& entry : fs::recursive_directory_iterator(box_.root)) {
        const std::string name = entry.path().filename().native();
        EXPECT_FALSE((name.starts_with(".kv~") && name != ".kv~lock") || name.starts_with("_temp"))
            << "left behind: " << entry.path();
    }
}

void ModelWorld::Step()
{
    struct Row {
        int weight;
        void (ModelWorld::*run)(const Trouble&);
        bool movesSlots = false;
    };
    static constexpr Row rows[] = {{8, &ModelWorld::Play},
                                   {3, &ModelWorld::Original},
                                   {5, &ModelWorld::Savegames, true},
                                   {1, &ModelWorld::Edit},
                                   {3, &ModelWorld::Undo, true},
                                   {1, &ModelWorld::Compress},
                                   {2, &ModelWorld::LoadOther},
                                   {2, &ModelWorld::ReadAgain},
                                   {1, &ModelWorld::RemoveLevel, true},
                                   {2, &ModelWorld::AddLevel}};
    if (Roll(2) == 0)
        GameSaves();
    if (Roll(6) == 0)
        PlayerWorks();
    int at = Roll(28);
    const Row* row = rows;
    while ((at -= row->weight) >= 0)
        ++row;
    const Slots before = SlotsOfAll(Store::ButOfStanding);
    (this->*row->run)(RandomTrouble());
    if (!row->movesSlots)
        ExpectSameSlots(before);
    ExpectNothingLost();
    ExpectStateWhereItBelongs();
    ExpectNoLeftovers();
}

} // namespace kestrova::testing
