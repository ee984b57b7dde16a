#include "intake/add_queue.h"

#include "core/ordered_jobs.h"
#include "formats/archive_file.h"
#include "intake/queue_texts.h"
#include "intake/source_choice.h"
#include "intake/unpacked_ahead.h"
#include "levels/new_level.h"
#include "levels/unfinished_intake.h"
#include "sandbox/faults.h"
#include "storage/zl_file.h"
#include "upkeep/load_archive.h"
#include "world/tool_box.h"
#include "world/zip_builder.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

/// A package of one level, and of what else belongs to it.
void WriteLevelZip(const World& box, const std::string& file, const std::string& tr4,
                   const std::string& content)
{
    box.Write(file, BuildZip({{tr4, content}, {"script.dat", "script"}, {"read me.txt", "read"}}));
}

std::vector<QueueSource> Given(const World& box, const std::vector<std::string>& names)
{
    std::vector<Path> given;
    for (const std::string& name : names)
        given.push_back(box / name);
    return SourcesOfLevels(given);
}

QueueEnd RunQueue(
    World& box, AddQueue& queue, const AddQueue::Changed& changed = [](auto) {})
{
    const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
    queue.Run(
        *progress, [](LevelDraft&) {}, changed);
    return queue.End();
}

std::vector<std::string> NamesInFile(const World& box)
{
    std::vector<std::string> names;
    const auto content = ParseArchive(box.Read("home/LevelArchive.kva"));
    EXPECT_TRUE(content);
    for (const LevelRecord& level : content ? content->levels : std::vector<LevelRecord>{})
        names.emplace_back(Trim(level.levelName));
    return names;
}

/// Folders with files that no level of the list has; an empty one is taken by the next level.
std::vector<std::string> HalfLevels(const World& box)
{
    std::vector<std::string> half;
    const auto content = ParseArchive(box.Read("home/LevelArchive.kva"));
    for (const auto& folder : std::filesystem::directory_iterator(box / "levels")) {
        const std::string name = folder.path().filename();
        const int code = name.starts_with("LEVEL_") ? std::stoi(name.substr(6)) : 0;
        const bool listed = !content || std::any_of(content->levels.begin(), content->levels.end(),
                                                    [&](const LevelRecord& level) {
                                                        return level.levelCode == code;
                                                    });
        if (!listed && !box.Snapshot("levels/" + name).empty())
            half.push_back(name);
    }
    return half;
}

class AddQueueTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        box.UseRealTools();
        box.MakeTrle();
        box.MakeBackupAndArchive();
    }
    ToolBox box;
};

