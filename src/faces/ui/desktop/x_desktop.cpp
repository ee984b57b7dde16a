#include "ui/desktop/x_desktop.h"

#include <QGuiApplication>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <thread>
#include <xcb/xcb.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace kestrova
{

namespace
{

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
/// Replies and events are the caller's to free.
template <class T> std::unique_ptr<T, FreeReply> Own(T* reply)
{
    return std::unique_ptr<T, FreeReply>{reply};
}

// Key symbols as X.Org's keysymdef.h numbers them; digits are their own Latin 1 codes.
constexpr std::uint32_t symbolReturn = 0xFF0D;
constexpr std::uint32_t symbolF9 = 0xFFC6;
constexpr std::uint32_t symbolF11 = 0xFFC8;
constexpr std::uint32_t symbolShift = 0xFFE1;

constexpr std::uint32_t mostProperty = 4096; ///< in words of four bytes
constexpr int activationTries = 30;
constexpr std::chrono::milliseconds activationPause{10};

bool IsIn(std::span<const std::uint8_t> bits, std::uint8_t code)
{
    return code != 0 && (bits[code / 8U] >> (code % 8U) & 1U) != 0;
}

} // namespace

std::unique_ptr<XDesktop> XDesktop::Open()
{
    const auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    // Without a display there is an interface all the same.
    if (application == nullptr || application->display() == nullptr ||
        application->connection() == nullptr)
        return nullptr;
    return std::unique_ptr<XDesktop>{new XDesktop(application->connection())};
}

XDesktop::XDesktop(xcb_connection_t* connection) : connection_(connection)
{
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    ReadKeyTable();
    keys_[0].code = StrokeOf(symbolF9).code;
    keys_[1].code = StrokeOf(symbolF11).code;
    WantRawKeys();
    qGuiApp->installNativeEventFilter(this);
}

XDesktop::~XDesktop()
{
    if (qGuiApp != nullptr)
        qGuiApp->removeNativeEventFilter(this);
}

void XDesktop::ReadKeyTable()
{
    const xcb_setup_t* setup = xcb_get_setup(connection_);
    firstCode_ = setup->min_keycode;
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto reply = Own(xcb_get_keyboard_mapping_reply(
        connection_, xcb_get_keyboard_mapping(connection_, firstCode_, count), nullptr));
    if (reply == nullptr)
        return;
    symbolsPerCode_ = reply->keysyms_per_keycode;
    const xcb_keysym_t* first = xcb_get_keyboard_mapping_keysyms(reply.get());
    symbols_.assign(first, first + xcb_get_keyboard_mapping_keysyms_length(reply.get()));
}

XDesktop::Stroke XDesktop::StrokeOf(std::uint32_t symbol) const
{
    for (std::size_t shift = 0; shift < 2 && shift < symbolsPerCode_; ++shift)
        for (std::size_t row = 0; row * symbolsPerCode_ + shift < symbols_.size(); ++row)
            if (symbols_[row * symbolsPerCode_ + shift] == symbol)
                return {static_cast<std::uint8_t>(firstCode_ + row), shift == 1};
    return {};
}

/// Presses are told to everybody who asked for raw ones, also while a game holds the keyboard.
void XDesktop::WantRawKeys()
{
    const auto* extension = xcb_get_extension_data(connection_, &xcb_input_id);
    if (extension == nullptr || extension->present == 0)
        return;
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } wanted{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
             XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE};
    const auto failure = Own(xcb_request_check(
        connection_, xcb_input_xi_select_events_checked(connection_, root_, 1, &wanted.head)));
    if (failure == nullptr)
        inputEvents_ = extension->major_opcode;
}

