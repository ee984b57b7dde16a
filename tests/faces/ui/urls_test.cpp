#include "core/dates.h"
#include "core/staged_file.h"
#include "formats/url_text.h"
#include "online/download.h"
#include "online/url_file.h"
#include "sandbox/web_servers.h"
#include "ui/desktop/host_windows.h"
#include "ui/desktop/progress_windows.h"
#include "ui/dialogs/dialog_siti.h"
#include "ui/window_world.h"

#include <QClipboard>
#include <QComboBox>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>
#include <QTreeView>

namespace kestrova::testing
{

namespace
{

/// A program with a list of addresses.
class UrlWindowWorld : public WindowWorld
{
public:
    UrlWindowWorld()
    {
        saved.updateDate = DateSerialOf(box.machine.now) - 29;
        saved.records = {{"http://a.example/1", "Tom - Levels and Reviews", UrlKindLevels, false},
                         {"http://a.example/" + std::string(100, 'x'), "Mine", UrlKindLevels, true},
                         {"http://b.example", "***hidden", UrlKindLevels, false},
                         {"*", "a notice", UrlKindNotice, false},
                         {"http://forum.example", "Forum\nof all", UrlKindForums, false}};
        Save();
    }
    void Save() const { EXPECT_TRUE(SaveUrlList(File(), saved)); }
    [[nodiscard]] Path File() const { return UrlListPath(session.Folders()); }
    [[nodiscard]] UrlList OnDisk() const { return *LoadUrlList(File()); }

    UrlList saved;
};

QStringList Rows(QWidget& dialog)
{
    QStringList rows;
    const auto* model = In<QTreeView>(dialog, "List_Url")->model();
    for (int row = 0; row < model->rowCount(); ++row)
        rows.append(model->index(row, 0).data().toString());
    return rows;
}

QString ShownIn(QWidget& dialog, const char* name)
{
    return In<QLabel>(dialog, name)->text();
}

} // namespace

TEST(Urls, AKindIsShownSearchedAndEdited)
{
    UrlWindowWorld world;
    World& box = world.box;
    SitiDialog dialog{world.session, UrlKindForums, nullptr};
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    EXPECT_EQ(dialog.windowTitle(), "Forums and informations about Level Editor' World");
    EXPECT_EQ(Rows(dialog), QStringList{"Forum of all"});
    EXPECT_EQ(In<QComboBox>(dialog, "Combo_TipoUrl")->count(), 6);

    In<QComboBox>(dialog, "Combo_TipoUrl")->setCurrentIndex(0);
    EXPECT_EQ(dialog.windowTitle(), "Where download new custom levels");
    EXPECT_EQ(Rows(dialog), (QStringList{"Tom - Levels and reviews", "{User} Mine"}));
    EXPECT_EQ(ShownIn(dialog, "Label_TotUrl"), "2");
    EXPECT_EQ(FromQt(ShownIn(dialog, "Label_Update")), UpdateDateText(world.saved.updateDate));
    EXPECT_EQ(ShownIn(dialog, "Label_Url"), "http://a.example/1");
    auto* list = In<QTreeView>(dialog, "List_Url");
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(ShownIn(dialog, "Label_Url"), "http://a.example/" + QString(58, 'x') + " ...");
    EXPECT_EQ(In<QPlainTextEdit>(dialog, "Text_Note")->toPlainText(), "Mine");

    // The shown words are searched, and the address; Enter there leads to the list.
    auto* search = In<QLineEdit>(dialog, "Text_Search");
    search->setFocus();
    QTest::keyClicks(search, "REVIEWS");
    EXPECT_EQ(Rows(dialog), QStringList{"Tom - Levels and reviews"});
    search->setText("example/x");
    EXPECT_EQ(Rows(dialog), QStringList{"{User} Mine"});
    search->setText("example/\nx");
    search->setText("nowhere");
    EXPECT_TRUE(Rows(dialog).isEmpty());
    EXPECT_EQ(ShownIn(dialog, "Label_TotUrl"), "0");
    EXPECT_TRUE(In(dialog, "Label_Hint")->isVisible());
    Press(dialog, "Pul_Go");
    EXPECT_TRUE(box.host.WasTold("No item selected"));
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_TRUE(list->hasFocus());
    EXPECT_TRUE(dialog.isVisible());
    search->clear();
    EXPECT_EQ(Rows(dialog).size(), 2);

    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(box.machine.opened, std::vector<std::string>{"http://a.example/1"});
    QTest::keyClick(list, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "http://a.example/1");
    box.host.WillAskText("Insert description for new record", "New one");
    box.host.WillAskText("Insert url address", "http://new.example/");
    QTest::keyClick(list, Qt::Key_Insert);
    EXPECT_EQ(Rows(dialog).last(), "{User} New one");
    box.host.WillAskText("Change description of current record", "Changed");
    box.host.WillAskText("Change url address of current record", "http://a.example/2");
    box.host.WillAsk("server of current url", true);
    QTest::keyClick(list, Qt::Key_F2);
    EXPECT_EQ(Rows(dialog).first(), "Changed");
    EXPECT_EQ(ShownIn(dialog, "Label_Url"), "http://a.example/2");
    search->setText("changed");
    EXPECT_EQ(Rows(dialog), QStringList{"Changed"});
    box.host.WillAsk("Are you sure to remove record: Changed", true);
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_TRUE(Rows(dialog).isEmpty());
    EXPECT_EQ(world.OnDisk(), world.saved);

    box.host.WillAsk("Current url list has been changed.", false);
    dialog.close();
    EXPECT_TRUE(dialog.isVisible());
    Press(dialog, "Pul_Ok");
    EXPECT_FALSE(dialog.isVisible());
    const UrlList now = world.OnDisk();
    ASSERT_EQ(now.records.size(), 5U);
    EXPECT_EQ(now.records.back(),
              (UrlRecord{"http://new.example/", "New one", UrlKindLevels, true}));
    EXPECT_EQ(now.records[1].description, "***hidden");
}

TEST(Urls, AnUpdateIsShownAndWrittenOnlyByOk)
{
    UrlWindowWorld world;
    UrlList fresh;
    fresh.records.assign(3, {"http://s.example/", "From the server", UrlKindLevels, false});
    fresh.records.push_back({"*", "News", UrlKindNotice, false});
    world.box.Write("served/urllist.bin", *FormatUrlList(fresh));
    const RealServer server{world.box / "served"};
    world.session.settings.updateServers = server.Address("/urllist.bin");
    world.box.host.WillAsk("Current url list has been changed.", true);
    QStringList rows;
    QTimer::singleShot(300, &world.window, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        rows = Rows(*dialog);
        dialog->close();
    });
    ShowUrls(world.session, UrlKindLevels, &world.window, true);
    EXPECT_EQ(rows.size(), 4);
    EXPECT_EQ(rows.value(0), "{User} Mine");
    EXPECT_TRUE(world.box.host.WasTold("News"));
    EXPECT_EQ(world.OnDisk(), world.saved);
    EXPECT_EQ(world.session.running.operations, 0);

