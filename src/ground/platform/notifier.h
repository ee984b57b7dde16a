#pragma once

#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

struct _GCancellable;

namespace kestrova::platform
{

/// Where the desktop's session bus listens, as its surroundings tell; empty where there is none.
/// None is ever started.
std::string SessionBusAddress();

/// Tells the person who looks at other windows, through the desktop's notifications
/// (org.freedesktop.Notifications). It never waits: a thread of its own speaks to the desktop.
/// Where nobody shows notifications nothing happens, and nothing is told.
class Notifier
{
public:
    /// `bus`: the address of a message bus.
    explicit Notifier(std::string bus = SessionBusAddress());
    /// What was not shown yet is dropped.
    ~Notifier();
    Notifier(const Notifier&) = delete;
    Notifier& operator=(const Notifier&) = delete;

    /// Takes the place of the notification before. Of several that come at once the last is shown.
    void Show(const std::string& title, const std::string& text);

private:
    struct Words {
        std::string title;
        std::string text;
    };
    class Desktop;
    void Run();

    const std::string bus_;
    _GCancellable* cancel_;
    std::mutex mutex_;
    std::condition_variable news_;
    std::optional<Words> next_;
    bool ends_ = false;
    std::thread thread_; ///< begins with the first words
};

} // namespace kestrova::platform
