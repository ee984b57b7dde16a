#include "app/help_tags.h"

#include "app/command_table.h"

namespace kestrova
{

namespace
{

struct HelpPlace {
    std::string_view name;
    HelpTag tag;
};

/// Windows and parts of them; commands have their tag in their row.
constexpr HelpPlace places[] = {
    {"Principale", HelpTag::MainWindow},
    {"Dialog_About", HelpTag::Beginning},
    {"Dialog_AddMany", HelpTag::AddMany},
    {"Dialog_AddWads", HelpTag::ImportWads},
    {"Dialog_Assistant", HelpTag::Assistant},
    {"Dialog_Autore", HelpTag::Author},
    {"Dialog_Cattura", HelpTag::CaptureShot},
    {"Dialog_CompareTrle", HelpTag::Compare},
    {"Dialog_Compila", HelpTag::CompileTom},
    {"Dialog_ConvertAudio", HelpTag::Audio},
    {"Dialog_Doctor", HelpTag::Check},
    {"Dialog_Download", HelpTag::Download},
    {"Dialog_ImportShot", HelpTag::ImportShots},
    {"Dialog_Indice", HelpTag::ThisHelp},
    {"Dialog_InsertCd", HelpTag::LevelsOnCd},
    {"Dialog_InstallaTrle", HelpTag::InstallTrle},
    {"Dialog_ListSaveGame", HelpTag::Savegames},
    {"Dialog_MuoviSuCd", HelpTag::LevelsOnCd},
    {"Dialog_NewArc", HelpTag::Archives},
    {"Dialog_NewLevel", HelpTag::NewLevel},
    {"Dialog_PrefArc", HelpTag::ArchivePreferences},
    {"Dialog_Resize", HelpTag::ResizeShot},
    {"Dialog_Restore", HelpTag::Originals},
    {"Dialog_SavegameHistory", HelpTag::History},
    {"Page_Originals", HelpTag::OriginalsHistory},
    {"Dialog_PrintPreview", HelpTag::ImportWads},
    {"Dialog_ScambiaNomi", HelpTag::ImportWads},
    {"Dialog_ScreenShot", HelpTag::ShotWindow},
    {"Dialog_SetMp3", HelpTag::KeepMp3},
    {"Dialog_Settings", HelpTag::Settings},
    {"Dialog_SetupCd", HelpTag::LevelsOnCd},
    {"Dialog_Siti", HelpTag::Addresses},
    {"Dialog_Start", HelpTag::FirstStart},
    {"Dialog_Testo", HelpTag::ThisHelp},
    {"Dialog_TipoExe", HelpTag::LevelsAsPrograms},
    {"Dialog_TrovaTrle", HelpTag::FindTrle},
    {"Dialog_Wizard", HelpTag::PublishOverview},
    {"Frame_UpdateServers", HelpTag::Servers},
    {"Frame_WadServer", HelpTag::Servers},
    {"Panes_Shots", HelpTag::Shots},
};

} // namespace

std::string TagText(HelpTag tag)
{
    return '#' + std::to_string(static_cast<int>(tag)) + '#';
}

HelpTag HelpTagOf(std::string_view name)
{
    for (const HelpPlace& place : places)
        if (place.name == name)
            return place.tag;
    const CommandRow* row = FindControl(name);
    return row == nullptr ? HelpTag::None : row->help;
}

} // namespace kestrova
