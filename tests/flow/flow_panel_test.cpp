#include "flow/no_data.h"
#include "prefs/pref.h"
#include "render/look/quiet_button.h"
#include "tests/flow/panel_fixture.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QShortcut>
#include <QTest>

namespace amperly {
namespace {

using testing::ElementsAre;

class FlowPanelTest : public PanelTest {
protected:
    [[nodiscard]] QList<QuietButton*> footer() const { return panel->findChildren<QuietButton*>(); }

    [[nodiscard]] std::vector<std::string> footerTexts() const
    {
        std::vector<std::string> texts;
        for (const QuietButton* const button : footer())
            texts.push_back(button->text().toStdString());
        return texts;
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QWidget* const focus = QApplication::focusWidget();
        QTest::keyClick(focus != nullptr ? focus : panel.get(), key, modifiers);
    }
};

// The readings

TEST_F(FlowPanelTest, WithoutASampleOnlyTheWordsAndTheFooterAreThere)
{
    openWith(std::nullopt);
    ASSERT_NE(panel->noData(), nullptr);
    EXPECT_EQ(panel->noData()->accessibleName(), QStringLiteral("No power data available"));
    EXPECT_GE(panel->noData()->height(), 120);
    EXPECT_EQ(panel->header(), nullptr);
    EXPECT_EQ(panel->diagram(), nullptr);
    EXPECT_THAT(footerTexts(), ElementsAre("Settings", "☕ Buy me a coffee", "Quit"));
}

TEST_F(FlowPanelTest, WithASampleHeadlinePillDiagramAndFooterAreThere)
{
    openWith(kCharging);
    EXPECT_EQ(panel->noData(), nullptr);
    EXPECT_EQ(panel->header()->headline().figure().text(), QStringLiteral("14.2 W"));
    EXPECT_EQ(panel->header()->statusPill().accessibleName(), QStringLiteral("Charging"));
    EXPECT_EQ(panel->diagram()->sample(), kCharging);
    EXPECT_THAT(footerTexts(), ElementsAre("Settings", "☕ Buy me a coffee", "Quit"));
}

TEST_F(FlowPanelTest, TheHeadlineHasOneDecimalAndTheUnit)
{
    openWith(PowerSample{.systemLoad = 12.345});
    EXPECT_EQ(panel->header()->headline().figure().text(), QStringLiteral("12.3 W"));
}

TEST_F(FlowPanelTest, AnUnknownLoadIsADashInTheHeadline)
{
    openWith(PowerSample{.systemLoadKnown = false});
    EXPECT_EQ(panel->header()->headline().figure().text(), QStringLiteral("–"));
    EXPECT_EQ(panel->header()->headline().accessibleName(), QStringLiteral("Mac is using –"));
}

TEST_F(FlowPanelTest, ItIs340PointsWideAndTheDiagramMeasures308By200)
{
    openWith(kCharging);
    EXPECT_EQ(panel->width(), 340);
    EXPECT_EQ(panel->diagram()->contentsRect().size(), QSize(308, 200));
    EXPECT_EQ(panel->diagram()->mapTo(panel.get(), panel->diagram()->contentsRect().topLeft()).x(), 16);
}

TEST_F(FlowPanelTest, GapsBetweenHeaderDiagramAndDividerAre14Points)
{
    openWith(kCharging);
    const QRect diagram = panel->diagram()->contentsRect().translated(panel->diagram()->pos());
    const FlowHeader& header = *panel->header();
    EXPECT_EQ(header.geometry().top(), 16);
    EXPECT_EQ(diagram.top() - (header.geometry().bottom() + 1), 14);
}

TEST_F(FlowPanelTest, NewReadingsAreFollowed)
{
    openWith(kCharging);
    read(kOnBattery);
    EXPECT_EQ(panel->header()->headline().figure().text(), QStringLiteral("8.6 W"));
    EXPECT_EQ(panel->header()->statusPill().accessibleName(), QStringLiteral("On battery"));
    EXPECT_EQ(panel->diagram()->sample(), kOnBattery);
}

TEST_F(FlowPanelTest, TheDiagramIsKeptWhileThereAreReadingsAndFreshAfterThereWasNone)
{
    openWith(kCharging);
    clock.play(2.0);
    const FlowDiagram* const before = panel->diagram();
    read(kOnBattery);
    EXPECT_EQ(panel->diagram(), before);
    EXPECT_GT(panel->diagram()->animator().travelled()[0], 10.0);

    read(std::nullopt);
    EXPECT_EQ(panel->diagram(), nullptr);
    EXPECT_NE(panel->noData(), nullptr);
    read(kCharging);
    EXPECT_EQ(panel->noData(), nullptr);
    EXPECT_EQ(panel->diagram()->animator().last(), std::nullopt);
    EXPECT_EQ(panel->diagram()->appearance(), 0.0);
}

TEST_F(FlowPanelTest, TheHeadlineRollsToItsNewFigure)
{
    openWith(kCharging);
    EXPECT_FALSE(panel->header()->headline().figure().isRolling());
    clock.play(0.1);
    read(kOnBattery);
    EXPECT_TRUE(panel->header()->headline().figure().isRolling());
    clock.play(0.5);
    EXPECT_FALSE(panel->header()->headline().figure().isRolling());
}

TEST_F(FlowPanelTest, AFigureThatWaitedForAnotherIsGivenItsRoom)
{
    PowerSample sample{.systemLoad = 8.1, .adapterIn = 9.0, .externalConnected = true};
    openWith(sample);
    clock.play(0.1);
    sample.systemLoad = 9.2;
    read(sample);
    clock.play(0.2);
    sample.systemLoad = 1109.2;
    read(sample);
    QApplication::processEvents();
    EXPECT_EQ(panel->header()->statusPill().lineCount(), 1);
    clock.play(1.0);
    QApplication::processEvents();
    EXPECT_EQ(panel->header()->statusPill().lineCount(), 2);
}

TEST_F(FlowPanelTest, APhraseThatIsTooLongForItsLineTakesTwo)
{
    openWith(PowerSample{.systemLoad = 112.7, .adapterIn = 0.2, .battery = -5.0, .externalConnected = true});
    const StatusPill& pill = panel->header()->statusPill();
    EXPECT_EQ(pill.accessibleName(), QStringLiteral("Plugged in · running on battery"));
    EXPECT_EQ(pill.lineCount(), 2);
    EXPECT_LE(pill.geometry().right(), panel->header()->width());
    EXPECT_GT(pill.geometry().left(), panel->header()->headline().sizeHint().width());
    read(kCharging);
    EXPECT_EQ(panel->header()->statusPill().lineCount(), 1);
}

TEST_F(FlowPanelTest, APhraseWithoutADotMakesRoomForALongFigureToo)
{
    openWith(PowerSample{
        .systemLoad = 11234.5, .adapterIn = 11200.0, .battery = -34.5, .externalConnected = true});
    const StatusPill& pill = panel->header()->statusPill();
    EXPECT_EQ(pill.accessibleName(), QStringLiteral("Using battery too"));
    EXPECT_EQ(pill.lineCount(), 2);
    EXPECT_LE(pill.geometry().right(), panel->header()->width());
    EXPECT_GE(pill.geometry().left(), panel->header()->headline().sizeHint().width());
}

// The footer

TEST_F(FlowPanelTest, SettingsOpensTheSettings)
{
    openWith(kCharging);
    footer()[0]->click();
    EXPECT_EQ(settingsOpened, 1);
}

TEST_F(FlowPanelTest, TheLinkOpensTheDonationPage)
{
    openWith(kCharging);
    footer()[1]->click();
    EXPECT_THAT(desktop.openedAddresses(), ElementsAre(std::string(Pref::coffeeURL())));
}

TEST_F(FlowPanelTest, QuitEndsTheProgram)
{
    openWith(kCharging);
    footer()[2]->click();
    EXPECT_TRUE(desktop.quitRequested());
}

TEST_F(FlowPanelTest, ControlCommaAndControlQAreShortcuts)
{
    openWith(kCharging);
    EXPECT_EQ(footer()[0]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Comma));
    EXPECT_TRUE(footer()[1]->shortcut().isEmpty());
    EXPECT_EQ(footer()[2]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
}

TEST_F(FlowPanelTest, TabGoesThroughTheFooterAndPastTheDiagram)
{
    openWith(kCharging);
    for (int round = 0; round < 2; ++round) {
        for (QuietButton* const button : footer()) {
            press(Qt::Key_Tab);
            EXPECT_EQ(QApplication::focusWidget(), button);
        }
    }
    EXPECT_EQ(panel->diagram()->focusPolicy(), Qt::NoFocus);
}

// What is heard

TEST_F(FlowPanelTest, EverySentenceIsThereForScreenReaders)
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
        ElementsAre(
            "Charger supplying 30.1 W of 67 W", "Mac using 14.2 W", "Battery charging: 15.9 W (64%)"));
}

