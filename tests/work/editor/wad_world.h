#pragma once

#include "editor/compile_world.h"
#include "editor/wad_import.h"
#include "editor/wad_undo.h"
#include "originals/undo_import.h"

#include <fstream>

namespace kestrova::testing
{

/// A Level Editor's folder with scripts in two languages and a builder's own files, its backup, and
/// a package that brings one new level.
class WadWorld : public CompileWorld
{
public:
    /// What the compilers write, from what they read.
    static constexpr const char* compileTom =
        "n=$(basename \"$1\" .tom); cat graphics/wads/$n.wad >DATA/$n.tr4";
    static constexpr const char* compileScript =
        "cat script.txt >script.dat; for f in english german; do [ ! -e $f.txt ] || cat $f.txt "
        ">$f.dat; done";

    WadWorld()
    {
        session.preferences.tom2PcName = "tom2pc.exe";
        for (const char* tree : {"trle/", "home/backup_trle/"}) {
            const std::string at = tree;
            std::filesystem::remove_all(root / at / "script");
            std::filesystem::remove(root / at / "English.DAT");
            Write(at + "german.dat", "old german");
            Write(at + "maps/old/old.prj", "an old project");
            Write(at + "graphics/wads/city.wad", "the original city");
            Write(at + "graphics/wads/mill.tom", "the original mill");
            Write(at + "graphics/wads/mill.wad", "the original mill's wad");
            Write(at + "DATA/mill.tr4", "the original mill's level");
            Write(at + "Sound/LevelSfx Creator/sounds.txt", "old sounds");
            Write(at + "script/script.txt",
                  "; header\r\n[Level]\r\nName= Old Town\r\nLevel= DATA\\old,101\r\n");
            Write(at + "script/german.txt", "before\r\n[Strings]\r\nAltstadt\r\nLeer\r\n"
                                            "[PSXStrings]\r\nbehind\r\n");
            Write(at + "script/english.txt", "[Strings]\r\nOld Town\r\nEmpty\r\n[PSXStrings]\r\n");
            Write(at + "script/script.dat", "old script");
            Write(at + "script/german.dat", "old german");
        }
        Write("trle/graphics/wads/city.wad", "the builder's own city");
        Write("trle/script/script.txt",
              "; header\r\n[Level]\r\nName= Mine\r\nLevel= DATA\\mine,101\r\n");
        AddCompiler("tom2pc.exe", compileTom);
        AddCompiler("script/script.exe", compileScript);
        package = {
            {"city.tom", "new city"},
            {"city.wad", "new city's wad"},
            {"mill.wad", "new mill's wad"},
            {"yard.prj", "a project"},
            {"yar_1.tga", "its texture"},
            {"SCRIPT.TXT", "[Level]\r\nName= The City\r\nLevel= DATA\\city,102\r\n"},
            {"english.txt", "[Strings]\r\nOld Town\r\nThe City\r\n[PSXStrings]\r\n"},
            {"sounds.TXT", "new sounds"},
            {"script.exe", "a stranger's program"},
            {"objects.h", "a header"},
        };
        before = Both();
    }

    /// The import of the package, as its window does it.
    bool Import(const AskLevelName& askName = {})
    {
        const auto progress = host.BeginProgress(ProgressWindow::Progress, {});
        WadImport import{session, *progress};
        if (!import.Prepare())
            return false;
        for (const auto& [name, content] : package)
            std::ofstream{root / "home/temp" / name} << content; // no fault is the package's
        import.AddSubject("new wads.zip");
        if (!import.Refresh())
            return false;
        import.Run(askName);
        report = import.Report();
        return import.IsDone();
    }

    /// Both trees, the compilers left out.
    [[nodiscard]] FileContents Both() const
    {
        FileContents files;
        for (const auto& [name, content] : Standing())
            files["trle/" + name] = content;
        for (const auto& [name, content] : Snapshot("home/backup_trle"))
            files["backup/" + name] = content;
        return files;
    }

    FileContents package;
    FileContents before;
    std::string report;
};

} // namespace kestrova::testing
