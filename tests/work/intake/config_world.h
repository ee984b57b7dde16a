#pragma once

#include "archive/level_folders.h"
#include "editor/compile_world.h"
#include "intake/add_level.h"
#include "intake/draft_sources.h"
#include "intake/intake_steps.h"
#include "packages/level_config_file.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

/// A level in the folder `in`, and what its author's configuration file says.
class ConfigWorld : public CompileWorld
{
public:
    ConfigWorld()
    {
        session.preferences.checkEqualLevels = false;
        progress = host.BeginProgress(ProgressWindow::Progress, {});
        config.name = "Level of needs";
    }

    [[nodiscard]] bool WriteConfig(const std::string& relative) const
    {
        return static_cast<bool>(WriteLevelConfig(root / relative, config));
    }
    /// A level on its way in, without files.
    Intake& Open()
    {
        record = {};
        record.levelCode = NextLevelCode(session.archive);
        std::filesystem::remove_all(LevelHomeOf(session.Folders(), record.levelCode));
        EXPECT_TRUE(MakeLevelSubfolders(LevelHomeOf(session.Folders(), record.levelCode)));
        opened.emplace(session, record, NewLevelSteps(), *progress);
        EXPECT_TRUE(OpenNewLevel(*opened)) << host.AllTold();
        return *opened;
    }
    void AddSourcesTo(Intake& level, const std::vector<std::string>& relative) const
    {
        std::vector<Path> sources;
        for (const std::string& source : relative)
            sources.push_back(root / source);
        EXPECT_TRUE(AddSources(level, sources, Subfolders::Take));
    }
    /// A refresh that finds the configuration file in the level's folder.
    void ApplyTo(Intake& level) const
    {
        EXPECT_TRUE(WriteConfig("kestrova.cfg"));
        std::filesystem::copy(root / "kestrova.cfg", level.draft.workFolder / "kestrova.cfg");
    }
    /// Everything in `in`, with the configuration file, becomes a level on its way in.
    bool Add()
    {
        std::filesystem::create_directories(root / "in");
        EXPECT_TRUE(WriteConfig("in/kestrova.cfg"));
        return bool{AddSources(Open(), {root / "in"}, Subfolders::Take)};
    }
    [[nodiscard]] const LevelDraft& Draft() const { return opened->draft; }
    /// What the level on its way has.
    [[nodiscard]] FileContents Files() const
    {
        return Snapshot(Draft().workFolder.lexically_relative(root).native());
    }

    LevelConfig config;
    std::unique_ptr<ProgressScope> progress;
    LevelRecord record;
    std::optional<Intake> opened;
};

} // namespace kestrova::testing
