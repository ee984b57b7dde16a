#include "practice/music.h"

#include "audio/ms_adpcm_writer.h"
#include "practice/dice.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

namespace kestrova
{

namespace
{

constexpr int rate = 44100;
constexpr std::size_t longestPhrase = std::size_t{2036} * 170; // frames, whole blocks of the coding

struct Note {
    double pitch = 0;    ///< Hz
    double loudness = 0; ///< from 0 to 1
    double left = 0;     ///< share of the left side
    double decay = 0;    ///< a second
};

/// Adds a note from `first` on: three partials, each a number that turns and shrinks.
void Pluck(std::vector<float>& sound, std::size_t first, std::size_t frames, const Note& note)
{
    for (int partial = 1; partial <= 3; ++partial) {
        const double angle = 2 * std::numbers::pi * note.pitch * partial / rate;
        const std::complex<double> turn = std::polar(std::exp(-note.decay * partial / rate), angle);
        const double real = turn.real();
        const double imaginary = turn.imag();
        double x = note.loudness / (partial * partial);
        double y = 0;
        for (std::size_t i = first; i < first + frames && i * 2 + 1 < sound.size(); ++i) {
            const double next = x * real - y * imaginary;
            y = x * imaginary + y * real;
            x = next;
            sound[i * 2] += static_cast<float>(y * note.left);
            sound[i * 2 + 1] += static_cast<float>(y * (1 - note.left));
        }
    }
}

/// What a tune plays, once: so many frames of two samples.
std::vector<std::int16_t> Phrase(std::uint64_t seed, std::size_t frames)
{
    constexpr std::array<std::array<int, 5>, 3> scales = {
        {{0, 2, 5, 7, 9}, {0, 3, 5, 7, 10}, {0, 1, 5, 7, 8}}};
    Dice dice{seed};
    const auto& scale = scales[dice.Below(3)];
    const double ground = 110 * std::pow(2.0, dice.Below(12) / 12.0);
    const double beat = 0.12 + 0.04 * dice.Below(5);
    const double seconds = static_cast<double>(frames) / rate;
    std::vector<float> sound(frames * 2);
    for (double at = 0; at < seconds; at += beat * (1 + dice.Below(2))) {
        const int tone = scale[dice.Below(5)] + 12 * static_cast<int>(dice.Below(2));
        Note note{ground * std::pow(2.0, tone / 12.0), 0.25 + 0.15 * dice.Part(), dice.Part(),
                  2.5 + 2 * dice.Part()};
        Pluck(sound, static_cast<std::size_t>(at * rate), rate * 6 / 5, note);
        if (dice.Below(4) == 0) {
            note = {ground / 2, 0.3, 0.5, 1.8};
            Pluck(sound, static_cast<std::size_t>(at * rate), rate * 2, note);
        }
    }
    std::vector<std::int16_t> samples(frames * 2);
    const std::size_t fade = std::min<std::size_t>(frames, 4000); // no click at the end
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const std::size_t left = frames - i / 2;
        const double volume =
            left < fade ? static_cast<double>(left) / static_cast<double>(fade) : 1;
        samples[i] = static_cast<std::int16_t>(28000 * std::tanh(sound[i] * volume));
    }
    return samples;
}

} // namespace

std::string TuneWave(std::uint64_t seed, double seconds)
{
    const auto frames = static_cast<std::size_t>(seconds * rate);
    if (frames <= longestPhrase)
        return EncodeMsAdpcmWave(Phrase(seed, frames), 2, rate);
    // Each block stands for itself, so a phrase is coded once and played again and again. What is
    // too short for all of it comes first: the tune ends as the phrase does.
    MsAdpcmEncoder encoder{2, rate};
    std::string phrase;
    encoder.Encode(Phrase(seed, longestPhrase), phrase);
    std::string wave = encoder.Header(frames);
    const std::size_t blocks = encoder.WaveSize(frames) - wave.size();
    wave.append(phrase, phrase.size() - blocks % phrase.size());
    while (wave.size() < encoder.WaveSize(frames))
        wave += phrase;
    return wave;
}

} // namespace kestrova
