#pragma once

#include "app/languages.h"
#include "words/catalogue.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

/// While it lives every text is shown in that language, whose catalogue must be there.
class Speaking
{
public:
    explicit Speaking(std::string_view code)
    {
        Speak(code);
        EXPECT_EQ(SpokenCatalogue() == nullptr, code == Languages().front().code)
            << "no catalogue of " << code;
    }
    ~Speaking() { Speak(Languages().front().code); }
    Speaking(const Speaking&) = delete;
    Speaking& operator=(const Speaking&) = delete;
};

/// A test that runs once in each of the languages.
class InEachLanguage : public ::testing::TestWithParam<const char*>
{
private:
    Speaking speaking_{GetParam()};
};
inline const auto eachLanguage = ::testing::Values("en", "en@proofread", "de", "it");
inline std::string NameOfLanguage(const ::testing::TestParamInfo<const char*>& info)
{
    std::string name = info.param;
    std::erase(name, '@');
    return name;
}

} // namespace kestrova::testing
