#include "formats/config_groups.h"

#include "check.h"
#include "core/names.h"
#include "core/text.h"

using namespace kestrova;
using namespace kestrova::fuzz;

namespace
{

/// What may be made of it lies in the level's folder, under a name that no pattern is.
void ExpectWithin(std::string_view name)
{
    if (!IsLevelFileName(name))
        return;
    const Path file = Path{"level"} / Path{name};
    Promise(file.lexically_normal().parent_path() == "level", "a name leads nowhere else");
    Promise(file.filename().native() == name, "a name is one part");
    Promise(name.find_first_of("*?|\\/:") == std::string_view::npos, "a name is no pattern");
}

} // namespace

/// The lists that drive steps of a level's intake.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text = FromWindows1252(TextOfInput(data, size));
    LevelConfig config;
    config.duplicates = config.tomWads = config.externWaves = config.importWads = text;
    const auto duplicates = DuplicatesOf(config);
    for (const StemCopy& copy : duplicates) {
        Promise(copy.stem.find_first_of("\\/:") == std::string::npos, "a stem has no folder");
        for (const std::string_view ending : {"", ".", "..", ".tr4", ".\x1f"})
            ExpectWithin(copy.stem + std::string{ending});
        (void)MatchesPattern("data level 1.tr4", copy.pattern);
    }
    Promise(TomWadsOf(config).size() == duplicates.size(), "both are pairs");
    const auto waves = ExternWavesOf(config);
    Promise(waves.size() == duplicates.size() / 2, "a group is two pairs");
    for (const ExternWave& wave : waves)
        for (const std::string& name : {wave.source, wave.target, wave.alternative})
            ExpectWithin(name);
    for (const WadNeed& need : WadNeedsOf(config))
        ExpectWithin(need.check);
    const std::string name{TextOfInput(data, size)};
    Promise(ListedForm(FromWindows1252(ToWindows1252(name))) == ListedForm(name),
            "a file is found by the name that stands for it in a list");
    return 0;
}