TEST_F(AddQueueTest, EachSourceGoesItsOwnWayAndNoneKeepsTheNextFromItsTurn)
{
    box.AddLevel("Had before", {{"old.tr4", "old level"}});
    box.Write("levels/LEVEL_0001/files/old.tr4", "old level");
    ASSERT_TRUE(WriteTr4InfOf(box.session.Folders(), 1,
                              {Tr4EntryOf("old.tr4", box / "levels/LEVEL_0001/files/old.tr4")}));
    WriteLevelZip(box, "down/Salt Harbour.zip", "salt.tr4", "salt");
    WriteLevelZip(box, "down/Salt again.zip", "SALT.TR4", "tlas");
    WriteLevelZip(box, "down/Old.zip", "old.tr4", "level old");
    box.Write("down/Broken.zip", "PK\3\4 and no more");
    box.Write("down/Folder Level/data/a.tr4", "in a folder");
    box.Write("down/Folder Level/script.dat", "script");
    box.Write("down/installer.exe", "MZ installs");
    box.Write("down/letter.txt", "no level");
    box.Write("empty/letter.txt", "no level");
    const auto before = box.Snapshot("down");

    AddQueue queue{box.session};
    queue.Take(Given(box, {"down/Broken.zip", "down/Salt Harbour.zip", "down/Salt again.zip",
                           "down/Old.zip", "down/installer.exe", "down/letter.txt", "gone.zip",
                           "down/Salt Harbour.zip", "empty", "down/Folder Level"}));
    std::vector<std::size_t> begun;
    EXPECT_EQ(RunQueue(box, queue,
                       [&](std::size_t index) {
                           if (queue.Items()[index].state == QueueState::UnderWay)
                               begun.push_back(index);
                       }),
              QueueEnd::Done);

    const QueueState expected[] = {QueueState::Refused, QueueState::Added,    QueueState::Skipped,
                                   QueueState::Skipped, QueueState::NeedsYou, QueueState::Refused,
                                   QueueState::Refused, QueueState::Skipped,  QueueState::Refused,
                                   QueueState::Added};
    for (std::size_t i = 0; i < std::size(expected); ++i)
        EXPECT_EQ(queue.Items()[i].state, expected[i]) << i << ": " << queue.Items()[i].details;
    EXPECT_EQ(begun, (std::vector<std::size_t>{0, 1, 2, 3, 4, 5, 6, 9}));
    EXPECT_EQ(queue.Items()[2].code, queue.Items()[1].code) << "it came with the same drop";
    EXPECT_EQ(queue.Items()[3].name, "Had before");
    EXPECT_NE(queue.Items()[6].why.find("gone.zip"), std::string::npos);
    EXPECT_NE(queue.Items()[5].why.find("tr4"), std::string::npos);
    EXPECT_FALSE(queue.AllIn());
    EXPECT_EQ(CountsText(queue), "2 added, 3 skipped, 1 needing you, 4 refused");

    EXPECT_EQ(NamesInFile(box),
              (std::vector<std::string>{"- TRLE: Original configuration -", "Had before",
                                        "Salt Harbour", "Folder Level"}));
    EXPECT_EQ(HalfLevels(box), std::vector<std::string>{});
    EXPECT_EQ(box.session.archive.levels.size(), 4U);
    EXPECT_EQ(box.list.selected, queue.Items()[9].code);
    EXPECT_EQ(box.Read("levels/LEVEL_0003/files/a.tr4"), "in a folder");
    EXPECT_EQ(box.Snapshot("down"), before);
    EXPECT_TRUE(box.host.told.empty()) << box.host.AllTold();

    // The one that could not come in does so when it is mended; what is in is left alone.
    WriteLevelZip(box, "down/Broken.zip", "mended.tr4", "mended");
    AddQueue again{box.session};
    again.Take(Given(box, {"down"}));
    EXPECT_EQ(RunQueue(box, again), QueueEnd::Done);
    EXPECT_EQ(again.Count(QueueState::Added), 1U) << QueueText(again);
    EXPECT_EQ(again.Count(QueueState::Skipped), 4U) << QueueText(again);
    EXPECT_EQ(again.Count(QueueState::NeedsYou), 1U) << "the program has a row as well";
    EXPECT_FALSE(again.AllIn());
}

TEST_F(AddQueueTest, WhatSharesOnlySomeLevelFilesWithAnotherComesIn)
{
    for (const char* name : {"One", "Two"})
        box.Write(std::string{"down/"} + name + ".zip",
                  BuildZip({{"title.tr4", "title"}, {std::string{name} + ".tr4", name}}));
    AddQueue queue{box.session};
    queue.Take(Given(box, {"down"}));
    RunQueue(box, queue);
    EXPECT_EQ(queue.Count(QueueState::Added), 2U) << QueueText(queue);
}

TEST_F(AddQueueTest, QuestionsLeaveTheSourceToThePerson)
{
    // Two packages of one source bring a file of one name: which one counts is a question.
    box.Write("down/Both/level.tr4", "first");
    box.Write("down/Both/more.zip", BuildZip({{"level.tr4", "second"}}));
    // Language files of which none is the Level Editor's own.
    box.Write("down/Tongues.zip",
              BuildZip({{"t.tr4", "t"}, {"klingon.dat", "k"}, {"latin.dat", "l"}}));
    WriteLevelZip(box, "down/Well.zip", "well.tr4", "well");
    AddQueue queue{box.session};
    queue.Take(Given(box, {"down"}));
    EXPECT_EQ(RunQueue(box, queue), QueueEnd::Done);
    ASSERT_EQ(queue.Items().size(), 3U);
    EXPECT_EQ(queue.Items()[1].state, QueueState::NeedsYou) << QueueText(queue);
    EXPECT_EQ(queue.Items()[2].state, QueueState::Added) << QueueText(queue);
    EXPECT_EQ(HalfLevels(box), std::vector<std::string>{});
    // The person added it alone.
    queue.NoteAdded(1, queue.Items()[2].code);
    EXPECT_EQ(queue.Count(QueueState::NeedsYou), queue.Items()[0].state == QueueState::NeedsYou);
}

