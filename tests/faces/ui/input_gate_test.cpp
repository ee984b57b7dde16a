#include "session/operation.h"
#include "ui/desktop/host_windows.h"
#include "ui/desktop/progress_windows.h"
#include "window_world.h"

#include <QAbstractItemView>
#include <QAction>
#include <QCloseEvent>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTimer>
#include <QtTest/qtestspontaneevent.h>

namespace kestrova::testing
{

namespace
{

/// Runs in the event loop of whatever box opens next.
template <class Work> void InNextBox(Work work)
{
    QTimer::singleShot(20, [work] {
        QWidget* box = QApplication::activeModalWidget();
        ASSERT_NE(box, nullptr);
        work(*qobject_cast<QMessageBox*>(box));
    });
}

} // namespace

TEST(InputGate, InputDuringWorkIsDiscardedNotKept)
{
    WindowWorld world;
    world.AddLevel("One");
    world.Show();
    auto* search = world.Find<QLineEdit>("Text_Search");
    {
        const Operation operation{world.session};
        QTest::keyClicks(search, "abc");
        world.Click("Pul_Dopo");
        QTest::keyClick(&world.window, Qt::Key_F5);
        QTest::keyClick(&world.window, Qt::Key_N, Qt::ControlModifier);
        world.window.findChild<QAction*>(QStringLiteral("mnu_Save"))->trigger();
        EXPECT_FALSE(world.window.close());
        QCoreApplication::processEvents();
    }
    QTest::qWait(20);
    EXPECT_EQ(search->text(), "");
    EXPECT_EQ(world.list.Selected(), originalCode);
    EXPECT_TRUE(world.box.machine.started.empty());
    QTest::keyClicks(search, "abc");
    EXPECT_EQ(search->text(), "abc") << "afterwards it counts again";
}

TEST(InputGate, ABoxOfTheWorkItselfAnswers)
{
    WindowHost host;
    WindowWorld world{&host};
    world.Show();
    const Operation operation{world.session};
    InNextBox([](QMessageBox& box) {
        EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No));
        QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton);
    });
    EXPECT_TRUE(host.AskYesNo("Go on?"));
    InNextBox([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
    EXPECT_FALSE(host.AskYesNo("Enter is the answer that changes nothing"));
    for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
        InNextBox([key](QMessageBox& box) { QTest::keyClick(&box, key); });
        EXPECT_TRUE(host.AskYesNo("No would drop the work", Consent::YesKeeps)) << key;
    }
    InNextBox([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(host.AskYesNoCancel("?"), YesNoCancel::Cancel);
    InNextBox([](QMessageBox& box) {
        EXPECT_EQ(box.text(), "First line\nsecond");
        EXPECT_EQ(box.informativeText(), "Permission denied");
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        box.close();
    });
    host.Tell(Tone::Error, "First line\r\nsecond", "Permission denied");
}

TEST(Boxes, WordsOfAnyLengthStayOnTheScreenAndCanBeAnswered)
{
    WindowHost host;
    WindowWorld world{&host};
    world.Show();
    const Operation operation{world.session};
    std::string lines;
    for (int i = 0; i < 300; ++i)
        lines += "name " + std::to_string(i) + "\n";
    for (const std::string& words : {lines, std::string(2000, 'x')}) {
        InNextBox([&](QMessageBox& box) {
            const QRect screen = box.screen()->availableGeometry();
            EXPECT_LE(box.width(), screen.width());
            EXPECT_LE(box.height(), screen.height());
            const auto* view = In<QPlainTextEdit>(box, "Text_Words");
            EXPECT_TRUE(view->isVisible());
            EXPECT_EQ(FromQt(view->toPlainText()), words + "\n\nwhy");
            QTest::keyClick(&box, Qt::Key_Return);
        });
        host.Tell(Tone::Error, words, "why");
    }
    InNextBox([&](QMessageBox& box) {
        EXPECT_LE(box.width(), box.screen()->availableGeometry().width());
        QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton);
    });
    EXPECT_TRUE(host.AskYesNo(lines));
}

TEST(Boxes, EnterGoesOnWhereTheButtonWasPressedForItAndCancelsElsewhere)
{
    WindowHost host;
    WindowWorld world{&host};
    world.Show();
    const Operation operation{world.session};
    const auto pressEnter = [] {
        InNextBox([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
    };
    pressEnter();
    EXPECT_TRUE(host.AskToGoOn("Scan the file?"));
    pressEnter();
    EXPECT_FALSE(host.AskOkCancel("Make the list anew?"));
    InNextBox([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_FALSE(host.AskToGoOn("Scan the file?"));
}

TEST(Boxes, AProgressWithALongNameIsNotWider)
{
    ProgressDialog dialog{ProgressWindow::Progress, nullptr};
    dialog.SetLabel("Copying");
    const int width = dialog.sizeHint().width();
    dialog.SetLabel("Copying " + QString(255, 'w') + " now");
    EXPECT_EQ(dialog.sizeHint().width(), width);
    EXPECT_TRUE(In<QLabel>(dialog, "Label_Info")->text().startsWith("Copying www"));
    EXPECT_TRUE(In<QLabel>(dialog, "Label_Info")->text().endsWith("w now "));
}

TEST(InputGate, TheCompletionsUnderALineBelongToItsWindow)
{
    WindowWorld world;
    const Operation operation{world.session};
    QDialog dialog(&world.window);
    auto* line = new QLineEdit(&dialog);
    line->setCompleter(new QCompleter(QStringList{"tomb", "tomb raider"}, line));
    const InputGate::Admission admission{dialog};
    dialog.show();
    line->setFocus();
    QTest::keyClicks(line, "t");
    QWidget* popup = line->completer()->popup();
    ASSERT_TRUE(popup->isVisible());
    QTest::keyClicks(popup, "o");
    EXPECT_EQ(line->text(), "to");
}

TEST(InputGate, AWindowOfTheStartIsDeafWhileItsOwnWorkRuns)
{
    WindowWorld world;
    const Operation start{world.session};
    QDialog dialog(&world.window);
    auto* button = new QPushButton(&dialog);
    int clicks = 0;
    QObject::connect(button, &QPushButton::clicked, [&] { ++clicks; });
    const InputGate::Admission admission{dialog};
    dialog.show();
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
    {
        const Operation inner{world.session};
        QTest::mouseClick(button, Qt::LeftButton);
        QCloseEvent byHand;
        QSpontaneKeyEvent::setSpontaneous(&byHand);
        qApp->notify(&dialog, &byHand);
        EXPECT_FALSE(byHand.isAccepted());
        EXPECT_TRUE(dialog.isVisible());
        dialog.accept();
        EXPECT_FALSE(dialog.isVisible()) << "its own work may end it";
    }
    EXPECT_EQ(clicks, 1);
}

TEST(Progress, ShowsItselfOnlyForLongWorkAndStops)
{
    WindowHost host;
    WindowWorld world{&host};
    world.Show();
    const Operation operation{world.session};
    const auto shown = [&]() -> ProgressDialog* {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* dialog = dynamic_cast<ProgressDialog*>(window))
                return dialog;
        return nullptr;
    };
    auto progress = host.BeginProgress(ProgressWindow::Progress, "");
    ASSERT_NE(shown(), nullptr);
    EXPECT_EQ(shown()->objectName(), "Dialog_Progress");
    EXPECT_EQ(shown()->findChild<QLabel*>(QStringLiteral("Label_Info"))->text(),
              "File copy in progress ... ");
    EXPECT_TRUE(progress->Step());
    EXPECT_FALSE(shown()->isVisible()) << "short work does not flash a window";
    QTest::qSleep(260);
    progress->SetBar(5'000'000'000, 10'000'000'000);
    EXPECT_TRUE(progress->Step());
    EXPECT_TRUE(shown()->isVisible());
    EXPECT_EQ(shown()->findChild<QProgressBar*>()->value(), 500);

    auto* stop = shown()->findChild<QPushButton*>(QStringLiteral("Pul_Stop"));
    EXPECT_FALSE(shown()->close()) << "it stays as long as the work";
    EXPECT_TRUE(progress->Step()) << "work that cannot be stopped is not stopped by closing";
    progress->AllowStop();
    QTest::mouseClick(stop, Qt::LeftButton);
    QTest::qSleep(30);
    EXPECT_FALSE(progress->Step());
    EXPECT_FALSE(progress->Step()) << "once stopped it stays so";
    progress.reset();
    EXPECT_EQ(shown(), nullptr);
}

TEST(Progress, WorkInsideOfWorkHasNoWindowAndNoStopOfItsOwn)
{
    WindowHost host;
    WindowWorld world{&host};
    world.Show();
    const Operation operation{world.session};
    const auto shown = [] {
        std::vector<ProgressDialog*> dialogs;
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* dialog = dynamic_cast<ProgressDialog*>(window))
                dialogs.push_back(dialog);
        return dialogs;
    };
    auto outer = host.BeginProgress(ProgressWindow::Progress, "the whole");
    outer->SetBar(1, 4);
    ASSERT_EQ(shown().size(), 1U);
    ProgressDialog& window = *shown().front();
    const auto* label = window.findChild<QLabel*>(QStringLiteral("Label_Info"));
    const auto* bar = window.findChild<QProgressBar*>();
    auto* stop = window.findChild<QPushButton*>(QStringLiteral("Pul_Stop"));
    {
        const auto inner = host.BeginProgress(ProgressWindow::Wait, "a part");
        EXPECT_EQ(shown().size(), 1U);
        EXPECT_EQ(label->text(), "a part ");
        inner->SetBar(1, 2);
        EXPECT_EQ(bar->value(), 500);
        inner->AllowStop();
        QTest::qSleep(260);
        EXPECT_TRUE(inner->Step());
        EXPECT_TRUE(window.isVisible());
        QTest::mouseClick(stop, Qt::LeftButton);
        EXPECT_FALSE(inner->Step());
        EXPECT_TRUE(outer->Step()) << "only the part has offered it";
    }
    EXPECT_EQ(label->text(), "the whole ");
    EXPECT_EQ(bar->value(), 250);
    EXPECT_TRUE(outer->Step());
    EXPECT_TRUE(stop->isHidden());
    outer->AllowStop();
    {
        const auto inner = host.BeginProgress(ProgressWindow::Progress, "another part");
        inner->AllowStop();
        QTest::mouseClick(stop, Qt::LeftButton);
        EXPECT_FALSE(inner->Step());
    }
    EXPECT_FALSE(outer->Step()) << "one Stop for both";
    {
        // Two bars do not go into a window of one.
        const auto sounds = host.BeginProgress(ProgressWindow::Audio, "sounds");
        EXPECT_EQ(shown().size(), 2U);
        EXPECT_FALSE(window.isVisible());
    }
    outer.reset();
    EXPECT_TRUE(shown().empty());
}

TEST(Chooser, AFolderThatIsTypedIsMadeByTheButtonToo)
{
    Sandbox box;
    std::filesystem::create_directories(box / "there");
    WindowHost host;
    using Button = QMessageBox::StandardButton;
    const auto choose = [](const Path& typed, Button answer) {
        QTimer::singleShot(20, [typed, answer] {
            QWidget* chooser = QApplication::activeModalWidget();
            ASSERT_NE(chooser, nullptr);
            In<QLineEdit>(*chooser, "fileNameEdit")->setText(PathToQt(typed));
            auto* buttons = chooser->findChild<QDialogButtonBox*>();
            auto* button = buttons->button(QDialogButtonBox::Open);
            EXPECT_TRUE(button->isEnabled());
            if (button->isEnabled() && answer != Button::NoButton)
                InNextBox([answer](QMessageBox& question) { question.button(answer)->click(); });
            QTest::mouseClick(button, Qt::LeftButton);
            chooser->close();
        });
    };
    choose(box / "there", Button::NoButton);
    EXPECT_EQ(host.ChooseFolder("Folder", box / "there"), box / "there");
    choose(box / "new/deep", Button::No);
    EXPECT_EQ(host.ChooseFolder("Folder", box / "there"), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(box / "new"));
    choose(box / "new/deep", Button::Yes);
    EXPECT_EQ(host.ChooseFolder("Folder", box / "there"), box / "new/deep");
    EXPECT_TRUE(std::filesystem::is_directory(box / "new/deep"));
}

TEST(Chooser, FiltersKnowBothCases)
{
    EXPECT_EQ(ChooserFilter("Level Archive Files (*.kva)|*.kva"),
              "Level Archive Files (*.kva *.KVA);;All files (*)");
    EXPECT_EQ(ChooserFilter("Images (*.jpg) (*.bmp)|*.jpg;*.bmp"),
              "Images (*.jpg *.bmp *.JPG *.BMP);;All files (*)");
    EXPECT_EQ(ChooserFilter("Zip files (*.zip)|*.zip|All files (*.*)|*.*"),
              "Zip files (*.zip *.ZIP);;All files (*)");
}

} // namespace kestrova::testing
