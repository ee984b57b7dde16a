#include "levels/level_language.h"

#include "sandbox/faults.h"
#include "swap/install.h"
#include "swap/swap_preview.h"
#include "swap/verify.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using Files = std::map<std::string, std::string>;

const std::string levelFiles = "levels/LEVEL_0001/files";

/// An Italian Level Editor with its backup, and one English level.
class LanguageWorld : public World
{
public:
    LevelCode code = 0;

    LanguageWorld()
    {
        MakeTrle(2);
        std::filesystem::rename(root / "trle/English.DAT", root / "trle/Italiano.dat");
        Write("trle/Italiano.dat", "testi italiani");
        MakeBackupAndArchive();
        code = AddLevel("Level", {{"script.dat", "level script"},
                                  {"English.dat", "english texts"},
                                  {"level.tr4", "level"}});
    }
    [[nodiscard]] Files Level() const { return Snapshot(levelFiles); }
    bool Change(LanguageChange change)
    {
        return ChangeLanguageOfLevel(session, code, change, true);
    }
    /// The words of the only message; it is forgotten then.
    std::string Told()
    {
        EXPECT_EQ(host.told.size(), 1U) << host.AllTold();
        const std::string text = host.told.empty() ? std::string{} : host.told[0].text;
        host.told.clear();
        return text;
    }
};

const Files inEnglish = {
    {"script.dat", "level script"}, {"English.dat", "english texts"}, {"level.tr4", "level"}};
const Files inItalian = {{"script.dat", "level script"},
                         {"English.dat", "testi italiani"},
                         {"English.dat.bak", "english texts"},
                         {"level.tr4", "level"}};

TEST(LevelLanguage, GoesInUnderTheLevelsOwnNameAndComesBack)
{
    LanguageWorld world;
    EXPECT_FALSE(world.Change(LanguageChange::Original));
    EXPECT_EQ(world.Told(),
              "Error: Current level is not in your language: missing backup of .dat file");

    EXPECT_TRUE(world.Change(LanguageChange::Mine));
    EXPECT_EQ(world.Told(), "Current level now is in your language. If when you play it, you see "
                            "there are troubles you'll can restore original language whereby menu "
                            "command: [Level->Restore original language in current level]");
    EXPECT_EQ(world.Level(), inItalian);
    EXPECT_FALSE(world.Change(LanguageChange::Mine));
    EXPECT_EQ(world.Told(), "Error: In current level you have already set your language");
    EXPECT_EQ(world.Level(), inItalian);

    EXPECT_TRUE(world.Change(LanguageChange::Original));
    EXPECT_EQ(world.Told(), "Current level restored with original language");
    EXPECT_EQ(world.Level(), inEnglish);
    EXPECT_EQ(world.Snapshot("trle"), world.Snapshot("home/backup_trle"));
}

TEST(LevelLanguage, TellsWhyItCannotBeSet)
{
    const std::string already = "Current level is already in your language";
    const struct {
        Files files;
        std::string words;
    } cases[] = {
        {{{"a.tr4", ""}}, already},
        {{{"Script.DAT", ""}}, already},
        {{{"script.dat", ""}, {"italiano.DAT", ""}}, already},
        {{{"script.dat", ""}, {"english.dat", ""}, {"x.dat.bak", ""}},
         "In current level you have already set your language"},
        {{{"script.dat", ""}, {"english.dat", ""}}, ""},
    };
    for (const auto& row : cases) {
        LanguageWorld world;
        for (const auto& [name, content] : row.files)
            world.Write("work/" + name, content);
        LanguageFailure failure;
        std::string file;
        EXPECT_EQ(CanSetMyLanguage(world.session.Folders(), world / "work", failure, file),
                  row.words.empty());
        EXPECT_EQ(failure.words, row.words);
        EXPECT_EQ(file, "Italiano.dat");
    }
    LanguageWorld world;
    LanguageFailure failure;
    std::string file;
    std::filesystem::remove(world / "home/backup_trle/Italiano.dat");
    EXPECT_FALSE(CanSetMyLanguage(world.session.Folders(), world / levelFiles, failure, file));
    EXPECT_EQ(failure.words, "I cann't find your language.dat in current trle backup");
    world.Write("home/backup_trle/ENGLISH.dat", "");
    EXPECT_FALSE(CanSetMyLanguage(world.session.Folders(), world / levelFiles, failure, file));
    EXPECT_EQ(failure.words, "Your Tomb Raider Level Editor is the english version. Set english is "
                             "not necessary");
    EXPECT_FALSE(world.Change(LanguageChange::Original));
    EXPECT_EQ(world.Told(), "Error: Tomb Raider Level Editor version is english you have not to "
                            "set or restore language in custom levels");
}

