#include "practice/practice_packages.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "formats/level_config.h"
#include "formats/nul_list.h"
#include "platform/file_content.h"
#include "practice/file_names.h"
#include "practice/make_content.h"
#include "practice/package_content.h"
#include "practice/put_program.h"
#include "words/practice.h"

namespace kestrova
{

namespace
{

std::vector<std::string> Texts(std::initializer_list<std::string_view> texts)
{
    return {texts.begin(), texts.end()};
}

/// The files of the level that needs every step are listed as they are in its folder.
Result<LevelConfig> EveryStep(const Path& folder)
{
    LevelConfig config;
    config.name = ToWindows1252(Told(PracticeEveryStep().name));
    config.note = Told(Msg::PracticeDoorsShortNote);
    config.importWads = JoinNulList(Texts({OnDisk::DoorCheck, OnDisk::DoorAddress}));
    config.importNotes = Told(Msg::PracticeDoorsImportNote);
    config.duplicates = JoinNulList(Texts({OnDisk::DoorPattern, OnDisk::DoorTarget}));
    config.externWaves = JoinNulList(
        Texts({OnDisk::DoorCd, OnDisk::DoorSource, OnDisk::DoorTuneName, OnDisk::DoorAlternative}));
    config.tomWads = JoinNulList(Texts({OnDisk::DoorTom, OnDisk::DoorWads}));
    config.moreInfo = OnDisk::DoorNote;
    const auto files = ListFiles(folder, OnDisk::PracticeAnyFile);
    if (!files)
        return files.Error();
    for (const Path& file : *files) {
        const auto facts = LookAt(file);
        if (!facts)
            return facts.Error();
        config.files.push_back({file.filename().native(), static_cast<std::int32_t>(facts->size)});
    }
    return config;
}

Status WriteEveryStep(const Path& folder)
{
    const auto config = EveryStep(folder);
    const auto bytes = config ? FormatLevelConfig(*config) : config.Error();
    return bytes ? WriteWholeFile(folder / OnDisk::PracticeConfigName, *bytes, false)
                 : bytes.Error();
}

SetupPayload Installed(std::string_view head)
{
    SetupPayload payload{std::string{head}, {}};
    const PracticeLevel& level = PracticeInstalled();
    const std::string title = ToWindows1252(Told(level.name));
    std::uint64_t seed = FirstSeedOf(level);
    for (const PracticeItem& item : level.items)
        payload.files.push_back(
            {std::string{item.file.substr(1)}, MakeContent(item, title, level.style, seed++, 1)});
    return payload;
}

Status MakeSetups(const Path& packages, const Path& standIn)
{
    const auto program = ReadWholeFile(standIn);
    if (!program)
        return program.Error();
    for (const PracticeSetup& setup : PracticeSetups()) {
        const auto packed = PackSetup(*program, setup.kind, Installed(setup.head));
        if (!packed)
            return Failure{ErrorCode::NotDone, TextOf(standIn),
                           GetMsg(Msg::PracticeNoSetupRoom, {TextOf(standIn)})};
        const Path folder = packages / Told(Msg::PracticePackageSetup, {setup.folder});
        Status made = MakeFolders(folder);
        if (made)
            made = WriteWholeFile(folder / setup.name, *packed, false);
        if (made)
            made = MakeRunnable(folder / setup.name);
        if (!made)
            return made;
    }
    return {};
}

/// The programs of the Level Editor's setup, and the list of all that it brings, itself left out.
Status FinishEditorSetup(const Path& trle, const PracticePrograms& programs)
{
    for (const auto& [program, place] :
         {std::pair{programs.game, OnDisk::FragPracticeGame},
          std::pair{programs.compiler, OnDisk::FragPracticeCompiler},
          std::pair{programs.scriptCompiler, OnDisk::FragPracticeScriptExe},
          std::pair{programs.compiler, OnDisk::FragSetupEditor}})
        if (Status put = PutProgram(program, InFolder(trle, place)); !put)
            return put;
    const auto tree = ScanTree(trle);
    if (!tree)
        return tree.Error();
    std::string lines;
    for (const Path& file : tree->files)
        lines +=
            ReplaceAll(file.lexically_relative(trle).native(), "/", "\\") + std::string{lineBreak};
    return WriteWholeFile(InFolder(trle, OnDisk::FragSetupList), lines, false);
}

} // namespace

Status FinishPackages(const Path& packages, const PracticePrograms& programs)
{
    Status done = WriteEveryStep(packages / Told(PracticeEveryStep().name));
    if (done)
        done = MakeSetups(packages, programs.setup);
    return done
               ? FinishEditorSetup(
                     packages / Told(PracticeEditorSetup().name) / OnDisk::SetupSubfolder, programs)
               : done;
}

} // namespace kestrova
