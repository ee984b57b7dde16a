#include "platform/proxy.h"

#include <gio/gio.h>
#include <string_view>

namespace kestrova::platform
{

struct ProxyLookup::Question {
    GMainContext* context = g_main_context_new();
    GCancellable* cancel = g_cancellable_new();
    std::optional<std::string> answer;

    Question() = default;
    Question(const Question&) = delete;
    Question& operator=(const Question&) = delete;
    ~Question()
    {
        g_object_unref(cancel);
        g_main_context_unref(context);
    }
};

namespace
{

using Held = std::shared_ptr<ProxyLookup::Question>;

/// The answer's end owns one hold on the question, so that it may come after everybody has left.
void Answered(GObject* source, GAsyncResult* result, gpointer data)
{
    const std::unique_ptr<Held> held{static_cast<Held*>(data)};
    std::vector<std::string> named;
    // A desktop that fails to answer names none: then the environment counts.
    if (char** list = g_proxy_resolver_lookup_finish(G_PROXY_RESOLVER(source), result, nullptr)) {
        for (char** address = list; *address != nullptr; ++address)
            named.emplace_back(*address);
        g_strfreev(list);
    }
    (*held)->answer = ProxyFrom(named);
}

} // namespace

ProxyLookup::ProxyLookup(const std::string& url, _GProxyResolver* resolver)
    : question_(std::make_shared<Question>())
{
    GProxyResolver* const asked = resolver != nullptr ? resolver : g_proxy_resolver_get_default();
    g_main_context_push_thread_default(question_->context);
    g_proxy_resolver_lookup_async(asked, url.c_str(), question_->cancel, Answered,
                                  new Held{question_});
    g_main_context_pop_thread_default(question_->context);
}

ProxyLookup::~ProxyLookup()
{
    g_cancellable_cancel(question_->cancel);
    (void)Poll(); // what is answered already lets go of the question
}

std::optional<std::string> ProxyLookup::Poll()
{
    while (!question_->answer && g_main_context_iteration(question_->context, FALSE) != FALSE)
        ;
    return question_->answer;
}

std::string ProxyFrom(const std::vector<std::string>& named)
{
    constexpr std::string_view plainSocks = "socks://";
    for (const std::string& address : named) {
        if (address.starts_with("direct://"))
            return {};
        if (address.starts_with(plainSocks)) // the desktop means version 5, names resolved there
            return "socks5h://" + address.substr(plainSocks.size());
        if (address.find("://") != std::string::npos)
            return address;
    }
    return {};
}

} // namespace kestrova::platform
