#include "app/command_table.h"
#include "help/help_file.h"
#include "session/operation.h"
#include "ui/dialogs/dialog_indice.h"
#include "ui/dialogs/dialog_settings.h"
#include "ui/dialogs/dialog_testo.h"
#include "ui/dialogs/help_desk.h"
#include "ui/widgets/captions.h"
#include "window_world.h"

#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPlainTextEdit>
#include <QRadioButton>

namespace kestrova::testing
{

namespace
{

constexpr const char* help = "Front\n[Settings] #4#\nText about {Slots}.\n[Window] #39# slots\n"
                             "[Originals] #30#\n[Savegames] #18#\n";

/// The window with its help, and what was marked when the help was closed again.
struct HelpWorld : WindowWorld {
    HelpWorld()
    {
        box.Write("home/help_kestrova.txt", help);
        Show();
    }
    /// Does something, and answers at which tag the help has opened; closes it.
    template <class Work> QString TagOf(const Work& work)
    {
        QString marked = QStringLiteral("(no help)");
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
            auto* open = dynamic_cast<HelpDialog*>(QApplication::activeModalWidget());
            if (open == nullptr)
                return;
            marked = In<QLineEdit>(*open, "Text_Trova")->text();
            const QTextCursor cursor = In<QPlainTextEdit>(*open, "Text_File")->textCursor();
            EXPECT_EQ(cursor.selectedText(), marked);
            open->reject();
        });
        watch.start(50);
        work();
        QTest::qWait(150);
        return marked;
    }
    HelpDesk desk{session};
};

std::string MarkedIn(QWidget& dialog)
{
    return FromQt(In<QPlainTextEdit>(dialog, "Text_File")->textCursor().selectedText());
}

} // namespace

TEST(Help, OpensWhereF1IsPressed)
{
    HelpWorld world;
    const auto f1 = [](QWidget* at) { return [at] { QTest::keyClick(at, Qt::Key_F1); }; };
    EXPECT_EQ(world.TagOf(f1(world.Find("Text_Search"))), "#39#");
    SettingsDialog settings{world.session, &world.window};
    settings.show();
    EXPECT_EQ(world.TagOf(f1(In(settings, "Text_Wine"))), "#4#");
    EXPECT_EQ(world.TagOf([&] { Press(settings, "Pul_Help"); }), "#4#");
    EXPECT_EQ(HelpTagAt(In(settings, "Text_WadServer")), HelpTag::Servers) << "a part of it";
    settings.reject();
    auto* tools = world.Find<QMenu>("mnu_Tools");
    EXPECT_EQ(world.TagOf([&] {
        tools->popup({});
        tools->setActiveAction(world.window.findChild<QAction*>("mnu_SetOriginale"));
        QTest::keyClick(tools, Qt::Key_F1);
    }),
              "#30#");
    EXPECT_FALSE(tools->isVisible());
    EXPECT_EQ(
        world.TagOf([&] { world.window.findChild<QAction*>("mnu_HelpSaveGameMan")->trigger(); }),
        "#18#");
    const Operation operation{world.session};
    EXPECT_EQ(world.TagOf(f1(world.Find("Text_Search"))), "(no help)") << "work goes on";
    QDialog box{&world.window};
    box.show();
    const InputGate::Admission admission{box};
    EXPECT_EQ(world.TagOf(f1(&box)), "#39#") << "the work waits for an answer";
}

TEST(Help, AMissingTextIsToldAndTheWindowStays)
{
    HelpWorld world;
    std::filesystem::remove(world.box / "home/help_kestrova.txt");
    HelpDialog dialog{
        world.session, help, "#4#",
        [&] { return LoadHelp(world.box.host, world.session.Folders(), world.box / "nowhere"); },
        &world.window};
    Press(dialog, "Pul_Index");
    EXPECT_TRUE(world.box.host.WasTold("I can not find file: "));
    EXPECT_TRUE(world.box.host.WasTold("Install the program again"));
}

TEST(Help, EveryCommandAndEveryWindowHasItsTag)
{
    for (const CommandRow& row : CommandTable())
        EXPECT_NE(row.help, HelpTag::None) << row.window.control << row.terminal.word;
    EXPECT_EQ(HelpTagOf("mnu_PrefArchive"), HelpTag::ArchivePreferences);
    EXPECT_EQ(HelpTagOf("Dialog_NewLevel"), HelpTag::NewLevel);
    EXPECT_EQ(HelpTagOf("Pul_Nothing"), HelpTag::None);
    QWidget window;
    window.setObjectName("Dialog_Wizard");
    QWidget page{&window};
    EXPECT_EQ(HelpTagAt(&page), HelpTag::PublishOverview);
    SetHelpTag(page, HelpTag::PublishLevel);
    QWidget inside{&page};
    EXPECT_EQ(HelpTagAt(&inside), HelpTag::PublishLevel);
}

