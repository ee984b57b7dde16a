#include "practice/scene.h"

#include "practice/dice.h"
#include "practice/stroke_font.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace kestrova
{

namespace
{

struct Colour {
    double red = 0;
    double green = 0;
    double blue = 0;
};

Colour Mix(const Colour& a, const Colour& b, double part)
{
    part = std::clamp(part, 0.0, 1.0);
    return {a.red + (b.red - a.red) * part, a.green + (b.green - a.green) * part,
            a.blue + (b.blue - a.blue) * part};
}

enum class Building { Steps, Columns, Dome, Tower, Gables };

struct Style {
    Colour high;  ///< the sky above
    Colour low;   ///< the sky at the hills
    Colour light; ///< sun or moon, and the lettering
    Colour near;  ///< the ground in front
    Building building;
    double lightX;
    double lightY;
    bool stars;
    bool water;
};

constexpr std::array<Style, sceneStyles> styles = {{
    {{38, 62, 110},
     {236, 164, 96},
     {255, 226, 160},
     {44, 30, 28},
     Building::Steps,
     0.72,
     0.42,
     false,
     false},
    {{8, 12, 34},
     {40, 62, 104},
     {232, 238, 255},
     {10, 16, 26},
     Building::Dome,
     0.24,
     0.2,
     true,
     true},
    {{92, 30, 60},
     {250, 130, 74},
     {255, 214, 130},
     {38, 14, 26},
     Building::Tower,
     0.6,
     0.5,
     false,
     true},
    {{46, 84, 92},
     {178, 206, 176},
     {250, 248, 220},
     {20, 40, 34},
     Building::Gables,
     0.3,
     0.25,
     false,
     false},
    {{60, 120, 196},
     {214, 232, 244},
     {255, 252, 230},
     {64, 66, 58},
     Building::Columns,
     0.8,
     0.2,
     false,
     false},
    {{26, 18, 40},
     {110, 74, 108},
     {246, 206, 150},
     {20, 12, 20},
     Building::Gables,
     0.5,
     0.3,
     true,
     false},
}};

/// The picture at work: places from 0 to 1 across, and down in the same unit.
class Scene
{
public:
    Scene(int width, int height, int style)
        : width_(width), height_(height), tall_(static_cast<double>(height) / width),
          style_(styles[static_cast<std::size_t>(style)]), dice_(static_cast<unsigned>(style) + 77)
    {
        picture_.width = width;
        picture_.height = height;
        picture_.rgb.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
    }

    Picture Paint(std::string_view title)
    {
        PaintSky();
        PaintHills(0.56, 0.10, 0.25);
        PaintHills(0.64, 0.07, 0.5);
        PaintBuilding();
        PaintGround();
        PaintTitle(title);
        return std::move(picture_);
    }

private:
    std::uint8_t* At(int x, int y)
    {
        return picture_.rgb.data() + (static_cast<std::ptrdiff_t>(y) * width_ + x) * 3;
    }
    [[nodiscard]] Colour Get(int x, int y)
    {
        const std::uint8_t* pixel = At(x, y);
        return {static_cast<double>(pixel[0]), static_cast<double>(pixel[1]),
                static_cast<double>(pixel[2])};
    }
    void Put(int x, int y, const Colour& colour)
    {
        std::uint8_t* pixel = At(x, y);
        pixel[0] = static_cast<std::uint8_t>(std::clamp(colour.red, 0.0, 255.0));
        pixel[1] = static_cast<std::uint8_t>(std::clamp(colour.green, 0.0, 255.0));
        pixel[2] = static_cast<std::uint8_t>(std::clamp(colour.blue, 0.0, 255.0));
    }
    void Blend(int x, int y, const Colour& colour, double cover)
    {
        if (cover > 0 && x >= 0 && y >= 0 && x < width_ && y < height_)
            Put(x, y, Mix(Get(x, y), colour, cover));
    }
    [[nodiscard]] double Across(int x) const { return (x + 0.5) / width_; }
    [[nodiscard]] Colour Shade(double part) const { return Mix(style_.low, style_.near, part); }

    void PaintSky()
    {
        for (int y = 0; y < height_; ++y) {
            const double down = Across(y) / tall_;
            const Colour sky = Mix(style_.high, style_.low, std::pow(down / 0.7, 1.4));
            for (int x = 0; x < width_; ++x) {
                const double dx = Across(x) - style_.lightX;
                const double dy = Across(y) - style_.lightY * tall_;
                const double distance = std::sqrt(dx * dx + dy * dy);
                const double disc = (0.055 - distance) * width_ + 0.5;
                const double glow = 0.5 * std::exp(-distance * 7);
                Put(x, y, Mix(Mix(sky, style_.light, glow), style_.light, disc));
            }
        }
        for (int star = 0; style_.stars && star < 160; ++star) {
            const int x = static_cast<int>(dice_.Below(static_cast<unsigned>(width_)));
            const int y = static_cast<int>(dice_.Below(static_cast<unsigned>(height_ / 2)));
            Blend(x, y, {255, 255, 255}, 0.2 + 0.8 * dice_.Part());
        }
    }

    void PaintHills(double line, double swing, double shade)
    {
        std::array<double, 6> phase{};
        for (double& one : phase)
            one = dice_.Part() * 6.3;
        for (int x = 0; x < width_; ++x) {
            double top = line * tall_;
            for (std::size_t wave = 0; wave < phase.size(); ++wave) {
                const double times = static_cast<double>(1U << wave);
                top +=
                    swing * tall_ * std::sin(Across(x) * 5 * times + phase[wave]) / (1.6 * times);
            }
            Column(x, top, tall_, Shade(shade));
        }
    }

    /// Fills one column from `top` to `bottom`, both from 0 to the height in widths.
    void Column(int x, double top, double bottom, const Colour& colour)
    {
        const double first = top * width_;
        const double last = bottom * width_;
        for (int y = std::max(0, static_cast<int>(first)); y < std::min<double>(height_, last); ++y)
            Blend(x, y, colour, std::min({1.0, y + 1 - first, last - y}));
    }
    /// A box whose sides may lean: widths at the top and the bottom.
    void Block(double middle, double top, double bottom, double wideAbove, double wideBelow,
               const Colour& colour)
    {
        const double reach = std::max(wideAbove, wideBelow) / 2;
        for (int x = static_cast<int>((middle - reach) * width_);
             x <= static_cast<int>((middle + reach) * width_) && x < width_; ++x) {
            if (x < 0)
                continue;
            const double off = std::abs(Across(x) - middle) * 2;
            double from = top;
            double to = bottom;
            if (off > wideAbove && wideBelow > wideAbove)
                from = top + (bottom - top) * (off - wideAbove) / (wideBelow - wideAbove);
            if (off > wideBelow && wideAbove > wideBelow)
                to = top + (bottom - top) * (wideAbove - off) / (wideAbove - wideBelow);
            Column(x, from, to, colour);
        }
    }

    void PaintBuilding()
    {
        const Colour wall = Shade(0.72);
        const Colour dark = Shade(0.92);
        const Colour lamp = Mix(style_.light, style_.low, 0.3);
        const double ground = 0.78 * tall_;
        switch (style_.building) {
        case Building::Steps:
            for (int step = 0; step < 6; ++step)
                Block(0.36, ground - 0.045 * (step + 1), ground - 0.045 * step, 0.46 - 0.07 * step,
                      0.48 - 0.07 * step, step % 2 == 0 ? wall : Shade(0.66));
            Block(0.36, ground - 0.33, ground - 0.27, 0.07, 0.08, wall);
            Block(0.36, ground - 0.31, ground - 0.27, 0.025, 0.025, lamp);
            Block(0.36, ground - 0.27, ground, 0.04, 0.07, dark);
            break;
        case Building::Columns:
            Block(0.4, ground - 0.31, ground - 0.24, 0.02, 0.48, wall);
            Block(0.4, ground - 0.24, ground - 0.215, 0.48, 0.48, Shade(0.6));
            for (int column = 0; column < 7; ++column)
                Block(0.205 + 0.065 * column, ground - 0.215, ground - 0.02, 0.028, 0.034, wall);
            Block(0.4, ground - 0.03, ground, 0.5, 0.54, wall);
            break;
        case Building::Dome:
            for (int ring = 0; ring < 60; ++ring) {
                const double up = ring / 60.0;
                const double wide = 0.26 * std::sqrt(1 - up * up);
                Block(0.66, ground - 0.13 - 0.13 * (up + 1 / 60.0), ground - 0.13 - 0.13 * up, wide,
                      wide, wall);
            }
            Block(0.66, ground - 0.13, ground, 0.28, 0.3, wall);
            Block(0.70, ground - 0.27, ground - 0.17, 0.02, 0.045, dark);
            for (int window = 0; window < 5; ++window)
                Block(0.56 + 0.05 * window, ground - 0.09, ground - 0.05, 0.014, 0.014, lamp);
            break;
        case Building::Tower:
            Block(0.26, ground - 0.36, ground, 0.05, 0.085, wall);
            Block(0.26, ground - 0.40, ground - 0.36, 0.05, 0.05, lamp);
            Block(0.26, ground - 0.44, ground - 0.40, 0.01, 0.075, dark);
            for (int house = 0; house < 6; ++house) {
                const double middle = 0.42 + 0.1 * house;
                const double tall = 0.05 + 0.03 * dice_.Part();
                Block(middle, ground - tall - 0.04, ground - tall, 0.01, 0.1, dark);
                Block(middle, ground - tall, ground, 0.085, 0.085, wall);
                Block(middle, ground - 0.03, ground - 0.012, 0.012, 0.012, lamp);
            }
            break;
        case Building::Gables:
            Block(0.62, ground - 0.3, ground - 0.18, 0.03, 0.3, dark);
            Block(0.62, ground - 0.18, ground, 0.26, 0.26, wall);
            for (int side = 0; side < 2; ++side) {
                const double middle = 0.47 + 0.3 * side;
                Block(middle, ground - 0.36, ground - 0.24, 0.0, 0.1, dark);
                Block(middle, ground - 0.24, ground, 0.075, 0.085, wall);
                Block(middle, ground - 0.2, ground - 0.17, 0.014, 0.014, lamp);
            }
            for (int window = 0; window < 4; ++window)
                Block(0.545 + 0.05 * window, ground - 0.12, ground - 0.08, 0.018, 0.018, lamp);
            break;
        }
    }

    void PaintGround()
    {
        const int shore = static_cast<int>(0.78 * height_);
        for (int y = shore; y < height_; ++y) {
            const double depth = static_cast<double>(y - shore) / (height_ - shore);
            for (int x = 0; x < width_; ++x) {
                if (!style_.water) {
                    const double grain = 0.06 * dice_.Part();
                    Put(x, y, Mix(Shade(0.86), style_.near, depth * 1.2 + grain));
                    continue;
                }
                // The scene above, mirrored, with waves that grow towards the viewer.
                const double sway = std::sin(y * y * 0.004 + x * 0.05) * (1 + 5 * depth);
                const int from =
                    std::clamp(2 * shore - y - 1 + static_cast<int>(sway), 0, shore - 1);
                const int aside = std::clamp(x + static_cast<int>(sway), 0, width_ - 1);
                Put(x, y, Mix(Get(aside, from), style_.near, 0.35 + 0.45 * depth));
            }
        }
    }

    void PaintTitle(std::string_view title)
    {
        if (title.empty())
            return;
        const std::vector<std::string> lines = Lines(title);
        double longest = 0;
        for (const std::string& line : lines)
            longest = std::max(longest, StrokeWidth(line));
        const double unit = std::min(0.86 * width_ / longest, 0.042 * height_);
        double y = height_ * 0.08 + unit * 1.5;
        for (const std::string& line : lines) {
            const double x = (width_ - StrokeWidth(line) * unit) / 2;
            for (const Stroke& stroke : StrokesOf(line))
                PaintStroke(stroke, x + unit * 0.3, y + unit * 0.3, unit, unit * 0.62, {0, 0, 0},
                            0.6);
            for (const Stroke& stroke : StrokesOf(line))
                PaintStroke(stroke, x, y, unit, unit * 0.42,
                            Mix(style_.light, {255, 255, 255}, 0.4), 1);
            y += unit * 9;
        }
    }

    /// Words put on lines of about 16 letters.
    static std::vector<std::string> Lines(std::string_view title)
    {
        std::vector<std::string> lines(1);
        while (!title.empty()) {
            const std::string_view word = title.substr(0, title.find(' '));
            title.remove_prefix(std::min(title.size(), word.size() + 1));
            if (!lines.back().empty() && lines.back().size() + word.size() > 15)
                lines.emplace_back();
            if (!lines.back().empty())
                lines.back() += ' ';
            lines.back() += word;
        }
        return lines;
    }

    void PaintStroke(const Stroke& stroke, double left, double top, double unit, double radius,
                     const Colour& colour, double strength)
    {
        const double x1 = left + stroke.x1 * unit;
        const double y1 = top + stroke.y1 * unit;
        const double dx = (stroke.x2 - stroke.x1) * unit;
        const double dy = (stroke.y2 - stroke.y1) * unit;
        const double length = std::max(dx * dx + dy * dy, 1e-9);
        const double reach = radius + 1;
        for (int y = static_cast<int>(std::min(y1, y1 + dy) - reach);
             y <= std::max(y1, y1 + dy) + reach; ++y)
            for (int x = static_cast<int>(std::min(x1, x1 + dx) - reach);
                 x <= std::max(x1, x1 + dx) + reach; ++x) {
                const double along =
                    std::clamp(((x + 0.5 - x1) * dx + (y + 0.5 - y1) * dy) / length, 0.0, 1.0);
                const double away =
                    std::hypot(x + 0.5 - x1 - along * dx, y + 0.5 - y1 - along * dy);
                Blend(x, y, colour, strength * std::clamp(radius - away + 0.5, 0.0, 1.0));
            }
    }

    int width_;
    int height_;
    double tall_; ///< the height in widths
    const Style& style_;
    Dice dice_;
    Picture picture_;
};

} // namespace

Picture PaintScene(std::string_view title, int style, int width, int height)
{
    return Scene{width, height, style}.Paint(title);
}

} // namespace kestrova
