#include "ui/main/command_looks.h"

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr CommandLook looks[] = {
    {"mnu_New", Drawing::Page},
    {"mnu_Load", Drawing::Folder},
    {"mnu_Save", Drawing::Save},
    {"Mnu_Exit", Drawing::Leave, true},
    {"mnu_AddLevel", Drawing::Add},
    {"mnu_Property", Drawing::Pencil, true},
    {"mnu_RemoveLevel", Drawing::Bin},
    {"mnu_Export", Drawing::PackOut},
    {"mnu_ShowListaUrl", Drawing::Globe, true},
    {"mnu_Undo", Drawing::Undo, true},
    {"mnu_Redo", Drawing::Redo},
    {"mnu_ImportSavegame", std::nullopt, true},
    {"mnu_BackupSavegame", Drawing::PutAway, true},
    {"mnu_RestoreSavegames", Drawing::BringBack},
    {"mnu_SavegameHistory", Drawing::Clock},
    {"mnu_CaptureScreen", Drawing::Camera},
    {"mnu_DeleteShot", Drawing::Bin, true},
    {"mnu_UseAsCover", std::nullopt, true},
    {"mnu_ImportWads", Drawing::Parcel, true},
    {"mnu_MoveOnCd", Drawing::Disc},
    {"mnu_CompareTrle", std::nullopt, true},
    {"mnu_SetOriginale", Drawing::Gate},
    {"mnu_SetupUpload", Drawing::PackOut, true},
    {"mnu_Settings", Drawing::Sliders},
    {"mnu_FindHelp", Drawing::Question, true},
    {"Pul_Play", Drawing::Play},
};

constexpr std::string_view buttons[] = {
    "mnu_AddLevel", "mnu_Property", "", "mnu_BackupSavegame", "mnu_RestoreSavegames", "",
    "mnu_Undo",     "mnu_Redo",     "", "mnu_FindHelp",
};

} // namespace

std::span<const CommandLook> CommandLooks()
{
    return looks;
}

CommandLook LookOf(std::string_view name)
{
    const auto* const found = std::find_if(std::begin(looks), std::end(looks),
                                           [&](const auto& look) { return look.name == name; });
    return found == std::end(looks) ? CommandLook{name} : *found;
}

std::span<const std::string_view> ButtonsAtHand()
{
    return buttons;
}

} // namespace kestrova
