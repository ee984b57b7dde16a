#include "core/code_page.h"

#include <array>
#include <cerrno>
#include <iconv.h>

namespace kestrova
{

namespace
{

/// An open converter; closed at the end of its life.
class Converter
{
public:
    explicit Converter(const std::string& page) : handle_(iconv_open("UTF-8", page.c_str())) {}
    ~Converter()
    {
        if (IsOpen())
            iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    [[nodiscard]] bool IsOpen() const
    {
        return handle_ != reinterpret_cast<iconv_t>(static_cast<std::intptr_t>(-1));
    }
    [[nodiscard]] iconv_t Handle() const { return handle_; }

private:
    iconv_t handle_;
};

} // namespace

std::optional<std::string> FromCodePage(std::string_view bytes, const std::string& page)
{
    const Converter converter{page};
    if (!converter.IsOpen())
        return {};
    constexpr auto failed = static_cast<std::size_t>(-1);
    std::string copy{bytes}; // the converter's signature wants no constant, and changes nothing
    char* in = copy.data();
    std::size_t left = copy.size();
    std::string text;
    std::array<char, 1024> buffer{};
    while (left > 0) {
        char* out = buffer.data();
        std::size_t room = buffer.size();
        const bool stuck =
            iconv(converter.Handle(), &in, &left, &out, &room) == failed && errno != E2BIG;
        text.append(buffer.data(), buffer.size() - room);
        if (stuck)
            return {};
    }
    return text;
}

} // namespace kestrova
