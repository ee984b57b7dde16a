#include "app/doctor.h"

#include "support/tool_box.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

TEST(Doctor, NamesWhatOfPackagesCouldNotBeRemoved)
{
    ToolBox box;
    box.MakeTrle();
    box.MakeBackupAndArchive();
    const auto told = [&] {
        std::string states;
        for (const Finding& finding : Examine(box.session))
            if (finding.state.find("could not be removed") != std::string::npos)
                states += finding.state;
        return states;
    };
    for (const char* other : {".kv~backup_new", ".kv~", ".kv~lock", "swap"})
        std::filesystem::create_directories(box.session.programFolder / other);
    EXPECT_EQ(told(), "");
    std::filesystem::create_directories(box.session.programFolder / ".kv~1f3-2/dd");
    EXPECT_NE(told().find(".kv~1f3-2"), std::string::npos);
}

} // namespace

} // namespace kestrova::testing
