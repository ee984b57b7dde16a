#pragma once

#include "session/mp3_settings.h"

#include <string>
#include <vector>

/// The lists from which a person chooses how mp3 is encoded.
namespace kestrova
{

/// The rows of a list and the one that it begins with.
struct Mp3Choice {
    std::vector<std::string> rows;
    std::size_t usual = 0;
};
Mp3Choice BitRateChoice();
Mp3Choice ChannelChoice();
Mp3Choice FrequencyChoice();

/// The settings for a chosen row of each list, or for the words of an own one.
Mp3Settings SettingsOfRows(const std::string& bitRate, const std::string& channels,
                           std::size_t frequencyRow);

/// `6.75 %`: about what a game's wave becomes, by the bit rate alone.
std::string Mp3Estimate(int bitRate);

bool IsMp3BitRate(int bitRate);
bool IsMp3Frequency(int frequency);
/// The numbers, for words about a wrong one.
std::string Mp3BitRateList();
std::string Mp3FrequencyList();

} // namespace kestrova
