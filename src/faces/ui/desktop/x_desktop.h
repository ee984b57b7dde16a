#pragma once

#include "session/key_latch.h"
#include "session/machine.h"

#include <QAbstractNativeEventFilter>
#include <array>
#include <cstdint>
#include <optional>

struct xcb_connection_t;

namespace kestrova
{

/// What the X display tells and takes beyond this program's own windows, over the connection that
/// the windows have: keys of other windows, and other programs' windows.
class XDesktop : public QAbstractNativeEventFilter
{
public:
    /// None where the windows have no X display (Wayland, no desktop at all).
    static std::unique_ptr<XDesktop> Open();
    ~XDesktop() override;

    bool IsKeyDown(GameKey key);
    void TypeKeys(std::string_view keys);
    bool ActivateWindow(const std::string& title);

    bool nativeEventFilter(const QByteArray& kind, void* message, qintptr* result) override;

private:
    explicit XDesktop(xcb_connection_t* connection);
    void ReadKeyTable();
    void WantRawKeys();
    struct Stroke {
        std::uint8_t code = 0; ///< 0: the keyboard has no such key
        bool shifted = false;
    };
    [[nodiscard]] Stroke StrokeOf(std::uint32_t symbol) const;
    void Press(std::uint8_t code, bool down);
    [[nodiscard]] std::optional<std::uint32_t> FindWindow(const std::string& title);
    [[nodiscard]] std::uint32_t Atom(const char* name);
    [[nodiscard]] std::vector<std::uint32_t> Windows(std::uint32_t window, const char* property);
    [[nodiscard]] std::string TitleOf(std::uint32_t window);
    [[nodiscard]] bool HasKeyboard(std::uint32_t window);

    xcb_connection_t* connection_;
    std::uint32_t root_ = 0;
    std::uint8_t firstCode_ = 0;
    std::uint8_t symbolsPerCode_ = 0;
    std::vector<std::uint32_t> symbols_;
    std::uint8_t inputEvents_ = 0; ///< the extension's number in raw events; 0 without it
    struct Watched {
        std::uint8_t code = 0;
        KeyLatch latch;
    };
    std::array<Watched, 2> keys_; ///< in the order of `GameKey`
};

} // namespace kestrova
