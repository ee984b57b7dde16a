#include "editor/wad_routing.h"

#include "core/file_kinds.h"
#include "core/name_set.h"
#include "editor/file_names.h"
#include "editor/tom_sources.h"
#include "formats/trle_folder.h"

#include <map>
#include <set>

namespace kestrova
{

namespace
{

/// The stems of the files with that ending.
NameSet StemsWith(const std::vector<Path>& files, std::string_view ending)
{
    NameSet stems;
    for (const Path& file : files)
        if (const std::string name = file.filename().native(); EndsWithName(name, ending))
            stems.Add(BaseNameOf(name));
    return stems;
}

std::string FirstLetters(const std::string& name)
{
    constexpr std::size_t letters = 3;
    return FoldCase(name.substr(0, letters));
}

/// What the rows of the table ask of all files of the package.
class WadTable
{
public:
    explicit WadTable(const std::vector<Path>& files)
        : tomStems_(StemsWith(files, OnDisk::TomEnding)),
          datStems_(StemsWith(files, OnDisk::EndingDat))
    {
        const TomSources sources = SourcesAmong(files);
        sets_.insert(sources.wads.begin(), sources.wads.end());
        samples_.insert(sources.samples.begin(), sources.samples.end());
        misplaced_.insert(sources.misplaced.begin(), sources.misplaced.end());
        for (const Path& file : files)
            if (const std::string name = file.filename().native();
                EndsWithName(name, OnDisk::PrjEnding))
                projects_.emplace(FirstLetters(name), BaseNameOf(name));
    }

    [[nodiscard]] WadRoute RouteOf(const Path& file) const
    {
        const std::string name = file.filename().native();
        const auto install = [&](std::string_view folder) {
            return WadRoute{file, WadGoal::Install, std::string{folder} + '\\'};
        };
        if (sets_.contains(file))
            return install(OnDisk::DirWads);
        if (const std::string project = ProjectOf(name); !project.empty())
            return install(std::string{OnDisk::DirMaps} + '\\' + project);
        if (IsScriptSource(name))
            return {file, WadGoal::Scripts};
        if (EqualNames(name, OnDisk::SoundsTxt))
            return install(OnDisk::DirLevelSfx);
        if (EndsWithName(name, OnDisk::WavExtension))
            return misplaced_.contains(file)
                       ? WadRoute{file, WadGoal::Misplaced}
                       : install(samples_.contains(file) ? OnDisk::DirSamples : OnDisk::DirAudio);
        if (EndsWithName(name, OnDisk::HeaderEnding))
            return install({});
        return {file, EndsWithName(name, OnDisk::Tr4Ending) ? WadGoal::Finished : WadGoal::Ignored};
    }

    [[nodiscard]] bool HasTom(std::string_view stem) const { return tomStems_.Has(stem); }

private:
    /// Whose folder of maps a project, or a texture of one, belongs to; empty for others.
    [[nodiscard]] std::string ProjectOf(const std::string& name) const
    {
        if (EndsWithName(name, OnDisk::PrjEnding))
            return BaseNameOf(name);
        if (!EndsWithName(name, OnDisk::TgaEnding) || tomStems_.Has(BaseNameOf(name)))
            return {};
        const auto found = projects_.find(FirstLetters(name));
        return found == projects_.end() ? std::string{} : found->second;
    }

    [[nodiscard]] bool IsScriptSource(const std::string& name) const
    {
        return EqualNames(name, OnDisk::ScriptTxt) || EqualNames(name, OnDisk::EnglishTxt) ||
               EndsWithName(name, OnDisk::EndingDat) ||
               (EndsWithName(name, OnDisk::TxtEnding) && datStems_.Has(BaseNameOf(name)));
    }

    NameSet tomStems_;
    NameSet datStems_;
    std::set<Path> sets_;
    std::set<Path> samples_;
    std::set<Path> misplaced_;
    std::map<std::string, std::string> projects_; ///< stem of the first one, by its first letters
};

} // namespace

WadRoutes RouteWads(const std::vector<Path>& files)
{
    const WadTable table{files};
    WadRoutes routes;
    for (const Path& file : files) {
        const Path name = file.filename();
        if (EndsWithName(name.native(), OnDisk::TomEnding))
            routes.toms.push_back(name);
        if (EndsWithName(name.native(), OnDisk::WadEnding) &&
            !table.HasTom(BaseNameOf(name.native())))
            routes.wads.push_back(name);
        routes.files.push_back(table.RouteOf(file));
    }
    return routes;
}

} // namespace kestrova
