#include "core/size_words.h"
#include "ui/desktop/progress_windows.h"
#include "ui/dialogs/dialog_author.h"
#include "ui/dialogs/dialog_compare_trle.h"
#include "ui/dialogs/dialog_convert_audio.h"
#include "ui/dialogs/dialog_doctor.h"
#include "ui/dialogs/dialog_installa_trle.h"
#include "ui/dialogs/dialog_new_level.h"
#include "ui/dialogs/dialog_pref_arc.h"
#include "ui/dialogs/dialog_resize.h"
#include "ui/dialogs/dialog_restore.h"
#include "ui/dialogs/dialog_set_mp3.h"
#include "ui/dialogs/dialog_settings.h"
#include "ui/dialogs/dialog_siti.h"
#include "ui/dialogs/dialog_start.h"
#include "ui/dialogs/dialog_trova_trle.h"
#include "ui/dialogs/dialog_wizard.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/clear_boxes_style.h"
#include "ui/widgets/elided_label.h"
#include "window_world.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QStyleOption>
#include <QTimer>

namespace kestrova::testing
{

namespace
{

std::string Label(QWidget& dialog, const char* name)
{
    return FromQt(In<QLabel>(dialog, name)->text());
}

} // namespace

TEST(Dialogs, EveryCaptionFindsItsControl)
{
    WindowWorld world;
    TrleFinder finder{world.session};
    AboutDialog about{nullptr};
    NewArcDialog newArc{nullptr};
    ArchiveDialog archive{world.session, nullptr};
    SettingsDialog settings{world.session, nullptr};
    FindTrleDialog find{world.session, finder, nullptr};
    FirstStart page{world.session, {}};
    StartDialog start{world.session, page, nullptr};
    RestoreDialog restore{world.session, nullptr};
    AuthorDialog author{world.session, 0, nullptr};
    NewLevelDialog add{world.session, nullptr};
    ProgressDialog progress{ProgressWindow::Progress, nullptr};
    ProgressDialog wait{ProgressWindow::Wait, nullptr};
    ProgressDialog zip{ProgressWindow::Zip, nullptr};
    ProgressDialog batch{ProgressWindow::Audio, nullptr};
    ProgressDialog download{ProgressWindow::Download, nullptr};
    SitiDialog urls{world.session, UrlKindForums, nullptr};
    ConvertAudioDialog encode{world.session, AudioToolMode::Encode, nullptr};
    CompareTrleDialog compare{world.session, nullptr};
    DoctorDialog doctor{world.session, nullptr};
    ConvertAudioDialog convert{world.session, AudioToolMode::Convert, nullptr};
    SetMp3Dialog settingsOfMp3{world.session, true, nullptr};
    WizardDialog wizard{world.session, nullptr};
    for (const QWidget* dialog : std::initializer_list<const QWidget*>{
             &about,  &newArc,   &archive, &settings,      &find,   &restore,  &add,
             &author, &progress, &wait,    &zip,           &batch,  &download, &urls,
             &encode, &convert,  &compare, &settingsOfMp3, &wizard, &start,    &doctor}) {
        EXPECT_EQ(CaptionFaults(*dialog), QStringList{}) << FromQt(dialog->objectName());
        EXPECT_FALSE(dialog->windowTitle().isEmpty()) << FromQt(dialog->objectName());
        // A told blank would move a frame's or a check's words from where its neighbours begin.
        for (const auto* frame : dialog->findChildren<QGroupBox*>())
            EXPECT_EQ(frame->title(), frame->title().trimmed());
        for (const auto* button : dialog->findChildren<QAbstractButton*>())
            EXPECT_EQ(button->text(), button->text().trimmed());
    }
    EXPECT_EQ(settings.windowTitle(), " Kestrova Settings");
    EXPECT_EQ(In<QCheckBox>(settings, "Check_EnableCapture")->text().remove(QLatin1Char('&')),
              "Enable screen-shot capture (press [Print Screen]  while you are playing)");
}

TEST(Settings, OkTakesEveryControlOverAndCancelNone)
{
    WindowWorld world;
    PreferencesRecord& record = world.session.preferences;
    const PreferencesRecord before = record;
    const auto change = [](QWidget& dialog) {
        for (const char* box :
             {"Check_AutoSave", "Check_NonDecomprimere", "Check_Logfile",
              "Check_TestCOntrollaUguali", "Check_NoAutoCompila", "Check_EnableCapture"})
            In<QCheckBox>(dialog, box)->toggle();
        In<QRadioButton>(dialog, "Opt_PromptCapture")->setChecked(true);
        In<QLineEdit>(dialog, "Text_Wine")->setText(" wine-9 ");
        In<QLineEdit>(dialog, "Text_WineWords")->setText("-a b");
        In<QSpinBox>(dialog, "Spin_HistoryCount")->setValue(7);
        In<QSpinBox>(dialog, "Spin_HistorySize")->setValue(9);
        In<QSpinBox>(dialog, "Spin_UndoCount")->setValue(5);
        In<QSpinBox>(dialog, "Spin_UndoSize")->setValue(6);
        In<QLineEdit>(dialog, "Text_Server1")->setText(" http://a.example/urllist.bin ");
        In<QLineEdit>(dialog, "Text_Server3")->setText("https://b.example/urllist.bin");
        In<QLineEdit>(dialog, "Text_WadServer")->setText("http://wads.example");
    };
    {
        SettingsDialog dialog{world.session, nullptr};
        EXPECT_EQ(Label(dialog, "Label_FullBackup"), "YES");
        EXPECT_EQ(Label(dialog, "Label_PathTrle"), (world.box / "trle").native());
        change(dialog);
        world.box.host.WillChoose("Select 'start tomb raider' program", Path{"/x/y/Tomb.EXE"});
        Press(dialog, "Pul_SfogliaNomeTomb");
        EXPECT_EQ(Label(dialog, "Label_NomeTombExe"), "Tomb.EXE");
        Press(dialog, "Pul_Cancel");
    }
    EXPECT_EQ(FormatPreferences(record), FormatPreferences(before));
    EXPECT_EQ(world.session.settings.wineCommand, "wine");
    {
        SettingsDialog dialog{world.session, nullptr};
        change(dialog);
        world.box.host.WillChoose("Select folder where you download", world.box / "levels");
        Press(dialog, "Pul_SfogliaLoadDir");
        world.box.host.WillChoose("Select program to convert", std::nullopt);
        Press(dialog, "Pul_SfogliaTom2Pc");
        Press(dialog, "Pul_Ok");
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
    }
    EXPECT_FALSE(record.autoSave);
    EXPECT_FALSE(record.noDecompressInProperties);
    EXPECT_TRUE(record.writeLogFiles);
    EXPECT_FALSE(record.checkEqualLevels);
    EXPECT_TRUE(record.noAutoCompile);
    EXPECT_FALSE(record.captureEnabled);
    EXPECT_TRUE(record.promptCapture);
    EXPECT_EQ(record.downloadFolder, (world.box / "levels").native());
    EXPECT_EQ(record.tom2PcName, before.tom2PcName);
    EXPECT_EQ(record.archivePath, before.archivePath);
    EXPECT_TRUE(record.fullBackup);
    EXPECT_EQ(world.session.settings.wineCommand, "wine-9");
    EXPECT_EQ(world.session.settings.wineWords, "-a b");
    EXPECT_EQ(world.session.settings.historyCount, 7);
    EXPECT_EQ(world.session.settings.historyMegabytes, 9);
    EXPECT_EQ(world.session.settings.undoCount, 5);
    EXPECT_EQ(world.session.settings.undoMegabytes, 6);
    EXPECT_EQ(world.session.settings.updateServers,
              "http://a.example/urllist.bin https://b.example/urllist.bin");
    EXPECT_EQ(world.session.settings.wadServer, "http://wads.example");
    EXPECT_FALSE(world.box.Has("home/Kestrova.prf")) << "the file is written at the end";
}

TEST(Settings, WhatHasNoRoomOrIsNoServerIsRefusedInWords)
{
    WindowWorld world;
    SettingsForm form{world.session};
    form.preferences.trlePath = "/" + std::string(256, 'a');
    form.preferences.autoSave = false;
    EXPECT_FALSE(form.Accept());
    EXPECT_TRUE(world.box.host.WasTold("too long"));
    EXPECT_EQ(world.session.preferences.trlePath, (world.box / "trle").native());
    EXPECT_TRUE(world.session.preferences.autoSave);
    form.preferences.trlePath.clear();
    for (const char* odd :
         {"ftp://a.example", "http://a http://b http://c http://d", "urllist.bin"}) {
        form.settings.updateServers = odd;
        EXPECT_FALSE(form.Accept());
        EXPECT_TRUE(world.box.host.WasTold(std::string{"Not usable: "} + odd));
    }
    form.settings.updateServers = "http://a  http://b";
    form.settings.wadServer = "http://a http://b";
    EXPECT_FALSE(form.Accept());
    form.settings.wadServer.clear();
    EXPECT_TRUE(form.Accept()) << "an empty folder is asked for at the next start";
}

TEST(ArchivePreferences, ShowsTheArchiveAndCancelPutsItBack)
{
    WindowWorld world;
    world.AddLevel("One");
    world.session.archive.header.mainFolderSize = 3 * 1024.0;
    world.session.archive.header.secondaryFolderSize = 1024.0 * 1024 * 2;
    const ArchiveHeader before = world.session.archive.header;
    std::filesystem::create_directories(world.box / "empty");
    std::filesystem::create_directories(world.box / "moved/LEVEL_0001");
    {
        ArchiveDialog dialog{world.session, nullptr};
        EXPECT_EQ(Label(dialog, "Label_NomeArc"), (world.box / "home/LevelArchive.kva").native());
        EXPECT_EQ(Label(dialog, "Label_TotLevels"), "2");
        EXPECT_EQ(Label(dialog, "Label_OnCd"), "NO");
        EXPECT_EQ(Label(dialog, "Label_SizeArc"),
                  FormatSize(3072) + "+" + FormatSize(2097152) + " = " + FormatSize(2100224));
        In<QCheckBox>(dialog, "Check_WavInMp3")->click();
        EXPECT_TRUE(world.session.archive.header.wavInMp3);
        In<QCheckBox>(dialog, "Check_Compresso")->click();
        EXPECT_TRUE(world.session.archive.header.compressLevels) << "it counts at once";

        world.box.host.WillChoose("Select folder: levels", world.box / "empty");
        Press(dialog, "Pul_SfogliaSecDir");
        EXPECT_TRUE(world.box.host.WasTold("holds none of this archive's levels"));
        EXPECT_EQ(world.session.archive.header.secondaryFolder, before.secondaryFolder);
        world.box.host.WillChoose("Select folder: levels", world.box / "moved");
        Press(dialog, "Pul_SfogliaSecDir");
        EXPECT_EQ(Label(dialog, "Label_MainDir"), (world.box / "moved").native())
            << "without cds both are one";
        Press(dialog, "Pul_Cancel");
    }
    EXPECT_FALSE(world.session.archive.header.compressLevels);
    EXPECT_EQ(world.session.archive.header.mainFolder, before.mainFolder);
    EXPECT_EQ(world.session.archive.header.secondaryFolder, before.secondaryFolder);
    {
        ArchiveDialog dialog{world.session, nullptr};
        In<QCheckBox>(dialog, "Check_Compresso")->click();
        world.box.host.WillAsk("Compression settings have been changed.", true);
        Press(dialog, "Pul_Ok");
        EXPECT_TRUE(world.box.Has("levels/LEVEL_0001/files/level1.tr4.zl"))
            << world.box.host.AllTold();
    }
    const auto saved = ParseArchive(world.box.Read("home/LevelArchive.kva"));
    ASSERT_TRUE(saved);
    EXPECT_TRUE(saved->header.compressLevels);
}

TEST(ArchivePreferences, AnArchiveWithCdsKeepsItsTwoFolders)
{
    WindowWorld world;
    world.AddLevel("On disc");
    world.session.archive.levels.back().cdNumber = 2;
    world.session.archive.levels.back().filesSize = 2048;
    world.session.archive.header.cdCount = 2;
    world.session.archive.header.mainFolder = "/media/disc";
    ArchiveDialog dialog{world.session, nullptr};
    EXPECT_EQ(Label(dialog, "Label_OnCd"), "YES");
    EXPECT_EQ(Label(dialog, "Label_TotCd"), "2");
    EXPECT_EQ(Label(dialog, "Label_SizeCd"), FormatSize(2048));
    EXPECT_EQ(Label(dialog, "Label_MainDir"), "/media/disc");
    dialog.reject();

    world.session.archive.levels.back().cdNumber = 0;
    const ArchiveForm form{world.session};
    EXPECT_EQ(world.session.archive.header.mainFolder, (world.box / "levels").native());
}

TEST(FindTrle, OkNeedsAFolderThatPasses)
{
    WindowWorld world;
    world.session.preferences.trlePath.clear();
    TrleFinder finder{world.session};
    ASSERT_FALSE(finder.Prepare());
    {
        world.session.preferences.trlePath = (world.box / "unplugged").native();
        FindTrleDialog gone{world.session, finder, nullptr};
        EXPECT_NE(Label(gone, "Label_Path").find((world.box / "unplugged").native()),
                  std::string::npos)
            << "which folder is missed";
        world.session.preferences.trlePath.clear();
    }
    FindTrleDialog dialog{world.session, finder, nullptr};
    EXPECT_FALSE(In<QPushButton>(dialog, "Pul_Ok")->isEnabled());
    for (const char* setup : {"Pul_InstallTrleCD", "Pul_InstallCompresso"})
        EXPECT_TRUE(In<QPushButton>(dialog, setup)->isEnabled());
    world.box.host.WillChoose("Select source TRLE folder to install", std::nullopt);
    Press(dialog, "Pul_InstallTrleCD");
    world.box.host.WillChoose("Choose TR Level Editor folder", world.box / "levels");
    Press(dialog, "Pul_Sfoglia");
    EXPECT_TRUE(world.box.host.WasTold("Not right folder"));
    EXPECT_FALSE(In<QPushButton>(dialog, "Pul_Ok")->isEnabled());
    world.box.host.WillChoose("practice Level Editor", world.box.root);
    Press(dialog, "Pul_Practice");
    EXPECT_EQ(Label(dialog, "Label_Path"), (world.box / "trle").native())
        << "one that is there already is taken";
    Press(dialog, "Pul_Ok");
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(world.session.preferences.trlePath, (world.box / "trle").native());

    FindTrleDialog given{world.session, finder, nullptr};
    given.show();
    world.box.host.WillAsk("Do you want see url where you could download (compress or flat) Tomb "
                           "Raider Level Editor? ",
                           true);
    std::string title;
    std::vector<std::string> toldBefore;
    QTimer::singleShot(100, &given, [&] {
        QWidget* urls = QApplication::activeModalWidget();
        title = FromQt(urls->windowTitle());
        toldBefore.push_back(world.box.host.AllTold());
        urls->close();
    });
    given.close();
    EXPECT_EQ(given.result(), QDialog::Rejected);
    EXPECT_EQ(title, "Where download Tomb Raider Level Editor");
    ASSERT_EQ(toldBefore.size(), 1U);
    EXPECT_EQ(toldBefore.front().find("cann't run"), std::string::npos);
    EXPECT_TRUE(world.box.host.WasTold("This program cann't run without"));
}

TEST(Author, TheListsFollowTheirButtonsAndARefusalKeepsTheWindow)
{
    using namespace std::string_literals;
    WindowWorld world;
    world.AddLevel("Level");
    LevelRecord& record = world.session.archive.levels[1];
    record.authorName = "Ada";
    record.authorNote = "one\r\ntwo";
    record.authorEmails = "a@b\0c@d"s;
    AuthorDialog dialog{world.session, 1, nullptr};
    dialog.show();
    auto* emails = In<QComboBox>(dialog, "Combo_Email");
    EXPECT_EQ(emails->currentText(), "a@b");
    for (const char* next : {"Text_Note", "Combo_Email", "Pul_NewEmail", "Pul_ChangeEmail",
                             "Pul_DelEmail", "Pul_SendMail", "Combo_Sito", "Pul_New_Sito"}) {
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(FromQt(dialog.focusWidget()->objectName()), next);
    }
    QTest::keyClick(emails, Qt::Key_Down);
    world.box.host.WillAskText("Change current email address", "e@f");
    Press(dialog, "Pul_ChangeEmail");
    EXPECT_EQ(emails->currentText(), "e@f");
    Press(dialog, "Pul_SendMail");
    EXPECT_EQ(world.box.machine.opened, std::vector<std::string>{"mailto:e@f"});
    Press(dialog, "Pul_GoSito");
    EXPECT_TRUE(world.box.host.WasTold("No selected site"));
    world.box.host.WillAskText("Insert new url address", "www.x.org");
    Press(dialog, "Pul_New_Sito");
    In<QLineEdit>(dialog, "Text_NomeAutore")->setText(QString(80, 'a'));
    Press(dialog, "Pul_Ok");
    EXPECT_TRUE(world.box.host.WasTold("Game designer name too long"));
    EXPECT_TRUE(dialog.isVisible());
    In<QLineEdit>(dialog, "Text_NomeAutore")->setText("Bea");
    Press(dialog, "Pul_Ok");
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(record.authorName, "Bea");
    EXPECT_EQ(record.authorNote, "one\r\ntwo") << "as it was";
    EXPECT_EQ(record.authorEmails, "a@b\0e@f"s);
    EXPECT_EQ(record.authorSites, "www.x.org");
}

TEST(Author, EscapeAsksOnlyWhereSomethingWasTyped)
{
    WindowWorld world;
    world.AddLevel("Level");
    LevelRecord& record = world.session.archive.levels[1];
    record.authorNote = "one\r\ntwo";
    {
        AuthorDialog untouched{world.session, 1, nullptr};
        untouched.show();
        QTest::keyClick(&untouched, Qt::Key_Escape);
        EXPECT_FALSE(untouched.isVisible());
    }
    AuthorDialog dialog{world.session, 1, nullptr};
    dialog.show();
    In<QPlainTextEdit>(dialog, "Text_Note")->insertPlainText("a long note");
    world.box.host.WillAsk("is not stored yet", false);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible());
    world.box.host.WillAsk("is not stored yet", true);
    Press(dialog, "Pul_Cancel");
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(record.authorNote, "one\r\ntwo");

