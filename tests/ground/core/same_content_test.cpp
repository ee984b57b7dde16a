#include "core/files.h"
#include "sandbox/sandbox.h"

#include <gtest/gtest.h>

namespace kestrova
{

TEST(SameContent, SeesOneByteWhereverItLies)
{
    testing::Sandbox box;
    // Around the sizes in which files are read.
    for (const std::size_t size : {1U, 4096U, (1U << 17) - 1, 1U << 17, (1U << 17) + 1, 3U << 17}) {
        const std::string content(size, 'x');
        box.Write("a", content);
        box.Write("b", content);
        EXPECT_TRUE(SameContent(box / "a", box / "b")) << size;
        for (const std::size_t at : {std::size_t{0}, size / 2, size - 1}) {
            std::string other = content;
            other[at] = 'y';
            box.Write("b", other);
            EXPECT_FALSE(SameContent(box / "a", box / "b")) << size << " at " << at;
        }
        box.Write("b", content + "x");
        EXPECT_FALSE(SameContent(box / "a", box / "b")) << size;
        EXPECT_FALSE(SameContent(box / "b", box / "a")) << size;
    }
}

} // namespace kestrova
