#include "platform/linux/tray/markup.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(MarkupTest, PlainTextStaysAsItIs)
{
    EXPECT_EQ(asMarkup("Mac using 12.3 W"), "Mac using 12.3 W");
    EXPECT_EQ(asMarkup("\u22124 W \u00b7 80 %"), "\u22124 W \u00b7 80 %");
    EXPECT_EQ(asMarkup(""), "");
}

TEST(MarkupTest, SignsOfMarkupAreShownAndNotObeyed)
{
    EXPECT_EQ(asMarkup("a<b> & c"), "a&lt;b&gt; &amp; c");
    EXPECT_EQ(asMarkup("&amp;"), "&amp;amp;");
}

} // namespace
} // namespace amperly
