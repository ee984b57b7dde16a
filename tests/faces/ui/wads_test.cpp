#include "editor/wad_undo.h"
#include "ui/dialogs/dialog_add_wads.h"
#include "ui/dialogs/dialog_scambia_nomi.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/print_text.h"
#include "ui/window_world.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QTimer>
#include <QTreeWidget>

namespace kestrova::testing
{

namespace
{

/// Looks at the window while it tells something.
class LookingHost : public ScriptedHost
{
public:
    std::function<void(const std::string& text)> look;
    void Tell(Tone tone, const std::string& text, const std::string& reason = {},
              const std::string& details = {}) override
    {
        if (look)
            look(text);
        ScriptedHost::Tell(tone, text, reason, details);
    }
};

/// A small wad package; a level of it is finished.
Path MakePackage(WindowWorld& world)
{
    for (const auto& [name, content] :
         FileContents{{"city.tom", "tom"},
                      {"city.wad", "wad"},
                      {"city.tr4", "level"},
                      {"script.txt", "[Level]\r\nName= The City\r\nLevel= DATA\\city,1\r\n"},
                      {"english.txt", "[Strings]\r\nThe City\r\n"},
                      {"setup.exe", "a stranger's program"}})
        world.box.Write("new wads/" + name, content);
    return world.box / "new wads";
}

void MakeScripts(WindowWorld& world)
{
    for (const char* tree : {"trle/", "home/backup_trle/"}) {
        const std::string at = tree;
        world.box.Write(at + "script/script.txt", "[Level]\r\nName= Old\r\nLevel= DATA\\old,1\r\n");
        world.box.Write(at + "script/english.txt", "[Strings]\r\nOld\r\n");
    }
}

/// Answers the question for a name as soon as it stands.
void AnswerName(const QString& name, int& asked)
{
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, qApp, [=, &asked] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || dialog->objectName() != QLatin1String("Dialog_ScambiaNomi"))
            return;
        timer->deleteLater();
        ++asked;
        // As a person does it, past the gate that stands while the import works.
        auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("Text_NuovoNome"));
        edit->selectAll();
        QTest::keyClicks(edit, name);
        QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("Pul_Ok")),
                          Qt::LeftButton);
        if (dialog->isVisible()) // so that a gate that stays shut fails the test and does not hang
            dialog->reject();
    });
    timer->start(20);
}

TEST(WadsWindow, ImportsWhatWasDroppedAndReports)
{
    LookingHost host;
    WindowWorld world{&host};
    MakeScripts(world);
    const Path package = MakePackage(world);
    const auto before = world.box.Snapshot("trle");
    AddWadsDialog dialog{world.session, nullptr};
    EXPECT_EQ(CaptionFaults(dialog), QStringList{});
    ASSERT_TRUE(dialog.Ready()) << host.AllTold();
    EXPECT_FALSE(In(dialog, "Pul_Import")->isEnabled());
    Press(dialog, "Pul_Print");
    EXPECT_TRUE(host.WasTold("No text to print"));
    host.WillChoose("", package);
    Press(dialog, "Pul_AddFolder");
    EXPECT_EQ(In<QTreeWidget>(dialog, "List_Files")->topLevelItemCount(), 6) << host.AllTold();
    ASSERT_TRUE(In(dialog, "Pul_Import")->isEnabled());

    bool looked = false;
    host.look = [&](const std::string& text) {
        if (text != "Wads update finished")
            return;
        looked = true;
        EXPECT_TRUE(In<QPlainTextEdit>(dialog, "Text_Prospetto")->toPlainText().endsWith("*"))
            << "the report stands below the box";
        EXPECT_TRUE(In(dialog, "Pul_Stop")->isHidden());
        for (const char* button :
             {"Pul_Import", "Pul_AddFile", "Pul_AddFolder", "Pul_Print", "Pul_Cancel"})
            EXPECT_FALSE(In(dialog, button)->isEnabled()) << button << " cannot be pressed now";
    };
    int asked = 0;
    AnswerName(QStringLiteral("Meine Stadt"), asked);
    Press(dialog, "Pul_Import");
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(looked);
    EXPECT_TRUE(In(dialog, "Pul_Cancel")->isEnabled());
    EXPECT_TRUE(host.WasTold("Wads update finished")) << host.AllTold();
    const QString report = In<QPlainTextEdit>(dialog, "Text_Prospetto")->toPlainText();
    EXPECT_TRUE(report.contains(QStringLiteral("setup.exe -> [IGNORED]"))) << FromQt(report);
    EXPECT_TRUE(report.endsWith(QStringLiteral("*** Wads update finished ***")));
    EXPECT_EQ(FromQt(In<QPushButton>(dialog, "Pul_Cancel")->accessibleName()), "Close");
    EXPECT_EQ(world.box.Read("trle/script/english.txt"), "[Strings]\r\nMeine Stadt\r\n");
    EXPECT_EQ(world.box.Read("home/backup_trle/DATA/city.tr4"), "level");
    EXPECT_FALSE(world.box.Has("home/temp"));
    dialog.reject();

    std::string subject;
    ASSERT_TRUE(UndoNewestImport(world.session, subject)) << host.AllTold();
    EXPECT_EQ(subject, "new wads");
    EXPECT_EQ(world.box.Snapshot("trle"), before);
}

TEST(WadsWindow, RunsByItselfForAPackageAndCloses)
{
    WindowWorld world;
    MakeScripts(world);
    const Path package = MakePackage(world);
    int asked = 0;
    AnswerName(QStringLiteral("Its name"), asked);
    EXPECT_TRUE(WadWindowsOver(world.session, nullptr).show(package));
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(world.box.Read("trle/DATA/city.tr4"), "level");

    world.box.Write("broken.zip", "PK\3\4");
    EXPECT_TRUE(WadWindowsOver(world.session, nullptr).show(world.box / "broken.zip"))
        << "an empty list ends as usual";
}

TEST(WadsWindow, ANameIsNeverEmpty)
{
    WindowWorld world;
    ScambiaNomiDialog dialog{world.box.host, "The City", nullptr};
    EXPECT_EQ(CaptionFaults(dialog), QStringList{});
    auto* edit = In<QLineEdit>(dialog, "Text_NuovoNome");
    EXPECT_EQ(FromQt(edit->text()), "The City");
    edit->setText(QStringLiteral("  "));
    Press(dialog, "Pul_Ok");
    EXPECT_TRUE(world.box.host.WasTold("New name is empty"));
    edit->setText(QStringLiteral("[strings]"));
    Press(dialog, "Pul_Ok");
    EXPECT_TRUE(world.box.host.WasTold("would not be read as a name"));
    EXPECT_EQ(dialog.Name(), "The City");
    edit->setText(QStringLiteral("Other"));
    Press(dialog, "Pul_UsaOld");
    EXPECT_EQ(dialog.Name(), "The City");
}

TEST(WadsWindow, AReportIsPrintedPageByPage)
{
    WindowWorld world;
    QString text;
    for (int line = 0; line < 300; ++line)
        text += QStringLiteral("file%1.wad -> backup_trle\\graphics\\wads\\ [OK]\n").arg(line);
    QPrinter printer{QPrinter::HighResolution};
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(PathToQt(world.box / "report.pdf"));
    const int pages = PrintText(printer, QStringLiteral("Report"), text);
    EXPECT_GE(pages, 4);
    EXPECT_LE(pages, 8);
    EXPECT_EQ(world.box.Read("report.pdf").substr(0, 5), "%PDF-");
}

} // namespace

} // namespace kestrova::testing
