#include "formats/url_json.h"

#include "core/text.h"

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

using OrderedJson = nlohmann::ordered_json;

/// The member's text; empty without one. False for a member that is no text, or more than a list
/// can hold.
bool ReadText(const OrderedJson& object, const char* name, std::string& text)
{
    const auto member = object.find(name);
    if (member == object.end())
        return true;
    if (!member->is_string())
        return false;
    text = member->get<std::string>();
    return ToWindows1252(text).size() <= std::numeric_limits<std::int16_t>::max();
}

bool ReadFiles(const OrderedJson& object, std::vector<std::string>& files)
{
    const auto member = object.find("files");
    if (member == object.end())
        return true;
    if (!member->is_array())
        return false;
    for (const OrderedJson& file : *member) {
        if (!file.is_string())
            return false;
        files.push_back(file.get<std::string>());
    }
    return true;
}

bool ReadRecord(const OrderedJson& object, UrlDraft& draft)
{
    if (!object.is_object())
        return false;
    const auto kind = object.find("kind");
    if (kind == object.end() || !kind->is_number_integer())
        return false;
    const auto number = kind->get<std::int64_t>();
    draft.record.kind = static_cast<std::int32_t>(number);
    const auto user = object.find("user");
    if (draft.record.kind != number || (user != object.end() && !user->is_boolean()))
        return false;
    draft.record.user = user != object.end() && user->get<bool>();
    const bool made = draft.record.kind == UrlKindConfig && !object.contains("description");
    return ReadText(object, "url", draft.record.url) && object.contains("url") &&
           ReadText(object, "description", draft.record.description) &&
           (made || object.contains("description")) && ReadText(object, "package", draft.package) &&
           ReadText(object, "level", draft.level) && ReadText(object, "folder", draft.folder) &&
           ReadFiles(object, draft.files) && (!made || !draft.files.empty());
}

} // namespace

std::optional<UrlListDraft> ParseUrlJson(std::string_view text, UrlJsonFault& fault)
{
    fault = {};
    const OrderedJson json = OrderedJson::parse(text, nullptr, false);
    UrlListDraft list;
    if (json.is_object())
        if (const auto updated = json.find("updated"); updated != json.end()) {
            if (!updated->is_number())
                return std::nullopt;
            list.updateDate = updated->get<double>();
        }
    const OrderedJson* records = &json;
    if (json.is_object()) {
        const auto member = json.find("records");
        if (member == json.end())
            return std::nullopt;
        records = &*member;
    }
    if (!records->is_array())
        return std::nullopt;
    for (const OrderedJson& object : *records) {
        ++fault.record;
        list.records.emplace_back();
        if (!ReadRecord(object, list.records.back()))
            return std::nullopt;
    }
    return list;
}

std::string FormatUrlJson(const UrlList& list)
{
    OrderedJson records = OrderedJson::array();
    for (const UrlRecord& record : list.records)
        records.push_back({{"kind", record.kind},
                           {"description", Readable(record.description)},
                           {"url", Readable(record.url)},
                           {"user", record.user}});
    OrderedJson json;
    if (std::isfinite(list.updateDate))
        json["updated"] = list.updateDate;
    json["records"] = std::move(records);
    return json.dump(1) + "\n";
}

} // namespace kestrova
