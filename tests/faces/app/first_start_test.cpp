#include "app/first_start.h"

#include "app/practice_library.h"
#include "app/start_up.h"
#include "practice/content.h"
#include "sandbox/faults.h"
#include "session/preferences_file.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{
namespace
{

/// A person whose program knows nothing yet.
class NewWorld : public World
{
public:
    NewWorld()
    {
        MakeTrle();
        session.preferences = DefaultPreferences();
        session.archive = {};
        std::filesystem::remove(root / "levels");
    }
    /// What the next start of the program sees.
    [[nodiscard]] Session NextStart()
    {
        Session next{host, machine, list, session.programFolder};
        next.preferences = DefaultPreferences();
        return next;
    }
    void Choose(FirstStart& page, bool original = true) const
    {
        page.SetTrle((root / "trle").native());
        page.SetLevels((root / "levels").native());
        page.SetOriginal(original);
    }
    /// A practice folder as `MakePracticeFolder` makes it, but small.
    void MakeSmallPractice() const
    {
        const Path practice = root / "home/practice";
        std::filesystem::create_directories(practice);
        std::filesystem::copy(root / "trle", practice / "trle",
                              std::filesystem::copy_options::recursive);
        for (const PracticeLevel& level : PracticeLevels())
            Write("home/practice/levels/" + GetMsg(level.name) + "/data/level1.tr4",
                  "data of " + GetMsg(level.name));
    }
};

std::string VerdictText(const FirstStart::Verdict& verdict)
{
    return (verdict.fine ? "fine: " : "not: ") + verdict.words;
}

} // namespace

TEST(FirstStart, SaysAtOnceWhetherAFolderWillDoAndWhyNot)
{
    NewWorld box;
    FirstStart page{box.session, {}};
    EXPECT_EQ(VerdictText(page.OfTrle()).find("not: No Level Editor was found"), 0U);
    EXPECT_FALSE(page.CanStart());
    box.Write("trle/Kestrva.txt", "a marker");
    std::filesystem::create_directories(box / "other");
    for (const auto& [typed, words] :
         {std::pair{box / "trle", "fine: This is a Level Editor's folder, and a custom level"},
          std::pair{box / "other", "not: Not right folder: Missing file 'tomb4.exe'"},
          std::pair{box / "none", "not: Not right folder"},
          std::pair{Path{"  "}, "not: No Level"}}) {
        page.SetTrle(typed.native());
        EXPECT_EQ(VerdictText(page.OfTrle()).find(words), 0U) << VerdictText(page.OfTrle());
        EXPECT_EQ(page.CanStart(), page.OfTrle().fine);
    }
    const Path far = box / "far" / std::string(200, 'x');
    std::filesystem::create_directories(far.parent_path());
    std::filesystem::copy(box / "trle", far, std::filesystem::copy_options::recursive);
    const Path farther = far / std::string(60, 'y');
    std::filesystem::rename(far, box / "far/z");
    std::filesystem::create_directories(far);
    std::filesystem::rename(box / "far/z", farther);
    page.SetTrle(farther.native());
    EXPECT_EQ(VerdictText(page.OfTrle()).find("not: This folder's name is too long"), 0U);
    box.Write("person/trle/tomb4.exe", "");
    page.SetTrle("~/trle");
    EXPECT_NE(page.OfTrle().words.find((box / "person/trle").native()), std::string::npos);
}

