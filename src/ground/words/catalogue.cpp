#include "words/catalogue.h"

#include <atomic>
#include <cstdint>

namespace kestrova
{

namespace
{

constexpr std::uint32_t catalogueMark = 0x950412de;
constexpr std::size_t catalogueHead = 20;
constexpr std::size_t pairSize = 8; ///< length and offset of one text

std::atomic<const Catalogue*> spoken{nullptr};

/// `place` lies at least four bytes before the end.
std::uint32_t NumberAt(std::string_view bytes, std::size_t place)
{
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[place + i]);
    return number;
}

/// The text that the pair at `place` tells of; no value when it does not lie in the bytes.
std::optional<std::string_view> TextAt(std::string_view bytes, std::size_t place)
{
    const std::size_t size = NumberAt(bytes, place);
    const std::size_t begin = NumberAt(bytes, place + 4);
    if (begin > bytes.size() || size >= bytes.size() - begin || bytes[begin + size] != '\0')
        return std::nullopt;
    return bytes.substr(begin, size);
}

} // namespace

std::optional<Catalogue> Catalogue::Read(std::string bytes)
{
    Catalogue catalogue;
    catalogue.bytes_ = std::make_unique<const std::string>(std::move(bytes));
    const std::string_view all = *catalogue.bytes_;
    if (all.size() < catalogueHead || NumberAt(all, 0) != catalogueMark ||
        NumberAt(all, 4) >> 16 > 1)
        return std::nullopt;
    const std::size_t count = NumberAt(all, 8);
    const std::size_t toldTable = NumberAt(all, 12);
    const std::size_t translatedTable = NumberAt(all, 16);
    for (const std::size_t table : {toldTable, translatedTable})
        if (table > all.size() || count > (all.size() - table) / pairSize)
            return std::nullopt;
    catalogue.texts_.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const auto told = TextAt(all, toldTable + i * pairSize);
        const auto translated = TextAt(all, translatedTable + i * pairSize);
        if (!told || !translated)
            return std::nullopt;
        if (!told->empty() && !translated->empty())
            catalogue.texts_.emplace(*told, *translated);
    }
    return catalogue;
}

std::string_view Catalogue::Of(std::string_view told) const
{
    const auto found = texts_.find(told);
    return found == texts_.end() ? told : found->second;
}

void SpeakBy(const Catalogue* catalogue)
{
    spoken.store(catalogue, std::memory_order_release);
}

const Catalogue* SpokenCatalogue()
{
    return spoken.load(std::memory_order_acquire);
}

} // namespace kestrova
