// Where things are in the form, and how the keyboard comes to them.
#include "settings/form_look.h"
#include "tests/settings/settings_form.h"

#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>
#include <gmock/gmock.h>

namespace amperly {
namespace {

using testing::ElementsAre;

class SettingsLayoutTest : public SettingsFormTest {
protected:
    QScrollArea& scroll() { return *view->findChild<QScrollArea*>(); }

    void resize(int width, int height)
    {
        view->resize(width, height);
        QApplication::processEvents(); // in which layouts take notice
    }
};

// Size and place

TEST_F(SettingsLayoutTest, TheFormIs420WideWithOrWithoutAScrollBar)
{
    open();
    EXPECT_EQ(view->minimumSize(), QSize(420, 300));
    resize(420, 2000);
    EXPECT_FALSE(scroll().verticalScrollBar()->isVisible());
    EXPECT_EQ(scroll().widget()->width(), 420);
    resize(420, 300);
    EXPECT_TRUE(scroll().verticalScrollBar()->isVisible());
    EXPECT_EQ(scroll().widget()->width(), 420);
    EXPECT_EQ(scroll().widget()->x(), 0);
}

TEST_F(SettingsLayoutTest, InAWiderWindowTheFormStaysInTheMiddle)
{
    open();
    resize(700, 2000);
    EXPECT_EQ(scroll().widget()->width(), 420);
    EXPECT_EQ(scroll().widget()->x(), 140);
}

TEST_F(SettingsLayoutTest, OnASmallScreenTheFormScrollsToTheControlThatHasTheFocus)
{
    open();
    resize(420, 300);
    view->activateWindow();
    QApplication::processEvents();
    QAbstractButton& last = button("Reset to Defaults");
    EXPECT_TRUE(last.visibleRegion().isEmpty());
    last.setFocus(Qt::ShortcutFocusReason);
    EXPECT_EQ(last.visibleRegion().boundingRect(), last.rect());
    Picker& first = picker("Mac power usage");
    first.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(first.visibleRegion().boundingRect(), first.rect());
}

TEST_F(SettingsLayoutTest, AtItsEndTheFormLeavesAsMuchRoomAsAtItsBeginning)
{
    open();
    resize(420, 300);
    QWidget& form = *scroll().widget();
    const QAbstractButton& last = button("Reset to Defaults");
    const int below = form.height() - last.mapTo(&form, last.rect().bottomLeft()).y();
    EXPECT_LT(below, kForm.endMargin + kForm.rowHeight / 2);
}

TEST_F(SettingsLayoutTest, EverythingFitsIntoTheFormsWidth)
{
    loginItem.setStatus(LoginItemStatus::RequiresApproval);
    open();
    resize(420, 2000);
    for (QWidget* const each : view->findChildren<QWidget*>()) {
        if (!each->isVisible() || qobject_cast<QScrollBar*>(each) != nullptr)
            continue;
        const QRect place(each->mapTo(view.get(), QPoint()), each->size());
        EXPECT_GE(place.left(), 0);
        EXPECT_LE(place.right(), 420);
        if (const auto* const label = qobject_cast<QLabel*>(each); label != nullptr && !label->wordWrap()) {
            EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
        }
    }
}

TEST_F(SettingsLayoutTest, MirroredControlsAreAtTheLeftAndTitlesAtTheRight)
{
    const MirroredWindows mirrored;
    open();
    resize(420, 300);
    const ToggleSwitch& control = toggle("Larger text");
    EXPECT_LT(control.mapTo(view.get(), QPoint()).x(), 60);
    for (QLabel* const each : view->findChildren<QLabel*>()) {
        if (each->text() == QStringLiteral("Larger &text")) {
            EXPECT_EQ(
                each->mapTo(view.get(), each->rect().bottomRight()).x(), 419 - kForm.margin - kForm.inset);
        }
    }
    EXPECT_EQ(scroll().verticalScrollBar()->mapTo(view.get(), QPoint()).x(), 0);
}

// Keyboard

TEST_F(SettingsLayoutTest, TabComesToEveryControlOnceFromTopToBottom)
{
    loginItem.setStatus(LoginItemStatus::RequiresApproval);
    open();
    std::vector<std::string> stops;
    const QWidget* const start = view.get();
    for (QWidget* each = start->nextInFocusChain(); each != start; each = each->nextInFocusChain()) {
        if (!each->isVisible() || (each->focusPolicy() & Qt::TabFocus) == 0 || each->focusProxy() != nullptr)
            continue;
        const QWidget* const named
            = qobject_cast<QRadioButton*>(each) != nullptr ? each->parentWidget() : each;
        stops.push_back(named->accessibleName().toStdString());
    }
    EXPECT_THAT(stops,
        ElementsAre("Mac power usage", "Charger input", "Battery charging / draining", "Mac icon",
            "Hide battery when idle", "Layout", "Decimals", "Show \"W\" unit", "Larger text",
            "Compact spacing", "Launch at login", "Open Settings…", "Update every", "Smooth readings",
            "Click shows", "☕ Buy me a coffee", "Reset to Defaults"));
}

TEST_F(SettingsLayoutTest, NoTwoTitlesHaveTheSameLetter)
{
    open();
    std::vector<QString> letters;
    const auto add = [&letters](const QString& title) {
        if (const qsizetype mark = title.indexOf(u'&'); mark >= 0)
            letters.push_back(title.mid(mark + 1, 1).toLower());
    };
    for (const QLabel* const each : view->findChildren<QLabel*>())
        add(each->text());
    for (const QAbstractButton* const each : view->findChildren<QAbstractButton*>())
        add(each->text());
    EXPECT_EQ(letters.size(), 16U);
    std::sort(letters.begin(), letters.end());
    EXPECT_EQ(std::adjacent_find(letters.begin(), letters.end()), letters.end());
}

} // namespace
} // namespace amperly
