#pragma once

#include "editor/setup_run.h"
#include "pictures/convert.h"
#include "world/tool_box.h"
#include "world/zip_builder.h"

namespace kestrova::testing
{

/// A compiler that makes a level of its tom file.
inline const std::string compilesTom =
    "mkdir -p data; cp \"$1\" data/\"$(basename \"$1\" .tom)\".tr4";

/// A small setup of a Level Editor, and a person to whom it comes.
class SetupWorld : public ToolBox
{
public:
    SetupWorld()
    {
        session.programFolder = root / "home";
        machine.drives = {{root, UINT64_C(1) << 40, true}};
        std::filesystem::create_directories(root / "home");
        session.preferences.trlePath.clear();
        wish.target = root / "person/Spiele ü/trle";
        MakeSource();
    }

    SetupWish wish;
    Path target;

    /// The source without music: `source/trle`.
    void MakeSource()
    {
        Write("source/trle/tomb4.exe", "the game");
        Write("source/trle/winroomedit.exe", "the room editor");
        Write("source/trle/graphics/wads/city.tom", "city source");
        Write("source/trle/script/Script.dat", "script");
        for (const char* language : {"english", "german"})
            Write("source/trle/script/" + std::string{language} + ".dat", language);
        for (const char* manual : {"manual_eng.pdf", "manual_ger.pdf"})
            Write("source/trle/Manual/" + std::string{manual}, manual);
        for (const char* picture : {"load_eng.jpg", "load_fr.jpg"})
            EXPECT_TRUE(SaveAsJpeg({2, 2, std::vector<std::uint8_t>(12, 200)},
                                   root / "source/trle" / picture));
        Write("source/trle/Core Design.url.tmp",
              "[InternetShortcut]\r\nURL=http://levels.example/\r\n");
        for (int track = 0; track < 54; ++track)
            Write("source/trle/audio/" + ZeroPadded(track, 3) + ".wav", "wave");
        Write("source/trle/list.txt", "trle\\tomb4.exe\r\n\\Audio\\000.WAV\r\n"
                                      "manual\\manual_ger.pdf\r\nload_fr.jpg\r\n");
        AddProgram("source/trle/tom2pc.exe", compilesTom);
    }
    /// Makes `place` a program. Programs lie where they may be started from, and a setup copies no
    /// links, so each is a small script of its own that starts one.
    void AddProgram(const std::string& place, const std::string& script)
    {
        Write(place, "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions(root / place, std::filesystem::perms::owner_all);
    }
    /// All of the source as a zip.
    Path Zip(const std::string& name = "trle setup.zip")
    {
        std::vector<BuiltEntry> entries;
        for (const auto& [file, content] : Snapshot("source")) {
            BuiltEntry entry{file, content};
            entry.mode = file.ends_with(".exe") ? 0100755 : 0100444;
            entries.push_back(std::move(entry));
        }
        Write(name, BuildZip(entries));
        return root / name;
    }
    void WantFolder()
    {
        wish.folder = root / "source";
        wish.fromZips = false;
    }
    void WantZips(const std::vector<Path>& zips)
    {
        wish.zips = zips;
        wish.fromZips = true;
    }

    bool SetUp()
    {
        const auto progress = host.BeginProgress(ProgressWindow::Progress, {});
        return SetupLevelEditor(session, wish, *progress, target);
    }
};

} // namespace kestrova::testing
