#pragma once

#include "core/names.h"
#include "session/host.h"
#include "tools/tool.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// What goes onto a disc, and how it gets there.
namespace kestrova
{

/// One path to put on a disc. As text it is `target=source`, or the source alone.
struct BurnItem {
    /// Where it comes on the disc: relative, parted by "/". With a "/" at its end it is a folder,
    /// into which the source's files come, or the source itself when that is a file. Empty: the
    /// disc's root, under the source's own name.
    std::string target{};
    Path source{}; ///< absolute

    bool operator==(const BurnItem&) const = default;
};

/// Where a disc is written.
struct BurnDevice {
    Path place{};          ///< the device, or the file that stands for an emulated drive's medium
    bool emulated = false; ///< `place` is a file
    std::uint64_t capacity = 0; ///< bytes that its medium takes; 0: nobody knows
    std::string drive{};        ///< the name of the drive, by which it is asked whether it is ready
};

/// What the commands of the engine work by, for a whole run. Texts longer than their field on the
/// disc are refused by the command that would write them.
struct BurnSettings {
    std::string applicationId{};    ///< up to 128 letters
    std::string publisher{};        ///< 128
    std::string preparer{};         ///< 128
    std::string volumeId{};         ///< 32; the disc's label
    std::string volumeSetId{};      ///< 128
    std::string abstractFile{};     ///< 37; the name of a file at the disc's root
    std::string bibliographyFile{}; ///< 37
    std::string copyrightFile{};    ///< 37
    std::vector<BurnItem> items{};  ///< added by `AddItem`, which holds their rules
    std::vector<Path> noItems{};  ///< what is left out of them: a file, or a folder with all below
    bool autoFolder = true;       ///< a folder without a target keeps its name on the disc
    ToolArguments imageOptions{}; ///< behind the other words for the tool that makes images
    Path image{};                 ///< where the image goes; empty: the usual place
    bool keepImage = false;       ///< the image stays after the burn
    int speed = 2;                ///< or the last that a tool told; 0: as fast as the drive likes
    BurnDevice device{};
    bool dummy = false;          ///< all but the laser
    bool eject = false;          ///< the door opens afterwards
    ToolArguments burnOptions{}; ///< further words for the tool that burns
    bool overburn = false;
    bool burnproof = false;
    /// Its label and bar tell of the work, its Stop ends it when that is allowed; null: nobody
    /// looks.
    ProgressScope* progress = nullptr;
    bool stopAllowed = true;
    /// A tool that has been silent for so long can be stopped in any case.
    std::chrono::milliseconds quietLimit = std::chrono::seconds{20};
    /// Called some twenty times a second while a tool runs: whoever makes the image of the next
    /// disc meanwhile polls it here.
    std::function<void()> meanwhile{};
};

} // namespace kestrova
