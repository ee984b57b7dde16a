#include "ui/window_world.h"

#include "formats/archive_file.h"

#include <QAction>
#include <QMenu>

namespace kestrova::testing
{

namespace
{

/// Without the mark of its letter, which must be no other item's.
std::string WordsOf(const QAction& action)
{
    QString text = action.text();
    QString letters;
    for (const QAction* item : qobject_cast<QMenu*>(action.parent())->actions())
        if (const QKeySequence letter = QKeySequence::mnemonic(item->text()); !letter.isEmpty()) {
            EXPECT_FALSE(letters.contains(letter.toString())) << FromQt(item->text());
            letters += letter.toString() + QLatin1Char(' ');
        }
    text.replace(QLatin1String("&&"), QLatin1String("\n")).remove(QLatin1Char('&'));
    return FromQt(text.replace(QLatin1Char('\n'), QLatin1Char('&')));
}

} // namespace

TEST(UndoInTheMenu, SaysWhatItWouldDoAndDoesIt)
{
    WindowWorld world;
    const LevelCode code = world.AddLevel("Rock & Roll");
    auto* undo = world.Find<QAction>("mnu_Undo");
    auto* redo = world.Find<QAction>("mnu_Redo");
    EXPECT_FALSE(undo->isEnabled()) << "nor before the list is there";
    world.Show();
    EXPECT_EQ(WordsOf(*undo), "Undo");
    EXPECT_FALSE(undo->isEnabled());
    EXPECT_FALSE(redo->isEnabled());
    EXPECT_EQ(undo->shortcut(), QKeySequence{"Ctrl+Z"});

    world.list.Select(code);
    world.box.host.AnswerAll(true);
    world.Find<QAction>("mnu_RemoveLevel")->trigger();
    EXPECT_EQ(world.session.archive.Find(code), nullptr) << world.box.host.AllTold();
    EXPECT_EQ(WordsOf(*undo), "Undo removal of level \"Rock & Roll\"");
    ASSERT_TRUE(undo->isEnabled());
    undo->trigger();
    ASSERT_NE(world.session.archive.Find(code), nullptr) << world.box.host.AllTold();
    EXPECT_EQ(world.list.Selected(), code) << "what came back is chosen";
    EXPECT_EQ(world.box.Read("levels/LEVEL_0001/files/level1.tr4"), "Rock & Roll");
    EXPECT_FALSE(undo->isEnabled());
    EXPECT_EQ(WordsOf(*redo), "Redo removal of level \"Rock & Roll\"");
    redo->trigger();
    EXPECT_EQ(world.session.archive.Find(code), nullptr) << world.box.host.AllTold();
    EXPECT_FALSE(redo->isEnabled());
}

} // namespace kestrova::testing
