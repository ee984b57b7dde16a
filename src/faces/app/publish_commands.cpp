#include "app/publish_commands.h"

#include "app/config_fields.h"
#include "app/opening.h"
#include "app/result_text.h"
#include "conversion/mp3_choices.h"
#include "core/file_kinds.h"
#include "core/leftovers.h"
#include "core/removal.h"
#include "publish/finish_upload.h"
#include "publish/upload_files.h"
#include "publish/upload_lists.h"
#include "publish/upload_sounds.h"
#include "publish/upload_steps.h"
#include "session/file_to_write.h"
#include "session/telling.h"
#include "upkeep/leftovers.h"
#include "words/commands.h"
#include "words/config_commands.h"
#include "words/menus.h"
#include "words/publish_commands.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>

namespace kestrova
{

namespace
{

/// The fields of the words behind folder and zip, as they stand there.
Result<std::vector<FieldWord>> FieldWords(const Run& run)
{
    const auto& words = run.arguments.words;
    std::vector<FieldWord> fields;
    std::set<std::string_view> once;
    for (std::size_t i = 2; i < words.size(); ++i) {
        auto read = ReadFieldWord(words[i]);
        if (!read)
            return read.Error();
        const ConfigField& field = read->field;
        if (field.field == &LevelConfig::duplicates)
            return InWords(ErrorCode::Refused, GetMsg(Msg::WrongPublishDuplicate));
        if (field.group == 0 && !once.insert(field.name).second)
            return InWords(ErrorCode::Refused, GetMsg(Msg::WrongConfigTwice, {field.name}));
        fields.push_back(std::move(*read));
    }
    return fields;
}

std::string WrongPublish(Run& run)
{
    const std::string& zip = run.arguments.words[1];
    if (!EndsWithName(zip, OnDisk::EndingZip))
        return GetMsg(Msg::WrongZipName, {zip});
    const auto fields = FieldWords(run);
    return fields ? std::string{} : fields.Error().sentence;
}

/// What one field of the words is to the wizard. False, with a message, when it is not right.
using TakeWord = bool (*)(UploadWizard& wizard, const FieldWord& word);

template <std::string UploadWizard::*page>
bool TakeText(UploadWizard& wizard, const FieldWord& word)
{
    wizard.*page = word.text;
    return true;
}

template <UploadAddresses UploadWizard::*page>
bool TakeAddress(UploadWizard& wizard, const FieldWord& word)
{
    if (!word.text.empty())
        (wizard.*page).items.push_back(word.text);
    return true;
}

template <RowKind kind, auto page> bool TakeRow(UploadWizard& wizard, const FieldWord& word)
{
    if (!AddRow(wizard, kind))
        return false;
    std::copy(word.parts.begin(), word.parts.end(), (wizard.*page).edit.begin());
    return UpdateRow(wizard, kind);
}

bool TakeDocument(UploadWizard& wizard, const FieldWord& word)
{
    wizard.moreInfo = wizard.FileNamed(word.text);
    if (word.text.empty() || !wizard.moreInfo.empty())
        return true;
    wizard.session.host.Tell(Tone::Error, GetMsg(Msg::NoSuchPublishFile, {word.text}));
    return false;
}

bool TakeExeFormat(UploadWizard& wizard, const FieldWord& word)
{
    const auto formats = ExeFormats();
    for (std::size_t i = 0; i < formats.size(); ++i)
        if (formats[i].code == word.text)
            wizard.exeFormat = i;
    return true;
}

struct PageField {
    std::string LevelConfig::*field;
    TakeWord take;
};
constexpr PageField pageFields[] = {
    {&LevelConfig::name, TakeText<&UploadWizard::name>},
    {&LevelConfig::note, TakeText<&UploadWizard::note>},
    {&LevelConfig::author, TakeText<&UploadWizard::author>},
    {&LevelConfig::authorNote, TakeText<&UploadWizard::authorNote>},
    {&LevelConfig::importNotes, TakeText<&UploadWizard::importNotes>},
    {&LevelConfig::authorEmails, TakeAddress<&UploadWizard::emails>},
    {&LevelConfig::authorSites, TakeAddress<&UploadWizard::sites>},
    {&LevelConfig::importWads, TakeRow<RowKind::ImportWads, &UploadWizard::importWads>},
    {&LevelConfig::externWaves, TakeRow<RowKind::ExternWaves, &UploadWizard::externWaves>},
    {&LevelConfig::tomWads, TakeRow<RowKind::TomWads, &UploadWizard::tomWads>},
    {&LevelConfig::moreInfo, TakeDocument},
    {&LevelConfig::exeFormat, TakeExeFormat},
};

/// A list that the words name takes the place of what an earlier configuration file had.
void EmptyList(UploadWizard& wizard, const ConfigField& field)
{
    if (field.field == &LevelConfig::authorEmails)
        wizard.emails = {};
    else if (field.field == &LevelConfig::authorSites)
        wizard.sites = {};
    else if (field.field == &LevelConfig::importWads)
        wizard.importWads = {};
    else if (field.field == &LevelConfig::externWaves)
        wizard.externWaves = {};
    else if (field.field == &LevelConfig::tomWads)
        wizard.tomWads = {};
}

bool TakeWords(Run& run, UploadWizard& wizard)
{
    const auto words = FieldWords(run); // nothing is wrong with them
    std::set<std::string_view> lists;
    return std::all_of(words->begin(), words->end(), [&](const FieldWord& word) {
        if (lists.insert(word.field.name).second)
            EmptyList(wizard, word.field);
        const auto* page =
            std::find_if(std::begin(pageFields), std::end(pageFields),
                         [&](const PageField& at) { return at.field == word.field.field; });
        return page->take(wizard, word);
    });
}

bool GiveUp(Run& run)
{
    run.session.host.Tell(Tone::Error, GetMsg(Msg::PublishGivenUp));
    return false;
}

/// The rows with which the window's lists begin.
Mp3Settings UsualMp3Settings()
{
    const auto usual = [](const Mp3Choice& choice) { return choice.rows[choice.usual]; };
    return SettingsOfRows(usual(BitRateChoice()), usual(ChannelChoice()), FrequencyChoice().usual);
}

/// The steps as the words answer them.
bool Walk(Run& run, UploadWizard& wizard, const Path& zip)
{
    wizard.asksForDocument = false;
    wizard.configOnly = run.arguments.Has("--config-only");
    if (!OpenWizard(wizard) ||
        !AddSources(wizard, {PlaceFromWord(run.arguments.words[0])}, Subfolders::Take, zip))
        return false;
    if (!TakeWords(run, wizard))
        return false;
    if (run.arguments.Has("--mp3")) {
        run.session.mp3Settings = UsualMp3Settings();
        if (!CompressSounds(wizard, true))
            return false;
    }
    while (wizard.step != UploadStep::End)
        if (!NextStep(wizard))
            return false;
    return true;
}

bool Publish(Run& run)
{
    Session& session = run.session;
    const auto& words = run.arguments.words;
    const auto zip = FileToReplace(session.host, PlaceFromWord(words[1]));
    if (!zip)
        return DoneOrTold(session.host, zip.Error());
    const auto progress = session.host.BeginProgress(ProgressWindow::Progress, {});
    progress->AllowStop();
    HearInterrupts();
    // No level is touched, so whoever works on them need not end first.
    NotePlacesIn(WorkNotes(session.Folders()));
    const WorkFolder place{FreshPlaceIn(session.programFolder), WorkFolder::Make::Now};
    UploadWizard wizard{session, *progress, place.Folder()};
    if (!Walk(run, wizard, *zip))
        return GiveUp(run);
    if (!FinishUpload(wizard, *zip))
        return GiveUp(run);
    if (run.json != nullptr)
        *run.json = {{"file", TextOf(*zip)},
                     {"size", FileSize(*zip)},
                     {"name", Readable(wizard.config.name)},
                     {"files", wizard.files.size()}};
    return true;
}

} // namespace

std::span<const CommandRow> PublishCommands()
{
    constexpr std::size_t mostFields = 1'000'000;
    static const CommandRow rows[] = {
        {.window = {.control = "mnu_SetupUpload",
                    .caption = Msg::MenuSetupUpload,
                    .menu = "mnu_Tools"},
         .terminal = {.word = "publish",
                      .usage = Msg::UsePublish,
                      .summary = Msg::SumPublish,
                      .json = Msg::KeysPublish,
                      .leastWords = 2,
                      .mostWords = mostFields,
                      .options = {FlagOption("--config-only"), FlagOption("--mp3")},
                      .wrong = WrongPublish},
         .run = Publish},
    };
    return rows;
}

} // namespace kestrova
