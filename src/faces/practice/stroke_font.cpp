#include "practice/stroke_font.h"

#include <array>
#include <string>

namespace kestrova
{

namespace
{

constexpr double advance = 5.2;

/// Lines through the points x y, each a digit; a bar lifts the pen.
constexpr std::array<std::string_view, 26> letters = {
    "062046|1333",                 // A
    "0006364544333303|0030414233", // B
    "4130100105163645",            // C
    "00062644422000",              // D
    "40000646|0333",               // E
    "400006|0333",                 // F
    "41301001051636454323",        // G
    "0006|4046|0343",              // H
    "1030|2026|1636",              // I
    "4045361605",                  // J
    "0006|400346",                 // K
    "000646",                      // L
    "0600234046",                  // M
    "06004640",                    // N
    "103041453616050110",          // O
    "06003041423303",              // P
    "103041453616050110|2446",     // Q
    "06003041423303|2346",         // R
    "413010010213334445361605",    // S
    "0040|2026",                   // T
    "000516364540",                // U
    "002640",                      // V
    "0016233640",                  // W
    "0046|4006",                   // X
    "002340|2326",                 // Y
    "00400646",                    // Z
};

void AddLines(std::string_view points, double at, std::vector<Stroke>& strokes)
{
    const auto digit = [&](std::size_t i) { return static_cast<double>(points[i] - '0'); };
    for (std::size_t i = 0; i + 3 < points.size(); i += 2) {
        if (points[i + 2] == '|') {
            i += 1; // the next round begins behind the bar
            continue;
        }
        strokes.push_back({at + digit(i), digit(i + 1), at + digit(i + 2), digit(i + 3)});
    }
}

/// Capitals, with an accent apart: two dots or a stroke above.
std::string Capitals(std::string_view text)
{
    std::string capitals;
    for (const char letter : text) {
        const auto code = static_cast<unsigned char>(letter);
        if (code == 0xDF) // sharp s has no capital here
            capitals += "SS";
        else if ((code >= 'a' && code <= 'z') || code >= 0xE0)
            capitals += static_cast<char>(code - 0x20);
        else
            capitals += letter;
    }
    return capitals;
}

void AddLetter(unsigned char code, double at, std::vector<Stroke>& strokes)
{
    constexpr std::string_view plain = "AAAAAAACEEEEIIIIDNOOOOO*OUUUUY"; // from 0xC0 on
    if (code >= 0xC0 && code - 0xC0U < plain.size()) {
        const bool dots = code == 0xC4 || code == 0xCB || code == 0xD6 || code == 0xDC;
        if (dots) {
            strokes.push_back({at + 1, -1.5, at + 1, -1.5});
            strokes.push_back({at + 3, -1.5, at + 3, -1.5});
        } else {
            strokes.push_back({at + 1.5, -1, at + 2.5, -2});
        }
        code = static_cast<unsigned char>(plain[code - 0xC0U]);
    }
    if (code >= 'A' && code <= 'Z')
        AddLines(letters[code - static_cast<unsigned char>('A')], at, strokes);
    else if (code == '\'')
        strokes.push_back({at + 2, 0, at + 2, 1.5});
    else if (code == '-')
        strokes.push_back({at + 1, 3, at + 3, 3});
}

} // namespace

std::vector<Stroke> StrokesOf(std::string_view text)
{
    std::vector<Stroke> strokes;
    double at = 0;
    for (const char letter : Capitals(text)) {
        AddLetter(static_cast<unsigned char>(letter), at, strokes);
        at += advance;
    }
    return strokes;
}

double StrokeWidth(std::string_view text)
{
    const std::size_t count = Capitals(text).size();
    return count == 0 ? 0 : static_cast<double>(count - 1) * advance + 4;
}

} // namespace kestrova
