#include "tests/settings/settings_form.h"

#include <QAccessible>

#include <gmock/gmock.h>

namespace amperly {
namespace {

using testing::ElementsAre;

class SettingsAccessibilityTest : public SettingsFormTest {
protected:
    static QAccessibleInterface& spoken(QWidget& widget)
    {
        return *QAccessible::queryAccessibleInterface(&widget);
    }

    /// A picker's name is what it shows; what it is about is its label's to say.
    static std::string title(QWidget& widget)
    {
        const auto labels = spoken(widget).relations(QAccessible::Label);
        return labels.isEmpty() ? "" : labels.front().first->text(QAccessible::Name).toStdString();
    }

    static std::string name(QWidget& widget) { return spoken(widget).text(QAccessible::Name).toStdString(); }
};

TEST_F(SettingsAccessibilityTest, EveryControlHasItsRoleAndName)
{
    open();
    EXPECT_EQ(spoken(toggle("Larger text")).role(), QAccessible::CheckBox);
    EXPECT_EQ(name(toggle("Larger text")), "Larger text");
    EXPECT_EQ(spoken(picker("Update every")).role(), QAccessible::ComboBox);
    EXPECT_EQ(title(picker("Update every")), "Update every");
    EXPECT_EQ(spoken(picker("Update every")).text(QAccessible::Value), QStringLiteral("2 seconds"));
    EXPECT_EQ(spoken(segments("Layout")).role(), QAccessible::Grouping);
    EXPECT_EQ(name(segments("Layout")), "Layout");
    EXPECT_EQ(spoken(*segments("Layout").segments().front()).role(), QAccessible::RadioButton);
    EXPECT_EQ(name(*segments("Layout").segments().front()), "Stacked");
    EXPECT_TRUE(spoken(*segments("Layout").segments().front()).state().checked);
    EXPECT_EQ(name(button("Reset to Defaults")), "Reset to Defaults");
}

TEST_F(SettingsAccessibilityTest, SectionsAreGroupsWithNames)
{
    open();
    std::vector<std::string> groups;
    for (QWidget* const each : view->findChildren<QWidget*>()) {
        if (spoken(*each).role() == QAccessible::Grouping)
            groups.push_back(name(*each));
    }
    EXPECT_THAT(groups,
        testing::UnorderedElementsAre(
            "Preview", "Readings", "Format", "Layout", "Decimals", "General", "Amperly"));
}

TEST_F(SettingsAccessibilityTest, ThePreviewIsAPictureThatIsDescribed)
{
    live.setSample(PowerSample{.systemLoad = 7.25, .battery = -7.25, .batteryPercent = 55});
    open();
    EXPECT_EQ(spoken(preview()).role(), QAccessible::Graphic);
    EXPECT_EQ(name(preview()), "Mac using 7.2 W, Battery draining: 7.2 W (55%)");
}

} // namespace
} // namespace amperly
