#pragma once

#include "core/copying.h"
#include "session/folders.h"
#include "session/host.h"
#include "session/machine.h"

#include <optional>

/// Which wads a tom file is compiled with: those of its own stem, or a set that it is linked with,
/// which then lies beside it under that stem.
namespace kestrova
{

/// A wish for a link.
struct WadLink {
    std::string tom;  ///< a tom file
    std::string wads; ///< the pattern of a set of wads, `city.*`
};

/// `mill.tom=city`, `mill=city.wad` or `mill=city.*`; no value for a word that is no such wish.
std::optional<WadLink> WadLinkFromWord(const std::string& word);

/// The documents of a folder, full paths: by kind, in the order of `DocumentPatterns`, each kind by
/// name. Sources of the game's scripts are none.
Result<std::vector<Path>> ListDocFiles(const Path& folder);

/// True when the tom file's wad lies beside it or among the Level Editor's own.
Result<bool> TomHasWad(const Folders& folders, const Path& tom);
/// The same; tells of a tom file without.
bool TomHasWadOrTold(Host& host, const Folders& folders, const Path& tom);

/// Number of leading characters in which both agree, without regard to case.
std::size_t CommonPrefixLength(std::string_view a, std::string_view b);

/// What became of a link.
struct LinkedSet {
    std::size_t matching = 0; ///< files of the set; none: there are no such wads
    std::size_t copied = 0;   ///< of them; none: the tom file has wads of its own
};

/// Copies the files that match `wadsPattern` (`city.*`) into `workFolder` under the stem of
/// `tomName`: those of the Level Editor's wads, or else of `workFolder` itself. What is there
/// already stays. `Refused`
/// for a tom name that no file of a level can have, `NoSpace`, in words, when the copies would fill
/// the disk. `progress` gets the bytes of the file under way; False stops. What fails or is stopped
/// leaves no copy of its own.
Result<LinkedSet> LinkWads(Machine& machine, const Folders& folders, const Path& workFolder,
                           std::string_view wadsPattern, std::string_view tomName,
                           const std::function<bool(std::uint64_t)>& progress = {});

} // namespace kestrova
