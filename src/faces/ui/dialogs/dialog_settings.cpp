#include "ui/dialogs/dialog_settings.h"

#include "app/languages.h"
#include "app/wine_trial.h"
#include "core/file_kinds.h"
#include "core/text.h"
#include "online/url_update.h"
#include "session/operation.h"
#include "ui/desktop/spoken_language.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/help_desk.h"
#include "ui/dialogs/language_box.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/qt_text.h"
#include "words/menus.h"
#include "words/ui_dialogs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr int settingsWidth = 600;

struct PlaceLine {
    const char* caption;
    const char* value;
    const char* browse; ///< null: only shown
    void (SettingsForm::*choose)();
    std::string PreferencesRecord::*field;
};
constexpr PlaceLine places[] = {
    {"Label_TrleOf", "Label_PathTrle", "Pul_SfogliaPathTrle", &SettingsForm::BrowseTrle,
     &PreferencesRecord::trlePath},
    {"Label_TombOf", "Label_NomeTombExe", "Pul_SfogliaNomeTomb", &SettingsForm::BrowseGame,
     &PreferencesRecord::tombExeName},
    {"Label_Tom2PcOf", "Label_NomeTom2Pc", "Pul_SfogliaTom2Pc", &SettingsForm::BrowseTom2Pc,
     &PreferencesRecord::tom2PcName},
    {"Label_LoadDirOf", "Label_DefaultLoadDir", "Pul_SfogliaLoadDir",
     &SettingsForm::BrowseDownloadFolder, &PreferencesRecord::downloadFolder},
    {"Label_FullBackupOf", "Label_FullBackup", nullptr, nullptr, nullptr},
};

template <class Widget> Widget* Named(const char* name)
{
    auto* widget = new Widget;
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QLabel* NoteLabel(const char* name)
{
    auto* note = Named<QLabel>(name);
    note->setWordWrap(true);
    note->setForegroundRole(QPalette::PlaceholderText);
    return note;
}

void AddRow(QFormLayout& form, const char* caption, QWidget* field)
{
    form.setRowWrapPolicy(QFormLayout::WrapLongRows); // of large letters
    auto* label = Named<QLabel>(caption);
    label->setBuddy(field);
    form.addRow(label, field);
}

} // namespace

SettingsDialog::SettingsDialog(Session& session, QWidget* parent)
    : QDialog(parent), session_(session), form_(session)
{
    setObjectName(QStringLiteral("Dialog_Settings"));
    auto* pages = new QTabWidget(this);
    pages->addTab(new ScrollPage(MakePreferences()), Words(Msg::MenuPreferences));
    pages->addTab(new ScrollPage(MakeWine()), Words(Msg::SettingsPageWine));
    pages->addTab(new ScrollPage(MakeComputer()), Words(Msg::SettingsPageSystem));
    pages->addTab(new ScrollPage(MakeServers()), Words(Msg::SettingsPageServers));
    auto* buttons = AnswerButtons(*this);
    auto* column = new QVBoxLayout(this);
    column->addWidget(pages, 1);
    column->addLayout(buttons);
    SetCaptions(*this);
    ShowPlaces();
    ResizeToFit(*this, {settingsWidth, sizeHint().height()});
}

QCheckBox* SettingsDialog::Box(const char* name, bool checked)
{
    auto* box = Named<QCheckBox>(name);
    box->setChecked(checked);
    return box;
}

QWidget* SettingsDialog::MakePreferences()
{
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->addLayout(MakeLanguage());
    column->addWidget(MakePlaces());
    column->addWidget(MakeAdvanced());
    column->addWidget(MakeCapture());
    column->addStretch();
    return page;
}

QLayout* SettingsDialog::MakeLanguage()
{
    language_ = LanguageBox(this, form_.settings.language);
    auto* label = Named<QLabel>("Label_LanguageOf");
    label->setBuddy(language_);
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(language_);
    row->addStretch();
    return row;
}