TEST(FirstStart, SaysWhatBecomesOfTheLevels)
{
    NewWorld box;
    FirstStart page{box.session, {}};
    EXPECT_EQ(page.Choices().levels, (box / "home/LevelFolder").native()) << "it is proposed";
    EXPECT_FALSE(box.Has("home/LevelFolder")) << "and not made";
    const auto proposed = [&](const char* home) {
        std::filesystem::create_directories(box / home);
        Session session{box.host, box.machine, box.list, box / home};
        session.preferences = DefaultPreferences();
        return FirstStart{session, {}}.Choices().levels;
    };
    box.Write("person/trle/readme.txt", "");
    EXPECT_EQ(proposed("person/.local/share/kestrova"), (box / "person/Kestrova-levels").native())
        << "where a player finds it";
    box.Write("person/Kestrova-levels/mine.txt", "");
    EXPECT_EQ(proposed("person/.local/share/kestrova"), (box / "person/LevelFolder").native());
    box.Write("filled/photo.jpg", "mine");
    box.Write("a file", "");
    box.Write("broken/my.kva", "no archive");
    for (const auto& [typed, words] :
         {std::pair{box / "levels", "fine: A new, empty archive"},
          std::pair{box / "filled", "fine: This folder is not empty"},
          std::pair{box / "broken", "fine: This folder is not empty"},
          std::pair{box / "a file", "not: A file stands there"},
          std::pair{box / std::string(220, 'l'), "not: The name of this folder is too long"},
          std::pair{box / "gone.kva", "not: This archive is not there"},
          std::pair{Path{}, "not: Choose a folder"}}) {
        page.SetLevels(typed.native());
        EXPECT_EQ(VerdictText(page.OfLevels()).find(words), 0U) << VerdictText(page.OfLevels());
    }
    box.Choose(page);
    page.SetLevels((box / "filled").native());
    ASSERT_TRUE(page.Begin()) << box.host.AllTold();
    EXPECT_EQ(box.Read("filled/photo.jpg"), "mine");
    EXPECT_TRUE(box.host.WasTold("must be empty"));
    EXPECT_EQ(box.session.archive.header.secondaryFolder, (box / "filled/LevelFolder").native());
    EXPECT_FALSE(box.Has("home/first-start.json"));

    // Preferences that are lost lose no archive: it is proposed, and its folder leads to it.
    const Path archive = box.session.ArchivePath();
    box.session.locks = {};
    for (const bool opens : {true, false}) {
        Session next = box.NextStart();
        FirstStart again{next, {}};
        EXPECT_EQ(again.Choices().levels, archive.native());
        box.Choose(again);
        again.SetLevels((box / "filled/LevelFolder").native());
        EXPECT_EQ(VerdictText(again.OfLevels()).find("fine: An archive of this folder is there"),
                  0U);
        box.host.WillAsk("Do you want to open it?", opens);
        ASSERT_TRUE(again.Begin()) << box.host.AllTold();
        EXPECT_EQ(next.ArchivePath() == archive, opens);
        std::filesystem::remove(box / "home/Kestrova.prf");
    }
}

TEST(FirstStart, TellsOfTheRoomAndOfTheSizes)
{
    NewWorld box;
    FirstStart page{box.session, {}};
    box.Choose(page);
    while (page.Measures())
        ;
    ASSERT_TRUE(page.Sizes());
    EXPECT_LT(page.Sizes()->compact, page.Sizes()->full);
    EXPECT_TRUE(page.OfRoom().fine);
    box.machine.free = UINT64_C(100) << 20;
    EXPECT_FALSE(page.OfRoom().fine);
    page.SetCompact(true);
    EXPECT_TRUE(page.OfRoom().fine) << page.OfRoom().words;
    box.machine.free = 1000;
    box.host.WillAsk("go on without one?", false);
    EXPECT_FALSE(page.Begin());
    EXPECT_TRUE(box.host.WasTold("has not sufficient free space"));
    // Nothing of the attempt is left in the session, and all of the choice.
    EXPECT_EQ(box.session.TrleFolder(), "");
    EXPECT_FALSE(box.session.archive.Loaded());
    EXPECT_FALSE(box.Has("levels"));
    box.session.locks = {};
    Session next = box.NextStart();
    ASSERT_TRUE(FirstStart::IsDue(next));
    FirstStart again{next, {}};
    EXPECT_EQ(again.Choices().trle, (box / "trle").native());
    EXPECT_EQ(again.Choices().levels, (box / "levels").native());
    EXPECT_TRUE(again.Choices().compact);
    EXPECT_FALSE(again.IsOriginal()) << "that is said anew";
    box.machine.free = UINT64_C(1) << 40;
    again.SetOriginal(true);
    EXPECT_TRUE(again.Begin()) << box.host.AllTold();
    EXPECT_FALSE(next.preferences.fullBackup);
}

