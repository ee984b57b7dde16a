#pragma once

namespace kestrova
{

/// One key between two questions for it. The state that is asked for and the notices of presses
/// come by different ways, so a notice may come late for a press that was seen already.
class KeyLatch
{
public:
    void NotePress() { pressed_ = pressed_ || !seenDown_; }
    void NoteRelease() { seenDown_ = false; }

    /// `down`: its state now. True when it is down, or was since the last question.
    bool Take(bool down)
    {
        const bool taken = down || pressed_;
        pressed_ = false;
        seenDown_ = down;
        return taken;
    }

private:
    bool pressed_ = false;  ///< and no question has told of it
    bool seenDown_ = false; ///< the last question did; no release was noted since
};

} // namespace kestrova
