#pragma once

namespace kestrova
{

/// How waves are encoded from now on.
struct Mp3Settings {
    int channels = 1;  ///< 1 mono, 2 stereo
    int bitRate = 48;  ///< kbit/s
    int frequency = 0; ///< Hz; 0: as the encoder thinks best
    bool operator==(const Mp3Settings&) const = default;
};

} // namespace kestrova
