#pragma once

#include "discs/disc_places.h"
#include "session/host.h"

#include <functional>
#include <optional>

namespace kestrova
{

/// `Dialog_InsertCd` without its window: the question for a disc.
class InsertCd
{
public:
    /// What is asked for.
    struct Wanted {
        std::int32_t number = 0;
        std::string folder;  ///< the archive's folder on it, its number with it
        std::string level;   ///< the level's name
        std::string archive; ///< the archive's file
        std::string
            instead{}; ///< why what was found is not that disc, in lines; empty: nothing was
    };
    /// The folder of the disc below a root, or why it is not the disc that is wanted, in words.
    using Judge = std::function<Result<Path>(const Path& root)>;

    InsertCd(Host& host, DiscPlaces& places, Wanted wanted, Judge judge);

    /// "Please, insert CD # 2".
    [[nodiscard]] std::string Message() const;
    /// Which level of which archive needs it, what is written on it, and what was found instead.
    [[nodiscard]] std::string Details() const;
    [[nodiscard]] const Wanted& Asked() const { return wanted_; }
    [[nodiscard]] const std::vector<DiscDrive>& Drives() const { return drives_; }
    /// The drives as they are now; the chosen one stays chosen while it is there.
    void Refresh();

    std::optional<std::size_t> chosen; ///< in `Drives()`

    /// `Pul_Ok`: True when the disc lies in the chosen drive. Tells why it does not.
    bool Accept();
    /// The same for an image of the disc that the person chooses. False too when none was chosen.
    bool ChooseImage();

    /// The disc's folder, once it was found.
    [[nodiscard]] const Path& Found() const { return found_; }
    /// The image that it was found in; empty when it lies in a drive.
    [[nodiscard]] const Path& Image() const { return image_; }

private:
    bool Take(const Path& root);
    bool Tell(const std::string& text, const Failure& failure = {});

    Host& host_;
    DiscPlaces& places_;
    Wanted wanted_;
    Judge judge_;
    std::vector<DiscDrive> drives_;
    Path found_;
    Path image_;
};

} // namespace kestrova
