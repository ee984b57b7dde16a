#include "session/key_latch.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kestrova
{

/// P and R are notices of a press and a release, d and u questions while the key is down or up.
/// The answers, one letter a question.
std::string Answers(std::string_view events)
{
    KeyLatch latch;
    std::string answers;
    for (const char event : events) {
        if (event == 'P')
            latch.NotePress();
        else if (event == 'R')
            latch.NoteRelease();
        else
            answers += latch.Take(event == 'd') ? 'y' : 'n';
    }
    return answers;
}

TEST(KeyLatch, TellsEveryPressAndNoneTwice)
{
    EXPECT_EQ(Answers("uPRuu"), "nyn") << "a tap between two questions";
    EXPECT_EQ(Answers("PddRu"), "yyn") << "held: at each question";
    EXPECT_EQ(Answers("dPRuu"), "ynn") << "the notice of a press that was seen comes late";
    EXPECT_EQ(Answers("dPPPRu"), "yn") << "repeats are no presses";
    EXPECT_EQ(Answers("dRPRuu"), "yyn") << "a second tap after a seen one";
    EXPECT_EQ(Answers("uuPRPRuu"), "nnyn") << "two taps between two questions are one";
    EXPECT_EQ(Answers("ddu"), "yyn") << "without notices the questions alone serve";
}

} // namespace kestrova