bool XDesktop::nativeEventFilter(const QByteArray& kind, void* message, qintptr*)
{
    if (inputEvents_ == 0 || kind != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_ge_generic_event_t*>(message);
    constexpr std::uint8_t sent = 0x80; // by a program, not by the server
    if ((event->response_type & ~sent) != XCB_GE_GENERIC || event->extension != inputEvents_)
        return false;
    const bool press = event->event_type == XCB_INPUT_RAW_KEY_PRESS;
    if (!press && event->event_type != XCB_INPUT_RAW_KEY_RELEASE)
        return false;
    const auto* raw = static_cast<const xcb_input_raw_key_press_event_t*>(message);
    for (Watched& key : keys_)
        if (key.code != 0 && raw->detail == key.code) {
            if (press)
                key.latch.NotePress();
            else
                key.latch.NoteRelease();
        }
    return false;
}

bool XDesktop::IsKeyDown(GameKey key)
{
    Watched& watched = keys_[static_cast<std::size_t>(key)];
    const auto reply =
        Own(xcb_query_keymap_reply(connection_, xcb_query_keymap(connection_), nullptr));
    return watched.latch.Take(reply != nullptr && IsIn(reply->keys, watched.code));
}

void XDesktop::Press(std::uint8_t code, bool down)
{
    xcb_test_fake_input(connection_, down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, code, XCB_CURRENT_TIME,
                        XCB_NONE, 0, 0, 0);
}

void XDesktop::TypeKeys(std::string_view keys)
{
    const auto* extension = xcb_get_extension_data(connection_, &xcb_test_id);
    if (extension == nullptr || extension->present == 0)
        return;
    const std::uint8_t shift = StrokeOf(symbolShift).code;
    for (const char key : keys) {
        const Stroke stroke =
            StrokeOf(key == '\n' ? symbolReturn : static_cast<unsigned char>(key));
        if (stroke.code == 0)
            continue;
        if (stroke.shifted)
            Press(shift, true);
        Press(stroke.code, true);
        Press(stroke.code, false);
        if (stroke.shifted)
            Press(shift, false);
    }
    xcb_flush(connection_);
}

std::uint32_t XDesktop::Atom(const char* name)
{
    const auto length = static_cast<std::uint16_t>(std::strlen(name));
    const auto reply = Own(
        xcb_intern_atom_reply(connection_, xcb_intern_atom(connection_, 0, length, name), nullptr));
    return reply == nullptr ? xcb_atom_t{XCB_ATOM_NONE} : reply->atom;
}

std::vector<std::uint32_t> XDesktop::Windows(std::uint32_t window, const char* property)
{
    const auto reply = Own(xcb_get_property_reply(
        connection_,
        xcb_get_property(connection_, 0, window, Atom(property), XCB_ATOM_WINDOW, 0, mostProperty),
        nullptr));
    if (reply == nullptr || reply->format != 32)
        return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + xcb_get_property_value_length(reply.get()) / 4};
}

std::string XDesktop::TitleOf(std::uint32_t window)
{
    for (const std::uint32_t property : {Atom("_NET_WM_NAME"), std::uint32_t{XCB_ATOM_WM_NAME}}) {
        const auto reply = Own(xcb_get_property_reply(
            connection_,
            xcb_get_property(connection_, 0, window, property, XCB_ATOM_ANY, 0, mostProperty),
            nullptr));
        if (reply == nullptr || reply->format != 8)
            continue;
        const auto* text = static_cast<const char*>(xcb_get_property_value(reply.get()));
        return {text, static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
    }
    return {};
}

/// Among those that the window manager lists; without one, among the windows on the screen.
std::optional<std::uint32_t> XDesktop::FindWindow(const std::string& title)
{
    std::vector<std::uint32_t> windows = Windows(root_, "_NET_CLIENT_LIST");
    if (windows.empty()) {
        const auto reply =
            Own(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root_), nullptr));
        if (reply != nullptr) {
            const xcb_window_t* first = xcb_query_tree_children(reply.get());
            windows.assign(first, first + xcb_query_tree_children_length(reply.get()));
        }
    }
    for (const std::uint32_t window : windows)
        if (TitleOf(window) == title)
            return window;
    return std::nullopt;
}

bool XDesktop::HasKeyboard(std::uint32_t window)
{
    const auto active = Windows(root_, "_NET_ACTIVE_WINDOW");
    if (!active.empty())
        return active.front() == window;
    const auto reply =
        Own(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    return reply != nullptr && reply->focus == window;
}

bool XDesktop::ActivateWindow(const std::string& title)
{
    const auto window = FindWindow(title);
    if (!window)
        return false;
    if (const auto managers = Windows(root_, "_NET_SUPPORTING_WM_CHECK"); !managers.empty()) {
        xcb_client_message_event_t wish{};
        wish.response_type = XCB_CLIENT_MESSAGE;
        wish.format = 32;
        wish.window = *window;
        wish.type = Atom("_NET_ACTIVE_WINDOW");
        wish.data.data32[0] = 2; // by the person's wish, as from a list of windows
        xcb_send_event(connection_, 0, root_,
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&wish));
    } else {
        xcb_set_input_focus(connection_, XCB_INPUT_FOCUS_PARENT, *window, XCB_CURRENT_TIME);
    }
    xcb_flush(connection_);
    for (int i = 0; i < activationTries; ++i) {
        if (HasKeyboard(*window))
            return true;
        std::this_thread::sleep_for(activationPause);
    }
    return false;
}

} // namespace kestrova