    SitiDialog dialog{world.session, UrlKindLevels, nullptr};
    dialog.UpdateNow();
    Press(dialog, "Pul_Ok");
    EXPECT_EQ(world.OnDisk().records.size(), 5U);
}

TEST(Urls, AMonthLaterAnUpdateIsOfferedBeforeALevelIsAdded)
{
    UrlWindowWorld world;
    world.saved.updateDate = DateSerialOf(world.box.machine.now) - 30;
    world.Save();
    world.Show();
    QStringList windows;
    const auto close = [&] {
        if (QWidget* dialog = QApplication::activeModalWidget()) {
            windows.append(dialog->objectName());
            dialog->close();
        }
    };
    for (const int wait : {300, 600})
        QTimer::singleShot(wait, &world.window, close);
    world.box.host.WillAsk("It's advisable update online database", true);
    world.box.host.WillAsk("Do you want see url list where you could download", false);
    world.Find<QAction>("mnu_AddLevel")->trigger();
    EXPECT_EQ(windows, (QStringList{"Dialog_Siti", "Dialog_NewLevel"}));
    EXPECT_TRUE(world.box.host.WasTold("No update server is set"));
}

TEST(Urls, StopIsHeardAtOnceWhileAServerSaysNothing)
{
    UrlWindowWorld world;
    WindowHost host;
    const ScriptedServer server{[](const Connection& client) { client.Wait(); }};
    QElapsedTimer sinceStop;
    QString title;
    QString label;
    QTimer::singleShot(600, &world.window, [&] {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == QLatin1String("Dialog_Download")) {
                title = window->windowTitle();
                label = ShownIn(*window, "Label_Info");
                sinceStop.start();
                Press(*window, "Pul_Stop");
            }
    });
    const auto done = DownloadFile(host, world.box.machine,
                                   {server.Address("/wads/angkor.zip"), world.box / "got"});
    ASSERT_TRUE(sinceStop.isValid());
    EXPECT_LT(sinceStop.elapsed(), 500);
    EXPECT_EQ(title, " Download in progress ...");
    EXPECT_EQ(label.trimmed(), "Waiting response to download angkor.zip");
    ASSERT_FALSE(done);
    EXPECT_EQ(done.Error().code, ErrorCode::Stopped);
    EXPECT_FALSE(world.box.Has("got"));
}

TEST(Urls, AHundredThousandAreShownRowByRow)
{
    UrlWindowWorld world;
    world.saved.records.clear();
    for (int i = 0; i < 100'000; ++i)
        world.saved.records.push_back({"http://s.example/" + std::to_string(i),
                                       "Site " + std::to_string(i), UrlKindLevels, false});
    world.Save();
    SitiDialog dialog{world.session, UrlKindLevels, nullptr};
    dialog.show();
    EXPECT_EQ(ShownIn(dialog, "Label_TotUrl"), "100000");
    In<QLineEdit>(dialog, "Text_Search")->setText("site 9999");
    EXPECT_EQ(Rows(dialog).size(), 11);
    dialog.close();
}

} // namespace kestrova::testing
