#include "app/meeting_place.h"

#include "sandbox/sandbox.h"

#include <cstdlib>
#include <fstream>
#include <future>
#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using std::chrono::milliseconds;
using Role = MeetingPlace::Role;

constexpr milliseconds long_{60'000};
constexpr milliseconds short_{300};

/// A program's folder, with a runtime folder of the person's own or without one.
class Starts : public ::testing::TestWithParam<bool>
{
public:
    Starts()
    {
        std::filesystem::create_directories(home);
        std::filesystem::create_directories(runtime);
        std::filesystem::permissions(runtime, std::filesystem::perms::owner_all);
        if (GetParam())
            ::setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
        else
            ::unsetenv("XDG_RUNTIME_DIR");
    }
    ~Starts() override { ::unsetenv("XDG_RUNTIME_DIR"); }

    /// A later start that asks while the first one listens, as its windows would.
    std::pair<Role, std::vector<OpenRequest>> AskFirst(MeetingPlace& first, const Path& folder,
                                                       const OpenRequest& request) const
    {
        auto later = std::async(std::launch::async, [&] {
            MeetingPlace start{folder};
            return start.Begin(request, long_);
        });
        std::vector<OpenRequest> heard;
        while (later.wait_for(milliseconds{1}) != std::future_status::ready)
            for (OpenRequest& one : first.Hear())
                heard.push_back(std::move(one));
        for (OpenRequest& one : first.Hear())
            heard.push_back(std::move(one));
        return {later.get(), heard};
    }

    Sandbox box;
    const Path runtime = box / "run";
    /// Longer than a socket's name may be.
    const Path home = box / (std::string(90, 'h') + "/" + std::string(90, 'o'));
};

TEST_P(Starts, ALaterOneHandsOverOncePerFolder)
{
    MeetingPlace first{home};
    ASSERT_EQ(first.Begin({}, short_), Role::First);
    ASSERT_GE(first.Descriptor(), 0);

    const auto [role, heard] = AskFirst(first, home / ".", {"token", {"/a.kva", "/b"}});
    EXPECT_EQ(role, Role::Taken);
    ASSERT_EQ(heard.size(), 1U);
    EXPECT_EQ(heard[0].activation, "token");
    EXPECT_EQ(heard[0].items, (std::vector<std::string>{"/a.kva", "/b"}));
    EXPECT_EQ(AskFirst(first, home, {{}, std::vector<std::string>(5000, "/x")}).first,
              Role::TooMuch);

    std::filesystem::create_directories(box / "other");
    MeetingPlace other{box / "other"};
    EXPECT_EQ(other.Begin({}, short_), Role::First);
}

TEST_P(Starts, OneThatDoesNotAnswerOpensNothingLaterEither)
{
    MeetingPlace first{home};
    ASSERT_EQ(first.Begin({}, short_), Role::First);
    MeetingPlace later{home};
    EXPECT_EQ(later.Begin({{}, {"/a.kva"}}, short_), Role::NoAnswer);
    EXPECT_NE(later.Holder().find("process"), std::string::npos) << later.Holder();
    EXPECT_TRUE(first.Hear().empty());
    EXPECT_TRUE(first.Hear().empty());
    EXPECT_EQ(AskFirst(first, home, {}).first, Role::Taken); // it goes on hearing
}

TEST_P(Starts, WhatAKilledOneLeftIsTakenOverAndTheNextIsFirst)
{
    Path socket;
    {
        MeetingPlace first{home};
        ASSERT_EQ(first.Begin({}, short_), Role::First);
        const Path place = GetParam() ? runtime : home;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(place))
            if (entry.is_socket())
                socket = entry.path();
        ASSERT_FALSE(socket.empty());
        EXPECT_EQ(std::filesystem::status(socket).permissions(),
                  std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    }
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(socket)));
    {
        platform::LocalSocket left; // nobody removes the name
        ASSERT_FALSE(platform::LocalSocket::Listen(socket, left));
    }
    MeetingPlace next{home};
    EXPECT_EQ(next.Begin({}, short_), Role::First);
    EXPECT_EQ(AskFirst(next, home, {}).first, Role::Taken);
}

TEST_P(Starts, NoiseIsHeardOutAndDropped)
{
    MeetingPlace first{home};
    ASSERT_EQ(first.Begin({}, short_), Role::First);
    Path socket;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(box.root))
        if (entry.is_socket())
            socket = entry.path();
    const std::string whole = FormatOpenRequest({{}, {"/x.kva"}});
    std::vector<platform::LocalSocket> callers;
    for (const std::string& words :
         {std::string{"GET / HTTP/1.1\r\n"}, whole.substr(0, 20), whole + "go\n", whole + "stay\n",
          "kestrova open 1\n1000000\n" + std::string(150'000, 'x'), std::string{}}) {
        platform::LocalSocket caller;
        ASSERT_FALSE(platform::LocalSocket::Connect(socket, caller));
        (void)caller.Send(words, milliseconds{0});
        callers.push_back(std::move(caller));
    }
    EXPECT_TRUE(first.Hear().empty());
    for (int flood = 0; flood < 300; ++flood) {
        platform::LocalSocket caller;
        if (!platform::LocalSocket::Connect(socket, caller))
            callers.push_back(std::move(caller));
        EXPECT_TRUE(first.Hear().empty());
    }
    EXPECT_EQ(AskFirst(first, home, {}).first, Role::Taken);
}

INSTANTIATE_TEST_SUITE_P(MeetingPlace, Starts, ::testing::Values(true, false));

TEST(MeetingPlace, AFileInTheSocketsPlaceStays)
{
    const Sandbox box;
    ::unsetenv("XDG_RUNTIME_DIR");
    box.Write(".kv~windows", "mine");
    MeetingPlace first{box.root};
    EXPECT_EQ(first.Begin({}, short_), Role::First);
    EXPECT_LT(first.Descriptor(), 0);
    std::ifstream file{box / ".kv~windows"};
    std::string words;
    file >> words;
    EXPECT_EQ(words, "mine");
}

} // namespace

} // namespace kestrova::testing
