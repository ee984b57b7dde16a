#include "publish/upload_texts.h"

#include "core/look.h"
#include "packages/level_config_file.h"
#include "publish/file_names.h"
#include "publish/upload_lists.h"
#include "session/telling.h"
#include "words/wizard.h"

namespace kestrova
{

namespace
{

Path TextsFile(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::FragUploadTexts);
}

} // namespace

bool KeepUploadTexts(UploadWizard& wizard)
{
    Host& host = wizard.session.host;
    LevelConfig config = wizard.config;
    config.files.clear(); // they are the author's own, and named anew
    const auto kept =
        WriteLevelConfig(TextsFile(wizard.session.Folders()), config, OldConfig::Replaced);
    if (!kept) {
        TellFailure(host, GetMsg(Msg::UploadTextsNotKept), kept.Error());
        return false;
    }
    host.Tell(Tone::Plain, GetMsg(Msg::UploadTextsKept));
    return true;
}

void OfferUploadTexts(UploadWizard& wizard)
{
    const Folders folders = wizard.session.Folders();
    const Path file = TextsFile(folders);
    const auto isFree = IsFree(file);
    if (!isFree || *isFree)
        return;
    const auto config = ReadLevelConfig(file);
    if (!config)
        return TellFailure(wizard.session.host, GetMsg(Msg::UploadTextsNotRead, {TextOf(file)}),
                           config.Error());
    if (!wizard.session.host.AskYesNo(GetMsg(Msg::AskUploadTexts), Consent::YesKeeps))
        return ForgetUploadTexts(folders);
    wizard.config = *config;
    LoadConfigIntoPages(wizard);
}

void ForgetUploadTexts(const Folders& folders)
{
    (void)DeleteFile(TextsFile(folders)); // what stays is offered once more
}

} // namespace kestrova
