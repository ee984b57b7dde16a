// The steps of a new level that its author's configuration file drives.
#include "core/look.h"
#include "intake/new_level.h"
#include "packages/level_config_file.h"
#include "session/documents.h"
#include "words/common.h"
#include "words/intake.h"

#include "formats/nul_list.h"

namespace kestrova
{

namespace
{

/// What the file asks for that lies outside the level's own files.
std::string AskedFromElsewhere(const LevelConfig& config)
{
    std::vector<std::string> asked;
    const auto add = [&](const std::string& field, Message words) {
        if (!Trim(field).empty())
            asked.push_back(GetMsg(words));
    };
    add(config.importWads, Msg::AskedWads);
    add(config.externWaves, Msg::AskedWaves);
    add(config.exeFormat, Msg::AskedExe);
    return Join(asked, ", ");
}

} // namespace

void NewLevel::TakeConfigTexts(const LevelConfig& config)
{
    name = Trim(config.name);
    note = Trim(config.note);
    record_.authorName = Trim(config.author);
    record_.authorEmails = Trim(config.authorEmails);
    record_.authorSites = Trim(config.authorSites);
    record_.authorNote = Trim(config.authorNote);
    record_.moreInfoFile = Trim(config.moreInfo);
}

void NewLevel::ApplyLevelConfig()
{
    const Path file = LevelConfigPath(workFolder_);
    if (!IsFile(file).ValueOr(true)) // the reading below tells what is wrong with it
        return;
    if (configApplied_) {
        // A later file is unwelcome.
        (void)DeleteFile(file); // one that stays is met again by the next refresh
        RefreshFileList();
        return;
    }
    LevelConfig config;
    if (!ReadLevelConfig(session_.host, file, config))
        return;
    TakeConfigTexts(config);
    if (const auto status = DeleteFile(file); !status)
        TellFailure(session_, GetMsg(Msg::ErrorRemovingFile) + TextOf(file), status.Error());
    RefreshFileList();
    if (const std::string asked = AskedFromElsewhere(config); !asked.empty())
        session_.host.Tell(Tone::Warning, GetMsg(Msg::ConfigAsksElsewhere, {asked}));
    for (const Path& each : files_)
        if (!Trim(config.moreInfo).empty() && IsDocument(each) &&
            EqualNames(each.filename().native(), Trim(config.moreInfo)))
            moreInfo = each.filename().native();
    configApplied_ = true;
    ClearProgress();
}

} // namespace kestrova
