#include "settings/glide.h"

#include "tests/support/run_until.h"

#include <QWidget>

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(GlideTest, WhatNobodySeesJumps)
{
    QWidget hidden;
    Glide glide(hidden);
    glide.to(1.0);
    EXPECT_EQ(glide.value(), 1.0);
}

TEST(GlideTest, WhatIsSeenArrivesAfterAWhile)
{
    QWidget widget;
    widget.show();
    Glide glide(widget);
    glide.to(1.0);
    EXPECT_TRUE(runUntil([&] { return glide.value() == 1.0; }));
}

TEST(GlideTest, AJumpEndsWhatIsUnderWay)
{
    QWidget widget;
    widget.show();
    Glide glide(widget);
    glide.to(1.0);
    glide.jumpTo(0.5);
    QCoreApplication::processEvents();
    EXPECT_EQ(glide.value(), 0.5);
}

} // namespace
} // namespace amperly
