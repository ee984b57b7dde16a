#include "conversion/mp3_choices.h"

#include "core/text.h"
#include "words/audio.h"
#include "words/conversion.h"

#include <algorithm>
#include <fmt/format.h>

namespace kestrova
{

namespace
{

constexpr int bitRates[] = {128, 112, 96, 80, 64, 56, 48, 40, 32, 24, 16, 8};
constexpr int frequencies[] = {44100, 32000, 22050, 16000, 12000, 11025, 8000};

template <std::size_t size> std::vector<std::string> WordsOf(const int (&numbers)[size])
{
    std::vector<std::string> words;
    for (const int number : numbers)
        words.push_back(std::to_string(number));
    return words;
}

} // namespace

Mp3Choice BitRateChoice()
{
    constexpr std::size_t usual = 9; // 24
    return {WordsOf(bitRates), usual};
}

Mp3Choice ChannelChoice()
{
    return {{GetMsg(Msg::WaveStereo), GetMsg(Msg::WaveMono)}, 1};
}

Mp3Choice FrequencyChoice()
{
    std::vector<std::string> rows = WordsOf(frequencies);
    rows.insert(rows.begin(), GetMsg(Msg::Mp3Automatic));
    return {std::move(rows), 0};
}

Mp3Settings SettingsOfRows(const std::string& bitRate, const std::string& channels,
                           std::size_t frequencyRow)
{
    Mp3Settings settings;
    settings.bitRate = LeadingNumber(bitRate);
    settings.channels = channels == Shown(Msg::WaveMono) ? 1 : 2;
    settings.frequency = frequencyRow == 0 || frequencyRow > std::size(frequencies)
                             ? 0
                             : frequencies[frequencyRow - 1];
    return settings;
}

std::string Mp3Estimate(int bitRate)
{
    constexpr double shareAt128 = 36;
    return fmt::format("{:.2f} %", bitRate * shareAt128 / 128);
}

bool IsMp3BitRate(int bitRate)
{
    return std::find(std::begin(bitRates), std::end(bitRates), bitRate) != std::end(bitRates);
}

bool IsMp3Frequency(int frequency)
{
    return frequency == 0 || std::find(std::begin(frequencies), std::end(frequencies), frequency) !=
                                 std::end(frequencies);
}

std::string Mp3BitRateList()
{
    return Join(WordsOf(bitRates), ", ");
}

std::string Mp3FrequencyList()
{
    return Join(WordsOf(frequencies), ", ");
}

} // namespace kestrova
