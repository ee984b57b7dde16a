#include "packages/name_pages.h"

#include "core/code_page.h"
#include "core/text.h"
#include "words/packages.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <uchardet.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>
#include <unicode/utf8.h>

namespace kestrova
{

namespace
{

constexpr std::array pages{
    NamePage{"UTF-8", Msg::PageUnicode},          NamePage{"CP437", Msg::PageDosUs},
    NamePage{"CP850", Msg::PageDosWest},          NamePage{"CP1252", Msg::PageWest},
    NamePage{"CP852", Msg::PageDosCentral},       NamePage{"CP1250", Msg::PageCentral},
    NamePage{"ISO-8859-2", Msg::PageUnixCentral}, NamePage{"CP866", Msg::PageDosCyrillic},
    NamePage{"CP1251", Msg::PageCyrillic},        NamePage{"KOI8-R", Msg::PageUnixCyrillic},
    NamePage{"CP737", Msg::PageDosGreek},         NamePage{"CP1253", Msg::PageGreek},
    NamePage{"CP857", Msg::PageDosTurkish},       NamePage{"CP1254", Msg::PageTurkish},
    NamePage{"CP1255", Msg::PageHebrew},          NamePage{"CP1256", Msg::PageArabic},
    NamePage{"CP1257", Msg::PageBaltic},          NamePage{"CP874", Msg::PageThai},
    NamePage{"CP932", Msg::PageJapanese},         NamePage{"EUC-JP", Msg::PageUnixJapanese},
    NamePage{"CP936", Msg::PageChinese},          NamePage{"CP950", Msg::PageTaiwanese},
    NamePage{"CP949", Msg::PageKorean},
};

using Letters = std::vector<UChar32>;

Letters LettersOf(std::string_view text)
{
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto length = static_cast<std::int32_t>(text.size());
    Letters letters;
    for (std::int32_t i = 0; i < length;) {
        UChar32 c = 0;
        U8_NEXT(bytes, i, length, c);
        letters.push_back(c);
    }
    return letters;
}

constexpr UChar32 firstHigh = 0x80;

bool IsLatin(UChar32 c)
{
    UErrorCode failure = U_ZERO_ERROR;
    return u_isalpha(c) != 0 && uscript_getScript(c, &failure) == USCRIPT_LATIN;
}

/// The letters of small type that are frequent in the languages of a page.
struct LatinGroup {
    std::u32string_view frequent;
    std::u32string_view rarer;
};
constexpr LatinGroup western{U"äöüßéèàâêëîïôûùçñáíóúåøæãòìœ", U"õýÿ"};
constexpr LatinGroup central{U"ąćęłńóśźżáčďéěíňřšťúůýžőűöüäôßâ", U"ĺľŕăţşđëçîț"};

/// How well a letter looks in a name: small letters best, then rarer ones and capitals; signs and
/// pieces of frames badly.
int WeightOf(UChar32 c, const LatinGroup& group)
{
    constexpr UChar32 firstFrame = 0x2500;
    constexpr UChar32 lastFrame = 0x25FF;
    constexpr UChar32 lastControl = 0x9F;
    constexpr int usual = 3;
    constexpr int nothing = -1000;
    const auto letter = static_cast<char32_t>(c);
    if (group.frequent.find(letter) != std::u32string_view::npos)
        return usual;
    if (group.rarer.find(letter) != std::u32string_view::npos)
        return 2;
    if (std::u32string_view{U"‘’“”–—…¡¿"}.find(letter) != std::u32string_view::npos)
        return 2; // they stand in names of every language
    if (c >= firstFrame && c <= lastFrame)
        return -usual;
    if (c <= lastControl)
        return nothing;
    return IsLatin(c) ? 1 : -1;
}

int Score(const Letters& letters, const LatinGroup& group)
{
    constexpr int wrongCase = -3; // a capital behind a small letter
    int score = 0;
    UChar32 before = 0;
    for (const UChar32 c : letters) {
        if (c >= firstHigh)
            score += WeightOf(c, group);
        if ((c >= firstHigh || before >= firstHigh) && u_islower(before) != 0 && u_isupper(c) != 0)
            score += wrongCase;
        before = c;
    }
    return score;
}

struct Guess {
    std::string page;
    int score = -1'000'000;
};

/// Of equals the first one counts.
Guess BestOf(const std::string& joined, std::initializer_list<const char*> names,
             const LatinGroup& group)
{
    Guess best;
    for (const char* name : names) {
        const auto text = FromCodePage(joined, name);
        if (!text)
            continue;
        if (const int score = Score(LettersOf(*text), group); score > best.score)
            best = {name, score};
    }
    return best;
}

/// What the detector answers, and the page that stands for it here.
struct Detected {
    std::string_view answer;
    const char* page;
    std::array<UScriptCode, 3> scripts;
};
constexpr auto noScript = USCRIPT_UNKNOWN;
constexpr std::array detectedPages{
    Detected{"IBM866", "CP866", {USCRIPT_CYRILLIC, noScript, noScript}},
    Detected{"WINDOWS-1251", "CP1251", {USCRIPT_CYRILLIC, noScript, noScript}},
    Detected{"KOI8-R", "KOI8-R", {USCRIPT_CYRILLIC, noScript, noScript}},
    Detected{"ISO-8859-7", "CP1253", {USCRIPT_GREEK, noScript, noScript}},
    Detected{"WINDOWS-1253", "CP1253", {USCRIPT_GREEK, noScript, noScript}},
    Detected{"ISO-8859-8", "CP1255", {USCRIPT_HEBREW, noScript, noScript}},
    Detected{"WINDOWS-1255", "CP1255", {USCRIPT_HEBREW, noScript, noScript}},
    Detected{"WINDOWS-1256", "CP1256", {USCRIPT_ARABIC, noScript, noScript}},
    Detected{"TIS-620", "CP874", {USCRIPT_THAI, noScript, noScript}},
    Detected{"SHIFT_JIS", "CP932", {USCRIPT_HAN, USCRIPT_KATAKANA, USCRIPT_HIRAGANA}},
    Detected{"EUC-JP", "EUC-JP", {USCRIPT_HAN, USCRIPT_KATAKANA, USCRIPT_HIRAGANA}},
    Detected{"GB18030", "CP936", {USCRIPT_HAN, noScript, noScript}},
    Detected{"BIG5", "CP950", {USCRIPT_HAN, noScript, noScript}},
    Detected{"UHC", "CP949", {USCRIPT_HANGUL, USCRIPT_HAN, noScript}},
    Detected{"EUC-KR", "CP949", {USCRIPT_HANGUL, USCRIPT_HAN, noScript}},
};

/// Signs that stand in names beside letters of other scripts.
bool IsCommonMark(UChar32 c)
{
    const auto within = [c](UChar32 from, UChar32 to) { return c >= from && c <= to; };
    return within(0x2010, 0x2027) || within(0x3000, 0x303F) || within(0x30FB, 0x30FC) ||
           within(0xFF01, 0xFF60) || c == 0xA0 || c == 0xAB || c == 0xB0 || c == 0xB7 ||
           c == 0xBB || c == 0x2116;
}

bool IsHalfWidthKana(UChar32 c)
{
    return c >= 0xFF61 && c <= 0xFF9F;
}

bool IsEastAsian(UScriptCode script)
{
    return script == USCRIPT_HAN || script == USCRIPT_HANGUL;
}

/// True when all that is not ASCII are letters of the scripts and marks, and no word of an
/// alphabet is mixed from two.
bool LooksLike(const Letters& letters, const std::array<UScriptCode, 3>& scripts)
{
    constexpr int leastLetters = 2;
    const bool alphabet = !IsEastAsian(scripts.front());
    int known = 0;
    int mixed = 0;
    UChar32 before = 0;
    for (const UChar32 c : letters) {
        const bool high = c >= firstHigh;
        if (high && !IsCommonMark(c)) {
            UErrorCode failure = U_ZERO_ERROR;
            const UScriptCode script = uscript_getScript(c, &failure);
            const bool expected =
                std::find(scripts.begin(), scripts.end(), script) != scripts.end() &&
                !IsHalfWidthKana(c);
            if (!expected && script != USCRIPT_INHERITED)
                return false;
            ++known;
        }
        if (before != 0 && u_isalpha(c) != 0 && u_isalpha(before) != 0 &&
            high != (before >= firstHigh))
            ++mixed;
        before = c;
    }
    return known >= leastLetters && (!alphabet || mixed * 4 <= known);
}

std::string Detect(const std::string& joined)
{
    struct Closer {
        void operator()(uchardet_t detector) const { uchardet_delete(detector); }
    };
    const std::unique_ptr<std::remove_pointer_t<uchardet_t>, Closer> detector{uchardet_new()};
    if (uchardet_handle_data(detector.get(), joined.data(), joined.size()) != 0)
        return {};
    uchardet_data_end(detector.get());
    return uchardet_get_charset(detector.get());
}

/// Few names of Japanese or Chinese are too little for the detector: syllables that no other
/// language has, and pairs of bytes of the frequent signs alone.
std::string PageOfFewSigns(const std::string& joined)
{
    constexpr std::array<UScriptCode, 3> japanese{USCRIPT_HAN, USCRIPT_KATAKANA, USCRIPT_HIRAGANA};
    if (const auto text = FromCodePage(joined, "CP932")) {
        const Letters letters = LettersOf(*text);
        const auto kana = std::count_if(letters.begin(), letters.end(),
                                        [](UChar32 c) { return c >= 0x3041 && c <= 0x30FA; });
        if (LooksLike(letters, japanese) && kana > 0)
            return "CP932";
    }
    const auto isLead = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= 0xB0 && byte <= 0xD7;
    };
    const auto isTrail = [](char c) { return static_cast<unsigned char>(c) >= 0xA1; };
    std::size_t pairs = 0;
    for (std::size_t i = 0; i < joined.size(); ++i) {
        if (static_cast<unsigned char>(joined[i]) < firstHigh)
            continue;
        if (!isLead(joined[i]) || i + 1 == joined.size() || !isTrail(joined[i + 1]))
            return {};
        ++pairs;
        ++i;
    }
    return pairs >= 2 && FromCodePage(joined, "CP936") ? "CP936" : std::string{};
}

/// The page of another script; empty when the names are of Latin letters.
std::string OtherScript(const std::string& joined, const std::string& detected)
{
    const auto readable = [&](const char* page, const std::array<UScriptCode, 3>& scripts) {
        const auto text = FromCodePage(joined, page);
        return text && LooksLike(LettersOf(*text), scripts);
    };
    const auto* const row =
        std::find_if(detectedPages.begin(), detectedPages.end(),
                     [&](const Detected& each) { return each.answer == detected; });
    const bool found = row != detectedPages.end() && readable(row->page, row->scripts);
    // A few signs are easily taken for letters of the rarer alphabets.
    const bool sure =
        found && (row->scripts.front() == USCRIPT_CYRILLIC || IsEastAsian(row->scripts.front()));
    if (sure)
        return row->page;
    if (std::string page = PageOfFewSigns(joined); !page.empty())
        return page;
    if (found)
        return row->page;
    return readable("CP737", {USCRIPT_GREEK, noScript, noScript}) ? "CP737" : std::string{};
}

bool IsCentral(const std::string& detected)
{
    return detected == "WINDOWS-1250" || detected == "ISO-8859-2" || detected == "IBM852";
}

} // namespace