QWidget* SettingsDialog::MakePlaces()
{
    auto* widget = new QWidget;
    auto* grid = new QGridLayout(widget);
    grid->setContentsMargins({});
    grid->setColumnStretch(1, 1);
    int line = 0;
    for (const PlaceLine& place : places) {
        grid->addWidget(Named<QLabel>(place.caption), line, 0);
        auto* value = Named<ElidedLabel>(place.value);
        value->SetElide(Qt::ElideMiddle);
        grid->addWidget(value, line, 1);
        if (place.browse != nullptr) {
            auto* browse = NamedButton(widget, place.browse);
            browse->setAutoDefault(false);
            grid->addWidget(browse, line, 2);
            connect(browse, &QPushButton::clicked, this, [this, choose = place.choose] {
                const Operation operation{session_};
                (form_.*choose)();
                ShowPlaces();
            });
        }
        ++line;
    }
    return widget;
}

QWidget* SettingsDialog::MakeAdvanced()
{
    const PreferencesRecord& record = form_.preferences;
    autoSave_ = Box("Check_AutoSave", record.autoSave);
    noDecompress_ = Box("Check_NonDecomprimere", record.noDecompressInProperties);
    logFiles_ = Box("Check_Logfile", record.writeLogFiles);
    checkEqual_ = Box("Check_TestCOntrollaUguali", record.checkEqualLevels);
    noCompile_ = Box("Check_NoAutoCompila", record.noAutoCompile);
    auto* frame = Named<QGroupBox>("Frame_Advanced");
    auto* column = new QVBoxLayout(frame);
    for (QCheckBox* box : {autoSave_, noDecompress_, logFiles_, checkEqual_, noCompile_})
        column->addWidget(box);
    return frame;
}

QWidget* SettingsDialog::MakeCapture()
{
    capture_ = Box("Check_EnableCapture", form_.preferences.captureEnabled);
    auto* silent = Named<QRadioButton>("Opt_NonPrompt");
    prompt_ = Named<QRadioButton>("Opt_PromptCapture");
    (form_.preferences.promptCapture ? prompt_ : silent)->setChecked(true);
    auto* frame = Named<QGroupBox>("Frame_Capture");
    auto* column = new QVBoxLayout(frame);
    column->addWidget(capture_);
    column->addWidget(silent);
    column->addWidget(prompt_);
    return frame;
}

QWidget* SettingsDialog::MakeWine()
{
    wine_ = Named<QLineEdit>("Text_Wine");
    wine_->setText(ToQt(form_.settings.wineCommand));
    wineWords_ = Named<QLineEdit>("Text_WineWords");
    wineWords_->setText(ToQt(form_.settings.wineWords));
    auto* page = new QWidget;
    auto* test = NamedButton(page, "Pul_TestWine");
    test->setAutoDefault(false);
    connect(test, &QPushButton::clicked, this, [this] {
        const Operation operation{session_};
        TakeWine();
        TryWine(session_, form_.settings);
    });
    auto* frame = Named<QGroupBox>("Frame_Wine");
    auto* form = new QFormLayout(frame);
    AddRow(*form, "Label_WineOf", wine_);
    AddRow(*form, "Label_WineWordsOf", wineWords_);
    form->addRow(NoteLabel("Label_WineNote"));
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(test);
    form->addRow(row);
    auto* column = new QVBoxLayout(page);
    column->addWidget(frame);
    column->addStretch();
    return page;
}

QWidget* SettingsDialog::MakeComputer()
{
    const auto number = [](const char* name, int value) {
        auto* box = Named<QSpinBox>(name);
        box->setRange(0, mostThatIsKept);
        box->setValue(value);
        return box;
    };
    const ProgramSettings& now = form_.settings;
    historyCount_ = number("Spin_HistoryCount", now.historyCount);
    historySize_ = number("Spin_HistorySize", now.historyMegabytes);
    undoCount_ = number("Spin_UndoCount", now.undoCount);
    undoSize_ = number("Spin_UndoSize", now.undoMegabytes);

    auto* history = Named<QGroupBox>("Frame_History");
    auto* historyForm = new QFormLayout(history);
    AddRow(*historyForm, "Label_HistoryCountOf", historyCount_);
    AddRow(*historyForm, "Label_HistorySizeOf", historySize_);
    historyForm->addRow(NoteLabel("Label_HistoryNote"));
    auto* undo = Named<QGroupBox>("Frame_Undo");
    auto* undoForm = new QFormLayout(undo);
    AddRow(*undoForm, "Label_UndoCountOf", undoCount_);
    AddRow(*undoForm, "Label_UndoSizeOf", undoSize_);
    undoForm->addRow(NoteLabel("Label_UndoNote"));

    exportSavegames_ = Box("Check_ExportSavegames", form_.settings.exportSavegames);
    auto* exported = Named<QGroupBox>("Frame_Export");
    (new QVBoxLayout(exported))->addWidget(exportSavegames_);

    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->addWidget(history);
    column->addWidget(undo);
    column->addWidget(exported);
    column->addStretch();
    return page;
}

