#include "archive/library_notes.h"
#include "formats/preferences.h"
#include "pictures/bitmap.h"
#include "ui/dialogs/dialog_cattura.h"
#include "ui/dialogs/dialog_import_shot.h"
#include "ui/dialogs/dialog_resize.h"
#include "ui/dialogs/dialog_screen_shot.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/picture_reading.h"
#include "ui/widgets/picture_view.h"
#include "ui/widgets/zoom_view.h"
#include "window_world.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QListView>
#include <QMenu>
#include <QProgressBar>
#include <QRadioButton>
#include <QTimer>

namespace kestrova::testing
{

namespace
{

const std::string folder = "levels/LEVEL_0001/screenshots/";

/// A level with pictures; of each the left half is red, the right half blue.
class ShotWindows : public WindowWorld
{
public:
    LevelCode code = AddLevel("Lost City");
    ShotList shots;

    void Put(const std::string& name, int width = 640, int height = 480)
    {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(Qt::red);
        for (int y = 0; y < height; ++y)
            for (int x = width / 2; x < width; ++x)
                image.setPixelColor(x, y, Qt::blue);
        std::filesystem::create_directories(box / folder);
        EXPECT_TRUE(image.save(PathToQt(box / (folder + name)), "bmp"));
    }
    void Load() { ASSERT_TRUE(shots.Load(session.Folders(), code)); }
    QImage Saved(const std::string& name)
    {
        const auto picture = LoadPicture(box / name);
        EXPECT_TRUE(picture) << name;
        return picture ? *picture : QImage();
    }
};

} // namespace

TEST(ScreenShotDialog, FitsTheWindowZoomsAtThePointerAndStepsThroughTheList)
{
    ShotWindows world;
    for (const char* name : {"a.bmp", "b.bmp", "c.jpg"})
        world.Put(name);
    world.box.Write(folder + "d.jpg", "no picture");
    world.Load();
    ScreenShotDialog dialog{world.shots, 1, nullptr};
    auto* view = dynamic_cast<ZoomView*>(In<QWidget>(dialog, "Image1"));
    dialog.resize(400, 700);
    dialog.show();
    EXPECT_EQ(FromQt(dialog.windowTitle()),
              "Screen-Shot: " + (world.box / (folder + "b.bmp")).native());
    EXPECT_EQ(view->PictureRect().width(), view->width()) << "the whole width, no more";
    EXPECT_NEAR(view->PictureRect().center().y(), view->height() / 2.0, 1);

    // What lies under the pointer stays there.
    const QPointF place(view->width() * 0.75, view->height() * 0.5);
    const auto under = [&] { return (place - view->PictureRect().topLeft()) / view->Scale(); };
    const QPointF before = under();
    view->Zoom(4, place);
    EXPECT_NEAR(under().x(), before.x(), 0.5);
    EXPECT_GT(view->PictureRect().width(), view->width() * 3);
    view->Zoom(1000, place);
    EXPECT_LE(view->Scale(), 16.0 * view->width() / 640 + 0.001);
    view->Zoom(0.0001, {0, 0});
    EXPECT_EQ(view->PictureRect().width(), view->width()) << "never smaller than the room";

    QTest::keyClick(&dialog, Qt::Key_Right);
    EXPECT_TRUE(dialog.windowTitle().endsWith("c.jpg"));
    EXPECT_TRUE(view->HasPicture()) << "a bitmap that is called a jpeg";
    QTest::keyClick(&dialog, Qt::Key_Right);
    EXPECT_FALSE(view->HasPicture());
    EXPECT_NE(FromQt(view->ShownWords()).find("the file is damaged"), std::string::npos);
    QTest::keyClick(&dialog, Qt::Key_Right);
    EXPECT_TRUE(dialog.windowTitle().endsWith("d.jpg")) << "the last one";
    for (int i = 0; i < 5; ++i)
        QTest::keyClick(&dialog, Qt::Key_Left);
    EXPECT_TRUE(dialog.windowTitle().endsWith("a.bmp"));
    ScreenShotDialog none{world.shots, 4, nullptr};
    EXPECT_TRUE(none.windowTitle().endsWith("Tomb Raider Level Editor.bmp"));
}

TEST(ResizeDialog, DrawsSmoothlyInEachSizeAndSavesWhatItDrew)
{
    ShotWindows world;
    world.Put("wide.bmp", 1000, 100);
    const Path shot = world.box / (folder + "wide.bmp");
    ResizeDialog dialog{world.session, shot, nullptr};
    EXPECT_EQ(CaptionFaults(dialog), QStringList{});
    auto* sizes = In<QComboBox>(dialog, "Combo_Resize");
    ASSERT_EQ(sizes->count(), 8);
    EXPECT_EQ(sizes->itemText(7), "   160 X 120");
    const auto drawn = [&] { return In<QLabel>(dialog, "Picture1")->pixmap().size(); };
    EXPECT_EQ(drawn(), QSize(480, 360)) << "drawn once before anybody asks";
    sizes->setCurrentIndex(7);
    In<QPushButton>(dialog, "Pul_Resize")->click();
    EXPECT_EQ(drawn(), QSize(160, 120)) << "stretched, whatever shape it had";

    const auto save = [&](const std::string& target) {
        world.box.host.WillChoose("Save resized scree-shot", world.box / target);
        In<QPushButton>(dialog, "Pul_Save")->click();
    };
    dialog.show();
    save("no/such/folder.jpg");
    EXPECT_TRUE(world.box.host.WasTold("Error converting image from .bmp to .jpg"));
    EXPECT_TRUE(dialog.isVisible()) << "it stays for another try";
    save("small.JPG");
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(world.box.Read("small.JPG").substr(0, 2), "\xFF\xD8");
    EXPECT_EQ(world.box.Read("home/_temp.bmp").substr(0, 2), "BM");
    const QImage small = world.Saved("small.JPG");
    EXPECT_EQ(small.size(), QSize(160, 120));
    EXPECT_GT(qRed(small.pixel(20, 60)), 230);
    EXPECT_GT(qBlue(small.pixel(140, 60)), 230);
    save("small.picture");
    EXPECT_EQ(world.box.Read("small.picture").substr(0, 2), "BM") << "any other name is a bitmap";
    EXPECT_EQ(world.Saved(folder + "wide.bmp").size(), QSize(1000, 100));

    world.box.Write(folder + "none.jpg", "no picture");
    ResizeDialog damaged{world.session, world.box / (folder + "none.jpg"), nullptr};
    EXPECT_FALSE(In<QPushButton>(damaged, "Pul_Save")->isEnabled());
}

TEST(ImportShotDialog, TakesThoseOfOneLevelOrOfAll)
{
    ShotWindows world;
    world.AddLevel("Second");
    for (const char* level : {"1", "2"})
        world.box.Write("levels/LEVEL_000" + std::string{level} + "/savegames/slot1/shot3.jpg",
                        "picture");
    ImportShotDialog one{world.session, 1, nullptr};
    EXPECT_EQ(CaptionFaults(one), QStringList{});
    EXPECT_EQ(FromQt(one.windowTitle()), "Import screen-shots for level: \"Lost City\"");
    In<QPushButton>(one, "Pul_Import")->click();
    EXPECT_TRUE(world.box.host.WasTold("Import screeen-shot performed"));
    EXPECT_TRUE(world.box.Has(folder + "1) Lost City.jpg"));
    EXPECT_FALSE(world.box.Has("levels/LEVEL_0002/screenshots/1) Second.jpg"));
    ImportShotDialog all{world.session, 1, nullptr};
    In<QRadioButton>(all, "Opt_Tutti")->setChecked(true);
    In<QPushButton>(all, "Pul_Import")->click();
    EXPECT_EQ(all.result(), QDialog::Accepted);
    EXPECT_TRUE(world.box.Has(folder + "2) Lost City.jpg"));
    EXPECT_TRUE(world.box.Has("levels/LEVEL_0002/screenshots/1) Second.jpg"));
    world.box.host.told.clear();
    ImportShotDialog none{world.session, static_cast<std::size_t>(world.AddLevel("Third")),
                          nullptr};
    In<QPushButton>(none, "Pul_Import")->click();
    EXPECT_FALSE(world.box.host.WasTold("performed")) << "when nothing came";
    EXPECT_TRUE(world.box.host.WasTold("no picture to import"));
}

TEST(CaptureDialog, ShowsThePictureAndClosesOnlyWhenItIsDecided)
{
    ShotWindows world;
    world.session.preferences.promptCapture = true;
    world.box.machine.windowOfGame = "Tomb Raider - The Last Revelation";
    CapturedShot shot{{40, 30, {}}, 1, world.box / folder};
    shot.picture.rgb.assign(40 * 30 * 3, 90);
    {
        CaptureDialog dialog{world.session, shot, nullptr};
        EXPECT_EQ(CaptionFaults(dialog), QStringList{});
        EXPECT_EQ(FromQt(dialog.windowTitle()), " Tomb Raider screen-shot captured");
        EXPECT_EQ(dynamic_cast<PictureView*>(In<QWidget>(dialog, "Image1"))->Shown().size(),
                  QSize(40, 30));
        dialog.show();
        In<QCheckBox>(dialog, "Check_AutoSave")->click();
        EXPECT_FALSE(world.session.preferences.promptCapture);
        const auto kept = ParsePreferences(world.box.Read("home/Kestrova.prf"));
        EXPECT_FALSE(kept.promptCapture) << "at once";
        world.box.host.WillChoose("Save captured", std::nullopt);
        In<QPushButton>(dialog, "Pul_Save")->click();
        EXPECT_TRUE(dialog.isVisible()) << "a cancelled chooser decides nothing";
        EXPECT_TRUE(world.box.machine.typed.empty());
        world.box.host.WillChoose("Save captured", world.box / (folder + "mine.jpg"));
        In<QPushButton>(dialog, "Pul_Save")->click();
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
        EXPECT_EQ(world.box.machine.typed, "\n") << "the game has the keyboard again";
    }
    EXPECT_EQ(world.Saved(folder + "mine.jpg").size(), QSize(40, 30));
    CaptureDialog dropped{world.session, shot, nullptr};
    In<QPushButton>(dropped, "Pul_Cancel")->click();
    EXPECT_EQ(world.box.machine.typed, "\n\n");
}

TEST(Play, ArmsTheKeysShowsTheGameAndSaysOnceWhenKeysAreNotSeen)
{
    ShotWindows world;
    world.box.Write("trle/tomb4.exe", "#!/bin/sh\n");
    world.Show();
    world.list.Select(world.code);
    auto* timer = world.window.findChild<QTimer*>("Timer1");
    EXPECT_FALSE(world.Find("Label_Game")->isVisible());
    EXPECT_FALSE(world.session.running.hotKeys);
    world.box.machine.seesKeys = false;
    world.Click("Pul_Play");
    ASSERT_EQ(world.box.machine.started.size(), 1U) << world.box.host.AllTold();
    EXPECT_TRUE(world.session.running.hotKeys);
    ASSERT_TRUE(world.box.host.WasTold("F9, F11 and Print Screen do not reach Kestrova"));
    EXPECT_NE(world.box.Read("home/kestrova.ini").find("unseen-keys-told"), std::string::npos);
    world.box.host.told.clear();
    world.box.machine.running = {{4711, "tomb4.exe"}};
    world.box.host.WillAsk("runs already in the Level Editor's folder: tomb4.exe", true);
    world.Click("Pul_Play");
    EXPECT_FALSE(world.box.host.WasTold("do not reach")) << "once is enough";
    EXPECT_TRUE(world.Find("Label_Game")->isVisible());
    EXPECT_EQ(world.TextOfLabel("Label_Game"), "Game running");
    world.box.machine.seesKeys = true;
    world.box.host.WillAsk("runs already in the Level Editor's folder: tomb4.exe", true);
    world.Click("Pul_Play");
    EXPECT_EQ(world.TextOfLabel("Label_Game"), "Game running (F9, F11, Print Screen)");

    // A tick of the window's own timer takes a picture that comes onto the clipboard.
    ASSERT_NE(timer, nullptr);
    EXPECT_TRUE(timer->isActive());
    EXPECT_EQ(timer->interval(), 150);
    QImage copied(8, 8, QImage::Format_RGB32);
    copied.fill(Qt::red);
    world.box.machine.clipboard = EncodeBitmap(PictureOf(copied));
    QTest::qWait(400); // the keys are armed
    QApplication::clipboard()->setImage(copied);
    for (int i = 0; i < 50 && !world.box.Has(folder + "1) Lost City.jpg"); ++i)
        QTest::qWait(50);
    EXPECT_EQ(world.TextOfLabel("Label_InfoImage1"), "1) Lost City");
}

TEST(ShotMenu, ActsOnThePictureUnderTheRightButtonOrAsks)
{
    ShotWindows world;
    for (const char* name : {"a.bmp", "b.bmp", "c.jpg"})
        world.Put(name);
    world.Show();
    world.list.Select(world.code);
    auto* menu = world.window.findChild<QMenu*>("mnu_Edit");
    const auto trigger = [&](const char* name) {
        world.window.findChild<QAction*>(QString::fromLatin1(name))->trigger();
    };
    QTest::mousePress(world.Find("Image2"), Qt::RightButton);
    ASSERT_TRUE(menu->isVisible());
    menu->close();
    world.box.host.WillAsk("b.bmp\"", true);
    trigger("mnu_DeleteShot");
    EXPECT_FALSE(world.box.Has(folder + "b.bmp"));
    EXPECT_EQ(world.TextOfLabel("Label_InfoImage2"), "c") << "the panes follow";
    EXPECT_NE(world.TextOfLabel("Label_InfoDir").find("Screenshots: 2"), std::string::npos);

    world.box.host.WillAsk("LEFT screenshot", true);
    world.box.host.WillAskText("Type new name", "first.bmp");
    trigger("mnu_RenameShot");
    EXPECT_EQ(world.TextOfLabel("Label_InfoImage1"), "first");
    world.box.Write("from/new.bmp", world.box.Read(folder + "c.jpg"));
    world.box.host.WillChoose("Select an image", world.box / "from/new.bmp");
    trigger("mnu_AddScreenshot");
    EXPECT_EQ(world.TextOfLabel("Label_InfoImage2"), "new");
    trigger("mnu_CaptureScreen");
    EXPECT_TRUE(world.box.host.WasTold("only when you are playing a level"));

    // A double click looks closer; the window is modal.
    QString title;
    QTimer::singleShot(0, [&] {
        title = QApplication::activeModalWidget()->windowTitle();
        QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
    });
    QTest::mouseDClick(world.Find("Image2"), Qt::LeftButton);
    EXPECT_TRUE(title.endsWith("/new.bmp")) << FromQt(title);
}

TEST(ShotMenu, ChoosesTheCoverAlsoByTheKeyboardAndGoesBack)
{
    ShotWindows world;
    for (const char* name : {"a.bmp", "b.bmp", "c.jpg"})
        world.Put(name);
    world.Show();
    world.list.Select(world.code);
    auto* menu = world.window.findChild<QMenu*>("mnu_Edit");
    const auto trigger = [&](const char* name) {
        world.window.findChild<QAction*>(QString::fromLatin1(name))->trigger();
    };
    const auto cover = [&] {
        return NoteOf(world.session.Folders(), world.session.archive, world.code).ValueOr({}).cover;
    };
    const auto pressMenuKey = [&](QWidget* control) {
        const QPoint place = control->rect().center();
        QContextMenuEvent event(QContextMenuEvent::Keyboard, place, control->mapToGlobal(place));
        QApplication::sendEvent(control, &event);
        ASSERT_TRUE(menu->isVisible());
        menu->close();
    };
    auto* strip = world.Find<QListView>("List_Strip");
    ASSERT_TRUE(strip->isVisible());
    strip->setCurrentIndex(strip->model()->index(2, 0));
    pressMenuKey(strip);
    trigger("mnu_UseAsCover");
    EXPECT_EQ(cover(), "c.jpg");
    pressMenuKey(world.Find("Pul_Zoom2"));
    trigger("mnu_UseAsCover");
    EXPECT_EQ(cover(), "b.bmp");
    trigger("mnu_CoverBack");
    EXPECT_EQ(cover(), "");
    world.Click("Pul_NoteUndo");
    EXPECT_EQ(cover(), "b.bmp");

    world.list.Select(originalCode);
    trigger("mnu_UseAsCover");
    EXPECT_TRUE(world.box.host.WasTold("cannot be a cover"));
}

} // namespace kestrova::testing
