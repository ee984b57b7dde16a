#pragma once

#include "core/files.h"

namespace kestrova
{

/// A drive, as far as a search for discs needs it.
struct DiscDrive {
    std::string name;  ///< what a person calls it
    std::string label; ///< of the disc in it; empty when it has none, or none is known
    bool holdsDisc = false;
    Path folder; ///< where the disc's files are seen now; empty: nowhere yet
};

/// Where discs may lie.
class DiscPlaces
{
public:
    virtual ~DiscPlaces() = default;
    /// As they are now.
    virtual std::vector<DiscDrive> Drives() = 0;
    /// The folder in which the files of that drive's disc are seen from now on.
    virtual Result<Path> Open(const DiscDrive& drive) = 0;
    /// The same of an image, a file that lies in no drive.
    virtual Result<Path> OpenImage(const Path& image) = 0;
    /// What is written on an image as its label; empty for a file that is none.
    virtual std::string LabelOf(const Path& image) = 0;
    /// A drive's lid was shut a moment ago: the disc's files may take that long to be seen.
    virtual void WaitForDisc() = 0;
};

} // namespace kestrova