QWidget* SettingsDialog::MakeServers()
{
    auto* update = Named<QGroupBox>("Frame_UpdateServers");
    auto* updateForm = new QFormLayout(update);
    UpdateServers servers = ServersFrom(form_.settings.updateServers);
    servers.resize(mostUpdateServers);
    constexpr std::pair<const char*, const char*> lines[] = {{"Label_Server1Of", "Text_Server1"},
                                                             {"Label_Server2Of", "Text_Server2"},
                                                             {"Label_Server3Of", "Text_Server3"}};
    static_assert(std::size(lines) == mostUpdateServers);
    for (const auto& [caption, name] : lines) {
        auto* line = Named<QLineEdit>(name);
        line->setText(ToQt(servers[updateServers_.size()]));
        line->setCursorPosition(0);
        AddRow(*updateForm, caption, line);
        updateServers_.push_back(line);
    }
    updateForm->addRow(NoteLabel("Label_ServersNote"));
    wadServer_ = Named<QLineEdit>("Text_WadServer");
    wadServer_->setText(ToQt(form_.settings.wadServer));
    wadServer_->setCursorPosition(0);
    auto* wads = Named<QGroupBox>("Frame_WadServer");
    auto* wadsForm = new QFormLayout(wads);
    AddRow(*wadsForm, "Label_WadServerOf", wadServer_);
    wadsForm->addRow(NoteLabel("Label_WadServerNote"));

    auto* page = new QWidget;
    SetHelpTag(*page, HelpTag::Servers);
    auto* column = new QVBoxLayout(page);
    column->addWidget(update);
    column->addWidget(wads);
    column->addStretch();
    return page;
}

void SettingsDialog::ShowPlaces()
{
    for (const PlaceLine& place : places)
        findChild<QLabel*>(QString::fromLatin1(place.value))
            ->setText(place.field != nullptr
                          ? ToQt(form_.preferences.*place.field)
                          : Words(form_.preferences.fullBackup ? Msg::FlagYes : Msg::FlagNo));
    // What the record begins with is a folder of another system.
    if (form_.preferences.downloadFolder == OnDisk::DefaultDownloadFolder)
        findChild<QLabel*>(QStringLiteral("Label_DefaultLoadDir"))
            ->setText(Words(Msg::DownloadNotChosen));
}

void SettingsDialog::TakeWine()
{
    form_.settings.wineCommand = FromQt(wine_->text().trimmed());
    form_.settings.wineWords = FromQt(wineWords_->text().trimmed());
}

void SettingsDialog::accept()
{
    PreferencesRecord& record = form_.preferences;
    record.autoSave = autoSave_->isChecked();
    record.noDecompressInProperties = noDecompress_->isChecked();
    record.writeLogFiles = logFiles_->isChecked();
    record.checkEqualLevels = checkEqual_->isChecked();
    record.noAutoCompile = noCompile_->isChecked();
    record.captureEnabled = capture_->isChecked();
    record.promptCapture = prompt_->isChecked();
    // One that this version lacks stays until another is chosen.
    if (LanguageIn(*language_) != LanguageOf(form_.settings.language).code)
        form_.settings.language = LanguageIn(*language_);
    TakeWine();
    form_.settings.exportSavegames = exportSavegames_->isChecked();
    form_.settings.historyCount = historyCount_->value();
    form_.settings.historyMegabytes = historySize_->value();
    form_.settings.undoCount = undoCount_->value();
    form_.settings.undoMegabytes = undoSize_->value();
    std::vector<std::string> servers;
    for (const QLineEdit* line : updateServers_)
        servers.push_back(FromQt(line->text()));
    form_.settings.updateServers = Join(servers, " ");
    form_.settings.wadServer = FromQt(wadServer_->text());
    const Operation operation{session_};
    if (!form_.Accept())
        return;
    QDialog::accept();
    SpeakInWindows(session_.settings.language);
}

} // namespace kestrova
