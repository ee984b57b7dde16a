#pragma once

#include "burning/burn_error.h"
#include "burning/burn_items.h"
#include "burning/burn_settings.h"
#include "burning/drive_commands.h"
#include "core/files.h"
#include "core/result.h"
#include "formats/iso_listing.h"
#include "session/machine.h"
#include "session/settings.h"
#include "tools/tools.h"

#include <string>
#include <vector>

/// The disc engine: from a list of paths to an image and a disc, through the tools that are there.
namespace kestrova
{

enum class CwCommand {
    MakeImage = 1,
    BurnImage = 2,
    BurnWithoutImage = 3, ///< through a pipe; no image touches the disk
    Size = 5,             ///< result: `size`, `bytes`
    FindWriter = 6,       ///< result: `text`, the drive's name; the settings' device is set
    DefaultImagePath = 7, ///< result: `path`
    Reset = 8,            ///< the settings are empty; a number, or AUTO, is the speed
    AddItem = 9,
    AddNoItem = 10,
    RemoveItem = 11, ///< by its source
    RemoveNoItem = 12,
    SizeImageKept = 13,      ///< as `Size`, with the image that stays on the disk counted again
    Blank = 14,              ///< "all" or "fast"
    ListFolder = 15,         ///< result: `names`
    ScanFolder = 16,         ///< with all below it; result: `names`
    AbsolutePath = 17,       ///< of an item; result: `text`
    FolderBytes = 18,        ///< result: `size`
    RelativePath = 19,       ///< of an item; result: `text`
    LargestDrive = 20,       ///< result: `path`, `bytes`
    FreeSpaceOnUnit = 21,    ///< result: `bytes`
    AddAutoRunInf = 22,      ///< the program's item; "NotAddFile" leaves it out of the items
    ReportImage = 23,        ///< "FlatList", "TreeList" or "ReferenceList"; result: `text`, `files`
    ReportItems = 24,        ///< "Source" or "Target"; result: `text`
    VerifyCd = 25,           ///< "Fast" or "All"
    RelativePathOfFile = 26, ///< of a file of an item; result: `text`
    DeleteImage = 27,
    OpenDoor = 29, ///< of the drive of that name
    CloseDoor = 30
};

/// What a command found out; empty before each.
struct BurnResult {
    std::string text{};
    std::vector<std::string> names{};
    Path path{};
    std::vector<DiscEntry> files{}; ///< of an image
    double size = 0;                ///< the answer as `Size` has always given it
    std::uint64_t bytes = 0;        ///< what a disc, or the disk, really has to take
};

/// The engine. No command may be given while another one runs.
class BurnCd
{
public:
    BurnCd(Host& host, Machine& machine, const Tools& tools, const ProgramSettings& drives);

    /// The one door. False leaves its words in `error`; a stop is `BurnCode::Stopped`.
    bool Command(CwCommand command, const std::string& argument1 = {},
                 const std::string& argument2 = {});
    /// `AddItem` for a path with any letters in it.
    bool Add(const BurnItem& item);
    /// The failure of the last command as a status: `Stopped` for a stop, title and detail as its
    /// sentence, the tool's output as its details.
    [[nodiscard]] Status LastStatus() const;

    BurnSettings settings{};
    BurnError error{};
    BurnResult result{};

private:
    bool Run(CwCommand command, const std::string& argument1, const std::string& argument2);
    bool Fail(std::string title, std::string detail, BurnCode code = BurnCode::None);
    bool Take(const Refusal& refusal);
    bool Take(const Status& status, std::string title);
    bool Reset(const std::string& speed);
    bool TellOfFolder(CwCommand command, const std::string& folder);
    bool TellOfItem(CwCommand command, const std::string& text);
    bool AddAutoRun(const std::string& program, const std::string& option);
    bool MakeImage();
    [[nodiscard]] DriveParts Parts() const;
    bool TellOfSize(CwCommand command);
    bool TellOfRoom(CwCommand command, const std::string& unit);
    [[nodiscard]] Path ImagePath() const;
    [[nodiscard]] Heartbeat Heart() const;

    Host& host_;
    Machine& machine_;
    Tools tools_;
    const ProgramSettings& drives_;
    bool failed_ = false; ///< the last command
};

} // namespace kestrova
