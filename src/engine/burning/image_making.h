#pragma once

#include "burning/burn_settings.h"
#include "core/result.h"
#include "tools/tools.h"

#include <memory>
#include <string>

namespace kestrova
{

/// An image of a disc that is being made: started, polled, stopped, so that one is made while
/// another disc burns. It takes its name when it is whole; what is not is removed.
class ImageMaking
{
public:
    /// `settings` tells items, label and words; the image comes to `image`, in place of an old one.
    /// What can be known to go wrong is said here, before anything is written.
    static Result<std::unique_ptr<ImageMaking>>
    Start(const Tools& tools, const BurnSettings& settings, const Path& image);
    ~ImageMaking();
    ImageMaking(const ImageMaking&) = delete;
    ImageMaking& operator=(const ImageMaking&) = delete;

    /// Does not wait. False once it is over; `Outcome` tells how.
    bool Poll();
    /// Of a hundred.
    [[nodiscard]] unsigned Percent() const;
    void Stop();
    /// To the end, with label, bar and Stop of these settings; the outcome.
    Status Finish(const BurnSettings& settings);
    [[nodiscard]] const Status& Outcome() const;
    /// What the tool printed, and a warning that it gave.
    [[nodiscard]] const std::string& Output() const;
    [[nodiscard]] const std::string& Warning() const;

private:
    struct Work;
    explicit ImageMaking(std::unique_ptr<Work> work);
    std::unique_ptr<Work> work_;
};

/// The bytes that an image of these items takes, as the tool that would make it counts them.
Result<std::uint64_t> ImageSize(const Tools& tools, const BurnSettings& settings);

} // namespace kestrova
