#include "editor/wad_levels.h"

#include "core/activity_log.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/name_list.h"
#include "core/name_set.h"
#include "core/text.h"
#include "editor/compile_script.h"
#include "editor/file_names.h"
#include "editor/script_files.h"
#include "editor/told_rest.h"
#include "formats/trle_folder.h"
#include "session/telling.h"
#include "words/core.h"
#include "words/wads.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool IsStopped(const Status& status)
{
    return !status && status.Error().code == ErrorCode::Stopped;
}

class LevelTaking
{
public:
    LevelTaking(const WadWork& work, const AskLevelName& askName)
        : work_(work), askName_(askName), folders_(work.parts.folders),
          scripts_(ResolvePath(InFolder(folders_.trle, OnDisk::DirScript)))
    {
    }

    Status Run(const std::vector<std::string>& newLevels)
    {
        work_.parts.progress.SetLabel(GetMsg(Msg::ImportCompilingScript));
        if (auto found = FindLanguage(); !found)
            return found;
        if (auto watched = WatchScripts(); !watched)
            return watched;
        const auto newScript = ReadScriptFile(work_.newScripts / OnDisk::ScriptTxt);
        const auto newStrings = ReadLanguageFile(work_.newScripts / OnDisk::EnglishTxt);
        if (!newScript || newScript->levels.empty() || !newStrings || newStrings->strings.empty()) {
            if (auto copied = CopyAllSources(); !copied)
                return copied;
        } else {
            Merge(*newScript, *newStrings, newLevels);
        }
        return Compile();
    }

private:
    /// The first language of the backup is the one that is played in.
    Status FindLanguage()
    {
        const auto compiled = ListFiles(folders_.Backup(), OnDisk::PatDat);
        if (!compiled)
            return compiled.Error();
        for (const Path& file : *compiled)
            if (!EqualNames(file.filename().native(), OnDisk::ScriptDat)) {
                language_ = BaseNameOf(file.filename().native());
                break;
            }
        return {};
    }

    [[nodiscard]] std::string Compiled() const
    {
        return language_ + std::string{OnDisk::EndingDat};
    }
    [[nodiscard]] Path SourceOf(const std::string& stem) const
    {
        return ResolvePath(scripts_ / (stem + std::string{OnDisk::TxtEnding}));
    }
    [[nodiscard]] bool HasEnglish() const { return !EqualNames(language_, OnDisk::EnglishStem); }

    Status WatchScripts()
    {
        std::vector<ImportPlace> places;
        const auto add = [&](ImportTree tree, std::string_view folder, std::string_view name) {
            places.push_back({tree, std::string{folder} + '\\' + std::string{name}});
        };
        for (const std::string& name :
             {std::string{OnDisk::ScriptTxt}, language_ + std::string{OnDisk::TxtEnding},
              std::string{OnDisk::EnglishTxt}})
            add(ImportTree::LevelEditor, OnDisk::DirScript, name);
        const auto sources = ListFiles(work_.newScripts, OnDisk::PatAllFiles);
        if (!sources)
            return sources.Error();
        for (const Path& file : *sources) {
            add(ImportTree::LevelEditor, OnDisk::DirScript, file.filename().native());
            add(ImportTree::Backup, {}, file.filename().native());
        }
        for (const ImportTree tree : {ImportTree::LevelEditor, ImportTree::Backup})
            for (const std::string& name : {std::string{OnDisk::ScriptDat}, Compiled()})
                add(tree, {}, name);
        return work_.files.Watch(places,
                                 {{ImportTree::LevelEditor, std::string{OnDisk::PatScriptResults}}},
                                 BeatOf(work_));
    }

    /// Without sources that can be merged the compiled files of the package are taken. One that has
    /// no sources at all is whole without them.
    Status CopyAllSources()
    {
        const auto files = ListFiles(work_.newScripts, OnDisk::PatAllFiles);
        if (!files)
            return files.Error();
        const bool hasSources = std::any_of(files->begin(), files->end(), [](const Path& file) {
            return EndsWithName(file.native(), OnDisk::TxtEnding);
        });
        work_.parts.host.Tell(hasSources ? Tone::Error : Tone::Warning,
                              GetMsg(Msg::ImportNoSources, {lineBreak}));
        if (auto copied = CopyAll(*files, work_.newScripts, ImportTree::Backup, {}); !copied)
            return copied;
        std::vector<Path> usable = *files;
        if (auto left = LeaveOwnSources(usable); !left)
            return left;
        return CopyAll(usable, work_.newScripts, ImportTree::LevelEditor, OnDisk::DirScript);
    }

