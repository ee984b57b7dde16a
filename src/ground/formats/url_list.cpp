#include "formats/url_list.h"

#include "core/record_io.h"

namespace kestrova
{

namespace
{

constexpr std::size_t leastRecord = 10;
constexpr std::string_view hiddenBeginning = "***";

template <class Io, class Record> void DescribeRecord(Io& io, Record& record)
{
    io.CountedText(record.url);
    io.CountedText(record.description);
    io.I32(record.kind);
    io.Flag(record.user);
}

template <class Io, class List> void DescribeList(Io& io, List& list)
{
    io.Count(list.records, leastRecord);
    io.F64(list.updateDate);
    for (auto& record : list.records)
        DescribeRecord(io, record);
}

} // namespace

std::optional<UrlList> ParseUrlList(std::string_view bytes)
{
    UrlList list;
    RecordReader reader{bytes};
    DescribeList(reader, list);
    if (!reader.Good())
        return std::nullopt;
    return list;
}

std::optional<std::string> FormatUrlList(const UrlList& list)
{
    RecordWriter writer;
    DescribeList(writer, list);
    if (!writer.Good())
        return std::nullopt;
    return writer.Bytes();
}

bool IsHidden(const UrlRecord& record)
{
    return record.kind == UrlKindVersion || record.kind == UrlKindNotice ||
           record.description.starts_with(hiddenBeginning);
}

std::vector<std::size_t> ListedRecords(const UrlList& list, std::int32_t kind)
{
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < list.records.size(); ++i)
        if (list.records[i].kind == kind && !IsHidden(list.records[i]))
            places.push_back(i);
    return places;
}

} // namespace kestrova
