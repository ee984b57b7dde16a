#include "app/file_types.h"

#include "world/tool_box.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

/// A person's first start with the usual folder of the program.
class FileTypesWorld : public ToolBox
{
public:
    FileTypesWorld()
    {
        ::setenv("XDG_DATA_DIRS", (root / "shared").c_str(), 1);
        const Path updater = AddTool("update-mime-database", "touch $1/globs2");
        session.programFolder = root / "person/.local/share/kestrova";
        machine.tools["update-mime-database"] = updater;
        std::filesystem::create_directories(session.programFolder);
    }
    ~FileTypesWorld() { ::unsetenv("XDG_DATA_DIRS"); }
};

TEST(FileTypes, AreOfferedWhereNobodyHasToldTheDesktop)
{
    constexpr const char* told = "person/.local/share/mime/packages/kestrova.xml";
    FileTypesWorld world;
    world.host.WillAsk("Shall a double click on one open it", false);
    OfferFileTypes(world.session);
    EXPECT_FALSE(world.Has(told));
    world.host.WillAsk("Shall a double click on one open it", true);
    OfferFileTypes(world.session);
    EXPECT_TRUE(world.Has(told)) << world.host.AllTold();
    EXPECT_TRUE(world.Has("person/.local/share/mime/globs2"));
    OfferFileTypes(world.session); // it is known now; a question would fail

    FileTypesWorld packaged;
    packaged.Write("shared/mime/packages/kestrova.xml", "of the package");
    OfferFileTypes(packaged.session);
    FileTypesWorld bare; // nothing would come of it
    bare.machine.tools.clear();
    OfferFileTypes(bare.session);
    FileTypesWorld elsewhere; // a home of scripts and of practice
    elsewhere.session.programFolder = elsewhere.root / "home";
    OfferFileTypes(elsewhere.session);
}

} // namespace

} // namespace kestrova::testing
