#pragma once

#include "core/result.h"
#include "session/host.h"
#include "session/machine.h"

#include <string>

namespace kestrova
{

/// The longest list of addresses, and the longest configuration file or package with one.
inline constexpr std::uint64_t longestList = UINT64_C(64) << 20;
inline constexpr std::uint64_t longestConfig = UINT64_C(64) << 20;

struct Download {
    std::string url;
    Path target;
    std::uint64_t most = 0; ///< bytes; 0: no bound
    bool takesPages = true; ///< a server's page in place of the file becomes the file
    bool keepsParts = true; ///< what came of one that ends early is gone on with later
};

struct Downloaded {
    int status = 0; ///< the server's answer; for 404 and its kin the file is its page about that
    std::uint64_t size = 0;
};

/// Fetches one address into one file, label and bar following, with a Stop that is heard within
/// half a second whatever the server does. The target is replaced by a whole file only, whose mode
/// it keeps; what came of one that was stopped or cut stays beside it and is gone on with. A page
/// that a server sends in place of the file is a file like any other, or else leaves the target
/// alone (`takesPages`): who finds no use in it says what the server answered.
///
/// What the disk refuses is told here. What network or server refuse (`CannotRead`) is the caller's
/// to tell, who may have another address; so is `Stopped`, whose reason says what the next download
/// begins with.
Result<Downloaded> DownloadFile(Host& host, Machine& machine, const Download& download);
/// Whether a download's failure is the caller's to tell: network or server refused it.
bool IsOfTheWeb(const Failure& failure);

/// The words for a file that did not hold what it was fetched for: empty for an answer that is
/// fine.
std::string AnswerWords(const Downloaded& downloaded);

} // namespace kestrova
