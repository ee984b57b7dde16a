#include "ui/every_window.h"

#include "discs/insert_cd.h"
#include "discs/setup_cd.h"
#include "editor/compile_tom_file.h"
#include "intake/edit_level.h"
#include "ui/desktop/host_windows.h"
#include "ui/desktop/progress_windows.h"
#include "ui/dialogs/dialog_add_many.h"
#include "ui/dialogs/dialog_add_wads.h"
#include "ui/dialogs/dialog_assistant.h"
#include "ui/dialogs/dialog_author.h"
#include "ui/dialogs/dialog_cattura.h"
#include "ui/dialogs/dialog_compare_trle.h"
#include "ui/dialogs/dialog_compila.h"
#include "ui/dialogs/dialog_convert_audio.h"
#include "ui/dialogs/dialog_doctor.h"
#include "ui/dialogs/dialog_import_shot.h"
#include "ui/dialogs/dialog_indice.h"
#include "ui/dialogs/dialog_insert_cd.h"
#include "ui/dialogs/dialog_installa_trle.h"
#include "ui/dialogs/dialog_list_savegame.h"
#include "ui/dialogs/dialog_muovi_su_cd.h"
#include "ui/dialogs/dialog_new_level.h"
#include "ui/dialogs/dialog_pref_arc.h"
#include "ui/dialogs/dialog_resize.h"
#include "ui/dialogs/dialog_restore.h"
#include "ui/dialogs/dialog_savegame_history.h"
#include "ui/dialogs/dialog_scambia_nomi.h"
#include "ui/dialogs/dialog_screen_shot.h"
#include "ui/dialogs/dialog_set_mp3.h"
#include "ui/dialogs/dialog_settings.h"
#include "ui/dialogs/dialog_setup_cd.h"
#include "ui/dialogs/dialog_siti.h"
#include "ui/dialogs/dialog_start.h"
#include "ui/dialogs/dialog_testo.h"
#include "ui/dialogs/dialog_tipo_exe.h"
#include "ui/dialogs/dialog_trova_trle.h"
#include "ui/dialogs/dialog_wizard.h"
#include "ui/dialogs/dialogs_small.h"

#include <QApplication>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTimer>

