#pragma once

#include "session/host.h"
#include "words/disc_creation.h"

#include <functional>

namespace kestrova
{

/// The progress of one disc of a set: each label says which one it is, and the image of the next
/// one is looked after meanwhile.
class DiscProgress : public ProgressScope
{
public:
    DiscProgress(ProgressScope& inner, std::function<void()> meanwhile)
        : inner_(inner), meanwhile_(std::move(meanwhile))
    {
    }

    void Begin(std::string label, std::size_t place, std::size_t count)
    {
        label_ = std::move(label);
        place_ = std::to_string(place);
        count_ = std::to_string(count);
    }
    void SetLabel(const std::string& text) override
    {
        inner_.SetLabel(text.empty() ? text
                                     : GetMsg(Msg::DiscOfDiscs, {label_, place_, count_, text}));
    }
    void SetBar(std::uint64_t done, std::uint64_t total) override { inner_.SetBar(done, total); }
    void SetPart(std::uint64_t done, std::uint64_t total) override { inner_.SetPart(done, total); }
    void AllowStop() override { inner_.AllowStop(); }
    bool Step() override
    {
        meanwhile_();
        return inner_.Step();
    }

private:
    ProgressScope& inner_;
    std::function<void()> meanwhile_;
    std::string label_;
    std::string place_;
    std::string count_;
};

} // namespace kestrova
