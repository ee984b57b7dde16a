#include "burning/disc_run.h"

#include "formats/burn_lines.h"
#include "session/cleared_progress.h"
#include "tools/run_to_end.h"
#include "tools/tool_output.h"
#include "words/burning.h"

#include <algorithm>
#include <array>

namespace kestrova
{

namespace
{

using Clock = std::chrono::steady_clock;

class ImageLineParser : public LineParser
{
public:
    LineAnswer Feed(std::string_view line) override
    {
        if (const auto part = ImageProgressIn(line))
            most_ = std::max(most_, part->done);
        return {most_, 100};
    }

private:
    std::uint64_t most_ = 0;
};

class BurnLineParser : public LineParser
{
public:
    LineAnswer Feed(std::string_view line) override
    {
        const auto part = BurnProgressIn(line);
        return part ? LineAnswer{part->done, part->total} : LineAnswer{};
    }
};

class CountedLineParser : public LineParser
{
public:
    explicit CountedLineParser(std::uint64_t expected) : expected_(expected) {}
    LineAnswer Feed(std::string_view) override
    {
        ++lines_;
        return expected_ == 0 ? LineAnswer{} : LineAnswer{std::min(lines_, expected_), expected_};
    }

private:
    std::uint64_t expected_;
    std::uint64_t lines_ = 0;
};

void ShowLine(const BurnSettings& settings, std::string_view line, const LineAnswer& answer)
{
    if (settings.progress == nullptr || IsCountdown(line))
        return;
    if (answer.done)
        SetProgressPercent(settings.progress, answer.total, *answer.done);
    settings.progress->SetLabel(ShownLine(line));
}

/// Keeps the window alive. False when the person wants it stopped, and may have it so.
bool GoesOn(const ToolRun& run, const BurnSettings& settings)
{
    if (settings.meanwhile)
        settings.meanwhile();
    if (settings.progress == nullptr)
        return true;
    const bool maySay = settings.stopAllowed || run.SilentFor() >= settings.quietLimit;
    if (maySay)
        settings.progress->AllowStop();
    return settings.progress->Step() || !maySay;
}

bool HasFailed(const ToolRun& run)
{
    return !run.IsRunning() && !run.Report().status;
}

} // namespace

std::unique_ptr<LineParser> ImageLines()
{
    return std::make_unique<ImageLineParser>();
}

std::unique_ptr<LineParser> BurnLines()
{
    return std::make_unique<BurnLineParser>();
}

std::unique_ptr<LineParser> CountedLines(std::uint64_t expected)
{
    return std::make_unique<CountedLineParser>(expected);
}

void RunDiscTools(ToolRun& shown, ToolRun* feeder, const BurnSettings& settings)
{
    const std::array<const ToolRun*, 2> all{&shown, feeder == nullptr ? &shown : feeder};
    const std::span<const ToolRun* const> runs{all.data(), feeder == nullptr ? 1U : 2U};
    const std::string stopped = GetMsg(Msg::BurnStopped);
    for (Clock::time_point lastStep = Clock::now();;) {
        ToolRun::WaitForAny(runs, ToolRun::slice);
        bool anyGoes = shown.Poll([&](std::string_view line, const LineAnswer& answer) {
            ShowLine(settings, line, answer);
        });
        if (feeder != nullptr)
            anyGoes = feeder->Poll() || anyGoes;
        if (!anyGoes)
            break;
        if (feeder != nullptr && HasFailed(*feeder))
            shown.Stop(ToolTrouble::Refused, feeder->Report().status.Error().sentence);
        if (feeder != nullptr && !shown.IsRunning())
            feeder->Stop(ToolTrouble::Refused, {});
        if (const Clock::time_point now = Clock::now(); now - lastStep >= ToolRun::slice) {
            lastStep = now;
            if (GoesOn(shown, settings))
                continue;
            shown.Stop(ToolTrouble::Stopped, stopped);
            if (feeder != nullptr)
                feeder->Stop(ToolTrouble::Stopped, stopped);
        }
    }
    if (settings.progress != nullptr)
        ClearProgress(*settings.progress);
}

} // namespace kestrova
