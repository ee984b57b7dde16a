#pragma once

#include "formats/disc_note.h"
#include "session/archive.h"
#include "session/folders.h"
#include "swap/verify_level.h"

#include <map>
#include <set>
#include <unordered_map>

namespace kestrova
{

/// What the archive's discs hold of its levels, by the note of them. A disc that lies in no drive,
/// and whose image is not at hand, is passed over; nobody is asked for it.
class DiscSources
{
public:
    DiscSources(const Folders& folders, const Archive& archive)
        : folders_(folders), archive_(archive)
    {
    }

    struct OnDisc {
        Path file;
        std::string label; ///< of the disc
    };
    /// Files at hand that had this content when they were put on their disc, those of the level
    /// first. Whether they still have it is for the caller to see.
    std::vector<OnDisc> Holding(LevelCode code, const std::string& hash);

    /// What a file of which nothing was noted when it was stored is to hold, by a disc that was
    /// made of the level: all that stands in its folder, but for the files with faults, is as it
    /// was put there, since another level of that number may have been put on a disc once.
    void NoteFault(LevelCode code, const std::set<std::string>& faulty, LevelFault& fault);

private:
    struct Place {
        std::int32_t disc = 0;
        LevelCode code = 0;
        std::string name;
    };

    void Read();
    /// The level's `files` on that disc; empty while it is not at hand.
    const Path& FilesOn(std::int32_t disc, LevelCode code);
    bool StandsAsNoted(LevelCode code, const std::set<std::string>& faulty,
                       const NotedLevel& noted);

    const Folders folders_;
    const Archive& archive_;
    bool isRead_ = false;
    DiscNote note_;
    std::unordered_multimap<std::string, Place> byHash_;
    std::map<std::pair<std::int32_t, LevelCode>, Path> found_;
};

} // namespace kestrova
