#pragma once

#include "session/host.h"

/// The Level Editor's folder as the game sees it: a link to a folder (`DATA` on another disk) is
/// part of it.
namespace kestrova
{

/// Something of a tree behind which nobody can look.
struct Unseen {
    Path name;
    std::error_code reason;
};
/// Everything below a folder, as paths relative to it; links are gone through, circles are not. A
/// link that leads nowhere and a folder that cannot be listed are failures: what they stand for
/// would be missing, unsaid.
struct LinkedTree {
    std::vector<Path> folders; ///< parents before their children, without the folder itself
    std::vector<Path> files;
    std::vector<Unseen> unseen{}; ///< such links and folders, for who asks for them
    std::vector<Path> links{};    ///< those to folders that were not gone through
};
enum class UnseenParts { Fail, AreListed };
/// Whether this link to a folder, a path relative to the tree, is gone through.
using GoesThrough = std::function<bool(const Path& link)>;
Result<LinkedTree> ScanThroughLinks(const Path& folder, const Heartbeat& heartbeat = {},
                                    UnseenParts unseenParts = UnseenParts::Fail,
                                    const GoesThrough& goesThrough = {});

/// Where the content of a file comes from, which is `file` itself as a rule; empty: it is left out.
using PickSource = std::function<Path(const Path& file)>;

/// Copies the tree with plain folders in place of links, every file compared with its source, the
/// bar following the bytes. A Stop of the progress ends it; what was copied stays then.
Status CopyThroughLinks(const Path& source, const Path& target, ProgressScope& progress,
                        const PickSource& pick);

} // namespace kestrova
