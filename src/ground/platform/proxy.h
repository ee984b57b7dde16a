#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

struct _GProxyResolver;

/// Through which proxy the desktop wants an address reached.
namespace kestrova::platform
{

/// A question to the desktop's settings, which may take a while (a script of rules, say).
class ProxyLookup
{
public:
    /// `resolver`: null for the desktop's.
    explicit ProxyLookup(const std::string& url, _GProxyResolver* resolver = nullptr);
    ~ProxyLookup();
    ProxyLookup(const ProxyLookup&) = delete;
    ProxyLookup& operator=(const ProxyLookup&) = delete;

    /// The proxy's address as the transfer library takes it, once it is known; an empty one leaves
    /// it to the environment (`http_proxy` and its kin). Never waits.
    [[nodiscard]] std::optional<std::string> Poll();

    struct Question;

private:
    std::shared_ptr<Question> question_;
};

/// Of the addresses that the desktop names, best first, the one to use; empty for none.
std::string ProxyFrom(const std::vector<std::string>& named);

} // namespace kestrova::platform