    AuthorDialog lists{world.session, 1, nullptr};
    lists.show();
    world.box.host.WillAskText("Insert new url address", "www.x.org");
    Press(lists, "Pul_New_Sito");
    world.box.host.WillAsk("is not stored yet", false);
    lists.close();
    EXPECT_TRUE(lists.isVisible());
}

TEST(Dialogs, ASmallScreenStillHasTheirAnswers)
{
    WindowWorld world;
    TrleFinder finder{world.session};
    SettingsDialog settings{world.session, nullptr};
    AuthorDialog author{world.session, 0, nullptr};
    FindTrleDialog find{world.session, finder, nullptr};
    NewLevelDialog add{world.session, nullptr};
    ResizeDialog resize{world.session, world.box / "none.bmp", nullptr};
    for (QWidget* dialog :
         std::initializer_list<QWidget*>{&settings, &author, &find, &add, &resize, &world.window}) {
        dialog->show();
        dialog->resize(496, 252); // 1024 by 600 at twice the size
        EXPECT_LE(dialog->height(), 252) << FromQt(dialog->objectName());
        EXPECT_LE(dialog->width(), 496) << FromQt(dialog->objectName());
        dialog->hide();
    }
}

TEST(Dialogs, ALargeFontPushesNothingBeyondTheRightEdge)
{
    WindowWorld world;
    const QFont before = QApplication::font();
    // Half as wide again as the usual one, whatever font this machine has.
    constexpr double wideAlphabet = 248; // pixels
    const double alphabet = QFontMetricsF{before}.horizontalAdvance("abcdefghijklmnopqrstuvwxyz");
    QFont large = before;
    large.setPixelSize(static_cast<int>(QFontInfo{before}.pixelSize() * wideAlphabet / alphabet));
    QApplication::setFont(large);
    {
        SettingsDialog settings{world.session, nullptr};
        AuthorDialog author{world.session, 0, nullptr};
        InstallTrleDialog install{world.session, world.box / "trle", nullptr};
        for (QWidget* dialog : std::initializer_list<QWidget*>{&settings, &author, &install}) {
            dialog->show();
            for (const auto* page : dialog->findChildren<QScrollArea*>())
                EXPECT_EQ(page->horizontalScrollBar()->maximum(), 0)
                    << FromQt(dialog->objectName());
            const int roomOfScreen = dialog->screen()->availableGeometry().height() - 60;
            for (const auto* page : dialog->findChildren<QScrollArea*>()) {
                const bool mayGrow = page->isVisible() && dialog->height() < roomOfScreen;
                EXPECT_TRUE(!mayGrow || page->verticalScrollBar()->maximum() == 0)
                    << FromQt(dialog->objectName()) << " could be higher";
            }
        }
    }
    QApplication::setFont(before);
}

