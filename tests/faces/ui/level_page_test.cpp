// The chosen level beside the list: its pages, what is dropped there, and what Play says.
#include "archive/library_notes.h"
#include "pictures/jpeg.h"
#include "ui/dialogs/shot_panes.h"
#include "ui/main/level_model.h"
#include "ui/main/savegames_page.h"
#include "ui/widgets/picture_view.h"
#include "ui/widgets/stars_box.h"
#include "window_world.h"

#include <QAction>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QHeaderView>
#include <QListView>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <functional>

namespace kestrova::testing
{

namespace
{

/// No process has such a number, so nobody is told of its end.
constexpr std::int64_t noProcess = 2'147'483'000;

/// A level that rests, with savegames in its slots, in an archive slot and in the history.
struct LevelPageWorld : WindowWorld {
    LevelCode level = AddLevel("Dawn");
    explicit LevelPageWorld(Host* host = nullptr) : WindowWorld(host)
    {
        Live("savegame.0", "Caves", 4);
        Live("savegame.2", "Temple", 9);
        box.Write("levels/LEVEL_0001/savegames/slot1/savegame.5", SavegameBytes("Early", 2));
        Show();
        list.Select(level);
    }
    void Live(const std::string& name, const std::string& title, int number)
    {
        box.Write("levels/LEVEL_0001/backup_savegames/" + name, SavegameBytes(title, number));
    }
    [[nodiscard]] bool HasLive(const std::string& name) const
    {
        return box.Has("levels/LEVEL_0001/backup_savegames/" + name);
    }
    QTreeWidget& OpenPage()
    {
        Click("Pul_SaveGames");
        return *Find<QTreeWidget>("List_Saves");
    }
    /// Title and number of each row below its group.
    std::string Rows()
    {
        std::string text;
        const auto& rows = *Find<QTreeWidget>("List_Saves");
        for (int group = 0; group < rows.topLevelItemCount(); ++group) {
            text += FromQt(rows.topLevelItem(group)->text(0)) + ":";
            for (int row = 0; row < rows.topLevelItem(group)->childCount(); ++row)
                text += " " + FromQt(rows.topLevelItem(group)->child(row)->text(1));
            text += "; ";
        }
        return text;
    }
    void ChooseOnly(const char* title)
    {
        auto& rows = *Find<QTreeWidget>("List_Saves");
        rows.clearSelection();
        const auto found =
            rows.findItems(QString::fromLatin1(title), Qt::MatchExactly | Qt::MatchRecursive, 1);
        ASSERT_EQ(found.size(), 1) << title << " in " << Rows();
        found.front()->setSelected(true);
    }
    /// Holds files above a control, and lets go when they are taken.
    bool Drop(QWidget* target, const std::vector<Path>& files)
    {
        QMimeData data;
        QList<QUrl> addresses;
        for (const Path& file : files)
            addresses.append(QUrl::fromLocalFile(PathToQt(file)));
        data.setUrls(addresses);
        const QPoint place = target->rect().center();
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(target, &enter);
        auto* light = target->findChild<QWidget*>(QStringLiteral("Light_Drop"));
        const bool taken = enter.isAccepted() && light != nullptr && light->isVisible();
        if (!taken)
            return false;
        QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(target, &drop);
        EXPECT_FALSE(light->isVisible());
        QCoreApplication::processEvents();
        return true;
    }
};

/// Looks at the windows while a question stands, and says No.
class DoubtingHost : public ScriptedHost
{
public:
    std::function<void()> look = [] {};
    bool AskYesNo(const std::string&, Consent) override
    {
        look();
        return false;
    }
};

} // namespace

TEST(SavegamesPage, OpensWithoutTheSiblingToolAndListsAllThereIs)
{
    LevelPageWorld world;
    EXPECT_TRUE(world.OpenPage().isVisible());
    EXPECT_TRUE(world.box.host.told.empty()) << world.box.host.AllTold();
    EXPECT_EQ(world.Rows(),
              "In the game's slots (2 of 15): Caves Temple; Archive slot 1 (1): Early; ");
    EXPECT_EQ(world.Find<QTabWidget>("Tabs_Level")->tabText(1), "Savegames (2 + 1)");
    EXPECT_FALSE(world.Find("Pul_BringSave")->isEnabled()) << "nothing is chosen";

    // The commands of the menu, by their buttons.
    world.Click("Pul_FreeSlots");
    EXPECT_TRUE(world.box.host.WasTold("archvied"));
    EXPECT_EQ(world.Rows(),
              "In the game's slots (1 of 15): Temple; Archive slot 2 (2): Caves Temple; "
              "Archive slot 1 (1): Early; ")
        << "what went lies in the new slot";
}

TEST(SavegamesPage, HidesColumnsThatHaveNoRoomTheDateLast)
{
    LevelPageWorld world;
    const auto& list = world.OpenPage();
    const QHeaderView& head = *list.header();
    for (const int width : {200, 260, 320, 420, 900}) {
        world.window.findChild<QSplitter*>()->setSizes({2000, width});
        world.window.resize(width + 700, 700);
        world.window.findChild<QSplitter*>()->setSizes({700, width});
        QCoreApplication::processEvents();
        EXPECT_LE(head.length(), list.viewport()->width()) << width;
        EXPECT_TRUE(head.isSectionHidden(2) || !head.isSectionHidden(1)) << "number before title";
        EXPECT_TRUE(head.isSectionHidden(1) || !head.isSectionHidden(3)) << "title before date";
    }
    EXPECT_EQ(head.hiddenSectionCount(), 0);
}

TEST(SavegamesPage, ShowsPictureAndNoteOfTheSavegameThatOneLooksAt)
{
    LevelPageWorld world;
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(Qt::red);
    const Path folder = world.box / "levels/LEVEL_0001/backup_savegames";
    ASSERT_TRUE(image.save(PathToQt(folder / "shot2.bmp")));
    world.box.Write("levels/LEVEL_0001/backup_savegames/note2.txt", "before the\r\ngate");
    world.box.Write("levels/LEVEL_0001/backup_savegames/shot0.jpg", "no picture");
    auto& rows = world.OpenPage();
    auto* picture = dynamic_cast<PictureView*>(world.Find("Image_Save"));
    EXPECT_FALSE(picture->isVisible());
    const auto lookAt = [&](const char* title) {
        const auto flags = Qt::MatchExactly | Qt::MatchRecursive;
        rows.setCurrentItem(rows.findItems(QString::fromLatin1(title), flags, 1).value(0));
    };
    lookAt("Temple");
    ASSERT_TRUE(picture->isVisible());
    EXPECT_EQ(picture->Shown().size(), image.size());
    EXPECT_NE(world.TextOfLabel("Label_SaveNote").find("before the gate"), std::string::npos);
    lookAt("Caves");
    EXPECT_FALSE(picture->HasPicture());
    EXPECT_FALSE(picture->ShownWords().isEmpty());
    lookAt("Early");
    EXPECT_FALSE(picture->isVisible());
}

TEST(SavegamesPage, RestoresExportsAndDeletesWhatIsChosen)
{
    LevelPageWorld world;
    world.OpenPage();
    world.ChooseOnly("Early");
    world.Click("Pul_BringSave");
    EXPECT_EQ(world.box.Read("levels/LEVEL_0001/backup_savegames/savegame.1"),
              SavegameBytes("Early", 2))
        << "the lowest free slot";
    EXPECT_NE(world.TextOfLabel("Label_Note").find("came into the game's slots: 1"),
              std::string::npos);
    ASSERT_TRUE(world.Find("Pul_NoteUndo")->isVisible()) << "an import can be undone";
    world.Click("Pul_NoteUndo");
    EXPECT_FALSE(world.HasLive("savegame.1"));
    EXPECT_FALSE(world.Find("Pul_NoteUndo")->isVisible());

    std::filesystem::create_directory(world.box / "out");
    world.ChooseOnly("Temple");
    EXPECT_FALSE(world.Find("Pul_BringSave")->isEnabled()) << "it is there";
    world.box.host.WillChoose("Select folder where save savegames", world.box / "out");
    world.Click("Pul_ExportSave");
    EXPECT_EQ(world.box.Read("out/savegame.2"), SavegameBytes("Temple", 9));
    EXPECT_FALSE(world.Find("Pul_NoteUndo")->isVisible()) << "a copy elsewhere needs none";

    world.ChooseOnly("Temple");
    world.box.host.WillAsk("“Temple”, number 9", true);
    world.Click("Pul_DeleteSave");
    EXPECT_FALSE(world.HasLive("savegame.2"));
    EXPECT_EQ(world.Rows(), "In the game's slots (1 of 15): Caves; Archive slot 1 (1): Early; "
                            "History (2): Temple Early; ");
    world.Click("Pul_NoteUndo");
    EXPECT_TRUE(world.HasLive("savegame.2"));

    world.ChooseOnly("Caves");
    world.box.host.WillAsk("“Caves”", true);
    world.Click("Pul_DeleteSave");
    ASSERT_TRUE(world.Find("Pul_NoteUndo")->isVisible());
    world.window.ShowNote("Several levels: 12 added");
    EXPECT_FALSE(world.Find("Pul_NoteUndo")->isVisible()) << "what is said later has its own Undo";
}

TEST(LevelPage, TakesDroppedSavegamesAndPicturesWhereTheyBelong)
{
    LevelPageWorld world;
    world.box.Write("from/savegame.7", SavegameBytes("Mine", 40));
    world.box.Write("from/view.jpg", *EncodeJpeg({2, 2, std::vector<std::uint8_t>(12, 200)}));
    world.box.Write("from/level.zip", "zip");
    const std::vector<Path> save{world.box / "from/savegame.7"};
    const std::vector<Path> view{world.box / "from/view.jpg"};
    auto* panes = world.Find("Panes_Shots");
    EXPECT_FALSE(world.Drop(panes, {world.box / "from/level.zip"})) << "that is the window's";
    EXPECT_FALSE(world.Drop(panes, save));
    ASSERT_TRUE(world.Drop(panes, view));
    EXPECT_TRUE(world.box.Has("levels/LEVEL_0001/screenshots/view.jpg"));
    EXPECT_EQ(world.TextOfLabel("Label_InfoImage1"), "view");

    world.OpenPage();
    auto* page = world.Find("Page_Savegames");
    EXPECT_FALSE(world.Drop(page, view));
    ASSERT_TRUE(world.Drop(page, save));
    EXPECT_EQ(world.box.Read("levels/LEVEL_0001/backup_savegames/savegame.1"),
              SavegameBytes("Mine", 40));
    EXPECT_NE(world.Rows().find("Mine"), std::string::npos);
}

TEST(LevelPage, ShowsAllPicturesBelowThePanes)
{
    LevelPageWorld world;
    const std::string picture = *EncodeJpeg({2, 2, std::vector<std::uint8_t>(12, 200)});
    for (const char* name : {"a", "b", "c", "d", "e"})
        world.box.Write("levels/LEVEL_0001/screenshots/" + std::string{name} + ".jpg", picture);
    auto* strip = world.Find<QListView>("List_Strip");
    EXPECT_FALSE(strip->isVisible());
    world.list.Select(world.level);
    ASSERT_TRUE(strip->isVisible());
    EXPECT_EQ(strip->model()->rowCount(), 5);
    strip->setCurrentIndex(strip->model()->index(3, 0));
    QTest::keyClick(strip, Qt::Key_Return);
    EXPECT_EQ(world.TextOfLabel("Label_InfoImage1"), "c") << "pairs begin at even places";
    EXPECT_EQ(world.TextOfLabel("Label_InfoImage2"), "d");
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            const auto small = strip->model()->index(4, 0).data(Qt::DecorationRole);
            return !small.value<QIcon>().isNull();
        },
        60'000));
}

