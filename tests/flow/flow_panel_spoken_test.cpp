// The panel as screen readers have it.
#include "tests/flow/panel_fixture.h"

#include <QAccessible>

namespace amperly {
namespace {

using FlowPanelSpokenTest = PanelTest;

TEST_F(FlowPanelSpokenTest, EverySentenceIsThereForScreenReaders)
{
    openWith(kCharging);
    const auto name = [](QWidget& widget) {
        return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name).toStdString();
    };
    EXPECT_EQ(name(const_cast<Headline&>(panel->header()->headline())), "Mac is using 14.2 W");
    EXPECT_EQ(name(const_cast<StatusPill&>(panel->header()->statusPill())), "Charging");
    QAccessibleInterface* const diagram = QAccessible::queryAccessibleInterface(panel->diagram());
    ASSERT_EQ(diagram->childCount(), 3);
    std::vector<std::string> sentences;
    for (int node = 0; node < 3; ++node) {
        QAccessibleInterface* const one = diagram->child(node);
        EXPECT_EQ(one->role(), QAccessible::StaticText);
        EXPECT_EQ(one->parent(), diagram);
        EXPECT_EQ(diagram->indexOfChild(one), node);
        EXPECT_EQ(diagram->childAt(one->rect().center().x(), one->rect().center().y()), one);
        sentences.push_back(one->text(QAccessible::Name).toStdString());
    }
    EXPECT_THAT(sentences,
        testing::ElementsAre(
            "Charger supplying 30.1 W of 67 W", "Mac using 14.2 W", "Battery charging: 15.9 W (64%)"));
}

TEST_F(FlowPanelSpokenTest, ANodeThatIsGoneIsNoLongerValidForScreenReaders)
{
    openWith(kCharging);
    QAccessibleInterface* const diagram = QAccessible::queryAccessibleInterface(panel->diagram());
    const QAccessible::Id node = QAccessible::uniqueId(diagram->child(0));
    panel.reset();
    EXPECT_EQ(QAccessible::accessibleInterface(node), nullptr);
}

} // namespace
} // namespace amperly