    /// Sources that could not be merged, and come without what is compiled of them, would take the
    /// place of the person's own with all the levels in those.
    Status LeaveOwnSources(std::vector<Path>& files)
    {
        NameSet compiled;
        for (const Path& file : files)
            if (EndsWithName(file.native(), OnDisk::EndingDat))
                compiled.Add(BaseNameOf(file.native()));
        std::vector<std::string> own;
        Status looked;
        std::erase_if(files, [&](const Path& file) {
            const std::string name = file.filename().native();
            if (!EndsWithName(name, OnDisk::TxtEnding) || compiled.Has(BaseNameOf(name)))
                return false;
            const auto hasOwn = IsFile(scripts_ / name);
            if (!hasOwn)
                looked = hasOwn.Error();
            if (hasOwn && *hasOwn)
                own.push_back(Readable(name));
            return !hasOwn || *hasOwn;
        });
        if (!own.empty())
            work_.parts.host.Tell(Tone::Warning,
                                  GetMsg(Msg::ImportOwnSourcesStay, {ShownNames(own)}));
        return looked;
    }

    /// A failure that is no Stop is a line's end.
    Status CopyAll(const std::vector<Path>& files, const Path& from, ImportTree tree,
                   std::string_view folder, std::uint32_t rights = plainRights)
    {
        const Path root = RootOf(folders_, tree);
        bool whole = true;
        for (const Path& file : files) {
            const std::string name = std::string{folder} + '\\' + file.filename().native();
            const auto copied =
                work_.files.MayChange(tree, name)
                    ? CopyWadFile(work_, file, root / SafeRelative(name).Value(), rights)
                    : Status{MakeFailure(ErrorCode::Refused, name)};
            if (IsStopped(copied))
                return copied;
            whole = whole && copied;
        }
        ReportOutcome(work_,
                      {Told(Msg::LogCopyAll), TextOf(from), "\\", std::string{OnDisk::PatAllFiles},
                       Told(Msg::LogArrow), TextOf(folder.empty() ? root : InFolder(root, folder))},
                      whole);
        return {};
    }

    /// Sources that cannot be read stay as they are.
    void Merge(const ScriptText& newScript, const LanguageText& newStrings,
               const std::vector<std::string>& newLevels)
    {
        auto script = ReadScriptFile(scripts_ / OnDisk::ScriptTxt);
        if (!script)
            return TellFailure(work_.parts.host, GetMsg(Msg::ImportOwnSources), script.Error());
        auto language = ReadStrings(language_);
        if (!language)
            return TellFailure(work_.parts.host, GetMsg(Msg::ImportOwnSources), language.Error());
        OwnScripts own{std::move(*script), std::move(*language), {}};
        if (HasEnglish()) {
            auto english = ReadStrings(std::string{OnDisk::EnglishStem});
            if (english)
                own.english = std::move(*english);
            else if (english.Error().code != ErrorCode::Missing)
                TellFailure(work_.parts.host, GetMsg(Msg::ImportOwnEnglish), english.Error());
        }
        const OwnScripts before = own;
        const auto report = MergeNewLevels(newScript, newStrings, newLevels, askName_, own);
        TellLacking(Msg::ImportNoLevel, report.withoutLevel);
        TellLacking(Msg::ImportNoLevelName, report.withoutName);
        if (!report.twice.empty())
            work_.parts.host.Tell(
                Tone::Warning,
                GetMsg(Msg::ImportNameTwice, {ShownNames(report.twice), Readable(language_)}));
        Write(before, own);
    }

    /// What has not changed keeps its bytes.
    void Write(const OwnScripts& before, const OwnScripts& own)
    {
        if (own.script != before.script)
            TellUnless(MayWrite(OnDisk::ScriptTxt)
                           ? WriteScriptFile(scripts_ / OnDisk::ScriptTxt, own.script)
                           : NotKept(OnDisk::ScriptTxt),
                       GetMsg(Msg::ImportScriptNotSaved));
        if (own.language != before.language)
            TellUnless(WriteStrings(language_, own.language),
                       GetMsg(Msg::ImportLanguageNotSaved, {Readable(language_)}));
        if (own.english != before.english)
            TellUnless(WriteStrings(std::string{OnDisk::EnglishStem}, *own.english),
                       GetMsg(Msg::ImportEnglishNotSaved));
    }

