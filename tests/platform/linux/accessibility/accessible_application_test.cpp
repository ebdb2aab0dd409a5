#include "platform/linux/accessibility/accessible_application.h"

#include <QAccessible>
#include <QApplication>
#include <QWidget>
#include <gtest/gtest.h>

namespace amperly {
namespace {

class AccessibleApplicationTest : public testing::Test {
protected:
    /// Where a window is among the application's children, -1 if it is not.
    int indexOf(QWidget& window) const
    {
        const QAccessibleInterface* const wanted = QAccessible::queryAccessibleInterface(&window);
        for (int index = 0; index < application.childCount(); ++index) {
            if (application.child(index)->object() == wanted->object())
                return index;
        }
        return -1;
    }

    AccessibleApplication application;
};

TEST_F(AccessibleApplicationTest, APopupIsFoundWhileItIsShown)
{
    QWidget popup(nullptr, Qt::Popup);
    popup.show();
    const int index = indexOf(popup);
    ASSERT_GE(index, 0);
    EXPECT_EQ(application.indexOfChild(QAccessible::queryAccessibleInterface(&popup)), index);
    popup.hide();
    EXPECT_EQ(indexOf(popup), -1);
}

TEST_F(AccessibleApplicationTest, AnOrdinaryWindowIsFoundAsEver)
{
    QWidget window;
    window.show();
    EXPECT_GE(indexOf(window), 0);
}

TEST_F(AccessibleApplicationTest, BeyondItsChildrenThereAreNone)
{
    EXPECT_EQ(application.child(-1), nullptr);
    EXPECT_EQ(application.child(application.childCount()), nullptr);
    EXPECT_EQ(application.indexOfChild(nullptr), -1);
}

} // namespace
} // namespace amperly
