#include "app/help_commands.h"

#include "app/doctor.h"
#include "app/result_text.h"
#include "words/commands.h"
#include "words/menus.h"

#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

bool Doctor(Run& run)
{
    if (run.json != nullptr)
        *run.json = Json::array();
    for (const Finding& finding : Examine(run.session)) {
        if (run.json != nullptr) {
            run.json->push_back({{"name", Readable(finding.name)},
                                 {"fine", finding.fine},
                                 {"state", Readable(finding.state)},
                                 {"remedy", Readable(finding.remedy)}});
            continue;
        }
        AddLine(run, GetMsg(finding.fine ? Msg::DoctorFineLine : Msg::DoctorBadLine,
                            {finding.name, finding.state}));
        if (!finding.fine)
            AddLine(run, GetMsg(Msg::DoctorRemedyLine, {finding.remedy}));
    }
    return true;
}

} // namespace

std::span<const CommandRow> HelpCommands()
{
    static const CommandRow rows[] = {
        {.window = {.control = "mnu_Doctor",
                    .caption = Msg::MenuDoctor,
                    .menu = "mnu_Tools",
                    .behind = "mnu_CompareTrle"},
         .terminal = {.word = "doctor",
                      .usage = Msg::UseDoctor,
                      .summary = Msg::SumDoctor,
                      .json = Msg::KeysDoctor},
         .run = Doctor,
         .help = HelpTag::Check},
        {.window = {.control = "mnu_About", .caption = Msg::MenuAbout, .menu = "mnu_Help"},
         .help = HelpTag::Beginning},
        {.window = {.control = "mnu_FindHelp",
                    .caption = Msg::MenuFindHelp,
                    .keys = "F1",
                    .menu = "mnu_Help"},
         .help = HelpTag::Beginning},
        {.window = {.control = "mnu_HelpSaveGameMan",
                    .caption = Msg::MenuHelpSaveGameMan,
                    .menu = "mnu_Help"},
         .help = HelpTag::SavegameTool},
        {.window = {.control = "mnu_HelpFaq", .caption = Msg::MenuHelpFaq, .menu = "mnu_Help"}},
    };
    return rows;
}

} // namespace kestrova
