#pragma once

#include "core/text.h"
#include "formats/swap_journal.h"

#include <algorithm>
#include <nlohmann/json.hpp>

/// What the notes of interrupted work have in common: JSON whose names are kept exactly.
namespace kestrova
{

using NoteJson = nlohmann::json;

/// Bytes that are no UTF-8, and the per cent sign, as %XX.
std::string Encoded(const std::string& name);
std::string Decoded(const std::string& text);

/// Reads members of the kinds that it expects; anything else fails it for good.
class NoteReader
{
public:
    explicit NoteReader(const NoteJson& object) : object_(object), good_(object.is_object()) {}

    template <class T> T Number(const char* name)
    {
        const NoteJson* value =
            Member(name, [](const NoteJson& j) { return j.is_number_integer(); });
        return value != nullptr ? value->get<T>() : T{};
    }
    std::string Text(const char* name)
    {
        const NoteJson* value = Member(name, [](const NoteJson& j) { return j.is_string(); });
        return value != nullptr ? Decoded(value->get<std::string>()) : std::string{};
    }
    bool Flag(const char* name)
    {
        const NoteJson* value = Member(name, [](const NoteJson& j) { return j.is_boolean(); });
        return value != nullptr && value->get<bool>();
    }
    /// Members that notes of earlier versions lack are asked for first.
    bool Has(const char* name) const { return good_ && object_.contains(name); }
    bool IsNull(const char* name) const
    {
        return object_.contains(name) && object_[name].is_null();
    }
    template <class Each> void List(const char* name, Each each)
    {
        const NoteJson* value = Member(name, [](const NoteJson& j) { return j.is_array(); });
        if (value == nullptr)
            return;
        for (const NoteJson& entry : *value) {
            NoteReader reader{entry};
            each(reader, entry);
            good_ = good_ && reader.good_;
        }
    }
    void Names(const char* name, std::vector<std::string>& names)
    {
        const NoteJson* value = Member(name, [](const NoteJson& j) {
            return j.is_array() &&
                   std::all_of(j.begin(), j.end(), [](const NoteJson& e) { return e.is_string(); });
        });
        if (value != nullptr)
            for (const NoteJson& entry : *value)
                names.push_back(Decoded(entry.get<std::string>()));
    }
    [[nodiscard]] bool Good() const { return good_; }

private:
    template <class Kind> const NoteJson* Member(const char* name, Kind kind)
    {
        if (!good_)
            return nullptr;
        const auto found = object_.find(name);
        good_ = found != object_.end() && kind(*found);
        return good_ ? &*found : nullptr;
    }

    const NoteJson& object_;
    bool good_;
};

NoteJson JsonOf(const std::vector<StateFile>& files);
/// False when a name or a hash could lead to another place.
bool Read(NoteReader& reader, const char* name, std::vector<StateFile>& files);

/// Of what is no JSON, a value that is no object. Reading and writing stand here alone: a source
/// that does either by itself takes seconds to compile.
NoteJson ParseNote(std::string_view text);
/// The note's text.
std::string Written(const NoteJson& json);
/// A note of one line, with its end.
std::string WrittenLine(const NoteJson& json);

/// 32 lower-case hexadecimal digits, as `platform::HashOf` gives them.
bool IsContentHash(std::string_view text);

} // namespace kestrova