TEST_F(FlowPanelTest, ANodeThatIsGoneIsNoLongerValidForScreenReaders)
{
    openWith(kCharging);
    QAccessibleInterface* const diagram = QAccessible::queryAccessibleInterface(panel->diagram());
    const QAccessible::Id node = QAccessible::uniqueId(diagram->child(0));
    panel.reset();
    EXPECT_EQ(QAccessible::accessibleInterface(node), nullptr);
}

// What is seen

TEST_F(FlowPanelTest, ThePanelFollowsAChangeOfColours)
{
    openWith(kCharging);
    clock.play(4.0);
    const QImage light = picture();
    QApplication::setPalette(darkPalette());
    QApplication::processEvents();
    clock.advance(0.0);
    const QImage changed = picture();
    EXPECT_NE(light, changed);
    const QColor corner = changed.pixelColor(4, changed.height() - 4);
    EXPECT_LT(corner.lightnessF(), 0.3F);
    // The figure is light on dark.
    const QRect figure(16, 16, 120, 50);
    int lightest = 0;
    for (int y = figure.top(); y < figure.bottom(); ++y) {
        for (int x = figure.left(); x < figure.right(); ++x)
            lightest = std::max(lightest, qGray(changed.pixel(x, y)));
    }
    EXPECT_GT(lightest, 200);
}

TEST_F(FlowPanelTest, MirroredTheHeadlineStandsAtTheRight)
{
    QApplication::setLayoutDirection(Qt::RightToLeft);
    openWith(kCharging);
    const FlowHeader& header = *panel->header();
    EXPECT_EQ(header.headline().geometry().right(), header.width() - 1);
    EXPECT_EQ(header.statusPill().geometry().left(), 0);
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

} // namespace
} // namespace amperly
