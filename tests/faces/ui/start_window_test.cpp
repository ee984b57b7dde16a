#include "ui/dialogs/dialog_start.h"
#include "window_world.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTimer>

namespace kestrova::testing
{
namespace
{

/// The page over a program that knows nothing yet.
class PageWorld : public WindowWorld
{
public:
    PageWorld()
    {
        session.preferences = DefaultPreferences();
        session.archive = {};
        std::filesystem::remove_all(box / "home");
        std::filesystem::create_directories(box / "home");
        std::filesystem::remove(box / "levels");
    }
    static std::string StateOf(QWidget& page, const char* label)
    {
        return FromQt(In<QLabel>(page, label)->text());
    }
};

} // namespace

TEST(StartPage, SaysWhatIsTypedAndStartsWithOneButton)
{
    PageWorld world;
    FirstStart rules{world.session, {}};
    StartDialog page{world.session, rules, nullptr};
    page.show();
    auto* start = In<QPushButton>(page, "Pul_Start");
    auto* original = In<QCheckBox>(page, "Check_Original");
    EXPECT_TRUE(start->isDefault());
    EXPECT_FALSE(start->isEnabled());
    EXPECT_FALSE(original->isChecked()) << "the person says so, nobody else";
    EXPECT_TRUE(In<QRadioButton>(page, "Opt_Full")->isChecked());
    EXPECT_FALSE(In<QCheckBox>(page, "Check_FileTypes")->isVisibleTo(&page))
        << "not for a folder of one's own";

    auto* line = In<QComboBox>(page, "Combo_Trle")->lineEdit();
    line->setFocus();
    QTest::keyClicks(line, ToQt((world.box / "levels").native()));
    EXPECT_NE(PageWorld::StateOf(page, "Label_Trle").find("Not right folder"), std::string::npos);
    line->selectAll();
    QTest::keyClicks(line, ToQt((world.box / "trle").native()));
    EXPECT_EQ(PageWorld::StateOf(page, "Label_Trle"), "This is a Level Editor's folder.");
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return In<QRadioButton>(page, "Opt_Full")->text().contains(QLatin1Char('('));
    })) << "the copy's real size is measured";
    original->click();
    world.box.host.WillChoose("Select main folder", world.box / "levels");
    Press(page, "Pul_SfogliaLevels");
    EXPECT_TRUE(original->isChecked()) << "it was said of the other folder";
    EXPECT_EQ(FromQt(In<QLineEdit>(page, "Text_Levels")->text()), (world.box / "levels").native());
    ASSERT_TRUE(start->isEnabled());
    QTest::keyClick(In<QLineEdit>(page, "Text_Levels"), Qt::Key_Return);
    EXPECT_EQ(page.result(), QDialog::Accepted) << world.box.host.AllTold();
    EXPECT_TRUE(world.box.Has("home/backup_trle/DATA/tut1.tr4"));
    EXPECT_EQ(world.session.archive.levels.size(), 1U);
}

TEST(StartPage, ATryThatFailsLeavesItAsItWas)
{
    PageWorld world;
    FirstStart rules{world.session, {}};
    StartDialog page{world.session, rules, nullptr};
    page.show();
    world.box.host.WillChoose("Choose TR Level Editor folder", world.box / "trle");
    Press(page, "Pul_Sfoglia");
    In<QRadioButton>(page, "Opt_Compact")->click();
    world.box.host.WillAsk("is original?", false);
    world.box.host.WillAsk("go on without one?", false);
    Press(page, "Pul_Start");
    EXPECT_TRUE(page.isVisible());
    EXPECT_TRUE(In<QPushButton>(page, "Pul_Start")->isEnabled());
    EXPECT_TRUE(In<QRadioButton>(page, "Opt_Compact")->isChecked());
    EXPECT_FALSE(world.box.Has("home/backup_trle"));
    EXPECT_EQ(world.session.TrleFolder(), "");
}

TEST(StartPage, LeavingItTellsWhatItMeansAndOffersAddressesToWhoLacksAnEditor)
{
    for (const bool hasEditor : {false, true}) {
        PageWorld world;
        FirstStart rules{world.session, {}};
        StartDialog page{world.session, rules, nullptr};
        page.show();
        if (hasEditor) {
            world.box.host.WillChoose("Choose TR Level Editor folder", world.box / "trle");
            Press(page, "Pul_Sfoglia");
        } else {
            world.box.host.WillAsk("Do you want see url where you could download", false);
        }
        QTest::keyClick(&page, Qt::Key_Escape);
        EXPECT_FALSE(page.isVisible());
        EXPECT_EQ(page.result(), QDialog::Rejected);
        EXPECT_TRUE(world.box.host.WasTold("This program cann't run without"));
    }
}

} // namespace kestrova::testing
