#include "burning/content_check.h"
#include "burning/image_making.h"
#include "discs/disc_plan.h"
#include "platform/process.h"

#include <chrono>
#include <cstdio>
#include <string_view>

/// What the disc engine does with a folder: `bench_discs image FOLDER IMAGE` makes its image,
/// `bench_discs compare FOLDER IMAGE` reads that back and compares it. `bench_discs plan` prints
/// the milliseconds in which 10,000 measured levels are divided among discs.

using namespace kestrova;

namespace
{

double MillisecondsOfAPlan()
{
    std::vector<DiscCandidate> levels;
    for (std::size_t index = 0; index < 10'000; ++index) {
        const std::uint64_t size = 1'000'000 + index * 7919 % 60'000'000;
        levels.push_back(
            {index, static_cast<LevelCode>(index + 1), {static_cast<double>(size), size, 0}});
    }
    const auto start = std::chrono::steady_clock::now();
    DiscPlan plan;
    plan.choice.megabytes = 4482;
    plan.Take(std::move(levels), 0);
    plan.Divide();
    const auto took = std::chrono::steady_clock::now() - start;
    return plan.LevelCount() == 10'000 && plan.Discs().size() > 50
               ? std::chrono::duration<double, std::milli>(took).count()
               : -1;
}

} // namespace

int main(int count, char** words)
{
    if (count == 2 && std::string_view{words[1]} == "plan") {
        const double took = MillisecondsOfAPlan();
        std::printf("%.3f\n", took);
        return took < 0 ? 1 : 0;
    }
    if (count != 4) {
        std::fprintf(stderr, "usage: bench_discs image|compare FOLDER IMAGE | plan\n");
        return 2;
    }
    const Path folder = std::filesystem::absolute(words[2]);
    const Path image = std::filesystem::absolute(words[3]);
    BurnSettings settings;
    settings.items = {{"levels/", folder}};
    Status done;
    if (std::string_view{words[1]} == "image") {
        const Tools tools{image.parent_path(), {}, {}, platform::FindOnPath};
        auto making = ImageMaking::Start(tools, settings, image);
        done = making ? (*making)->Finish(settings) : Status{making.Error()};
    } else {
        DiscComparison comparison;
        done = CompareWithSources(image, settings.items, {}, nullptr, comparison);
    }
    if (!done)
        std::fprintf(stderr, "%s\n", done.Error().sentence.c_str());
    return done ? 0 : 1;
}