TEST_F(AddQueueTest, WhatStandsInTheWayOfAllEndsIt)
{
    const auto fill = [&](const std::string& folder, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            const std::string name = folder + std::to_string(i);
            WriteLevelZip(box, folder + "/" + name + ".zip", name + ".tr4", name);
        }
    };
    // What workers have unpacked already needs no more room.
    const std::size_t many = OrderedJobs::Cores() + 3;
    fill("room", many);
    AddQueue full{box.session};
    full.Take(Given(box, {"room"}));
    EXPECT_EQ(RunQueue(box, full,
                       [&](std::size_t index) {
                           if (full.Items()[index].state == QueueState::Added)
                               box.machine.free = 10;
                       }),
              QueueEnd::NoRoom)
        << QueueText(full);
    EXPECT_EQ(full.Count(QueueState::Added) + full.Count(QueueState::Refused) +
                  full.Count(QueueState::Waiting),
              many);
    EXPECT_GE(full.Count(QueueState::Added), 1U);
    EXPECT_EQ(HalfLevels(box), std::vector<std::string>{});
    EXPECT_NE(QueueText(full).find("The disk is full"), std::string::npos);

    box.machine.free = UINT64_C(1) << 40;
    fill("away", 3);
    AddQueue away{box.session};
    away.Take(Given(box, {"away"}));
    EXPECT_EQ(RunQueue(box, away,
                       [&](std::size_t index) {
                           if (away.Items()[index].state == QueueState::Added)
                               std::filesystem::rename(box / "levels", box / "unplugged");
                       }),
              QueueEnd::NoArchive)
        << QueueText(away);
    EXPECT_EQ(away.Count(QueueState::Added), 1U);
    EXPECT_EQ(away.Count(QueueState::Waiting), 1U);
    std::filesystem::rename(box / "unplugged", box / "levels");

    const Path file = box.session.ArchivePath();
    const FailingCalls fails{platform::FileAction::Rename, file.filename().native(), -1};
    fill("list", 3);
    AddQueue list{box.session};
    list.Take(Given(box, {"list"}));
    EXPECT_EQ(RunQueue(box, list), QueueEnd::NotSaved) << QueueText(list);
    EXPECT_EQ(list.Count(QueueState::Added), 0U);
    EXPECT_EQ(HalfLevels(box), std::vector<std::string>{});
}

TEST(AddQueueWalk, StopTakesBackTheLevelUnderWayWhereverItIsPressed)
{
    bool ended = false;
    std::set<std::size_t> counts;
    for (int step = 1; !ended; step += 2) {
        ASSERT_LT(step, 3000);
        ToolBox box;
        box.UseRealTools();
        box.MakeTrle();
        box.MakeBackupAndArchive();
        for (const char* name : {"1", "2", "3"})
            WriteLevelZip(box, std::string{"down/"} + name + ".zip", std::string{name} + ".tr4",
                          name);
        box.host.StopAtStep(step);
        AddQueue queue{box.session};
        queue.Take(Given(box, {"down"}));
        const QueueEnd end = RunQueue(box, queue);
        const std::size_t added = queue.Count(QueueState::Added);
        ended = end == QueueEnd::Done;
        counts.insert(added);
        EXPECT_EQ(added + queue.Count(QueueState::Waiting), 3U) << step << QueueText(queue);
        EXPECT_EQ(NamesInFile(box).size(), added + 1) << step;
        EXPECT_EQ(HalfLevels(box), std::vector<std::string>{}) << step;
        if (ended || added > 0)
            continue;
        // It goes on where it was stopped.
        box.host.StopAtStep(0);
        EXPECT_EQ(RunQueue(box, queue), QueueEnd::Done) << step;
        EXPECT_EQ(queue.Count(QueueState::Added), 3U) << step << QueueText(queue);
    }
    EXPECT_EQ(counts, (std::set<std::size_t>{0, 1, 2, 3}));
}

void WriteThree(const World& box)
{
    WriteLevelZip(box, "down/1.zip", "1.tr4", "one");
    box.Write("down/2/2.tr4", "two");
    box.Write("down/2/savegame.1", SavegameBytes("Mine", 1));
    WriteLevelZip(box, "down/3.zip", "3.tr4", "three");
}

