#include "session/settings.h"

#include "check.h"
#include "core/staged_file.h"
#include "work_folder.h"

using namespace kestrova;
using namespace kestrova::fuzz;

namespace
{

bool Same(const ProgramSettings& a, const ProgramSettings& b)
{
    return a.wineCommand == b.wineCommand && a.wineWords == b.wineWords &&
           a.historyCount == b.historyCount && a.historyMegabytes == b.historyMegabytes &&
           a.undoCount == b.undoCount && a.undoMegabytes == b.undoMegabytes &&
           a.exactFolders == b.exactFolders;
}

} // namespace

/// `kestrova.ini`: any file gives settings, which are written and read the same, twice.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const WorkFolder folder;
    const Path file = folder.path / "kestrova.ini";
    Promise(bool{WriteWholeFile(file, TextOfInput(data, size))}, "the input is written");
    const auto settings = ReadSettings(folder.path);
    Promise(bool{settings}, "any file gives settings");
    Promise(settings->historyCount >= 0 && settings->historyMegabytes >= 0, "bounds make sense");
    Promise(bool{WriteSettings(folder.path, *settings)}, "settings are written");
    const auto again = ReadSettings(folder.path);
    Promise(again && Same(*again, *settings), "what was written reads the same");
    return 0;
}
