#include "packages/name_pages.h"

#include "core/code_page.h"

#include <gtest/gtest.h>
#include <iconv.h>

namespace kestrova::testing
{

namespace
{

/// The bytes that a program of that code page writes.
std::string InPage(std::string text, const char* page)
{
    const iconv_t converter = iconv_open(page, "UTF-8");
    std::string bytes(text.size(), '\0');
    char* in = text.data();
    std::size_t left = text.size();
    char* out = bytes.data();
    std::size_t room = bytes.size();
    EXPECT_NE(iconv(converter, &in, &left, &out, &room), static_cast<std::size_t>(-1)) << text;
    iconv_close(converter);
    bytes.resize(bytes.size() - room);
    return bytes;
}

TEST(NamePages, NamesAreReadAsTheyWereWritten)
{
    using Names = std::vector<std::string>;
    const struct {
        Names names;
        std::vector<const char*> pages;
        bool ofDos = true;
    } cases[] = {
        {{"Прочти меня.txt", "Уровень 1.tr4", "музыка.wav"}, {"CP866", "CP1251", "KOI8-R"}},
        {{"Карта.tr4"}, {"CP866", "CP1251"}},
        {{"Świątynia.tr4", "łódź.wav", "żółć.txt"}, {"CP852", "CP1250"}},
        {{"Příběh.txt", "Žluťoučký kůň.wav", "Čti mě.txt"}, {"CP852", "CP1250"}},
        {{"Első pálya.tr4", "tűz.wav", "főmenü.jpg"}, {"CP852", "CP1250"}},
        {{"ソース表.tr4", "能力予定.txt", "説明書.txt"}, {"CP932", "EUC-JP"}},
        {{"レベル.tr4", "ソ.wav"}, {"CP932"}},
        {{"关卡说明.txt", "古墓丽影/第一关.tr4", "音乐.wav"}, {"CP936"}},
        {{"關卡說明.txt", "第一關.tr4"}, {"CP950"}},
        {{"설명서.txt", "첫번째.tr4"}, {"CP949"}},
        {{"Διάβασέ με.txt", "Επίπεδο.tr4"}, {"CP737", "CP1253"}},
        {{"Zugänge.txt", "Straße.tr4", "Übersicht.doc"}, {"CP437", "CP1252"}},
        {{"Été.txt", "forêt.tr4", "île déserte.wav"}, {"CP437", "CP1252"}},
        {{"cœur d’été.txt", "Lara’s Home – 1.txt"}, {"CP1252"}, false},
        {{"ligação.txt", "São João.tr4"}, {"CP850", "CP1252"}},
        {{"Søndag.txt", "Læs mig.txt"}, {"CP850", "CP1252"}},
        {{"¡Año nuevo!.txt", "canción.wav"}, {"CP437", "CP1252"}},
    };
    for (const auto& entry : cases)
        for (const char* page : entry.pages) {
            Names bytes;
            for (const std::string& name : entry.names)
                bytes.push_back(InPage(name, page));
            const std::string guess = GuessNamePage({bytes.begin(), bytes.end()}, entry.ofDos);
            for (std::size_t i = 0; i < bytes.size(); ++i)
                EXPECT_EQ(FromCodePage(bytes[i], guess), entry.names[i]) << page << " as " << guess;
        }
}

TEST(NamePages, AnythingIsGuessedToSomething)
{
    for (const std::string bytes : {"\xFF\xFE \x81", "\x80", "\xDB\xDC\xDD", "\xA0"}) {
        const std::string guess = GuessNamePage({bytes}, true);
        EXPECT_NE(FindNamePage(guess), nullptr) << guess;
    }
    EXPECT_EQ(GuessNamePage({"日本"}, true), "UTF-8");
    EXPECT_EQ(NamePageText("CP932"), "Japanese (CP932)");
    EXPECT_NE(FindNamePage("cp932"), nullptr);
    EXPECT_EQ(FindNamePage("CP0"), nullptr);
    EXPECT_FALSE(FromCodePage("\x81", "CP1252")) << "a byte without a meaning";
    EXPECT_FALSE(FromCodePage("x", "no page"));
}

} // namespace

} // namespace kestrova::testing