TEST(AddQueueWalk, AFailureAnywhereLeavesWholeLevelsAlone)
{
    int points = 0;
    for (int step = 1;; step = NextPoint(step)) {
        ASSERT_LT(step, 3000);
        World box;
        box.MakeTrle();
        box.MakeBackupAndArchive();
        WriteThree(box);
        AddQueue queue{box.session};
        queue.Take(Given(box, {"down"}));
        const FaultRun run = WithFaultAt(step, [&] {
            RunQueue(box, queue);
            return queue.AllIn();
        });
        ++points;
        EXPECT_EQ(NamesInFile(box).size(), queue.Count(QueueState::Added) + 1)
            << run.call << QueueText(queue);
        EXPECT_EQ(box.session.archive.levels.size(), queue.Count(QueueState::Added) + 1)
            << run.call;
        EXPECT_EQ(HalfLevels(box), std::vector<std::string>{}) << run.call;
        for (const QueueItem& item : queue.Items())
            EXPECT_TRUE(item.state == QueueState::Added || item.state == QueueState::Waiting ||
                        !item.why.empty())
                << run.call;
        if (!run.reached)
            break;
    }
    TellPoints(points, 100 / WalkStride());
}

TEST(AddQueueWalk, AKillLosesNoFinishedLevelAndLeavesNoHalfOne)
{
    int points = 0;
    std::set<std::size_t> counts;
    for (int step = 1;; step = NextPoint(step)) {
        ASSERT_LT(step, 3000);
        World box;
        box.host.AnswerAll(true);
        box.MakeTrle();
        box.MakeBackupAndArchive();
        WriteThree(box);
        const KillRun run = WithKillAt(step, [&] {
            AddQueue queue{box.session};
            queue.Take(Given(box, {"down"}));
            RunQueue(box, queue, [&](std::size_t index) {
                if (queue.Items()[index].state == QueueState::Added)
                    std::ofstream{box / "finished", std::ios::app} << queue.Items()[index].code;
            });
            return true;
        });
        ++points;
        const std::size_t finished = box.Has("finished") ? box.Read("finished").size() : 0;
        const std::size_t listed = NamesInFile(box).size() - 1;
        counts.insert(listed);
        EXPECT_GE(listed, finished) << run.call;
        Session fresh = box.Reopened();
        ASSERT_TRUE(ReadArchive(fresh, box.session.ArchivePath())) << run.call;
        // The terminal asks nothing and goes by the mark alone.
        ClearUnfinishedIntakes(fresh.host, fresh.Folders(), fresh.archive);
        EXPECT_EQ(HalfLevels(box), std::vector<std::string>{}) << run.call;
        EXPECT_FALSE(box.Has("levels/LEVEL_000" + std::to_string(listed) + "/.kv~intake"))
            << run.call;
        for (std::size_t code = 1; code <= listed; ++code)
            EXPECT_TRUE(box.Has("levels/LEVEL_000" + std::to_string(code) + "/files/" +
                                std::to_string(code) + ".tr4"))
                << run.call;
        if (!run.killed)
            break;
    }
    EXPECT_EQ(counts, (std::set<std::size_t>{0, 1, 2, 3}));
    TellPoints(points, 100 / WalkStride());
}

