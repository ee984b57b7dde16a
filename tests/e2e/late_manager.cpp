// A window manager that takes its time and has its own mind: the first window that is to be shown
// stands somewhere else than it wanted to, and later than it asked for. All others stand where they
// ask to. It says so on its standard output, and works until it is ended.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <xcb/xcb.h>

namespace
{

constexpr std::uint32_t chosenPlace[] = {170, 130};
constexpr std::chrono::milliseconds slowness{400};

/// Whatever it asks for it gets.
void Configure(xcb_connection_t& server, const xcb_configure_request_event_t& asked)
{
    const std::uint32_t all[] = {static_cast<std::uint32_t>(asked.x),
                                 static_cast<std::uint32_t>(asked.y), asked.width, asked.height};
    const std::uint16_t parts[] = {XCB_CONFIG_WINDOW_X, XCB_CONFIG_WINDOW_Y,
                                   XCB_CONFIG_WINDOW_WIDTH, XCB_CONFIG_WINDOW_HEIGHT};
    for (int i = 0; i < 4; ++i)
        if ((asked.value_mask & parts[i]) != 0)
            xcb_configure_window(&server, asked.window, parts[i], &all[i]);
}

bool TakeScreen(xcb_connection_t& server)
{
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(&server)).data;
    const std::uint32_t wanted = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_generic_error_t* error = xcb_request_check(
        &server,
        xcb_change_window_attributes_checked(&server, screen->root, XCB_CW_EVENT_MASK, &wanted));
    const bool taken = error == nullptr;
    std::free(error);
    return taken;
}

} // namespace

int main()
{
    xcb_connection_t* server = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(server) != 0 || !TakeScreen(*server))
        return EXIT_FAILURE;
    std::puts("manages");
    std::fflush(stdout);
    bool first = true;
    while (xcb_generic_event_t* event = xcb_wait_for_event(server)) {
        switch (event->response_type & 0x7f) {
        case XCB_CONFIGURE_REQUEST:
            Configure(*server, *reinterpret_cast<xcb_configure_request_event_t*>(event));
            break;
        case XCB_MAP_REQUEST: {
            const auto window = reinterpret_cast<xcb_map_request_event_t*>(event)->window;
            if (first) {
                std::this_thread::sleep_for(slowness);
                xcb_configure_window(server, window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y,
                                     chosenPlace);
            }
            first = false;
            xcb_map_window(server, window);
            break;
        }
        default:
            break;
        }
        xcb_flush(server);
        std::free(event);
    }
    xcb_disconnect(server);
}