TEST(LevelLanguage, OfSeveralFilesTheLastNameGetsMineAndAllComeBack)
{
    LanguageWorld world;
    world.Write(levelFiles + "/dutch.dat", "dutch texts");
    EXPECT_TRUE(world.Change(LanguageChange::Mine));
    Files files = inItalian;
    files["dutch.dat.bak"] = "dutch texts";
    EXPECT_EQ(world.Level(), files);
    EXPECT_TRUE(world.Change(LanguageChange::Original));
    files = inEnglish;
    files["dutch.dat"] = "dutch texts";
    EXPECT_EQ(world.Level(), files);

    // A file that the level got since is not overwritten by one that comes back.
    EXPECT_TRUE(world.Change(LanguageChange::Mine));
    world.Write(levelFiles + "/dutch.dat", "newer");
    world.host.told.clear();
    EXPECT_FALSE(world.Change(LanguageChange::Original));
    EXPECT_EQ(world.Told().find("Error: Error renaming file from '"), 0U);
    EXPECT_EQ(world.Level().at("English.dat.bak"), "english texts");
}

TEST(LevelLanguage, OfTheInstalledLevelChangesInBothPlacesAndLeavesNoTrace)
{
    LanguageWorld world;
    const Files original = world.Snapshot("trle");
    ASSERT_TRUE(InstallLevel(world.session, world.code)) << world.host.AllTold();
    EXPECT_FALSE(world.Has("trle/Italiano.dat"));
    const std::string marker = world.Read("trle/Kestrva.txt");

    EXPECT_TRUE(world.Change(LanguageChange::Mine));
    EXPECT_EQ(world.Read("trle/English.dat"), "testi italiani");
    EXPECT_TRUE(world.Change(LanguageChange::Original));
    EXPECT_EQ(world.Read("trle/English.dat"), "english texts");
    EXPECT_TRUE(world.Change(LanguageChange::Mine));
    EXPECT_EQ(world.Read("trle/Kestrva.txt"), marker);
    EXPECT_FALSE(world.Has("home/history/originals"));

    world.host.told.clear();
    ASSERT_TRUE(InstallLevel(world.session, originalCode));
    EXPECT_EQ(world.Snapshot("trle"), original);
    EXPECT_TRUE(world.host.told.empty()) << world.host.AllTold();
}

TEST(LevelLanguage, OfALevelThatARestartDamagedIsChangedAfterItWasMended)
{
    LanguageWorld world;
    ASSERT_TRUE(InstallLevel(world.session, world.code)) << world.host.AllTold();
    world.machine.bootId = "boot-2";
    world.Write("trle/DATA/level.tr4", "");
    EXPECT_TRUE(world.Change(LanguageChange::Mine));
    EXPECT_EQ(world.Read("trle/DATA/level.tr4"), "level");
    EXPECT_EQ(world.Read("trle/English.dat"), "testi italiani");
    EXPECT_TRUE(world.host.WasTold("level.tr4")) << world.host.AllTold();
    const auto differences = VerifyFolder(world.session);
    ASSERT_TRUE(differences);
    EXPECT_TRUE(differences->empty());
}

TEST(LevelLanguage, NeverLosesAFileOfTheLevelEditorsFolder)
{
    LanguageWorld world;
    const Files original = world.Snapshot("trle");
    ASSERT_TRUE(InstallLevel(world.session, world.code)) << world.host.AllTold();
    // Neither the backup nor the level has this one: the player put it there.
    world.Write("trle/English.dat", "the player's own texts");
    EXPECT_TRUE(world.Change(LanguageChange::Mine));
    EXPECT_EQ(world.Read("trle/English.dat"), "testi italiani");
    EXPECT_EQ(world.Read("home/history/originals/English.dat"), "the player's own texts");

    // A name that the level did not bring: the file there counts as replaced.
    EXPECT_TRUE(world.Change(LanguageChange::Original));
    world.Write("home/backup_trle/zulu.dat", "zulu original");
    world.Write("trle/Zulu.dat", "zulu original");
    world.Write(levelFiles + "/zulu.dat", "zulu level");
    EXPECT_TRUE(world.Change(LanguageChange::Mine));
    EXPECT_EQ(world.Read("trle/Zulu.dat"), "testi italiani");
    ASSERT_TRUE(InstallLevel(world.session, originalCode));
    Files back = original;
    back["zulu.dat"] = "zulu original";
    EXPECT_EQ(world.Snapshot("trle"), back);
}

/// Every state in which a change may end: the level's own file is there under one of its names, and
/// a restoring makes everything as it was.
void ExpectMendable(LanguageWorld& world, const Files& original, const std::string& where)
{
    const Files files = world.Level();
    const bool kept =
        (files.contains("English.dat.bak") && files.at("English.dat.bak") == "english texts") ||
        (files.contains("English.dat") && files.at("English.dat") == "english texts");
    EXPECT_TRUE(kept) << where;
    EXPECT_TRUE(files.contains("English.dat")) << "no language at all, " << where;
    EXPECT_EQ(files.at("script.dat"), "level script") << where;
    if (files.contains("English.dat.bak")) {
        EXPECT_TRUE(world.Change(LanguageChange::Original)) << where << world.host.AllTold();
    }
    EXPECT_EQ(world.Level(), inEnglish) << where;
    ASSERT_TRUE(InstallLevel(world.session, originalCode)) << where << world.host.AllTold();
    EXPECT_EQ(world.Snapshot("trle"), original) << where;
}

