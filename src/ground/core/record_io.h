#pragma once

#include "core/result.h"
#include "core/text.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

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
    /// A text behind its own 16-bit length, kept as it is.
    void CountedText(std::string& value)
    {
        std::int16_t length = 0;
        Number(length);
        good_ = good_ && length >= 0;
        value = FromWindows1252(Take(static_cast<std::size_t>(length)));
    }
    /// The 32-bit count of what follows, `least` bytes an entry at the least: room is made only for
    /// entries that the bytes can hold.
    template <class Entry> void Count(std::vector<Entry>& entries, std::size_t least)
    {
        std::int32_t count = 0;
        Number(count);
        good_ = good_ && count >= 0 && static_cast<std::size_t>(count) <= Left() / least;
        entries.resize(good_ ? static_cast<std::size_t>(count) : 0);
    }
    /// False at the end of the bytes, for what older files end without.
    [[nodiscard]] bool HasMore() const { return Left() > 0; }

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

    /// A text longer than its length can say fails the writer for good.
    void CountedText(const std::string& value)
    {
        const std::string text = ToWindows1252(value);
        good_ = good_ && text.size() <= std::numeric_limits<std::int16_t>::max();
        Number(static_cast<std::int16_t>(text.size()));
        bytes_ += text;
    }
    template <class Entry> void Count(const std::vector<Entry>& entries, std::size_t)
    {
        good_ = good_ && entries.size() <= std::numeric_limits<std::int32_t>::max();
        Number(static_cast<std::int32_t>(entries.size()));
    }
    [[nodiscard]] bool HasMore() const { return true; }

    [[nodiscard]] bool Good() const { return good_; }
    [[nodiscard]] const std::string& Bytes() const { return bytes_; }

private:
    template <class T> void Number(const T& value)
    {
        bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
    }

    std::string bytes_;
    bool good_ = true;
};

} // namespace kestrova
