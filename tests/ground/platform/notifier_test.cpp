#include "platform/child_process.h"
#include "platform/notifier.h"

#include <chrono>
#include <gio/gio.h>
#include <gtest/gtest.h>

namespace kestrova::platform
{
namespace
{

/// A message bus with one guest, who shows notifications: it answers what they ask and notes it.
class FakeDesktop
{
public:
    explicit FakeDesktop(bool takesMarkup)
        : context_(g_main_context_new()), takesMarkup_(takesMarkup)
    {
        g_main_context_push_thread_default(context_);
        char* id = g_dbus_generate_guid();
        server_ = g_dbus_server_new_sync("unix:tmpdir=/tmp", G_DBUS_SERVER_FLAGS_NONE, id, nullptr,
                                         nullptr, nullptr);
        g_free(id);
        g_signal_connect(server_, "new-connection", G_CALLBACK(Welcome), this);
        g_dbus_server_start(server_);
    }
    ~FakeDesktop()
    {
        g_dbus_server_stop(server_);
        if (guest_ != nullptr)
            g_object_unref(guest_);
        g_object_unref(server_);
        g_main_context_pop_thread_default(context_);
        g_main_context_unref(context_);
    }
    FakeDesktop(const FakeDesktop&) = delete;
    FakeDesktop& operator=(const FakeDesktop&) = delete;

    [[nodiscard]] std::string Address() const { return g_dbus_server_get_client_address(server_); }
    /// Answers until so many notifications were shown, or nobody asks any more.
    bool Serve(std::size_t count)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (shown.size() < count && std::chrono::steady_clock::now() < end) {
            if (g_main_context_iteration(context_, FALSE) == FALSE)
                g_usleep(1000);
        }
        return shown.size() >= count;
    }

    struct Shown {
        guint32 replaces;
        std::string title;
        std::string text;
    };
    std::vector<Shown> shown;

private:
    static gboolean Welcome(GDBusServer*, GDBusConnection* guest, gpointer data)
    {
        auto& self = *static_cast<FakeDesktop*>(data);
        self.guest_ = G_DBUS_CONNECTION(g_object_ref(guest));
        constexpr const char* interfaces =
            "<node><interface name='org.freedesktop.DBus'><method name='Hello'>"
            "<arg type='s' direction='out'/></method></interface>"
            "<interface name='org.freedesktop.Notifications'><method name='GetCapabilities'>"
            "<arg type='as' direction='out'/></method><method name='Notify'>"
            "<arg type='s'/><arg type='u'/><arg type='s'/><arg type='s'/><arg type='s'/>"
            "<arg type='as'/><arg type='a{sv}'/><arg type='i'/><arg type='u' direction='out'/>"
            "</method></interface></node>";
        static GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(interfaces, nullptr);
        static const GDBusInterfaceVTable table{Answer, nullptr, nullptr, {}};
        const char* const places[] = {"/org/freedesktop/DBus", "/org/freedesktop/Notifications"};
        for (int i = 0; i < 2; ++i)
            g_dbus_connection_register_object(guest, places[i], node->interfaces[i], &table, data,
                                              nullptr, nullptr);
        return TRUE;
    }
    static void Answer(GDBusConnection*, const char*, const char*, const char*, const char* method,
                       GVariant* arguments, GDBusMethodInvocation* call, gpointer data)
    {
        auto& self = *static_cast<FakeDesktop*>(data);
        const std::string asked = method;
        GVariant* answer = nullptr;
        if (asked == "Hello")
            answer = g_variant_new("(s)", ":1.1");
        else if (asked == "GetCapabilities") {
            const char* const names[] = {"body", self.takesMarkup_ ? "body-markup" : nullptr,
                                         nullptr};
            answer = g_variant_new("(^as)", names);
        } else {
            guint32 replaces = 0;
            const char* title = nullptr;
            const char* text = nullptr;
            g_variant_get(arguments, "(&su&s&s&sasa{sv}i)", nullptr, &replaces, nullptr, &title,
                          &text, nullptr, nullptr, nullptr);
            self.shown.push_back({replaces, title, text});
            answer = g_variant_new("(u)", 7U);
        }
        g_dbus_method_invocation_return_value(call, answer);
    }

    GMainContext* context_;
    GDBusServer* server_ = nullptr;
    GDBusConnection* guest_ = nullptr;
    bool takesMarkup_;
};

TEST(Notifier, ShowsWordsInPlaceOfThoseBefore)
{
    for (const bool markup : {false, true}) {
        FakeDesktop desktop{markup};
        Notifier notifier{desktop.Address()};
        notifier.Show("Title", "a < b & c");
        ASSERT_TRUE(desktop.Serve(1));
        EXPECT_EQ(desktop.shown[0].replaces, 0U);
        EXPECT_EQ(desktop.shown[0].title, "Title");
        EXPECT_EQ(desktop.shown[0].text, markup ? "a &lt; b &amp; c" : "a < b & c");
        notifier.Show("Title", "later");
        ASSERT_TRUE(desktop.Serve(2));
        EXPECT_EQ(desktop.shown[1].replaces, 7U);
    }
}

TEST(Notifier, HoldsNobodyUpWhereNobodyAnswers)
{
    for (const std::string& bus :
         {std::string{}, std::string{"unix:path=/nonexistent/bus"}, std::string{"no address"}}) {
        Notifier notifier{bus};
        for (int i = 0; i < 100; ++i)
            notifier.Show("Title", "text");
    }
    // One that takes the connection and never answers: the end does not wait for it.
    FakeDesktop silent{false};
    Notifier notifier{silent.Address()};
    notifier.Show("Title", "text");
}

} // namespace
} // namespace kestrova::platform
