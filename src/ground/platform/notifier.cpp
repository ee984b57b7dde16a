#include "platform/notifier.h"

#include "platform/files.h"
#include "platform/places.h"

#include <gio/gio.h>
#include <memory>
#include <utility>

namespace kestrova::platform
{

namespace
{

constexpr const char* notifyService = "org.freedesktop.Notifications";
constexpr const char* notifyObject = "/org/freedesktop/Notifications";
constexpr const char* programName = "Kestrova";
constexpr const char* programIcon = "kestrova";
/// How long the desktop may take for an answer.
constexpr int notifyAnswerMs = 5000;
/// How long the words stay; the desktop may decide otherwise.
constexpr int notifyShownMs = 8000;

struct Unref {
    void operator()(GVariant* value) const { g_variant_unref(value); }
    void operator()(GDBusConnection* bus) const { g_object_unref(bus); }
    void operator()(char* text) const { g_free(text); }
};
using Value = std::unique_ptr<GVariant, Unref>;

} // namespace

/// The connection, held from the first words on.
class Notifier::Desktop
{
public:
    Desktop(const std::string& bus, GCancellable* cancel) : cancel_(cancel)
    {
        const auto flags =
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        bus_.reset(
            g_dbus_connection_new_for_address_sync(bus.c_str(), flags, nullptr, cancel, nullptr));
        takesMarkup_ = bus_ != nullptr && HasCapability("body-markup");
    }

    void Show(const Words& words)
    {
        if (bus_ == nullptr)
            return;
        GVariantBuilder hints;
        g_variant_builder_init(&hints, G_VARIANT_TYPE("a{sv}"));
        g_variant_builder_add(&hints, "{sv}", "desktop-entry", g_variant_new_string(programIcon));
        g_variant_builder_add(&hints, "{sv}", "transient", g_variant_new_boolean(TRUE));
        const std::unique_ptr<char, Unref> marked{
            g_markup_escape_text(words.text.c_str(), static_cast<gssize>(words.text.size()))};
        const Value answer = Call("Notify",
                                  g_variant_new("(susssasa{sv}i)", programName, shown_, programIcon,
                                                words.title.c_str(),
                                                takesMarkup_ ? marked.get() : words.text.c_str(),
                                                nullptr, &hints, notifyShownMs),
                                  "(u)");
        if (answer != nullptr)
            g_variant_get(answer.get(), "(u)", &shown_);
    }
    [[nodiscard]] Value Call(const char* method, GVariant* arguments, const char* answer) const
    {
        return Value{g_dbus_connection_call_sync(
            bus_.get(), notifyService, notifyObject, notifyService, method, arguments,
            G_VARIANT_TYPE(answer), G_DBUS_CALL_FLAGS_NONE, notifyAnswerMs, cancel_, nullptr)};
    }
    [[nodiscard]] bool HasCapability(const char* wanted) const
    {
        const Value answer = Call("GetCapabilities", nullptr, "(as)");
        if (answer == nullptr)
            return false;
        char** names = nullptr;
        g_variant_get(answer.get(), "(^as)", &names);
        const bool has = g_strv_contains(names, wanted) != FALSE;
        g_strfreev(names);
        return has;
    }

private:
    GCancellable* cancel_;
    std::unique_ptr<GDBusConnection, Unref> bus_;
    bool takesMarkup_ = false;
    guint32 shown_ = 0; ///< the number that the desktop gave to the last one
};

std::string SessionBusAddress()
{
    if (std::string named = Variable("DBUS_SESSION_BUS_ADDRESS"); !named.empty())
        return named;
    const std::string folder = Variable("XDG_RUNTIME_DIR");
    if (folder.empty() || FactsOf(folder + "/bus").kind == FileKind::Missing)
        return {};
    return "unix:path=" + folder + "/bus";
}

Notifier::Notifier(std::string bus) : bus_(std::move(bus)), cancel_(g_cancellable_new()) {}

Notifier::~Notifier()
{
    {
        const std::lock_guard lock{mutex_};
        ends_ = true;
    }
    g_cancellable_cancel(cancel_);
    news_.notify_all();
    if (thread_.joinable())
        thread_.join();
    g_object_unref(cancel_);
}

void Notifier::Show(const std::string& title, const std::string& text)
{
    if (bus_.empty())
        return;
    {
        const std::lock_guard lock{mutex_};
        next_ = Words{title, text};
    }
    if (!thread_.joinable())
        thread_ = std::thread{[this] { Run(); }};
    news_.notify_all();
}

void Notifier::Run()
{
    Desktop desktop{bus_, cancel_};
    std::unique_lock lock{mutex_};
    for (;;) {
        news_.wait(lock, [this] { return ends_ || next_; });
        if (ends_)
            return;
        const Words words = *std::exchange(next_, std::nullopt);
        lock.unlock();
        desktop.Show(words);
        lock.lock();
    }
}

} // namespace kestrova::platform