TEST(LevelPage, OpensDocumentsAndNothingThatRuns)
{
    LevelPageWorld world;
    world.box.Write("levels/LEVEL_0001/files/readme.txt", "read me");
    world.box.Write("levels/LEVEL_0001/files/setup.exe", "MZ");
    world.Find<QTabWidget>("Tabs_Level")->setCurrentIndex(2);
    auto* files = world.Find<QTreeWidget>("List_Files");
    for (const char* name : {"readme.txt", "setup.exe"}) {
        const auto found = files->findItems(QString::fromLatin1(name), Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << name;
        Q_EMIT files->itemActivated(found.front(), 0);
    }
    ASSERT_EQ(world.box.machine.opened.size(), 1U);
    EXPECT_TRUE(world.box.machine.opened.front().ends_with("readme.txt"));

    world.Find<QTabWidget>("Tabs_Level")->setCurrentIndex(3);
    auto* documents = world.Find<QTreeWidget>("List_Documents");
    ASSERT_EQ(documents->topLevelItemCount(), 1);
    Q_EMIT documents->itemActivated(documents->topLevelItem(0), 0);
    EXPECT_EQ(world.box.machine.opened.size(), 2U);
}

TEST(LevelPage, TellsWhatHappenedAndReadsALogWhenItIsOpened)
{
    LevelPageWorld world;
    world.Find<QTabWidget>("Tabs_Level")->setCurrentIndex(4);
    auto* log = world.Find<QTreeWidget>("List_Log");
    const auto before = log->topLevelItemCount();
    const std::string line = "COPY " + (world.box / "levels/LEVEL_0001/files/a.tr4").native();
    world.box.Write("home/LevelLog_000.txt",
                    line + " -> somewhere [OK]\r\nDELETE -> other [OK]\r\n");
    world.window.ShowChosen();
    ASSERT_EQ(log->topLevelItemCount(), before + 1);
    EXPECT_FALSE(world.Find("Label_NoLog")->isVisible());
    QTreeWidgetItem* row = log->topLevelItem(0);
    EXPECT_EQ(row->childCount(), 0) << "nothing is read before it is wanted";
    row->setExpanded(true);
    ASSERT_EQ(row->childCount(), 1);
    EXPECT_EQ(FromQt(row->child(0)->text(1)), line + " -> somewhere [OK]");
    world.list.Select(originalCode);
    EXPECT_EQ(log->topLevelItemCount(), 0);
}

TEST(LevelPage, PlaySaysWhatIsGoingOnAndEndsTheGameAfterAQuestion)
{
    LevelPageWorld world;
    world.box.Write("trle/tomb4.exe", "game");
    auto* play = world.Find<QPushButton>("Pul_Play");
    const QString idle = play->text();
    EXPECT_FALSE(world.Find("Pul_StopGame")->isVisible());
    world.box.machine.running = {{noProcess, "tomb4.exe"}};
    world.box.host.AnswerAll(true);
    world.Click("Pul_Play");
    EXPECT_EQ(play->text(), "Running") << world.box.host.AllTold();
    EXPECT_EQ(world.TextOfLabel("Label_Playing"), "“Dawn” is being played, for 0 min.");
    EXPECT_EQ(world.TextOfLabel("Label_Note"), "Game started: Dawn");
    ASSERT_TRUE(world.Find("Pul_StopGame")->isVisible());

    world.list.Select(originalCode);
    EXPECT_EQ(play->text(), idle) << "another level can be played";
    EXPECT_TRUE(world.Find("Label_Playing")->isVisible());
    const std::int64_t game = world.session.running.game;
    world.Click("Pul_StopGame");
    world.Click("Pul_StopGame");
    EXPECT_EQ(world.box.machine.endedPrograms,
              (std::vector<std::pair<std::int64_t, bool>>{{game, false}, {game, true}}))
        << "asked to end first, then ended";

    world.box.machine.running.clear();
    world.window.Choose(world.level);
    EXPECT_TRUE(QTest::qWaitFor([&] { return play->text() == idle; }, 60'000));
    EXPECT_FALSE(world.Find("Pul_StopGame")->isVisible());
    EXPECT_FALSE(world.Find("Label_Playing")->isVisible());
    EXPECT_EQ(world.TextOfLabel("Label_Note"), "") << "it is no longer so";
}

TEST(LevelPage, ShowsTheLevelThatAQuestionIsAbout)
{
    DoubtingHost host;
    LevelPageWorld world{&host};
    const LevelCode other = world.AddLevel("Dusk");
    world.list.Refresh();
    world.list.Select(world.level);
    world.Click("Pul_Play");
    ASSERT_TRUE(world.Find("Label_Installed")->isVisible()) << host.AllTold();
    int asked = 0;
    host.look = [&] {
        ++asked;
        EXPECT_EQ(world.TextOfLabel("Label_LevelName"), "Dusk");
        EXPECT_EQ(world.TextOfLabel("Label_Code"), "0002");
        EXPECT_FALSE(world.Find("Label_Installed")->isVisible());
    };
    world.box.machine.running = {{noProcess, "tomb4.exe"}};
    auto* list = world.Find<QListView>("Combo_Livelli");
    const QModelIndex row = list->model()->index(other, 0);
    ASSERT_EQ(row.data(), "Dusk");
    const QPoint place = list->visualRect(row).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(asked, 1);
}

TEST(LevelPage, TheAuthorIsALinkWhereThereIsAnAddress)
{
    LevelPageWorld world;
    auto* author = world.Find("Link_Author");
    const auto show = [&](const std::string& site, const std::string& mail) {
        LevelRecord& record = world.session.archive.levels.back();
        record.authorName = "Tom & Jerry";
        record.authorSites = site;
        record.authorEmails = mail;
        world.list.Refresh();
    };
    show("", "");
    EXPECT_EQ(author->accessibleName(), "Tom & Jerry");
    QTest::mouseClick(author, Qt::LeftButton, Qt::NoModifier, {8, author->height() / 2});
    EXPECT_EQ(author->focusPolicy(), Qt::NoFocus);
    EXPECT_TRUE(world.box.machine.opened.empty());
    show("http://levels.example/tom", "tom@levels.example");
    EXPECT_EQ(author->toolTip(), "Opens the author's page: http://levels.example/tom");
    QTest::mouseClick(author, Qt::LeftButton, Qt::NoModifier,
                      {author->width() - 3, author->height() / 2});
    EXPECT_TRUE(world.box.machine.opened.empty()) << "beside the words";
    QTest::mouseClick(author, Qt::LeftButton, Qt::NoModifier, {8, author->height() / 2});
    EXPECT_EQ(world.box.machine.opened.size(), 1U);
    QTest::keyClick(author, Qt::Key_Return);
    EXPECT_EQ(world.box.machine.opened.size(), 2U);
}

TEST(LevelPage, CountsAnewWhatThePlayerHas)
{
    LevelPageWorld world;
    const std::string before = world.TextOfLabel("Label_Size");
    world.box.Write("levels/LEVEL_0001/backup_savegames/savegame.7", std::string(300'000, 's'));
    world.box.Write("levels/LEVEL_0001/savegames/slot1/savegame.8", std::string(300'000, 's'));
    world.window.ShowChosen();
    EXPECT_NE(before.find("bytes of level files"), std::string::npos) << before;
    EXPECT_NE(world.TextOfLabel("Label_Size").find("58"), std::string::npos)
        << world.TextOfLabel("Label_Size");
    // Played for less than a minute, in the list and beside it alike.
    ASSERT_TRUE(ChangeNotes(world.session.Folders(), world.session.archive, {world.level},
                            [](LevelCode, LevelNote& note) { note.secondsPlayed = 42; }));
    world.list.Refresh();
    EXPECT_EQ(world.TextOfLabel("Label_Played"), "Played for 1 min");
    const auto* model = world.Find<QListView>("Combo_Livelli")->model();
    EXPECT_EQ(model->index(1, LevelModel::TimePlayedColumn).data(), "1 min");
}

TEST(LevelPage, KeepsWhatThePlayerThinksOfALevel)
{
    LevelPageWorld world;
    const LevelCode other = world.AddLevel("Dusk");
    world.list.Refresh();
    world.list.Select(world.level);
    const auto noteOf = [&](LevelCode code) {
        return NoteOf(world.session.Folders(), world.session.archive, code).ValueOr({});
    };
    QTest::keyClick(world.Find("Box_Stars"), Qt::Key_4);
    auto* status = world.Find<QComboBox>("Combo_Status");
    status->setCurrentIndex(2);
    Q_EMIT status->activated(2);
    EXPECT_EQ(noteOf(world.level).stars, 4);
    EXPECT_EQ(noteOf(world.level).status, LevelStatus::Finished);
    world.Click("Pul_NoteUndo");
    EXPECT_EQ(noteOf(world.level).status, LevelStatus::New);
    EXPECT_EQ(status->currentIndex(), 0);
    EXPECT_EQ(noteOf(world.level).stars, 4) << "each by itself";

    ASSERT_TRUE(ChangeNotes(world.session.Folders(), world.session.archive, {world.level},
                            [](LevelCode, LevelNote& note) {
                                note.tags = {"jungle", "snow"};
                            }));
    world.list.Refresh();
    EXPECT_EQ(world.TextOfLabel("Label_Tags"), "Tags: jungle, snow");

    auto* text = world.Find<QPlainTextEdit>("Text_OwnNote");
    QTest::keyClicks(text, "hard jump");
    world.list.Select(other);
    EXPECT_EQ(world.TextOfLabel("Label_Tags"), "");
    EXPECT_EQ(noteOf(world.level).ownNote, "hard jump") << "another level ends the typing";
    EXPECT_EQ(noteOf(other).ownNote, "");
    EXPECT_EQ(text->toPlainText(), "");
    world.list.Select(world.level);
    EXPECT_EQ(text->toPlainText(), "hard jump");
    EXPECT_EQ(dynamic_cast<StarsBox*>(world.Find("Box_Stars"))->Stars(), 4);
}

TEST(StarsBox, IsSetByMouseAndKeys)
{
    StarsBox stars;
    stars.resize(stars.sizeHint());
    stars.show();
    std::vector<int> seen;
    stars.changed = [&](int count) { seen.push_back(count); };
    const int side = stars.height() - 4;
    QTest::mouseClick(&stars, Qt::LeftButton, {}, {2 + 3 * side + side / 2, side / 2});
    QTest::mouseClick(&stars, Qt::LeftButton, {}, {2 + 3 * side + side / 2, side / 2});
    QTest::keyClick(&stars, Qt::Key_5);
    QTest::keyClick(&stars, Qt::Key_Right);
    QTest::keyClick(&stars, Qt::Key_Left);
    QTest::keyClick(&stars, Qt::Key_6);
    EXPECT_EQ(seen, (std::vector<int>{4, 0, 5, 4}));
    EXPECT_EQ(stars.accessibleDescription(), "Stars: 4 of 5");
}

} // namespace kestrova::testing
