#pragma once

#include "platform/file_hook.h"

#include <atomic>

namespace kestrova::testing
{

/// Counts how often a folder is listed while it lives.
class Listings : public platform::FileHook
{
public:
    Listings() { platform::SetFileHook(this); }
    ~Listings() override { platform::SetFileHook(nullptr); }
    Listings(const Listings&) = delete;
    Listings& operator=(const Listings&) = delete;

    std::error_code Before(platform::FileAction, const platform::Path&) override { return {}; }
    std::error_code BeforeReading(platform::FileAction action, const platform::Path&) override
    {
        count += action == platform::FileAction::List ? 1 : 0;
        return {};
    }
    std::atomic<int> count = 0;
};

} // namespace kestrova::testing
