#include "tools/line_splitter.h"

#include "core/text.h"
#include "words/message.h"

namespace kestrova
{

namespace
{

constexpr int blanksOfTab = 4;
/// A tool that never stops writing must not fill the memory with it.
constexpr std::size_t mostKept = std::size_t{64} << 20;

} // namespace

LineSplitter::LineSplitter(bool wholeLines, std::size_t limit)
    : wholeLines_(wholeLines), limit_(limit)
{
}

void LineSplitter::Put(char byte)
{
    if (position_ < buffer_.size())
        buffer_[position_] = byte;
    else
        buffer_ += byte;
    ++position_;
}

LineSplitter::State LineSplitter::FeedByte(char byte, const LineTaker& take)
{
    sawZero_ = sawZero_ || byte == '\0';
    if (byte == '\r' || byte == '\n')
        position_ = 0;
    else if (byte == '\b')
        position_ -= position_ > 0 ? 1 : 0;
    else if (byte == '\t')
        for (int i = 0; i < blanksOfTab; ++i)
            Put(' ');
    else
        Put(byte);
    if (position_ > limit_)
        return State::TooLong;

    const std::string_view line{buffer_.data(), position_};
    if (!wholeLines_ && !EqualNames(remembered_, reported_)) {
        reported_ = remembered_;
        if (!take(line))
            return State::Stopped;
    }
    if (line.empty() && !EqualNames(remembered_, reported_)) {
        if (output_.size() < mostKept)
            output_.append(remembered_).append(lineBreak);
        reported_ = remembered_;
        if (wholeLines_ && !take(remembered_))
            return State::Stopped;
    }
    if (!line.empty())
        remembered_ = line;
    return State::Goes;
}

LineSplitter::State LineSplitter::Feed(std::string_view bytes, const LineTaker& take)
{
    for (const char byte : bytes)
        if (const State state = FeedByte(byte, take); state != State::Goes)
            return state;
    return State::Goes;
}

} // namespace kestrova