TEST(Help, IsSearchedPickedAndZoomed)
{
    HelpWorld world;
    HelpDialog dialog{world.session, help, "#39#", [] { return std::nullopt; }, nullptr};
    EXPECT_EQ(CaptionFaults(dialog), QStringList{});
    dialog.show();
    QTest::qWait(50);
    EXPECT_EQ(MarkedIn(dialog), "#39#");
    In<QLineEdit>(dialog, "Text_Trova")->setText(" SLOTS ");
    Press(dialog, "Pul_Trova");
    EXPECT_EQ(MarkedIn(dialog), "Slots");
    auto* text = In<QPlainTextEdit>(dialog, "Text_File");
    QTest::keyClick(text, Qt::Key_F3);
    EXPECT_EQ(MarkedIn(dialog), "slots");
    Press(dialog, "Pul_Prima");
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(In<QLineEdit>(dialog, "Text_Trova")->text(), "Slots");
    dialog.Jump("[Originals]");
    QTest::mouseDClick(text->viewport(), Qt::LeftButton, {},
                       text->cursorRect().center() - QPoint{30, 0});
    EXPECT_EQ(In<QLineEdit>(dialog, "Text_Trova")->text(), "Originals") << "a phrase in brackets";
    EXPECT_EQ(MarkedIn(dialog), "Originals");

    const double size = text->font().pointSizeF();
    QTest::keyClick(text, Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_GT(text->font().pointSizeF(), size);
    HelpDialog later{world.session, help, "#4#", [] { return std::nullopt; }, nullptr};
    EXPECT_EQ(In(later, "Text_File")->font(), text->font()) << "it is remembered";
    QTest::keyClick(text, Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(text->font().pointSizeF(), size);
    QWheelEvent wheel{{9, 9}, {9, 9}, {}, {0, -120}, {}, Qt::ControlModifier, {}, false};
    QApplication::sendEvent(text->viewport(), &wheel);
    EXPECT_LT(text->font().pointSizeF(), size);
}

TEST(Help, ATopicStandsAtTheTopWhateverTheFont)
{
    HelpWorld world;
    std::string text;
    for (int i = 0; i < 300; ++i)
        text += (i == 150 ? "[Topic] #50#\n"
                          : "A line that is long enough to be broken into two "
                            "where the letters are large. And some more.\n");
    const QFont usual = QApplication::font();
    for (const char* family : {"DejaVu Sans", "URW Bookman", "Noto Sans"})
        for (const int size : {8, 10, 11, 13, 16}) {
            QApplication::setFont(QFont{family, size});
            HelpDialog dialog{world.session, text, "#50#", [] { return std::nullopt; }, nullptr};
            dialog.show();
            QTest::qWait(50);
            auto* shown = In<QPlainTextEdit>(dialog, "Text_File");
            EXPECT_EQ(MarkedIn(dialog), "#50#");
            const QRect hit = shown->cursorRect();
            EXPECT_GE(hit.top(), 0) << family << size;
            EXPECT_LT(hit.top(), 4 * hit.height()) << family << size;
        }
    QApplication::setFont(usual);
}

TEST(Help, AHostileTextIsShownAndSearched)
{
    HelpWorld world;
    constexpr std::size_t letters = 5'000'000;
    const std::string open(letters, '[');
    HelpDialog dialog{world.session, open + "End]", "end", [] { return std::nullopt; }, nullptr};
    dialog.show();
    QTest::qWait(50);
    EXPECT_EQ(MarkedIn(dialog), "End");
    HelpIndexDialog index{world.session, open + std::string(letters, 'a') + "]", nullptr};
    EXPECT_EQ(In<QListView>(index, "List_Indice")->model()->rowCount(), 1);
}

TEST(HelpIndexWindow, GivesATopicThatTheTextJumpsTo)
{
    HelpWorld world;
    HelpIndexDialog index{world.session, help, nullptr};
    EXPECT_EQ(CaptionFaults(index), QStringList{});
    auto* list = In<QListView>(index, "List_Indice");
    EXPECT_EQ(list->model()->rowCount(), 4);
    Press(index, "Pul_Ok");
    EXPECT_TRUE(world.box.host.WasTold("No selected item"));
    In<QLineEdit>(index, "Text_Find")->setText("win");
    Press(index, "Pul_Find");
    EXPECT_EQ(FromQt(In<QLabel>(index, "Label_Info")->text()), "1 items");
    In<QRadioButton>(index, "Opt_Sub")->setChecked(true);
    EXPECT_EQ(list->model()->rowCount(), 1);
    list->setCurrentIndex(list->model()->index(0, 0));
    Press(index, "Pul_Ok");
    EXPECT_EQ(index.Chosen(), "{Slots}");
}

} // namespace kestrova::testing
