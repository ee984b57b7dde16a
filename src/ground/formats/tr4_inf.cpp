#include "formats/tr4_inf.h"

#include "core/record_io.h"

namespace kestrova
{

namespace
{

constexpr std::size_t soundEntrySize = 92;

template <class Io, class Entry> void DescribeEntry(Io& io, Entry& entry)
{
    io.Text(entry.name, 80);
    io.F64(entry.date);
    io.I32(entry.size);
}

} // namespace

Result<std::vector<Tr4Entry>> ParseTr4Inf(std::string_view bytes)
{
    RecordReader reader{bytes};
    std::int32_t count = 0;
    reader.I32(count);
    if (!reader.Good() || count < 0 ||
        static_cast<std::size_t>(count) > reader.Left() / soundEntrySize)
        return Failure{ErrorCode::Damaged, {}, {}};
    std::vector<Tr4Entry> entries(static_cast<std::size_t>(count));
    for (Tr4Entry& entry : entries)
        DescribeEntry(reader, entry);
    return entries;
}

std::string FormatTr4Inf(const std::vector<Tr4Entry>& entries)
{
    RecordWriter writer;
    writer.I32(static_cast<std::int32_t>(entries.size()));
    for (const Tr4Entry& entry : entries)
        DescribeEntry(writer, entry);
    return writer.Bytes();
}

} // namespace kestrova