TEST(LevelLanguage, SurvivesEveryFailureAndEveryKill)
{
    int steps = 0;
    for (const LanguageChange change : {LanguageChange::Mine, LanguageChange::Original})
        for (const bool kill : {false, true})
            for (int n = 1;; n = NextPoint(n)) {
                ASSERT_LT(n, 100);
                LanguageWorld world;
                const Files original = world.Snapshot("trle");
                ASSERT_TRUE(InstallLevel(world.session, world.code));
                if (change == LanguageChange::Original) {
                    ASSERT_TRUE(world.Change(LanguageChange::Mine));
                }
                world.host.told.clear();
                const auto work = [&] { return world.Change(change); };
                bool reached = false;
                std::string where = kill ? "killed: " : "failed: ";
                if (kill) {
                    const KillRun run = WithKillAt(n, work);
                    reached = run.killed;
                    where += run.call;
                } else {
                    const FaultRun run = WithFaultAt(n, work);
                    reached = run.reached;
                    where += run.call;
                    // Said plainly only when both places have what was wanted.
                    const Files files = world.Level();
                    const bool whole =
                        change == LanguageChange::Mine ? files == inItalian : files == inEnglish;
                    ASSERT_FALSE(world.host.told.empty()) << where;
                    EXPECT_TRUE(
                        world.host.told[0].tone != Tone::Plain ||
                        (whole && world.Read("trle/English.dat") == files.at("English.dat")))
                        << where;
                    steps += reached ? 1 : 0;
                }
                if (!reached)
                    break;
                ExpectMendable(world, original, where);
            }
    TellPoints(steps, 20);
}

TEST(LevelLanguage, SurvivesEveryFailedReadAndLook)
{
    for (const LanguageChange change : {LanguageChange::Mine, LanguageChange::Original})
        AtEachReadAndLook([&](const FailingRun& failing) {
            LanguageWorld world;
            const Files original = world.Snapshot("trle");
            EXPECT_TRUE(InstallLevel(world.session, world.code));
            if (change == LanguageChange::Original) {
                EXPECT_TRUE(world.Change(LanguageChange::Mine));
            }
            world.host.told.clear();
            const FaultRun run = failing([&] { return world.Change(change); });
            EXPECT_FALSE(world.host.told.empty());
            ExpectMendable(world, original, run.call);
            return run;
        });
}

TEST(LevelLanguage, CommandsRefuseInWords)
{
    LanguageWorld world;
    EXPECT_FALSE(ChangeLanguageOfSelected(world.session, LanguageChange::Mine));
    EXPECT_EQ(world.Told(), "No levels is selected");
    EXPECT_FALSE(ChangeLanguageOfSelected(world.session, LanguageChange::Original));
    EXPECT_EQ(world.Told(), "No selected levels");
    world.list.selected = originalCode;
    EXPECT_FALSE(ChangeLanguageOfSelected(world.session, LanguageChange::Mine));
    EXPECT_EQ(world.Told(), "You can not change language for trle original configuration");
    EXPECT_FALSE(ChangeLanguageOfLevel(world.session, 77, LanguageChange::Mine, true));
    EXPECT_NE(world.Told().find("77"), std::string::npos);
    world.list.selected = world.code;
    world.session.archive.levels[1].cdNumber = 1;
    EXPECT_FALSE(ChangeLanguageOfSelected(world.session, LanguageChange::Mine));
    EXPECT_EQ(world.Told().find("Current level is also on cd."), 0U);
    EXPECT_EQ(world.Level(), inEnglish);
}

TEST(LevelLanguage, OfAllLevelsIsCounted)
{
    LanguageWorld world;
    world.AddLevel("Italian already", {{"script.dat", ""}, {"italiano.dat", ""}});
    world.AddLevel("German", {{"script.dat", ""}, {"german.dat", "deutsch"}});
    EXPECT_TRUE(ChangeLanguageOfAll(world.session, LanguageChange::Mine));
    EXPECT_EQ(world.Told(), "Converted 2 levels in your language\r\nIt has not been possible to "
                            "set your language in 2 levels");
    EXPECT_EQ(world.Read("levels/LEVEL_0003/files/german.dat"), "testi italiani");
    EXPECT_EQ(world.list.refreshes, 1);
    EXPECT_TRUE(ChangeLanguageOfAll(world.session, LanguageChange::Original));
    EXPECT_EQ(world.Told(), "Restored 2 levels with original language");
    EXPECT_EQ(world.Level(), inEnglish);

    world.Write("home/backup_trle/english.dat", "");
    EXPECT_FALSE(ChangeLanguageOfAll(world.session, LanguageChange::Mine));
    EXPECT_EQ(world.Told(), "Warning: you have english version of Tomb Raider Level Editor.\r\n"
                            "It's not necessary change or restore language in this case, because "
                            "english is default language for custom levels");
    EXPECT_EQ(world.Level(), inEnglish);
}

} // namespace

} // namespace kestrova::testing
