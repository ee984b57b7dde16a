#include "archive/equal_levels.h"
#include "archive/level_folders.h"
#include "support/sandbox.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

/// How long the look for a level with an equal `.tr4` needs in archives of 500 and 5,000 levels
/// that lie on the disk, none of them equal: medians, as `name value unit` lines.

using namespace kestrova;

namespace
{

constexpr int runs = 5;

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

double MedianMilliseconds(const testing::Sandbox& box, const Path& folder)
{
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        const auto start = std::chrono::steady_clock::now();
        if (FindEqualTr4(box.session, folder, box.session.levels.size(), nullptr))
            std::abort(); // there is none
        times.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
                .count());
    }
    std::sort(times.begin(), times.end());
    return times[runs / 2];
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return EXIT_FAILURE;
    testing::Sandbox box;
    box.Write("new/level1.tr4", "a level of its own");
    box.session.archive.secondaryFolder = std::filesystem::absolute(argv[1]).native();
    for (const int count : {500, 5000}) {
        while (static_cast<int>(box.session.levels.size()) < count) {
            const auto code = static_cast<LevelCode>(box.session.levels.size() + 1);
            box.session.levels.push_back(Record(code));
            if (!MakeLevelSubfolders(LevelHomeOf(box.session, code)) ||
                !WriteTr4InfOf(box.session, code, FilesOf(code)))
                return EXIT_FAILURE;
        }
        std::printf("equal_%d %.3f ms\n", count, MedianMilliseconds(box, box / "new"));
    }
    return EXIT_SUCCESS;
}
