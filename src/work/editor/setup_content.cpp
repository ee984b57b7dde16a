#include "editor/setup_content.h"

#include "conversion/audio_batch.h"
#include "core/copying.h"
#include "core/text.h"
#include "editor/compile_one_tom.h"
#include "editor/failure_words.h"
#include "editor/file_names.h"
#include "editor/setup_names.h"
#include "formats/trle_folder.h"
#include "pictures/convert.h"
#include "words/level_setup.h"

namespace kestrova
{

namespace
{

constexpr std::uint32_t ownerWrites = 0200;
constexpr std::uint32_t programRights = 0755;

Path NamedIn(const Path& folder, std::string_view name)
{
    return ResolvePath(folder / Path{name});
}

Status CopyToRoot(const Path& tree, std::string_view name, const std::string& sentence)
{
    const Path source = NamedIn(InFolder(tree, OnDisk::DirScript), name);
    auto copied = CopyFileOver(source, tree / Path{name}, {Verify::Content, false, false, {}});
    return copied ? copied
                  : InWords(copied.Error().code, sentence,
                            copied.Error().subject + ' ' + copied.Error().reason);
}

Status RemoveAllBut(const std::vector<Path>& files, std::string_view kept)
{
    for (const Path& file : files)
        if (!EqualNames(file.filename().native(), kept))
            if (auto gone = DeleteSpelled(file); !gone)
                return gone;
    return {};
}

} // namespace

Status AllowWriting(const SetupParts& parts, const Path& tree)
{
    const auto all = ScanTree(tree, [&] { return parts.progress.Step(); });
    if (!all)
        return all.Error();
    for (const auto* places : {&all->folders, &all->files})
        for (const Path& place : *places) {
            const auto facts = platform::FactsOf(place);
            if ((facts.mode & ownerWrites) != 0)
                continue;
            if (const auto failure = platform::SetMode(place, facts.mode | ownerWrites))
                return MakeFailure(ErrorCode::CannotWrite, TextOf(place), failure);
        }
    return {};
}

Status AllowStarting(const Path& tree)
{
    for (const std::string_view program : {OnDisk::FragTrleTomb4, OnDisk::RoomEditor,
                                           OnDisk::FragConverter, OnDisk::FragScriptExe}) {
        const Path file = ResolvePath(InFolder(tree, program));
        if (!FileExists(file))
            continue;
        if (const auto failure = platform::SetMode(file, programRights))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(file), failure);
    }
    return {};
}

Status MakeLoadScreen(const Path& tree, const SetupLanguage& language)
{
    const Path picture = NamedIn(tree, language.loadScreen);
    auto made = ConvertJpegToBitmap(picture, InFolder(tree, OnDisk::SetupLoadBmp));
    return made ? made
                : InWords(made.Error().code,
                          GetMsg(Msg::SetupLoadFailed,
                                 {TextOf(picture.filename()) + std::string{lineBreak}}),
                          made.Error().reason);
}

Status RemoveOtherScreens(const Path& tree, const SetupLanguage& language)
{
    const auto pictures = ListFiles(tree, OnDisk::PatJpg);
    return pictures ? RemoveAllBut(*pictures, language.loadScreen) : pictures.Error();
}

Status RemoveOtherManuals(const Path& tree, const SetupLanguage& language)
{
    const Path folder = InFolder(tree, OnDisk::DirManual);
    std::vector<Path> manuals;
    for (const SetupLanguage& other : SetupLanguages())
        if (const Path manual = NamedIn(folder, other.manual); FileExists(manual))
            manuals.push_back(manual);
    return RemoveAllBut(manuals, language.manual);
}

Status CopyLanguageFile(const Path& tree, const SetupLanguage& language)
{
    return CopyToRoot(tree, language.languageFile,
                      GetMsg(Msg::SetupLanguageFailed, {TextOf(tree)}) +
                          std::string{language.languageFile});
}

Status CopyScript(const Path& tree)
{
    return CopyToRoot(tree, OnDisk::ScriptDat, GetMsg(Msg::SetupScriptFailed, {TextOf(tree)}));
}

Status DecodeMusic(const SetupParts& parts, const Path& folder, AudioKind kind, Message label)
{
    parts.progress.SetLabel(GetMsg(label));
    const auto music = ListFiles(folder, OnDisk::PatMp3);
    if (!music)
        return music.Error();
    if (music->empty())
        return {};
    AudioBatch batch{parts.host, parts.converter, *music, folder, kind};
    batch.LetPassOver(AudioBatch::PassOver::WhenAsked);
    if (const auto done = batch.Run(); !done) {
        const Failure& failure = done.Error();
        if (failure.code == ErrorCode::Stopped)
            return failure;
        return InWords(failure.code, GetMsg(Msg::SetupAudioFailed) + failure.sentence,
                       failure.reason, failure.details);
    }
    parts.progress.SetLabel(GetMsg(Msg::SetupRemovingMp3));
    return DeleteConverted(batch);
}

Result<std::vector<Path>> TomFilesOf(const Path& tree)
{
    return ListFiles(InFolder(tree, OnDisk::DirWads), OnDisk::TomPattern);
}

Status CompileTomOf(const SetupParts& parts, const Path& tree, const Path& tom)
{
    const Path data = InFolder(tree, OnDisk::DirData);
    const std::string name = tom.filename().native();
    if (auto made = MakeFolder(data); !made)
        return made;
    const TomRun run{ResolvePath(tree / Path{OnDisk::DefaultTom2PcName}), tree, tom,
                     ResolvePath(data / (StripExtension(name) + std::string{OnDisk::Tr4Ending})),
                     parts.bounds};
    ToolReport report;
    const auto done =
        CompileOneTom(parts.converter.tools, parts.machine, run, parts.progress, report);
    if (done || done.Error().code == ErrorCode::Stopped)
        return done;
    return InWords(done.Error().code, GetMsg(Msg::SetupCompileFailed) + TextOf(name) + '\'',
                   WordsOf(done.Error()), report.lastLines);
}

} // namespace kestrova