    /// What stands there is kept.
    [[nodiscard]] bool MayWrite(std::string_view name) const
    {
        return work_.files.MayChange(ImportTree::LevelEditor,
                                     std::string{OnDisk::DirScript} + '\\' + std::string{name});
    }
    [[nodiscard]] Status NotKept(std::string_view name) const
    {
        return MakeFailure(ErrorCode::Refused, TextOf(scripts_ / name));
    }
    [[nodiscard]] Status WriteStrings(const std::string& stem, const LanguageText& language) const
    {
        const std::string name = stem + std::string{OnDisk::TxtEnding};
        return MayWrite(name) ? WriteLanguageFile(SourceOf(stem), language) : NotKept(name);
    }

    [[nodiscard]] Result<LanguageText> ReadStrings(const std::string& stem) const
    {
        auto language = ReadLanguageFile(SourceOf(stem));
        if (language && language->strings.empty())
            return MakeFailure(ErrorCode::Damaged, TextOf(SourceOf(stem)));
        return language;
    }

    void TellLacking(Message words, const std::vector<std::string>& names) const
    {
        std::vector<std::string> lines;
        for (const std::string& name : names)
            lines.push_back(GetMsg(words, {ShownNames({Readable(name)})}));
        if (!lines.empty())
            work_.parts.host.Tell(Tone::Error, Join(lines, lineBreak));
    }

    void TellUnless(const Status& done, const std::string& text) const
    {
        if (!done)
            TellFailure(work_.parts.host, text, done.Error());
    }

    Status Compile()
    {
        RestReturn rest;
        const auto compiled =
            CompileScript(work_.parts.machine, folders_, work_.parts.tools, Compiled(),
                          work_.parts.progress, rest, work_.parts.bounds);
        TellRest(work_.parts.host, rest);
        if (IsStopped(compiled))
            return compiled;
        TellUnless(compiled, GetMsg(Msg::ImportNotCompiled, {Readable(language_)}));
        const bool done = static_cast<bool>(compiled);
        ReportOutcome(work_, {Told(Msg::ImportLineLanguage, {Readable(language_)})}, done);
        ReportOutcome(work_, {Told(Msg::ImportLineScript)}, done);
        for (const std::string& name : {std::string{OnDisk::ScriptDat}, Compiled()})
            if (auto installed = InstallFile(work_, ResolvePath(scripts_ / name), "\\"); !installed)
                return installed;
        return CopyScriptsToBackup();
    }

    Status CopyScriptsToBackup()
    {
        const auto files = ListFiles(scripts_, OnDisk::PatAllFiles);
        if (!files)
            return files.Error();
        const std::string folder = std::string{OnDisk::DirScript} + '\\';
        std::vector<ImportPlace> places;
        for (const Path& file : *files) {
            const auto hash = HashIfThere(file);
            if (!hash)
                return hash.Error();
            places.push_back({ImportTree::Backup, folder + file.filename().native(), {}, *hash});
        }
        (void)work_.files.MakeFolderOf(ImportTree::Backup, OnDisk::DirScript);
        if (auto watched = work_.files.Watch(places, {}, BeatOf(work_)); !watched)
            return watched;
        // The compiler among them is a program, and stays one.
        constexpr std::uint32_t asTheyAre = 0;
        return CopyAll(*files, scripts_, ImportTree::Backup, OnDisk::DirScript, asTheyAre);
    }

    const WadWork& work_;
    const AskLevelName& askName_;
    const Folders& folders_;
    Path scripts_;
    std::string language_{OnDisk::EnglishStem};
};

} // namespace

Result<std::vector<std::string>> LevelsIn(const Folders& folders, ImportTree tree)
{
    const auto files = ListFiles(InFolder(RootOf(folders, tree), OnDisk::DirData), OnDisk::PatTr4);
    if (!files)
        return files.Error();
    std::vector<std::string> names;
    for (const Path& file : *files)
        names.push_back(file.filename().native());
    return names;
}

Status TakeNewLevels(const WadWork& work, const std::vector<std::string>& newLevels,
                     const AskLevelName& askName)
{
    return LevelTaking{work, askName}.Run(newLevels);
}

} // namespace kestrova
