#pragma once

#include "core/result.h"
#include "core/text.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

/// Fixed binary records: little-endian, no padding, text in Windows-1252 padded with blanks, truth
/// values as 16-bit integers with True = -1. One `Describe(io, record)` a record serves reading
/// and writing:
///
///     template <class Io, class Entry> void Describe(Io& io, Entry& entry)
///     {
///         io.Text(entry.name, 80);
///         io.F64(entry.date);
///         io.I32(entry.size);
///     }
namespace kestrova
{

static_assert(std::endian::native == std::endian::little);

/// Reads records from bytes. The first field that lies beyond the bytes fails the reader for good;
/// ask `Good()` once, at the end of a record.
class RecordReader
{
public:
    explicit RecordReader(std::string_view bytes) : bytes_(bytes) {}

    void Text(std::string& value, std::size_t width)
    {
        value = FromWindows1252(TrimEnd(Take(width)));
    }
    void I16(std::int16_t& value) { Number(value); }
    void I32(std::int32_t& value) { Number(value); }
    void F64(double& value) { Number(value); }
    /// Only exactly -1 is True; any other value is kept out.
    void Flag(bool& value)
    {
        std::int16_t number = 0;
        Number(number);
        value = number == -1;
    }

    [[nodiscard]] bool Good() const { return good_; }
    [[nodiscard]] std::size_t Left() const { return bytes_.size() - place_; }
    [[nodiscard]] std::size_t Place() const { return place_; }

private:
    std::string_view Take(std::size_t width)
    {
        if (!good_ || Left() < width) {
            good_ = false;
            return {};
        }
        place_ += width;
        return bytes_.substr(place_ - width, width);
    }
    template <class T> void Number(T& value)
    {
        const std::string_view bytes = Take(sizeof value);
        value = {};
        if (!bytes.empty())
            std::memcpy(&value, bytes.data(), sizeof value);
    }

    std::string_view bytes_;
    std::size_t place_ = 0;
    bool good_ = true;
};

/// Writes records as bytes. A text longer than its field is cut at the field's end.
class RecordWriter
{
public:
    void Reserve(std::size_t bytes) { bytes_.reserve(bytes); }
    void Text(const std::string& value, std::size_t width)
    {
        const std::string field = ToWindows1252(value);
        const std::size_t kept = std::min(field.size(), width);
        bytes_.append(field, 0, kept).append(width - kept, ' ');
    }
    void I16(const std::int16_t& value) { Number(value); }
    void I32(const std::int32_t& value) { Number(value); }
    void F64(const double& value) { Number(value); }
    void Flag(const bool& value) { Number(static_cast<std::int16_t>(value ? -1 : 0)); }

    [[nodiscard]] const std::string& Bytes() const { return bytes_; }

private:
    template <class T> void Number(const T& value)
    {
        bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
    }

    std::string bytes_;
};

} // namespace kestrova