namespace kestrova::testing
{

namespace
{

constexpr const char* lengthyName =
    "The Lost Temple of the Seven Serpents beneath the Frozen Lake, "
    "second and last part";
constexpr const char* wideWord = "Donaudampfschifffahrtselektrizitaetenhauptbetriebswerkbauunter";
const std::string shotsFolder = "levels/LEVEL_0001/screenshots/";

/// Blue above, sand below.
QImage Scenery()
{
    QImage image(640, 480, QImage::Format_RGB888);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixelColor(x, y, y < 260 ? QColor(60, 90 + y / 4, 170) : QColor(170, 130, 70));
    return image;
}

/// Drives with and without a disc.
class TwoDrives : public DiscPlaces
{
public:
    std::vector<DiscDrive> Drives() override
    {
        return {{"sr0", "Kestrova #2", true, {}}, {"sr1", {}, false, {}}};
    }
    Result<Path> Open(const DiscDrive&) override { return MakeFailure(ErrorCode::CannotOpen, {}); }
    Result<Path> OpenImage(const Path&) override { return MakeFailure(ErrorCode::CannotOpen, {}); }
    std::string LabelOf(const Path&) override { return {}; }
    void WaitForDisc() override {}
};

QPalette PaletteOf(const QColor& window, const QColor& base, const QColor& text,
                   const QColor& accent)
{
    QPalette palette(window);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::Link, accent);
    QColor faint = text;
    faint.setAlpha(150);
    palette.setColor(QPalette::PlaceholderText, faint);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

} // namespace

QPalette LightPalette()
{
    return PaletteOf(QColor(239, 239, 239), Qt::white, Qt::black, QColor(48, 140, 198));
}

QPalette DarkPalette()
{
    QPalette palette = PaletteOf(QColor(42, 46, 50), QColor(27, 30, 32), QColor(252, 252, 252),
                                 QColor(61, 174, 233));
    palette.setColor(QPalette::AlternateBase, QColor(35, 38, 41));
    return palette;
}

QPalette ContrastPalette()
{
    QPalette palette = PaletteOf(Qt::black, Qt::black, Qt::white, Qt::yellow);
    palette.setColor(QPalette::AlternateBase, Qt::black);
    palette.setColor(QPalette::HighlightedText, Qt::black);
    return palette;
}

Appearance::Appearance(const QPalette& palette, double letters)
    : palette_(QApplication::palette()), font_(QApplication::font())
{
    QFont font = font_;
    font.setPixelSize(static_cast<int>(QFontInfo{font}.pixelSize() * letters));
    QApplication::setFont(font);
    QApplication::setPalette(palette);
}

Appearance::~Appearance()
{
    QApplication::setFont(font_);
    QApplication::setPalette(palette_);
}

EveryWindow::EveryWindow()
{
    box.host.AnswerAll(false); // whoever leaves a window is asked in some
    level_ = AddLevel(lengthyName, std::string{"A long walk through the ice. "} + wideWord);
    LevelRecord& record = session.archive.levels.back();
    record.authorName = lengthyName;
    record.authorNote = lengthyName;
    using namespace std::string_literals;
    record.authorEmails = "an.author.with.a.long.name@mail.example.org\0second@example.org"s;
    record.authorSites = "www.example.org/levels/of/an/author/with/a/long/name/index.html";
    const std::string saves = "levels/LEVEL_0001/backup_savegames/savegame.";
    box.Write(saves + "0", SavegameBytes("Caves", 4));
    box.Write(saves + "2", SavegameBytes("The serpents' temple", 9));
    std::filesystem::create_directories(box / shotsFolder);
    for (const char* name : {"shot1.bmp", "a picture with a name as long as they come.bmp"})
        Scenery().save(PathToQt(box / (shotsFolder + name)), "bmp");
    for (const char* file : {"city.wad", "city.was"})
        box.Write("trle/graphics/wads/" + std::string{file}, file);
    for (const char* file : {"mill.tom", "tower.tom", "readme of the mill and the tower.txt"})
        box.Write("level/" + std::string{file}, file);
    box.Write("level/" + std::string(150, 'x') + ".txt", "long");
}

void EveryWindow::Each(const Look& look)
{
    look_ = look;
    Show();
    list.Select(level_);
    LookAtPages(window);
    StartAndSettings();
    Levels();
    SavegamesAndShots();
    Sources();
    Sounds();
    Discs();
    Others();
}

void EveryWindow::LookAtPages(QWidget& shown)
{
    QCoreApplication::processEvents();
    const std::string name = FromQt(shown.objectName());
    if (auto* tabs = shown.findChild<QTabWidget*>(); tabs != nullptr) {
        for (int page = 0; page < tabs->count(); ++page) {
            tabs->setCurrentIndex(page);
            QCoreApplication::processEvents();
            look_(shown, name + "-" + std::to_string(page + 1));
        }
        tabs->setCurrentIndex(0);
        return;
    }
    look_(shown, name);
}

void EveryWindow::LookAt(QWidget& dialog)
{
    dialog.show();
    dialog.activateWindow();
    LookAtPages(dialog);
    dialog.hide();
}

void EveryWindow::StartAndSettings()
{
    TrleFinder finder{session};
    FindTrleDialog find{session, finder, nullptr};
    LookAt(find);
    FirstStart rules{session, {}};
    StartDialog start{session, rules, nullptr};
    LookAt(start);
    NewArcDialog newArc{nullptr};
    LookAt(newArc);
    AboutDialog about{nullptr};
    LookAt(about);
    SettingsDialog settings{session, nullptr};
    LookAt(settings);
    ArchiveDialog archive{session, nullptr};
    LookAt(archive);
    RestoreDialog restore{session, nullptr};
    LookAt(restore);
    InstallTrleDialog setup{session, std::nullopt, nullptr};
    LookAt(setup);
    InstallTrleDialog from{session, box / "level", nullptr};
    LookAt(from);
    CompareTrleDialog compare{session, nullptr};
    LookAt(compare);
    DoctorDialog doctor{session, nullptr};
    LookAt(doctor);
}

void EveryWindow::Levels()
{
    NewLevelDialog add{session, nullptr};
    bool looked = false;
    const auto show = [&](Intake& level) {
        QTimer::singleShot(0, &add, [&] {
            LookAtPages(add);
            looked = true;
            add.reject();
        });
        return add.Show(level);
    };
    LevelCode code = 0;
    EXPECT_FALSE(kestrova::AddLevel(session, add.Progress(), show, code));
    EXPECT_TRUE(looked);
    AddManyDialog many{session, [](const Path&, QWidget*) { return std::optional<LevelCode>{}; },
                       nullptr};
    LookAt(many);
    AuthorDialog author{session, 1, nullptr};
    LookAt(author);
    SitiDialog urls{session, UrlKindForums, nullptr};
    LookAt(urls);
    const Folders folders = session.Folders();
    InstalledPlace place{box.host, folders};
    TipoExeDialog where{place, nullptr};
    LookAt(where);
    WizardDialog wizard{session, nullptr};
    wizard.show();
    auto* steps = wizard.findChild<QStackedWidget*>();
    for (int step = 0; step < steps->count(); ++step) {
        steps->setCurrentIndex(step);
        QCoreApplication::processEvents();
        look_(wizard, "Dialog_Wizard-" + std::to_string(step + 1));
    }
    wizard.hide();
}

void EveryWindow::SavegamesAndShots()
{
    list.Select(level_);
    SavegameList rules{session, ListPurpose::Export};
    EXPECT_TRUE(rules.Prepare());
    ListSavegameDialog saves{session, rules, nullptr};
    LookAt(saves);
    SavegameHistoryDialog history{session, level_, nullptr};
    LookAt(history);
    ImportShotDialog import{session, 1, nullptr};
    LookAt(import);
    ResizeDialog resize{session, box / (shotsFolder + "shot1.bmp"), nullptr};
    LookAt(resize);
    const QImage scenery = Scenery();
    CapturedShot captured{{}, 1, box / "levels"};
    captured.picture.width = scenery.width();
    captured.picture.height = scenery.height();
    captured.picture.rgb.assign(scenery.constBits(), scenery.constBits() + scenery.sizeInBytes());
    CaptureDialog capture{session, captured, nullptr};
    LookAt(capture);
    ShotList shots;
    EXPECT_TRUE(shots.Load(session.Folders(), level_));
    ScreenShotDialog shot{shots, 0, nullptr};
    LookAt(shot);
}

void EveryWindow::Sources()
{
    TomAssistant assistant{{session.host, session.machine, session.Folders(), ToolsOf(session)},
                           box / "level"};
    EXPECT_TRUE(assistant.Open());
    AssistantDialog links{session, assistant, nullptr};
    LookAt(links);
    const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
    TomCompile compile{CompilePartsOf(session, *progress)};
    CompilaDialog compila{session, compile, nullptr};
    LookAt(compila);
    AddWadsDialog wads{session, nullptr};
    LookAt(wads);
    ScambiaNomiDialog name{session.host, std::string{wideWord} + ".wad", nullptr};
    LookAt(name);
}

void EveryWindow::Sounds()
{
    for (const AudioToolMode mode :
         {AudioToolMode::Decode, AudioToolMode::Encode, AudioToolMode::Convert}) {
        ConvertAudioDialog convert{session, mode, nullptr};
        LookAt(convert);
    }
    SetMp3Dialog mp3{session, true, nullptr};
    LookAt(mp3);
}

void EveryWindow::Discs()
{
    MuoviSuCdDialog discs{session, nullptr};
    LookAt(discs);
    TwoDrives drives;
    InsertCd question{session.host, drives, {2, "levels2", lengthyName, "LevelArchive.kva"}, {}};
    InsertCdDialog insert{question, nullptr};
    LookAt(insert);
    SetupCd setup{session.host, session.machine, session.archive};
    SetupCdDialog way{setup, nullptr};
    LookAt(way);
}

void EveryWindow::Others()
{
    const auto load = [] { return std::optional<std::string>{"[Levels] #1#\n[Slots] #2#\n"}; };
    HelpDialog help{session, *load(), "#1#", load, nullptr};
    LookAt(help);
    const std::string topics = *load();
    HelpIndexDialog index{session, topics, nullptr};
    LookAt(index);
    for (const ProgressWindow kind : {ProgressWindow::Progress, ProgressWindow::Wait,
                                      ProgressWindow::Audio, ProgressWindow::Download}) {
        ProgressDialog progress{kind, nullptr};
        progress.SetLabel(ToQt(lengthyName));
        progress.SetBar(3, 7);
        progress.SetPart(1, 2);
        progress.AllowStop();
        LookAt(progress);
    }
}

} // namespace kestrova::testing