std::span<const NamePage> NamePages()
{
    return pages;
}

const NamePage* FindNamePage(std::string_view name)
{
    const auto* const found = std::find_if(pages.begin(), pages.end(), [&](const NamePage& page) {
        return EqualNames(page.name, name);
    });
    return found == pages.end() ? nullptr : found;
}

std::string NamePageText(std::string_view name)
{
    const NamePage* page = FindNamePage(name);
    return page == nullptr ? std::string{name}
                           : GetMsg(Msg::PageWithName, {GetMsg(page->words), page->name});
}

std::string GuessNamePage(const std::vector<std::string_view>& names, bool ofDos)
{
    constexpr std::size_t enough = 65536; ///< bytes; more names make no surer guess
    constexpr int clearly = 1;
    if (std::all_of(names.begin(), names.end(), IsUtf8))
        return "UTF-8";
    std::string joined;
    for (const std::string_view name : names)
        if (joined.size() < enough)
            joined += std::string{name} + "\n";
    const std::string detected = Detect(joined);
    if (std::string page = OtherScript(joined, detected); !page.empty())
        return page;
    const Guess west = ofDos ? BestOf(joined, {"CP437", "CP850", "CP1252"}, western)
                             : BestOf(joined, {"CP1252", "CP850", "CP437"}, western);
    const Guess east = ofDos ? BestOf(joined, {"CP852", "CP1250", "ISO-8859-2"}, central)
                             : BestOf(joined, {"CP1250", "ISO-8859-2", "CP852"}, central);
    if (east.score > west.score + clearly)
        return east.page;
    const bool even = east.score >= west.score && west.page == "CP1252";
    if (even && IsCentral(detected) &&
        FromCodePage(joined, east.page) != FromCodePage(joined, west.page))
        return east.page;
    return west.page.empty() ? "CP437" : west.page;
}

} // namespace kestrova
