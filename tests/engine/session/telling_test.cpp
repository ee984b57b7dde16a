#include "session/telling.h"

#include "world/scripted_host.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

TEST(TellFailure, NamesWhatAndWhyOnceAndEndsASentence)
{
    struct {
        Failure failure;
        const char* told;
    } const rows[] = {
        {{ErrorCode::CannotWrite, "/a/b", "No room"}, "/a/b: No room"},
        {{ErrorCode::CannotWrite, "said in the text", "No room"}, "No room"},
        {Saying("It was not done.", Failure{ErrorCode::CannotWrite, "/a/b", "No room"}),
         "It was not done.\r\nNo room"},
        {Saying("It was not done", Failure{ErrorCode::CannotWrite, "/a/b", "No room"}),
         "It was not done: No room"},
        {{ErrorCode::CannotWrite, "/a/b"}, "/a/b"},
    };
    for (const auto& row : rows) {
        ScriptedHost host;
        TellFailure(host, "What is said in the text", row.failure);
        EXPECT_NE(host.AllTold().find(row.told), std::string::npos) << host.AllTold();
        EXPECT_EQ(host.AllTold().find(".:"), std::string::npos);
    }
}

} // namespace kestrova::testing
