#include "settings/mnemonic.h"

#include <QWidget>

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(MnemonicTest, TheMarkIsNotPartOfTheTitle)
{
    EXPECT_EQ(withoutMnemonic(QStringLiteral("Mac &icon")), QStringLiteral("Mac icon"));
    EXPECT_EQ(withoutMnemonic(QStringLiteral("Preview")), QStringLiteral("Preview"));
}

TEST(MnemonicTest, LettersAreUnderlinedInTheWholeWindowWhileTheyAreShown)
{
    QWidget window;
    QWidget part(&window);
    EXPECT_EQ(mnemonicFlag(part), Qt::TextHideMnemonic);
    showMnemonics(window, true);
    EXPECT_EQ(mnemonicFlag(part), Qt::TextShowMnemonic);
    showMnemonics(window, false);
    EXPECT_EQ(mnemonicFlag(part), Qt::TextHideMnemonic);
}

} // namespace
} // namespace amperly
