#include "core/dates.h"
#include "online/url_editor.h"
#include "online/url_file.h"
#include "sandbox/faults.h"
#include "sandbox/web_servers.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

/// A list with a record of the person's, and a server with a new one.
class UpdateWorld : public World
{
public:
    explicit UpdateWorld(const RealServer& server, const UrlList& fresh)
        : address(server.Address("/urllist.bin"))
    {
        host.AnswerAll(false);
        before.updateDate = DateSerialOf(machine.now) - 40;
        before.records = {{"http://mine.example", "mine", UrlKindLevels, true},
                          {"http://old.example", "old", UrlKindLevels, false}};
        EXPECT_TRUE(SaveUrlList(File(), before));
        after = fresh;
        after.updateDate = DateSerialOf(machine.now);
        after.records.insert(after.records.begin(), before.records.front());
    }
    [[nodiscard]] Path File() const { return UrlListPath(session.Folders()); }
    bool Update()
    {
        UrlEditor editor{host, machine, session.Folders(), {address}};
        return editor.Update([](const std::string&) {}) && editor.Save();
    }
    /// The list is the old one or the new one; a later update, and a later look, find no hindrance.
    void Check(bool done, const std::string& call)
    {
        const auto now = LoadUrlList(File());
        ASSERT_TRUE(now) << call;
        EXPECT_TRUE(*now == after || (!done && *now == before)) << call;
        EXPECT_TRUE(Update()) << call << host.AllTold();
        const auto then = LoadUrlList(File());
        ASSERT_TRUE(then) << call;
        EXPECT_EQ(then->records.size(), after.records.size()) << call;
    }

    std::string address;
    UrlList before;
    UrlList after;
};

class UrlInterruption : public ::testing::Test
{
protected:
    UrlInterruption()
    {
        fresh.records.assign(200, {"http://new.example", "new", UrlKindLevels, false});
        fresh.records.push_back({"http://c.example", "Valley - a.tr4;5", UrlKindConfig, false});
        served.Write("served/urllist.bin", *FormatUrlList(fresh));
    }
    Sandbox served;
    UrlList fresh;
};

} // namespace

TEST_F(UrlInterruption, AKilledUpdateLeavesTheOldListOrTheNewOne)
{
    const RealServer server{served / "served"};
    int points = 0;
    for (;; ++points) {
        UpdateWorld box{server, fresh};
        const KillRun run = WithKillAt(points + 1, [&] { return box.Update(); });
        box.Check(!run.killed && run.answer, run.call);
        if (!run.killed)
            break;
    }
    TellPoints(points, 6);
}

TEST_F(UrlInterruption, ACallThatFailsLeavesTheOldListOrTheNewOne)
{
    const RealServer server{served / "served"};
    for (const AfterFault rest : {AfterFault::Works, AfterFault::Fails}) {
        int points = 0;
        for (;; ++points) {
            UpdateWorld box{server, fresh};
            const FaultRun run = WithFaultAt(
                points + 1, [&] { return box.Update(); }, std::errc::no_space_on_device, rest);
            box.Check(run.answer, run.call);
            EXPECT_TRUE(run.answer || !box.host.told.empty()) << run.call;
            if (!run.reached)
                break;
        }
        TellPoints(points, 6);
    }
}

} // namespace kestrova::testing
