#pragma once

#include "discs/disc_content.h"
#include "discs/disc_windows.h"
#include "session/disc_reader.h"
#include "session/host.h"
#include "session/machine.h"

#include <map>
#include <set>

namespace kestrova
{

class DiscPlaces;

/// Finds the discs of an archive: in the drives, among the images that its note names or that lie
/// beside those, and at last by asking the person. What was found is looked at again each time,
/// since a disc may leave its drive.
class DiscShelf : public DiscReader
{
public:
    /// `windows`: what the face has for its questions; without them words say what to do.
    DiscShelf(Host& host, Machine& machine, DiscPlaces& places, DiscWindows windows = {});

    Result<Path> FolderOfDisc(const Archive& archive, const LevelRecord& level,
                              DiscWish wish) override;
    std::optional<Path> DiscOf(const Path& file) override;
    Result<Path> RootOfImage(const Path& image) override;
    Status TakeImage(const Archive& archive, const Path& image) override;
    Result<DiscSetup> AskForSetup(const Archive& archive) override;

private:
    struct Search;
    [[nodiscard]] Search NewSearch(const Archive& archive, const LevelRecord& level, DiscWish wish);
    /// What is known of the archive's discs; empty without a note.
    const DiscNote& NoteOf(const Archive& archive);
    bool LooksAt(Search& search, const Path& root);
    /// What lies in the level's folder there is what was put on the disc; looked at once for each
    /// disc that is as it was then.
    Status HasItsContent(const Search& search, const Path& disc);
    bool LooksInDrives(Search& search);
    bool LooksInImages(Search& search);
    bool LooksAtImage(Search& search, const Path& image);
    /// The folder of the disc that was found; its image is remembered when the person was asked.
    Path Found(const Search& search, DiscWish wish);
    Result<Path> Ask(Search& search);
    Status Remember(const Archive& archive, std::int32_t number, const Path& image);

    Host& host_;
    Machine& machine_;
    DiscPlaces& places_;
    DiscWindows windows_;
    std::vector<Path> roots_;            ///< of archives whose file lies on a disc
    std::vector<Path> imageFolders_;     ///< of images that were opened for those
    std::map<Path, Path> images_;        ///< of roots that are those of images
    std::map<std::int32_t, Path> found_; ///< roots by number, from the last search
    std::set<std::string> proved_;       ///< folders of levels, with their names, sizes and times
    DiscNote note_;
    Path noteFile_;
    std::int64_t noteTime_ = 0;
    std::uint64_t noteSize_ = 0;
};

} // namespace kestrova