TEST_F(AddQueueTest, FoldersAreTakenApartIntoTheirLevels)
{
    box.Write("one/level.TR4", "level");
    box.Write("one/inner.zip", "zip");
    box.Write("two/data/level.tom", "level");
    box.Write("two/sounds.zip", "zip");
    box.Write("downloads/b.ZIP", "zip");
    box.Write("downloads/a.7z", "7z");
    box.Write("downloads/c level/deep/down/x.tr4", "level");
    box.Write("downloads/pictures/view.jpg", "view");
    box.Write("downloads/page.html", "page");
    box.Write("downloads/older/d.zip", "zip");
    box.Write("downloads/older/still/e.rar", "rar");
    std::filesystem::create_symlink(box / "downloads/b.ZIP", box / "link.zip");
    std::filesystem::create_symlink(box / "gone.zip", box / "downloads/broken.zip");
    const auto names = [&](const std::vector<std::string>& given) {
        std::vector<std::string> found;
        for (const QueueSource& source : Given(box, given))
            found.push_back(source.place.lexically_relative(box.root).native() +
                            (source.isTwin ? " twice" : "") + (source.holdsNone ? " none" : "") +
                            (source.packagesBelow == 0
                                 ? ""
                                 : " below " + std::to_string(source.packagesBelow)));
        return found;
    };
    using Names = std::vector<std::string>;
    EXPECT_EQ(names({"one"}), Names{"one"});
    EXPECT_EQ(names({"two"}), Names{"two"});
    EXPECT_EQ(names({"downloads", "link.zip", "one", "one", "downloads/pictures", "not there"}),
              (Names{"downloads/a.7z", "downloads/b.ZIP", "downloads/broken.zip",
                     "downloads/c level", "downloads/older below 2", "link.zip twice", "one",
                     "one twice", "downloads/pictures none", "not there"}));

    for (int i = 0; i < 10'000; ++i)
        std::ofstream{box / ("downloads/pictures/page" + std::to_string(i))};
    EXPECT_EQ(names({"downloads/pictures"}), Names{"downloads/pictures none"});
}

TEST_F(AddQueueTest, ItsChooserOffersEveryKindOfPackageAtFirst)
{
    box.host.WillChoose("Select packages", std::nullopt);
    EXPECT_THAT(ChooseSourceFiles(box.session.host, box.session.preferences), ::testing::IsEmpty());
    const std::string several = box.host.lastFilter;
    box.host.WillChoose("Select source file", std::nullopt);
    EXPECT_FALSE(ChooseSourceFile(box.session.host, box.session.preferences));
    EXPECT_EQ(several, box.host.lastFilter);
    EXPECT_THAT(Split(several, '|').at(1),
                ::testing::AllOf(::testing::HasSubstr("*.7z"), ::testing::HasSubstr("*.rar")));
}

TEST_F(AddQueueTest, WorkersUnpackOnlyWhatStaysAsItIs)
{
    const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
    UnpackedAhead ahead{box.machine, box.session.Folders(), ToolsOf(box.session),
                        DeflateAhead::AllButWaves};
    WriteLevelZip(box, "a.zip", "a.tr4", "a");
    box.Write("bad.zip", "no zip");
    box.Write("file.tr4", "no package");
    EXPECT_FALSE(ahead.Begin(box / "file.tr4", {}));
    EXPECT_FALSE(ahead.Begin(box / "gone.zip", {}));
    EXPECT_FALSE(ahead.Take(box / "a.zip", *progress)) << "it was not begun";
    ASSERT_TRUE(ahead.Begin(box / "a.zip", {}));
    EXPECT_TRUE(ahead.Begin(box / "a.zip", {})) << "once is enough";
    {
        const auto came = ahead.Take(box / "a.zip", *progress);
        ASSERT_TRUE(came);
        const Path level = came->place->Folder() / "a.tr4";
        EXPECT_EQ(*ExpandZlBytes(ahead.Streams().Of(level), 1), "a");
        EXPECT_EQ(ahead.Streams().Of(came->place->Folder() / "script.dat"), "");
    }
    box.Write("wave.zip", BuildZip({{"a.tr4", "a"}, {"100.wav", "wave"}}));
    ASSERT_TRUE(ahead.Begin(box / "wave.zip", {}));
    {
        const auto wave = ahead.Take(box / "wave.zip", *progress);
        ASSERT_TRUE(wave);
        EXPECT_EQ(ahead.Streams().Of(wave->place->Folder() / "100.wav"), "") << "it becomes an mp3";
    }
    ahead.Drop(box / "wave.zip");
    EXPECT_EQ(ahead.Streams().Bytes(), 0U);
    ASSERT_TRUE(ahead.Begin(box / "bad.zip", {}));
    EXPECT_FALSE(ahead.Take(box / "bad.zip", *progress));
    ASSERT_TRUE(ahead.Begin(box / "a.zip", {}));
    WriteLevelZip(box, "a.zip", "a.tr4", "another one");
    EXPECT_FALSE(ahead.Take(box / "a.zip", *progress)) << "it is another one by now";
    ASSERT_TRUE(ahead.Begin(box / "a.zip", {}));
    ahead.Drop(box / "a.zip");
    EXPECT_FALSE(ahead.Take(box / "a.zip", *progress));
    for (const auto& entry : std::filesystem::directory_iterator(box.session.programFolder))
        EXPECT_FALSE(entry.path().filename().native().starts_with(stagedPrefix) &&
                     entry.is_directory())
            << entry.path();
}

} // namespace

} // namespace kestrova::testing
