#include "session/settings.h"
#include "words/cli.h"
#include "words/common.h"
#include "world/speaking.h"
#include "world/world.h"

namespace kestrova::testing
{

TEST(Languages, EachIsSpokenAsTheSettingsSay)
{
    World world;
    ProgramSettings settings = DefaultSettings();
    std::set<std::string> shown;
    for (const Language& language : Languages()) {
        settings.language = language.code;
        ASSERT_TRUE(WriteSettings(world.session.programFolder, settings));
        SpeakAsSet(world.session.programFolder);
        EXPECT_EQ(SpokenLanguage(), language.code);
        shown.insert(GetMsg(Msg::BreakUser));
        EXPECT_EQ(Told(Msg::BreakUser), "Break user");
    }
    EXPECT_EQ(shown.size(), Languages().size()) << "one of them has no catalogue";
    // What a newer version may have set is told English here, and stays in the file.
    settings.language = "eo";
    ASSERT_TRUE(WriteSettings(world.session.programFolder, settings));
    SpeakAsSet(world.session.programFolder);
    EXPECT_EQ(SpokenLanguage(), "en");
    EXPECT_EQ(ReadSettings(world.session.programFolder).Value().language, "eo");
    Speak("en");
}

TEST(Languages, ThePlainChoiceLeavesNoTraceInTheSettings)
{
    World world;
    ASSERT_TRUE(WriteSettings(world.session.programFolder, DefaultSettings()));
    EXPECT_EQ(world.Read("home/kestrova.ini").find("language"), std::string::npos);
}

} // namespace kestrova::testing
