#include "ui/main/main_menu.h"

#include "ui/widgets/qt_text.h"
#include "words/ui_shared.h"

#include <QMenu>
#include <vector>

namespace kestrova
{

namespace
{

enum class Key { None, New, Open, Save, SaveAs, Quit, Settings };

struct Row {
    int depth; ///< 0 for a menu of the bar
    const char* name;
    Key key = Key::None;
};

constexpr Row rows[] = {
    {0, "mnu_File"},
    {1, "mnu_New", Key::New},
    {1, "mnu_Load", Key::Open},
    {1, "mnu_Save", Key::Save},
    {1, "mnu_SaveAs", Key::SaveAs},
    {1, "Mnu_Exit", Key::Quit},
    {0, "mnu_Level"},
    {1, "mnu_AddLevel"},
    {1, "mnu_Property"},
    {1, "mnu_Language"},
    {2, "mnu_SetMylanguage"},
    {2, "mnu_RestoreLanguage"},
    {1, "mnu_RemoveLevel"},
    {1, "mnu_Export"},
    {1, "mnu_ShowListaUrl"},
    {0, "mnu_SaveGames"},
    {1, "mnu_StartSaveGameMan"},
    {1, "mnu_ImportSavegame"},
    {1, "mnu_ExportSavegame"},
    {1, "mnu_SendSaveGameEmail"},
    {1, "mnu_BackupSavegame"},
    {1, "mnu_RestoreSavegames"},
    {1, "mnu_SavegameHistory"},
    {0, "mnu_Edit"},
    {1, "mnu_CopyScreenShots"},
    {1, "mnu_CaptureScreen"},
    {1, "mnu_AddScreenshot"},
    {1, "mnu_DeleteShot"},
    {1, "mnu_RenameShot"},
    {1, "mnu_ResizeSave"},
    {1, "mnu_SaveShot"},
    {0, "mnu_Tools"},
    {1, "mnu_InstallTrle"},
    {2, "mnu_InstallTrleFolder"},
    {2, "mnu_InstallComprTrle"},
    {1, "mnu_ConvertAudio"},
    {2, "mnu_DecodeMp3"},
    {2, "mnu_EncodeMp3"},
    {2, "mnu_ConvertWav"},
    {1, "mnu_Manutenzione"},
    {2, "mnu_CalcolaSize"},
    {2, "mnu_MoveArc"},
    {2, "mnu_ControllaUguali"},
    {2, "mnu_CopiaFileInfos"},
    {2, "mnu_CreaInfoTr4"},
    {2, "mnu_FaiFullBackup"},
    {2, "mnu_Recover"},
    {2, "mnu_SetLanguageAll"},
    {2, "mnu_RestoreAll"},
    {1, "mnu_ImportWads"},
    {1, "mnu_ShowUrlList"},
    {1, "mnu_MoveOnCd"},
    {1, "mnu_CompareTrle"},
    {1, "mnu_SetOriginale"},
    {1, "mnu_SetupUpload"},
    {0, "mnu_Pref"},
    {1, "mnu_Settings", Key::Settings},
    {1, "mnu_PrefArchive"},
    {0, "mnu_Help"},
    {1, "mnu_About"},
    {1, "mnu_FindHelp"},
    {1, "mnu_HelpSaveGameMan"},
    {1, "mnu_HelpFaq"},
};

bool IsMenu(std::size_t i)
{
    return i + 1 < std::size(rows) && rows[i + 1].depth > rows[i].depth;
}

QKeySequence SequenceOf(Key key)
{
    switch (key) {
    case Key::New:
        return {Qt::CTRL | Qt::Key_N};
    case Key::Open:
        return {Qt::CTRL | Qt::Key_O};
    case Key::Save:
        return {Qt::CTRL | Qt::Key_S};
    case Key::SaveAs:
        return {Qt::CTRL | Qt::SHIFT | Qt::Key_S};
    case Key::Quit:
        return {Qt::CTRL | Qt::Key_Q};
    case Key::Settings:
        return {Qt::CTRL | Qt::Key_Comma};
    case Key::None:
        break;
    }
    return {};
}

} // namespace

void BuildMenu(QMenuBar& bar, std::vector<Commands> parts)
{
    Commands commands;
    for (Commands& part : parts)
        commands.merge(part);
    std::vector<QMenu*> open;
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const Row& row = rows[i];
        const QString name = QString::fromLatin1(row.name);
        open.resize(static_cast<std::size_t>(row.depth));
        if (IsMenu(i)) {
            QMenu* menu = open.empty() ? bar.addMenu(QString()) : open.back()->addMenu(QString());
            menu->setObjectName(name);
            menu->setToolTipsVisible(true);
            open.push_back(menu);
            continue;
        }
        QAction* action = open.back()->addAction(QString());
        action->setObjectName(name);
        // Roles would move commands to other menus on some desktops.
        action->setMenuRole(QAction::NoRole);
        action->setShortcut(SequenceOf(row.key));
        if (const auto command = commands.find(row.name); command != commands.end()) {
            QObject::connect(action, &QAction::triggered, &bar, [run = command->second] { run(); });
        } else {
            action->setEnabled(false);
            action->setToolTip(Words(Msg::NotAvailableYet));
            action->setStatusTip(Words(Msg::NotAvailableYet));
        }
    }
}

QStringList MenuCommands()
{
    QStringList names;
    for (std::size_t i = 0; i < std::size(rows); ++i)
        if (!IsMenu(i))
            names.append(QString::fromLatin1(rows[i].name));
    return names;
}

} // namespace kestrova
