#include "burning/content_check.h"
#include "burning/image_making.h"
#include "platform/process.h"

#include <cstdio>
#include <string_view>

/// What the disc engine does with a folder: `bench_discs image FOLDER IMAGE` makes its image,
/// `bench_discs compare FOLDER IMAGE` reads that back and compares it.

using namespace kestrova;

int main(int count, char** words)
{
    if (count != 4) {
        std::fprintf(stderr, "usage: bench_discs image|compare FOLDER IMAGE\n");
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
