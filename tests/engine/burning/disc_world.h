#pragma once

#include "burning/burn_cd.h"
#include "burning/content_check.h"
#include "burning/image_making.h"
#include "world/tool_box.h"

namespace kestrova::testing
{

/// A world with the real tools for discs, and a few files that are hard to put on one.
class BurningWorld : public ToolBox
{
public:
    BurningWorld()
    {
        UseDiscTools({"xorriso"});
        Write("level/data/level1.tr4", std::string(300'000, 'L') + "end");
        Write("level/a=b/c=d.txt", "graft");
        Write("level/back\\slash.txt", "slash");
        Write("level/empty.dat", "");
        Write("level/Zażółć 日本語.txt", "letters");
        Write("level/" + std::string(100, 'n') + ".wad", "long");
        std::filesystem::create_directories(root / "level/nothing here");
        items = {{"Kestrova1/LEVEL_0001/files/", root / "level"}};
    }

    void UseDiscTools(const std::vector<std::string>& names)
    {
        machine.tools.clear();
        for (const std::string& name : names)
            machine.tools[name] = platform::FindOnPath(name);
    }

    BurnCd Engine() { return {host, machine, ToolsOf(session), session.settings}; }
    [[nodiscard]] BurnSettings Settings() const
    {
        BurnSettings settings;
        settings.items = items;
        settings.volumeId = "Kestrova #1";
        return settings;
    }
    Status Make(const Path& image, const BurnSettings& settings)
    {
        auto making = ImageMaking::Start(ToolsOf(session), settings, image);
        return making ? (*making)->Finish(settings) : Status{making.Error()};
    }
    Status Compare(const Path& image)
    {
        return CompareWithSources(image, items, {}, nullptr, comparison);
    }

    std::vector<BurnItem> items;
    DiscComparison comparison;
};

} // namespace kestrova::testing