TEST(ElidedParagraph, ShowsThatThereIsMore)
{
    ElidedParagraph note;
    note.resize(200, 3 * note.fontMetrics().lineSpacing());
    note.setText("short");
    EXPECT_EQ(note.ShownLines(), QStringList{"short"});
    note.setText("one\r\ntwo\r\nthree\r\nfour");
    const QStringList lines = note.ShownLines();
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[2], "three four") << "what there is room for";
    note.setText(QString(400, 'w'));
    EXPECT_LE(note.ShownLines().size(), 3);
    EXPECT_TRUE(note.ShownLines().last().endsWith(QChar(0x2026)));
}

TEST(Style, BoxesAreSeenInADarkPalette)
{
    const ClearBoxesStyle style;
    QStyleOptionButton option;
    option.rect = {0, 0, 16, 16};
    option.state = QStyle::State_Enabled;
    const QColor window(42, 46, 50);
    option.palette = QPalette(window);
    for (const auto box : {QStyle::PE_IndicatorCheckBox, QStyle::PE_IndicatorRadioButton}) {
        QImage picture(16, 16, QImage::Format_RGB32);
        picture.fill(window);
        QPainter painter(&picture);
        style.drawPrimitive(box, &option, &painter, nullptr);
        painter.end();
        int brightest = 0;
        for (int x = 0; x < 16; ++x)
            brightest = std::max(brightest, picture.pixelColor(x, 8).lightness());
        EXPECT_GT(brightest, window.lightness() + 60) << box;
    }
}

TEST(Style, FramesAreSeenWhiteOnBlack)
{
    const ClearBoxesStyle style;
    QStyleOptionFrame option;
    option.rect = {0, 0, 40, 20};
    option.lineWidth = 1;
    option.state = QStyle::State_Enabled;
    option.palette = QPalette(Qt::black);
    for (const auto role : {QPalette::Base, QPalette::Window})
        option.palette.setColor(role, Qt::black);
    option.palette.setColor(QPalette::WindowText, Qt::white);
    QImage picture(40, 20, QImage::Format_RGB32);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    style.drawPrimitive(QStyle::PE_FrameLineEdit, &option, &painter, nullptr);
    painter.end();
    EXPECT_GT(picture.pixelColor(20, 0).lightness(), 100);
}

TEST(NewArchive, ClosingTheWindowMeansLoad)
{
    NewArcDialog dialog{nullptr};
    dialog.show();
    dialog.close();
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    Press(dialog, "Pul_New");
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

} // namespace kestrova::testing
