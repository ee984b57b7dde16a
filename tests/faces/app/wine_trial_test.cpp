#include "app/wine_trial.h"

#include "world/tool_box.h"
#include "world/windows_program.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

TEST(WineTrial, SaysWhatIsThereAndWhatIsMissing)
{
    ToolBox box;
    box.MakeTrle();
    box.session.preferences.trlePath = (box / "trle").native();
    box.session.preferences.tombExeName = "tomb4.exe";
    ProgramSettings settings = box.session.settings;

    settings.wineCommand = "wine-of-nobody";
    EXPECT_FALSE(TryWine(box.session, settings));
    EXPECT_TRUE(box.host.WasTold("'wine-of-nobody', which should start Windows programs"));

    // A command that says its version, and is not called like Wine, may start anything.
    settings.wineCommand = box.AddTool("starter", "[ \"$1 $2\" = \"-q --version\" ] && "
                                                  "echo wine-8.0 '(Debian)'")
                               .native();
    settings.wineWords = "-q";
    box.Write("trle/tomb4.exe", WindowsProgram(machine32));
    EXPECT_TRUE(TryWine(box.session, settings)) << box.host.AllTold();
    EXPECT_EQ(box.host.told.back().tone, Tone::Plain);
    for (const char* part : {"starter answers: wine-8.0 (Debian)", "can start 32-bit programs",
                             "The game can be started: tomb4.exe"})
        EXPECT_NE(box.host.told.back().reason.find(part), std::string::npos)
            << part << " in " << box.host.told.back().reason;
    EXPECT_EQ(box.session.settings.wineCommand, "wine") << "a trial keeps nothing";

    // Wine itself, without its 32-bit part, would end at once and say nothing.
    settings.wineCommand = box.AddTool("wine", "exit 3").native();
    EXPECT_FALSE(TryWine(box.session, settings));
    EXPECT_EQ(box.host.told.back().tone, Tone::Warning);
    for (const char* part : {"did not tell its version", "no 32-bit part", "cannot be started"})
        EXPECT_NE(box.host.told.back().reason.find(part), std::string::npos)
            << part << " in " << box.host.told.back().reason;
}

} // namespace kestrova::testing
