#include "app/command_table.h"
#include "app/run_command.h"
#include "session/operation.h"
#include "world/world.h"

#include <gtest/gtest.h>
#include <set>

namespace kestrova::testing
{
namespace
{

TEST(CommandRows, AreToldApartAndStandWhereTheySay)
{
    std::set<std::string_view> menus;
    for (const MenuRow& menu : MenuTable())
        EXPECT_TRUE(menus.insert(menu.name).second) << menu.name;
    std::set<std::string_view> names;
    std::string_view word;
    for (const CommandRow& row : CommandTable()) {
        const InWindow& shown = row.window;
        for (const std::string_view name : {shown.control, shown.button})
            EXPECT_TRUE(name.empty() || names.insert(name).second) << name;
        EXPECT_EQ(shown.control.empty(), shown.menu.empty()) << shown.control;
        EXPECT_TRUE(shown.menu.empty() || menus.contains(shown.menu)) << shown.menu;
        const CommandRow* before = FindControl(shown.behind);
        EXPECT_TRUE(shown.behind.empty() || (before && before->window.menu == shown.menu))
            << shown.control;
        // The first row of a word speaks for all of them, which follow it, unless each has a verb
        // and speaks for itself.
        if (row.terminal.word.empty())
            continue;
        EXPECT_NE(row.run, nullptr) << row.terminal.word;
        const bool speaks = row.terminal.usage != Message{};
        EXPECT_TRUE(speaks || row.terminal.word == word) << row.terminal.word;
        EXPECT_TRUE(!speaks || row.terminal.word != word || !row.terminal.verb.empty())
            << row.terminal.word;
        word = row.terminal.word;
        if (row.needs >= Needs::Level) {
            EXPECT_GT(FindCommand(word)->terminal.mostWords, row.terminal.verb.empty() ? 0U : 1U);
        }
    }
}

/// The run that the words of a terminal make.
struct Said {
    explicit Said(World& world, const std::vector<std::string>& items)
        : arguments(ParseArguments(items, AllOptions())), run{world.session, face, arguments}
    {
    }
    [[nodiscard]] const CommandRow& Row() const
    {
        return RowOf(*FindCommand(arguments.command), run);
    }
    Face face;
    Arguments arguments;
    Run run;
};

TEST(CommandRows, AreFoundByVerbAndByWhatTheWordsAskFor)
{
    World world;
    const auto touches = [&](const std::vector<std::string>& items) {
        return Said{world, items}.Row().touches;
    };
    const auto needs = [&](const std::vector<std::string>& items) {
        return Said{world, items}.Row().needs;
    };
    EXPECT_EQ(touches({"saves", "list", "1"}), Touches::Nothing);
    EXPECT_EQ(touches({"saves", "archive", "1"}), Touches::Stores);
    EXPECT_EQ(touches({"author", "1"}), Touches::Nothing);
    EXPECT_EQ(touches({"author", "1", "--name", "N"}), Touches::Stores);
    EXPECT_EQ(needs({"original"}), Needs::Archive);
    EXPECT_EQ(needs({"original", "--full"}), Needs::Nothing) << "the way out of a broken archive";
    EXPECT_EQ(needs({"history", "bring-back", "1-1"}), Needs::Archive);
    EXPECT_EQ(needs({"history", "bring-back", "1-1", "--to", "x"}), Needs::Nothing);
    EXPECT_EQ(needs({"language", "set", "1"}), Needs::Level);
    EXPECT_EQ(needs({"language", "set", "--all"}), Needs::Archive);
    EXPECT_EQ(touches({"set"}), Touches::Nothing);
    EXPECT_EQ(needs({"set", "capture", "on"}), Needs::Nothing);
    EXPECT_EQ(needs({"set", "compress", "on"}), Needs::Archive);
}

TEST(CommandRows, TheLevelOfTheWordsIsReadBehindTheVerb)
{
    World world;
    Said plain{world, {"info", "7"}};
    EXPECT_EQ(WrongWords(*FindCommand("info"), plain.run), "");
    EXPECT_EQ(plain.run.level, 7);
    Said verb{world, {"saves", "archive", "12"}};
    EXPECT_EQ(WrongWords(*FindCommand("saves"), verb.run), "");
    EXPECT_EQ(verb.run.level, 12);
    Said wrong{world, {"language", "set", "one"}};
    EXPECT_NE(WrongWords(*FindCommand("language"), wrong.run).find("'one'"), std::string::npos);
}

/// Notes what a command of a window said went well.
class Notes : public Face
{
public:
    void Note(const std::string& text) override { notes.push_back(text); }
    void GameStarted() override { ++games; }
    std::vector<std::string> notes;
    int games = 0;
};

TEST(CommandsOfAWindow, WorkOnTheChosenLevelAndNotInTheMiddleOfWork)
{
    World world;
    world.MakeTrle();
    world.MakeBackupAndArchive();
    const LevelCode level = world.AddLevel("First", {{"level1.tr4", "First"}});
    const CommandRow& play = *FindControl("Pul_Play");
    Notes face;
    {
        const Operation operation{world.session};
        EXPECT_FALSE(RunOnChosen(play, world.session, face));
    }
    EXPECT_TRUE(world.host.told.empty());
    EXPECT_FALSE(RunOnChosen(play, world.session, face));
    EXPECT_TRUE(world.host.WasTold("No selected level"));
    world.list.Select(level);
    // The person's No to a running game holds back the files and the game.
    world.machine.running = {{77, "tomb4.exe"}};
    world.host.AnswerAll(false);
    EXPECT_FALSE(RunOnChosen(play, world.session, face));
    EXPECT_EQ(face.games, 0);
    world.machine.running.clear();
    EXPECT_TRUE(RunOnChosen(play, world.session, face)) << world.host.AllTold();
    EXPECT_EQ(world.Read("trle/DATA/level1.tr4"), "First");
    EXPECT_EQ(face.games, 1);
    EXPECT_EQ(face.notes, std::vector<std::string>{"Game started: First"});
    EXPECT_EQ(world.session.running.operations, 0);
}

} // namespace
} // namespace kestrova::testing