TEST(FirstStart, IsOverWhenTheTerminalHasDoneTheRest)
{
    NewWorld box;
    {
        FirstStart page{box.session, {}};
        box.Choose(page);
    }
    box.MakeBackupAndArchive();
    box.session.preferences.trlePath = (box / "trle").native();
    EXPECT_FALSE(FirstStart::IsDue(box.session));
    EXPECT_FALSE(box.Has("home/first-start.json"));
    box.Write("home/first-start.json", "{}");
    EXPECT_FALSE(FirstStart::IsDue(box.session)) << "a damaged note is none";
}

TEST(FirstStart, KilledAnywhereItIsShownAgainAndEndsWhole)
{
    int points = 0;
    for (int n = 1;; n = NextPoint(n + 4)) {
        NewWorld box;
        {
            FirstStart page{box.session, {}};
            box.Choose(page);
        }
        const KillRun run = WithKillAt(n, [&] {
            box.host.AnswerAll(false);
            FirstStart page{box.session, {}};
            page.SetOriginal(true);
            return page.Begin();
        });
        if (!run.killed) {
            EXPECT_TRUE(run.answer);
            break;
        }
        ++points;
        SCOPED_TRACE(run.call);
        box.host.AnswerAll(true);
        Session next = box.NextStart();
        bool firstRun = false;
        ASSERT_TRUE(OpenSession(next, true, firstRun)) << box.host.AllTold();
        ASSERT_TRUE(FirstStart::IsDue(next) || !next.RememberedArchive().empty());
        FirstStart page{next, {}};
        EXPECT_EQ(page.Choices().trle, (box / "trle").native());
        if (box.Has("home/backup_trle")) {
            EXPECT_EQ(box.Snapshot("home/backup_trle"), box.Snapshot("trle")) << "not whole";
        }
        page.SetOriginal(true);
        ASSERT_TRUE(page.Begin()) << box.host.AllTold();
        EXPECT_EQ(box.Snapshot("home/backup_trle"), box.Snapshot("trle"));
        EXPECT_EQ(next.archive.levels.size(), 1U);
        EXPECT_FALSE(FirstStart::IsDue(next));
    }
    TellPoints(points, 20);
}

TEST(PracticeLibrary, IsGoneOnWithAfterAStopAndEndsWithALevelChosen)
{
    int stops = 0;
    for (int step = 1;; step = NextPoint(step + 22)) {
        NewWorld box;
        box.MakeSmallPractice();
        box.host.AnswerAll(true); // that the folder, which was there, is original
        box.host.StopAtStep(step);
        bool done = false;
        {
            FirstStart page{box.session, {}};
            done = page.BeginPractice();
        }
        if (!done) {
            ++stops;
            EXPECT_TRUE(FirstStart::IsDue(box.session));
            EXPECT_FALSE(box.session.archive.Loaded());
            box.host.StopAtStep(0);
            FirstStart page{box.session, {}};
            ASSERT_TRUE(page.BeginPractice()) << box.host.AllTold();
        }
        ASSERT_EQ(box.session.archive.levels.size(), 6U) << "stopped at step " << step;
        EXPECT_EQ(box.session.ArchivePath(), box / "home/Practice.kva");
        ASSERT_TRUE(box.list.selected);
        EXPECT_EQ(
            Trim(
                box.session.archive.levels[static_cast<std::size_t>(*box.list.selected)].levelName),
            "The Clockmaker's Attic");
        EXPECT_FALSE(FirstStart::IsDue(box.session));
        EXPECT_FALSE(box.Has("home/first-start.json"));
        if (done)
            break;
    }
    EXPECT_GE(stops, 3);
}

} // namespace kestrova::testing
