#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace kestrova
{

/// Turns the bytes that a tool writes into lines, one byte at a time. CR and LF end a line, BS goes
/// back one place, TAB is four blanks. A line that equals the one before it, case ignored, is
/// neither captured nor reported: progress tools repeat their lines, and repeats must not count.
/// A last line without a line end is not captured.
class LineSplitter
{
public:
    static constexpr std::size_t usualLimit = 256; ///< characters of a line

    enum class State {
        Goes,
        TooLong, ///< a line grew beyond the limit
        Stopped, ///< by the one who takes the lines
    };
    /// Answers False to stop.
    using LineTaker = std::function<bool(std::string_view)>;

    /// Without `wholeLines` the unfinished line is handed on at every byte at which it grew.
    explicit LineSplitter(bool wholeLines = true, std::size_t limit = usualLimit);

    /// Ends at the first byte after which the state is no longer `Goes`.
    State Feed(std::string_view bytes, const LineTaker& take);
    /// The captured lines, each with CRLF.
    [[nodiscard]] const std::string& Output() const { return output_; }
    [[nodiscard]] bool SawZero() const { return sawZero_; }

private:
    State FeedByte(char byte, const LineTaker& take);
    void Put(char byte);

    bool wholeLines_;
    std::size_t limit_;
    std::string buffer_;       ///< what was written at each place of the line, older text included
    std::size_t position_ = 0; ///< the line is what stands before it
    std::string remembered_;   ///< the line as it last was, an empty one left out
    std::string reported_;
    std::string output_;
    bool sawZero_ = false;
};

} // namespace kestrova
