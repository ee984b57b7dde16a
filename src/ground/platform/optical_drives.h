#pragma once

#include "platform/file_facts.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

/// The drives for discs of this machine.
namespace kestrova::platform
{

/// What lies in a drive.
enum class Medium {
    None,
    Blank,
    Written,
    Unknown, ///< the drive is shut or busy, or says nothing about it
};

struct OpticalDrive {
    std::string name;             ///< as the system calls it: `sr0`
    std::filesystem::path device; ///< `/dev/sr0`
    std::string model;            ///< maker and model
    bool writer = false;          ///< for any kind of disc
    std::filesystem::path folder; ///< where its disc is mounted; empty: nowhere
    Medium medium = Medium::Unknown;
    std::string label;       ///< of the disc's file system
    std::uint64_t total = 0; ///< bytes of a written disc
};

/// Where the system tells of its drives.
struct OpticalPlaces {
    std::filesystem::path blocks = "/sys/block";
    std::filesystem::path devices = "/dev";
    std::filesystem::path features = "/proc/sys/dev/cdrom/info";
    std::filesystem::path udev = "/run/udev/data";
    std::filesystem::path mounts = "/proc/self/mounts";
};

/// By name. A look at a drive neither shuts its door nor waits for its disc.
std::vector<OpticalDrive> OpticalDrives(const OpticalPlaces& places = {});

/// What the first volume descriptor of a disc's file system says (2,048 bytes at sector 16):
///
///      1  `CD001`
///     40  the label, 32 bytes, filled with blanks
///     80  sectors of 2,048 bytes, 32 bits, little-endian
struct DiscHead {
    std::string label;
    std::uint64_t bytes = 0;
};
/// Of a device, or of a file that holds what a disc does. `not_a_directory` where there is none.
std::error_code ReadDiscHead(const std::filesystem::path& image, DiscHead& head);

enum class DoorMove { Open, Shut };
std::error_code MoveDoor(const std::filesystem::path& device, DoorMove move);

} // namespace kestrova::platform
