#include "platform/macos/shell/native_popover_host.h"

#include "tests/platform/macos/fakes/app_kit.h"
#include "tests/platform/macos/fakes/fake_desktop_test.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QWidget>

namespace amperly {
namespace {

class Panel : public QWidget {
public:
    explicit Panel(bool& isGone) : m_isGone(isGone)
    {
        m_isGone = false;
        setFixedSize(340, 380);
    }
    ~Panel() override { m_isGone = true; }

    std::function<void()> onShow;

protected:
    void showEvent(QShowEvent* event) override
    {
        QWidget::showEvent(event);
        if (onShow)
            onShow();
    }

private:
    bool& m_isGone;
};

class NativePopoverHostTest : public FakeDesktopTest {
protected:
    NativePopoverHostTest()
    {
        host.emplace(NativePopoverParts{
            .anchor = [this] { return anchor; },
            .viewOf =
                [this](QWidget& widget) {
                    EXPECT_FALSE(widget.isVisible());
                    return view;
                },
        });
        host->onDidClose([this] {
            ++closings;
            contentWasGone = isGone;
        });
    }

    void TearDown() override
    {
        host.reset();
        runEventLoop();
        FakeDesktopTest::TearDown();
    }

    void show()
    {
        auto panel = std::make_unique<Panel>(isGone);
        content = panel.get();
        host->show(std::move(panel), std::nullopt);
    }

    void pressItem()
    {
        stage.system.pointerOnItem = true;
        fake_mac::pressElsewhere();
        stage.system.pointerOnItem = false;
    }

    static void runEventLoop()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    NSView* anchor = fake_mac::makeBarButton();
    NSView* view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 1, 1)];
    std::optional<NativePopoverHost> host;
    QPointer<QWidget> content;
    int closings = 0;
    bool isGone = false;
    bool contentWasGone = false;
};

TEST_F(NativePopoverHostTest, ThePanelHangsBelowTheItemInItsOwnSize)
{
    show();
    EXPECT_TRUE(host->isShown());
    EXPECT_TRUE(stage.popover.opensBelow);
    EXPECT_TRUE(stage.popover.animates);
    EXPECT_EQ(stage.popover.width, 340.0);
    EXPECT_EQ(stage.popover.height, 380.0);
}

TEST_F(NativePopoverHostTest, ThePanelHasTheKeyboard)
{
    show();
    EXPECT_EQ(stage.popover.keyWindows, 1);
    EXPECT_EQ(stage.popover.firstResponders, 1);
}

TEST_F(NativePopoverHostTest, ThePanelIsShownInThePopoversWindow)
{
    NSWindow* window = nil;
    auto panel = std::make_unique<Panel>(isGone);
    panel->onShow = [&] { window = view.window; };
    host->show(std::move(panel), std::nullopt);
    EXPECT_TRUE(window != nil);
    EXPECT_TRUE(window != anchor.window);
}

TEST_F(NativePopoverHostTest, APanelThatGrowsTakesThePopoverWithIt)
{
    show();
    content->setFixedSize(340, 200);
    QCoreApplication::processEvents();
    EXPECT_EQ(stage.popover.height, 200.0);
}

TEST_F(NativePopoverHostTest, ClosingDestroysTheContentOnceTheEventLoopRuns)
{
    show();
    host->close();
    EXPECT_FALSE(host->isShown());
    EXPECT_FALSE(content.isNull()); // it may be the content that asked
    EXPECT_EQ(closings, 0);
    runEventLoop();
    EXPECT_EQ(closings, 1);
    EXPECT_TRUE(contentWasGone);
    EXPECT_FALSE(stage.popover.hasContent);
}

TEST_F(NativePopoverHostTest, TheContentStaysForTheClosingAnimation)
{
    stage.system.popoverClosesAtOnce = false;
    show();
    host->close();
    runEventLoop();
    EXPECT_FALSE(content.isNull());
    fake_mac::finishPopoverAnimation();
    runEventLoop();
    EXPECT_TRUE(content.isNull());
    EXPECT_EQ(closings, 1);
}

