#include "publish/author_infos.h"

#include "saves/send_mail.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using namespace std::string_literals;
using Texts = std::vector<std::string>;

class AuthorInfosTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        box.MakeBackupAndArchive();
        box.AddLevel("Level", {});
        box.session.preferences.autoSave = true;
        Record().authorName = "  Ada ";
        Record().authorEmails = "a@b\0c@d"s;
    }
    LevelRecord& Record() { return box.session.archive.levels[1]; }
    std::string Told()
    {
        EXPECT_EQ(box.host.told.size(), 1U) << box.host.AllTold();
        const std::string text = box.host.told.empty() ? std::string{} : box.host.told[0].text;
        box.host.told.clear();
        return text;
    }
    World box;
};

TEST_F(AuthorInfosTest, ListsAreEditedAndStored)
{
    AuthorInfos infos{box.session, 1};
    EXPECT_EQ(infos.name, "Ada");
    EXPECT_EQ(infos.emails.items, (Texts{"a@b", "c@d"}));
    EXPECT_EQ(infos.emails.selected, 0U);
    EXPECT_EQ(infos.sites.items, Texts{});

    box.host.WillAskText("Insert new email address", "e@f");
    infos.NewEmail();
    EXPECT_EQ(infos.emails.selected, 2U);
    box.host.WillAskText("Change current email address", "g@h");
    infos.ChangeEmail();
    box.host.WillAskText("Change current email address", "");
    infos.ChangeEmail();
    box.host.WillAskText("Insert new email address", std::nullopt);
    infos.NewEmail();
    infos.emails.selected = 0;
    infos.DeleteEmail();
    EXPECT_EQ(infos.emails.items, (Texts{"c@d", "g@h"}));

    infos.ChangeSite();
    EXPECT_EQ(Told(), "No selected item");
    infos.DeleteSite();
    EXPECT_EQ(Told(), "No selected item");
    box.host.WillAskText("Insert new url address", "www.example.org");
    infos.NewSite();
    box.host.WillAskText("Change current url address", "example.org");
    infos.ChangeSite();

    infos.note = "note";
    EXPECT_TRUE(infos.Store()) << box.host.AllTold();
    const auto saved = ParseArchive(box.Read("home/LevelArchive.kva"));
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->levels[1].authorEmails, "c@d\0g@h"s);
    EXPECT_EQ(saved->levels[1].authorSites, "example.org");
    EXPECT_EQ(saved->levels[1].authorName, "Ada");
    EXPECT_EQ(saved->levels[1].authorNote, "note");

    infos.DeleteSite();
    EXPECT_FALSE(infos.sites.selected);
    const Path file = std::exchange(box.session.archive.file, box / "nowhere/at all.kva");
    EXPECT_FALSE(infos.Store()) << "the list could not be written";
    EXPECT_EQ(box.host.told.size(), 1U);
    box.session.archive.file = file;
    EXPECT_TRUE(infos.Store());
    EXPECT_EQ(Record().authorSites, "");
}

TEST_F(AuthorInfosTest, AValueThatFillsItsFieldIsRefusedAndWhatWasStoredBeforeStays)
{
    const std::string umlaut = "\u00fc"; // one byte in the file
    std::string longest;
    for (int i = 0; i < 79; ++i)
        longest += umlaut;
    AuthorInfos infos{box.session, 1};
    infos.name = longest;
    EXPECT_TRUE(infos.Store());
    const std::string saved = box.Read("home/LevelArchive.kva");

    infos.emails.items = {std::string(127, 'm'), std::string(127, 'm')}; // 255 with the NUL
    infos.sites.items = {std::string(255, 's')};
    infos.name = longest + umlaut;
    infos.note = std::string(256, 'n');
    EXPECT_FALSE(infos.Store());
    EXPECT_EQ(Told(), "Game designer name too long");
    EXPECT_EQ(Record().authorName, longest);
    infos.name = "Bea";
    EXPECT_FALSE(infos.Store());
    EXPECT_EQ(Told(), "Author's note too long");
    EXPECT_EQ(Record().authorName, "Bea");
    EXPECT_EQ(Record().authorEmails.size(), 255U);
    EXPECT_EQ(box.Read("home/LevelArchive.kva"), saved);

    infos.sites.items = {std::string(256, 's')};
    EXPECT_FALSE(infos.Store());
    EXPECT_EQ(Told(), "Sites field too long. Remove any url address");
    infos.emails.items.emplace_back();
    EXPECT_FALSE(infos.Store());
    EXPECT_EQ(Told(), "Emails field too long. Remove any email address");
}

TEST_F(AuthorInfosTest, AddressesOpenAsMailAndWebAndAsNothingElse)
{
    AuthorInfos infos{box.session, 1};
    infos.emails = {{"a@b.org?attach=/etc/passwd"}, 0};
    infos.SendMail();
    infos.emails = {};
    infos.SendMail();
    EXPECT_EQ(Told(), "No selected item");
    infos.VisitSite();
    EXPECT_EQ(Told(), "No selected site");
    for (const char* site : {"HTTPS://a.org/x", "a.org/y", "a.org:8080", "http://b.org"}) {
        infos.sites = {{site}, 0};
        infos.VisitSite();
    }
    EXPECT_EQ(box.machine.opened, (Texts{"mailto:a@b.org%3Fattach=/etc/passwd", "HTTPS://a.org/x",
                                         "http://a.org/y", "http://a.org:8080", "http://b.org"}));
    for (const char* site :
         {"file:///etc/passwd", "/tmp/x.desktop", "../x", "javascript:x", "~/x"}) {
        infos.sites = {{site}, 0};
        infos.VisitSite();
        EXPECT_NE(Told().find(site), std::string::npos);
    }
    EXPECT_EQ(box.machine.opened.size(), 5U);
}

} // namespace

} // namespace kestrova::testing
