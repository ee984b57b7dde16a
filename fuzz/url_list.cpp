#include "formats/url_list.h"

#include "check.h"
#include "formats/url_changes.h"
#include "formats/url_json.h"
#include "formats/url_text.h"

#include <cmath>

using namespace kestrova;
using namespace kestrova::fuzz;

/// The list of web addresses: what can be read is written the same again, as bytes and as text, and
/// no record shows what it must not.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    UrlJsonFault fault;
    if (const auto draft = ParseUrlJson(bytes, fault))
        for (const UrlDraft& record : draft->records)
            Promise(FormatUrlList({0, {record.record}}).has_value(), "a record fits into a list");

    const auto list = ParseUrlList(bytes);
    if (!list)
        return 0;
    const auto written = FormatUrlList(*list);
    Promise(written && written->size() <= bytes.size(), "what was read fits into a list");
    const auto again = ParseUrlList(*written);
    Promise(again && again->records == list->records, "a list that is written again is the same");
    const auto draft = ParseUrlJson(FormatUrlJson(*list), fault);
    Promise(draft && draft->records.size() == list->records.size(), "as text it is whole");
    for (std::size_t i = 0; i < list->records.size(); ++i)
        Promise(draft->records[i].record == list->records[i], "as text it is the same");
    Promise(draft->updateDate.has_value() == std::isfinite(list->updateDate), "so is its date");

    for (const ListedUrlKind& kind : ListedUrlKinds())
        for (const std::size_t place : ListedRecords(*list, kind.kind)) {
            const UrlRecord& record = list->records[place];
            Promise(!record.description.starts_with("***"), "what is hidden is not listed");
            Promise(UrlRowText(record).find_first_of("\r\n") == std::string::npos,
                    "a row is a line");
            (void)ShownAddress(record.url);
        }
    (void)UpdateDateText(list->updateDate);
    const UrlList merged = MergedUrls(*list, *list, 1.0);
    Promise(merged.records.size() >= list->records.size(), "a server's records all come");
    Promise(NoticesOf(merged, 103).size() <= merged.records.size(), "a record has one notice");
    if (!list->records.empty())
        (void)DoublesOf(*list, list->records.front());
    return 0;
}