TEST_F(NativePopoverHostTest, APressElsewhereCloses)
{
    show();
    fake_mac::pressElsewhere();
    runEventLoop();
    EXPECT_FALSE(host->isShown());
    EXPECT_EQ(closings, 1);
}

TEST_F(NativePopoverHostTest, TheEscapeKeyCloses)
{
    show();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(content.data(), &press);
    EXPECT_FALSE(host->isShown());
}

TEST_F(NativePopoverHostTest, AnyOtherKeyDoesNot)
{
    show();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
    QCoreApplication::sendEvent(content.data(), &press);
    EXPECT_TRUE(host->isShown());
}

TEST_F(NativePopoverHostTest, TheRestOfTheClickThatClosedItDoesNotOpenItAgain)
{
    show();
    pressItem();
    stage.system.uptime += 1.5; // held down
    EXPECT_FALSE(host->takesClick());
    EXPECT_TRUE(host->takesClick()) << "it was one click";
}

TEST_F(NativePopoverHostTest, APressElsewhereHoldsNoClickBack)
{
    show();
    fake_mac::pressElsewhere();
    stage.system.uptime += 0.1;
    EXPECT_TRUE(host->takesClick());
}

TEST_F(NativePopoverHostTest, APressOfTheOtherButtonHoldsNoClickBack)
{
    show();
    stage.system.pointerOnItem = true;
    fake_mac::pressElsewhere(fake_mac::kRight); // for the menu
    EXPECT_TRUE(host->takesClick());
}

TEST_F(NativePopoverHostTest, AClosingWithoutAPressHoldsNoClickBack)
{
    show();
    stage.system.pointerOnItem = true;
    fake_mac::closePopover(); // as at a switch to another space
    EXPECT_TRUE(host->takesClick());
}

TEST_F(NativePopoverHostTest, APressThatNeverBecameAClickHoldsNoneBackForLong)
{
    show();
    pressItem();
    stage.system.uptime += 3.0;
    EXPECT_TRUE(host->takesClick());
}

TEST_F(NativePopoverHostTest, AClosingOnRequestDoesNotHoldBackTheNextOpening)
{
    show();
    host->close();
    EXPECT_TRUE(host->takesClick());
    show();
    EXPECT_TRUE(host->isShown());
}

TEST_F(NativePopoverHostTest, AnOpeningWaitsForNoClosingAnimation)
{
    stage.system.popoverClosesAtOnce = false;
    show();
    const QPointer<QWidget> first = content;
    host->close();
    show();
    EXPECT_TRUE(host->isShown());
    fake_mac::finishPopoverAnimation();
    runEventLoop();
    EXPECT_TRUE(first.isNull());
    EXPECT_TRUE(host->isShown());
    EXPECT_FALSE(content.isNull());
    EXPECT_TRUE(stage.popover.hasContent);
    EXPECT_EQ(closings, 1);
}

TEST_F(NativePopoverHostTest, WithoutAnItemNothingOpens)
{
    anchor = nil;
    EXPECT_FALSE(host->takesClick());
    show();
    EXPECT_FALSE(host->isShown());
    EXPECT_TRUE(content.isNull());
}

TEST_F(NativePopoverHostTest, ClosingWhatIsNotShownDoesNothing)
{
    host->close();
    runEventLoop();
    EXPECT_EQ(closings, 0);
}

TEST_F(NativePopoverHostTest, TheHostsEndTakesContentAlongThatWasAboutToGo)
{
    show();
    host->close();
    EXPECT_TRUE(content->isHidden());
    host.reset();
    EXPECT_TRUE(isGone);
}

TEST_F(NativePopoverHostTest, TheHostsEndTakesThePopoverAlong)
{
    show();
    host.reset();
    EXPECT_FALSE(stage.popover.isShown);
    EXPECT_FALSE(stage.popover.hasContent);
    EXPECT_TRUE(content.isNull());
    EXPECT_EQ(closings, 0);
}

} // namespace
} // namespace amperly
