#include "archive/equal_levels.h"
#include "archive/level_folders.h"
#include "world/world.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

/// How long the look for a level with an equal `.tr4` needs in archives of 500 and 5,000 levels
/// that lie on the disk, none of them equal: medians, as `name value unit` lines.

using namespace kestrova;

namespace
{

constexpr int runs = 11;

LevelRecord Record(LevelCode code)
{
    LevelRecord record;
    record.levelCode = code;
    return record;
}

/// Three files a level, each with a size of its own.
std::vector<Tr4Entry> FilesOf(LevelCode code)
{
    return {{"title.tr4", 40000.5, code * 3 + 1},
            {"level1.tr4", 40000.5, code * 3 + 2},
            {"level2.tr4", 40000.5, code * 3 + 3}};
}

/// An archive of so many levels.
struct EqualLevels {
    testing::World box;
    std::vector<double> times; ///< ms

    bool Fill(const Path& folder, LevelCode count)
    {
        box.Write("new/level1.tr4", "a level of its own");
        std::filesystem::create_directories(folder);
        box.session.archive.header.secondaryFolder = std::filesystem::absolute(folder).native();
        for (LevelCode code = 1; code <= count; ++code) {
            box.session.archive.levels.push_back(Record(code));
            if (!MakeLevelSubfolders(LevelHomeOf(box.session.Folders(), code)) ||
                !WriteTr4InfOf(box.session.Folders(), code, FilesOf(code)))
                return false;
        }
        return true;
    }
    void Look()
    {
        const auto start = std::chrono::steady_clock::now();
        const auto equal = FindEqualTr4(box.session.Folders(), box.session.archive, box / "new",
                                        box.session.archive.levels.size(), nullptr);
        if (!equal || *equal)
            std::abort(); // there is none
        times.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
                .count());
    }
    double Median()
    {
        std::sort(times.begin(), times.end());
        return times[times.size() / 2];
    }
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return EXIT_FAILURE;
    EqualLevels small;
    EqualLevels large;
    if (!small.Fill(Path{argv[1]} / "500", 500) || !large.Fill(Path{argv[1]} / "5000", 5000))
        return EXIT_FAILURE;
    // By turns, so that what else runs on the machine takes from both alike.
    for (int run = 0; run < runs; ++run) {
        small.Look();
        large.Look();
    }
    std::printf("equal_500 %.3f ms\nequal_5000 %.3f ms\n", small.Median(), large.Median());
    return EXIT_SUCCESS;
}
