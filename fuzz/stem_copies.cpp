#include "intake/stem_copies.h"

#include "check.h"
#include "core/name_set.h"

using namespace kestrova;
using namespace kestrova::fuzz;

namespace
{

constexpr std::size_t mostCopiesOfALevel = 20'000;

NamedFiles FilesOf(std::string_view names, const Path& folder)
{
    NamedFiles files;
    for (const std::string& name : Split(names, '|'))
        if (IsLevelFileName(name))
            files.Add(name, {folder / name, 1});
    return files;
}

} // namespace

/// The names of a level's files, those of the Level Editor's wads, and the pairs that a
/// configuration file asks copies of, parted by bytes of value 1: no copy leads out of the level or
/// takes a name that is taken, and there are no more of them than a level needs.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    auto parts = Split(FromWindows1252(TextOfInput(data, size)), '\x01');
    parts.resize(3);
    LevelConfig config;
    config.duplicates = parts[2];
    const auto wishes = DuplicatesOf(config);
    const NamedFiles level = FilesOf(parts[0], "level");
    const NamedFiles wads = FilesOf(parts[1], "wads");
    for (const NamedFiles* first : {static_cast<const NamedFiles*>(nullptr), &wads}) {
        const auto plan = PlanCopies(wishes, level, first, [] { return true; });
        if (!plan) {
            Promise(plan.Error().code == ErrorCode::Refused, "only too many are refused");
            continue;
        }
        Promise(plan->copies.size() <= mostCopiesOfALevel, "there are no more than a level needs");
        NameSet taken;
        for (const PlannedCopy& copy : plan->copies) {
            Promise(IsLevelFileName(copy.name), "a name leads nowhere else");
            Promise(!level.Has(copy.name) && !taken.Has(copy.name), "its name was free");
            taken.Add(copy.name);
            Promise(copy.wish < wishes.size() && copy.name.starts_with(wishes[copy.wish].stem),
                    "it is what was asked for");
        }
    }
    return 0;
}
