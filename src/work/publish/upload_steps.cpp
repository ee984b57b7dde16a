#include "publish/upload_steps.h"

#include "core/name_list.h"
#include "formats/nul_list.h"
#include "publish/upload_lists.h"
#include "session/telling.h"
#include "words/wizard.h"

namespace kestrova
{

namespace
{

constexpr std::size_t authorLetters = 79; ///< one less than its field has
constexpr std::size_t textLetters = 255;
constexpr std::size_t documentLetters = 80;
constexpr std::size_t notesLetters = 512;

/// Stores a text in its field, unless it is too long.
bool Take(UploadWizard& wizard, const std::string& text, std::size_t most, std::string& field,
          Message refusal)
{
    if (ToWindows1252(text).size() > most) {
        wizard.session.host.Tell(Tone::Error, GetMsg(refusal));
        return false;
    }
    field = text;
    return true;
}

bool CheckFiles(UploadWizard& wizard)
{
    Host& host = wizard.session.host;
    if (wizard.files.empty()) {
        host.Tell(Tone::Error, GetMsg(Msg::UploadNoFiles));
        return false;
    }
    if (wizard.moreInfo.empty()) {
        wizard.config.moreInfo.clear();
        const std::string empty = std::string{lineBreak} + std::string{lineBreak};
        return !wizard.asksForDocument ||
               !host.AskYesNo(GetMsg(Msg::AskUploadDocument, {lineBreak, empty}));
    }
    const std::string document = FileNameOf(wizard.moreInfo);
    if (ToWindows1252(document).size() > documentLetters) {
        host.Tell(Tone::Error, GetMsg(Msg::UploadDocumentTooLong, {Readable(document)}));
        return false;
    }
    wizard.config.moreInfo = document;
    return true;
}

bool CheckAuthor(UploadWizard& wizard)
{
    LevelConfig& config = wizard.config;
    return Take(wizard, wizard.author, authorLetters, config.author, Msg::UploadNameTooLong) &&
           Take(wizard, wizard.authorNote, textLetters, config.authorNote,
                Msg::UploadMessageTooLong) &&
           Take(wizard, JoinNulList(wizard.emails.items), textLetters, config.authorEmails,
                Msg::UploadEmailsTooLong) &&
           Take(wizard, JoinNulList(wizard.sites.items), textLetters, config.authorSites,
                Msg::UploadSitesTooLong);
}

bool CheckLevel(UploadWizard& wizard)
{
    if (Trim(wizard.name).empty()) {
        wizard.session.host.Tell(Tone::Error, GetMsg(Msg::UploadNoLevelName));
        return false;
    }
    LevelConfig& config = wizard.config;
    if (!Take(wizard, wizard.name, textLetters, config.name, Msg::UploadLevelNameTooLong) ||
        !Take(wizard, wizard.note, textLetters, config.note, Msg::UploadNoteTooLong))
        return false;
    config.exeFormat = ExeFormats()[wizard.exeFormat].code;
    return true;
}

bool CheckImportWads(UploadWizard& wizard)
{
    Host& host = wizard.session.host;
    if (!StoreRows(wizard, RowKind::ImportWads) || !StoreRows(wizard, RowKind::ExternWaves))
        return false;
    if (Trim(wizard.importNotes).empty() && !wizard.importWads.rows.empty()) {
        host.Tell(Tone::Error, GetMsg(Msg::UploadNoImportNotes));
        return false;
    }
    if (ToWindows1252(wizard.importNotes).size() > notesLetters) {
        host.Tell(Tone::Error, GetMsg(Msg::UploadListTooLong, {ShownNames({wizard.importNotes})}));
        return false;
    }
    wizard.config.importNotes = wizard.importNotes;
    return true;
}

} // namespace

bool OpenWizard(UploadWizard& wizard)
{
    Status made = wizard.work.IsClear();
    if (made)
        made = MakeFolders(wizard.work.Folder());
    if (!made)
        TellFailure(wizard.session.host,
                    GetMsg(Msg::UploadNotBegun, {TextOf(wizard.work.Folder())}), made.Error());
    return bool{made};
}

std::string StepTitle(UploadStep step)
{
    static constexpr Message titles[] = {Msg::UploadTitle1, Msg::UploadTitle2, Msg::UploadTitle3,
                                         Msg::UploadTitle4, Msg::UploadTitle5, Msg::UploadTitle6,
                                         Msg::UploadTitle7};
    return GetMsg(titles[static_cast<std::size_t>(step)]);
}

bool CheckStep(UploadWizard& wizard)
{
    switch (wizard.step) {
    case UploadStep::Files:
        return CheckFiles(wizard);
    case UploadStep::Author:
        return CheckAuthor(wizard);
    case UploadStep::Level:
        return CheckLevel(wizard);
    case UploadStep::ImportWads:
        return CheckImportWads(wizard);
    case UploadStep::TomWads:
        return StoreRows(wizard, RowKind::TomWads);
    case UploadStep::Overview:
    case UploadStep::End:
        break;
    }
    return true;
}

bool NextStep(UploadWizard& wizard)
{
    if (!CheckStep(wizard))
        return false;
    if (wizard.step != UploadStep::End)
        wizard.step = static_cast<UploadStep>(static_cast<int>(wizard.step) + 1);
    // Its boxes begin with the first row.
    if (wizard.step == UploadStep::TomWads && !wizard.tomWads.rows.empty())
        SelectRow(wizard, RowKind::TomWads, 0);
    return true;
}

void BackStep(UploadWizard& wizard)
{
    if (wizard.step != UploadStep::Overview)
        wizard.step = static_cast<UploadStep>(static_cast<int>(wizard.step) - 1);
}

} // namespace kestrova
