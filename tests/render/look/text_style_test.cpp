#include "render/look/text_style.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(TextStyleTest, AFamilyThatIsNotHandedOutLeavesTheFontAsItIs)
{
    const QFont plain = sizedFont(30, QFont::DemiBold);
    EXPECT_EQ(inFamily(plain, QStringLiteral(".NoSuchFamily")), plain);
    EXPECT_EQ(inFamily(plain, {}), plain);
}

TEST(TextStyleTest, AFamilyThatIsThereComesBeforeThePlainOne)
{
    const QStringList families = QFontDatabase::families();
    if (families.isEmpty())
        GTEST_SKIP() << "there are no fonts";
    const QString family = QFontInfo(QFont(families.front())).family();
    const QFont plain = sizedFont(30, QFont::DemiBold);
    EXPECT_EQ(inFamily(plain, family).families(), QStringList{family} + plain.families());
    EXPECT_EQ(inFamily(plain, family).pixelSize(), 30);
}

} // namespace
} // namespace amperly
