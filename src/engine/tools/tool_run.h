#pragma once

#include "platform/child_process.h"
#include "tools/line_parser.h"
#include "tools/line_splitter.h"
#include "tools/tools.h"

namespace kestrova
{

/// Why a program did not do its work.
enum class ToolTrouble {
    None,
    Missing,    ///< the tool is not installed
    NotStarted, ///< what of Wine is missing, or the system's reason, stands in the details
    Stopped,    ///< by the person, or by its parser
    Refused,    ///< whoever watched it had a reason
    TimeOut,    ///< it took, or was silent, longer than it may
    Flood,      ///< it wrote more than it ever does when all is well
    Signal,     ///< it was killed, or broke down
    ExitCode,   ///< its code stands for work that was not done
    LeftOut,    ///< it owned up to work that it left out
    NoOutput,   ///< it printed nothing where its output is its work
    Content,    ///< what went in, or came out, is not what it has to be
};

/// What a run leaves.
struct ToolReport {
    std::string output{};     ///< what it printed, as the order wanted it
    std::string lastLines{};  ///< of all that it printed
    platform::ChildEnd end{}; ///< how the program ended; 0 when it was never started
    ToolTrouble trouble{};    ///< why the run failed
    Status status{};          ///< the same for whoever goes on; the last lines are its details

    /// Notes that it failed, and why in words.
    void Fail(ToolTrouble why, std::string sentence, std::string reason = {});
};

/// One use of a tool.
struct ToolWork {
    const Tool& tool;
    ToolArguments arguments{};
    /// Makes the parser of a run; none: label and bar stay as they are.
    std::function<std::unique_ptr<LineParser>()> parser{};
    bool wholeLines = true;
    Path folder{};                      ///< working folder; empty: the tool's own
    std::optional<std::string> input{}; ///< what the tool reads; none: it has no standard input
    /// A further reason to stop, asked for in each slice: words, or nothing to go on.
    std::function<std::string()> watch{};
};

/// A list of a million names with room to spare.
constexpr std::size_t usualMostOutput = std::size_t{256} << 20;

/// All that one child needs.
struct ToolOrder {
    enum class Output {
        Dropped, ///< but for the last lines
        Lines,   ///< of standard output and error together, line by line, each with CRLF
        Whole,   ///< of standard output alone; without any CRLF each LF becomes one
    };

    platform::Launch launch{};
    std::string name{};         ///< as words call it
    std::string notStarted{};   ///< what is said when it cannot be started
    const Tool* tool = nullptr; ///< judges the end by its row; none: every end is one
    Output output = Output::Dropped;
    std::size_t mostOutput = usualMostOutput; ///< bytes of `Whole`; more of them is a flood
    std::optional<std::string> input{};
    std::unique_ptr<LineParser> parser{};
    bool wholeLines = true;
    std::size_t lineLimit = LineSplitter::usualLimit;
    std::optional<std::chrono::milliseconds> limit{};   ///< of the whole run
    std::optional<std::chrono::milliseconds> silence{}; ///< between two words of it
};

/// The order for a tool whose lines are read as they come. The failure `Missing` has the hint how
/// to install the tool as its reason; another one tells why it cannot be launched.
Result<ToolOrder> OrderOf(const Tools& tools, const ToolWork& work);

/// A child: started, polled, stopped. It shares nothing with other runs, so that a thread can have
/// its own, and one loop can have several. A child that still runs at the end of this object's life
/// is killed.
class ToolRun
{
public:
    /// Gets each line that the parser has read, with what it means.
    using LineShower = std::function<void(std::string_view line, const LineAnswer& answer)>;

    explicit ToolRun(ToolOrder order);

    /// Once in an object's life.
    Status Start();

    /// Takes what the child has written, and looks at its limits; does not wait. False once the
    /// child is gone, and the report whole.
    bool Poll(const LineShower& show = {});

    /// Asks the child and its children to end; a moment later they are forced to. It is gone when
    /// `Poll` says so. A stop after the first one changes nothing.
    void Stop(ToolTrouble why, std::string words);

    [[nodiscard]] bool IsRunning() const
    {
        return phase_ == Phase::Running || phase_ == Phase::Ending;
    }
    [[nodiscard]] bool IsEnding() const { return phase_ == Phase::Ending; }
    [[nodiscard]] bool HasParser() const { return order_.parser != nullptr; }
    /// A byte of value 0 came.
    [[nodiscard]] bool SawZero() const { return splitter_.SawZero(); }
    /// How long the child has not written anything.
    [[nodiscard]] std::chrono::milliseconds SilentFor() const;
    /// Whole when the child is gone, or did not start.
    [[nodiscard]] const ToolReport& Report() const { return report_; }

    /// How long whoever runs tools waits before the window is heard again.
    static constexpr std::chrono::milliseconds slice{30};
    /// Waits up to `most` until a poll of one of them is worth while.
    static void WaitForAny(std::span<const ToolRun* const> runs, std::chrono::milliseconds most);

private:
    using Clock = std::chrono::steady_clock;
    enum class Phase { Waiting, Running, Ending, Gone };

    void KeepTail(std::string_view bytes);
    void Take(std::string_view output, const LineShower& show);
    bool TakeLine(std::string_view line, const LineShower& show);
    void LookAtLimits(Clock::time_point now);
    bool End();
    void Judge();

    ToolOrder order_;
    ToolReport report_;
    platform::ChildProcess child_;
    LineSplitter splitter_;
    std::string tail_;
    Phase phase_ = Phase::Waiting;
    Clock::time_point start_{};
    Clock::time_point lastWord_{};
    Clock::time_point force_{}; ///< when an ending child is killed
};

} // namespace kestrova
