#pragma once

#include "archive/level_folders.h"
#include "discs/disc_places.h"
#include "discs/disc_shelf.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

/// Drives and images that are folders of a sandbox.
class FakePlaces : public DiscPlaces
{
public:
    std::vector<DiscDrive> drives;
    std::map<Path, Path> images; ///< the folder that an image opens as
    std::map<Path, std::string> labels;
    std::function<void()> waited;
    int opened = 0;

    std::vector<DiscDrive> Drives() override { return drives; }
    Result<Path> Open(const DiscDrive& drive) override { return drive.folder; }
    Result<Path> OpenImage(const Path& image) override
    {
        ++opened;
        const auto found = images.find(image);
        return found == images.end() ? Result<Path>{MakeFailure(ErrorCode::Missing, TextOf(image))}
                                     : found->second;
    }
    std::string LabelOf(const Path& image) override { return labels[image]; }
    void WaitForDisc() override
    {
        if (waited)
            waited();
    }
};

/// An archive of which some levels lie on discs: folders below `discs`.
class DiscWorld : public World
{
public:
    FakePlaces places;
    DiscWindows windows;
    std::unique_ptr<DiscShelf> shelf;

    DiscWorld()
    {
        MakeTrle();
        MakeBackupAndArchive();
        session.archive.header.mainFolder = "D:\\levels";
        NewShelf();
    }
    void NewShelf()
    {
        shelf = std::make_unique<DiscShelf>(host, machine, places, windows);
        session.discs = shelf.get();
    }
    /// A level whose files lie on the disc of that number alone, in the root `discs/ROOT`.
    LevelCode AddOnDisc(const std::string& name, std::int32_t number, const std::string& discRoot,
                        const std::map<std::string, std::string>& files)
    {
        const LevelCode code = AddLevel(name, {});
        LevelRecord& level = session.archive.levels.back();
        level.cdNumber = number;
        session.archive.header.cdCount = std::max(session.archive.header.cdCount, number);
        std::filesystem::remove(InFolder(LevelHomeOf(session.Folders(), code), "\\files"));
        for (const auto& [file, content] : files)
            Write(DiscPlace(discRoot, number, code) + "/files/" + file, content);
        return code;
    }
    static std::string DiscPlace(const std::string& discRoot, std::int32_t number, LevelCode code)
    {
        return "discs/" + discRoot + "/levels" + std::to_string(number) + "/LEVEL_" +
               ZeroPadded(code, 4);
    }
    DiscDrive DriveWith(const std::string& discRoot) const
    {
        return {"sr-" + discRoot, {}, true, root / "discs" / discRoot};
    }
    Result<Path> Find(LevelCode code, DiscWish wish = DiscWish::Ask)
    {
        return LevelFolderOf(session.Folders(), session.archive, code, wish);
    }
};

} // namespace kestrova::testing
