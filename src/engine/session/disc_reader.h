#pragma once

#include "session/archive.h"

#include <optional>

namespace kestrova
{

/// What may be done to find a disc.
enum class DiscWish {
    Ask,   ///< the person is asked to insert it
    Look,  ///< only what lies in a drive now, or in a folder of images
    Prove, ///< the same, and the level's files there are compared with what was put on the disc
};

/// How an archive that lies on discs comes to this computer.
struct DiscSetup {
    Path folder;       ///< the person's choice; the archive gets a folder of its own in it
    bool full = false; ///< the files of the levels come too; otherwise they stay on their discs
};

/// Finds the discs that hold files of an archive's levels.
class DiscReader
{
public:
    virtual ~DiscReader() = default;
    /// The folder of the disc on which that level's folder lies. `Missing`, in words, while that
    /// disc is not there, `Damaged` when it is there alone with other files than were put on it;
    /// `Stopped` when the person was asked for it and gave up.
    virtual Result<Path> FolderOfDisc(const Archive& archive, const LevelRecord& level,
                                      DiscWish wish) = 0;
    /// The root of the disc, or of an image's folder, in which the file lies; no value when it lies
    /// on no disc. From then on levels are looked for there too.
    virtual std::optional<Path> DiscOf(const Path& file) = 0;
    /// The root of an image, a file that holds what a disc does; the levels on it are found from
    /// then on, and those of images beside it.
    virtual Result<Path> RootOfImage(const Path& image) = 0;
    /// An image of one of the archive's discs, which is found in later runs too.
    virtual Status TakeImage(const Archive& archive, const Path& image) = 0;
    /// Asks how an archive is set up whose file lies on a disc. `Stopped` when the person gave up;
    /// `Refused`, in words, where nobody can be asked.
    virtual Result<DiscSetup> AskForSetup(const Archive& archive) = 0;
};

} // namespace kestrova
