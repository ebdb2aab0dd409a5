#include "prefs/pref.h"
#include "render/look/quiet_button.h"
#include "render/look/window_colors.h"
#include "tests/flow/drawn_text.h"
#include "tests/flow/panel_fixture.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QShortcut>
#include <QTest>

#include <algorithm>

namespace amperly {
namespace {

using testing::ElementsAre;

class FlowPanelTest : public PanelTest {
protected:
    [[nodiscard]] QList<QAbstractButton*> footer() const { return panel->findChildren<QAbstractButton*>(); }

    [[nodiscard]] std::vector<std::string> footerTexts() const
    {
        std::vector<std::string> texts;
        for (const QAbstractButton* const button : footer())
            texts.push_back(button->text().toStdString());
        return texts;
    }

    /// Pixels between one and the other below it.
    static int gap(const QRect& upper, const QRect& lower) { return lower.top() - upper.bottom() - 1; }

    [[nodiscard]] QRect divider() const { return panel->divider().geometry(); }

    /// The line of the footer's words; the grounds of its buttons reach further.
    [[nodiscard]] QRect footerWords() const
    {
        const QAbstractButton* const button = footer().front();
        const int above = (button->height() - button->fontMetrics().height()) / 2;
        return button->geometry().adjusted(0, above, 0, -above);
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

TEST_F(FlowPanelTest, GapsBetweenHeaderDiagramDividerAndFooterAre14Points)
{
    openWith(kCharging);
    const QRect diagram = panel->diagram()->contentsRect().translated(panel->diagram()->pos());
    const QRect header = panel->header()->geometry();
    EXPECT_EQ(header.top(), 16);
    EXPECT_EQ(gap(header, diagram), 14);
    EXPECT_EQ(gap(diagram, divider()), 14);
    EXPECT_EQ(gap(divider(), footerWords()), 14);
    EXPECT_EQ(panel->height() - 1 - footerWords().bottom(), 16);
}

TEST_F(FlowPanelTest, WithoutASampleTheDividerAndTheGapsAroundItAreTheSame)
{
    openWith(std::nullopt);
    EXPECT_EQ(panel->noData()->geometry().top(), 16);
    EXPECT_EQ(gap(panel->noData()->geometry(), divider()), 14);
    EXPECT_EQ(gap(divider(), footerWords()), 14);
    EXPECT_EQ(panel->height() - 1 - footerWords().bottom(), 16);
}

TEST_F(FlowPanelTest, TheDividerSpansTheContents)
{
    for (const std::optional<PowerSample>& sample :
        {std::optional(kCharging), std::optional<PowerSample>()}) {
        openWith(sample);
        EXPECT_EQ(divider().left(), 16);
        EXPECT_EQ(divider().size(), QSize(308, 1));
    }
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

// Colours

TEST_F(FlowPanelTest, CaptionAndNoDataAreInTheSecondaryColor)
{
    const QColor secondary = secondaryColor(lightPalette(), display);
    ASSERT_NE(secondary, lightPalette().color(QPalette::WindowText));
    const auto colorOf = [](QWidget& widget, const QString& text) {
        for (const DrawnText& drawn : TextRecorder::textsOf(widget)) {
            if (drawn.text == text)
                return drawn.color;
        }
        return QColor();
    };
    openWith(kCharging);
    EXPECT_EQ(colorOf(*panel->header()->childAt(1, 1), QStringLiteral("Mac is using")), secondary);
    read(std::nullopt);
    EXPECT_EQ(colorOf(*panel->noData(), QStringLiteral("No power data available")), secondary);
}

TEST_F(FlowPanelTest, TheDividerIsPainted)
{
    for (const double scale : {1.0, 2.0}) {
        openWith(kCharging);
        const QImage shown = picture(scale);
        const QRect line = panel->divider().geometry();
        const QRgb separator = separatorColor(lightPalette(), display).rgb();
        const auto at = [&](double x, double y) {
            return shown.pixel(static_cast<int>(x * scale), static_cast<int>(y * scale));
        };
        ASSERT_NE(separator, lightPalette().color(QPalette::Window).rgb());
        for (const double x : {line.left() + 0.5, line.center().x() + 0.5, line.right() + 0.5})
            EXPECT_EQ(at(x, line.top() + 0.5), separator) << x << " at " << scale;
        EXPECT_NE(at(line.center().x(), line.top() - 0.5), separator);
        EXPECT_NE(at(line.center().x(), line.bottom() + 1.5), separator);
    }
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
        for (QAbstractButton* const button : footer()) {
            press(Qt::Key_Tab);
            EXPECT_EQ(QApplication::focusWidget(), button);
        }
    }
    EXPECT_EQ(panel->diagram()->focusPolicy(), Qt::NoFocus);
}

// What is seen

TEST_F(FlowPanelTest, ThePanelFollowsAChangeOfColors)
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
