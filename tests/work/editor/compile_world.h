#pragma once

#include "swap/recovery.h"
#include "world/tool_box.h"

namespace kestrova::testing
{

/// A Level Editor's folder whose compilers are links to scripts that lie where programs may be
/// started from.
class CompileWorld : public ToolBox
{
public:
    CompileWorld()
    {
        session.programFolder = root / "home";
        MakeTrle();
        MakeBackupAndArchive();
    }

    /// Makes `place` of the Level Editor's folder a program.
    void AddCompiler(const std::string& place, const std::string& script)
    {
        const Path program = AddTool(Path{place}.filename().native(), script);
        std::filesystem::create_symlink(program, root / "trle" / place);
    }

    /// What stands in the Level Editor's folder now, the compilers left out.
    [[nodiscard]] FileContents Standing() const
    {
        FileContents files = Snapshot("trle");
        files.erase("tom2pc.exe");
        files.erase("script/script.exe");
        return files;
    }
    [[nodiscard]] bool LoanWaitsHere() const { return FileExists(root / "home/swap/lent"); }
};

} // namespace kestrova::testing
