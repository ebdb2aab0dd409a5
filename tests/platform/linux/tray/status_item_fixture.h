// A status item on a bus of its own, with a panel that comes and goes as the test says.
#pragma once

#include "platform/linux/tray/linux_status_item.h"
#include "tests/platform/linux/tray/fake_panel.h"
#include "tests/platform/linux/tray/fake_picture.h"
#include "tests/support/private_bus.h"

#include <optional>
#include <string>
#include <vector>

namespace amperly::test {

class FakeInk : public InkSource {
public:
    [[nodiscard]] Ink ink(PanelInk) const override { return m_ink; }
    void onChanged(std::function<void()> handler) override { m_changed = std::move(handler); }
    void panelChanged() override { ++panels; }

    void become(Ink ink)
    {
        m_ink = ink;
        m_changed();
    }

    int panels = 0;

private:
    Ink m_ink{0xff102030};
    std::function<void()> m_changed;
};

class FakeFallback : public TrayFallback {
public:
    void show(const StatusPicture& picture, std::optional<std::string_view>, std::string_view) override
    {
        shown = true;
        ++drawings;
        reading = picture.readingText(0);
    }
    void inkChanged() override { ++inks; }
    void hide() override { shown = false; }
    void onClick(StatusItem::ClickHandler handler) override { click = std::move(handler); }
    void onPictureWanted(std::function<void()> handler) override { wantPicture = std::move(handler); }

    bool shown = false;
    int drawings = 0;
    int inks = 0;
    std::string reading;
    StatusItem::ClickHandler click;
    std::function<void()> wantPicture;
};

class StatusItemFixture : public testing::Test {
protected:
    /// Starts the item as it would be under the host whose process has that name.
    void startUnder(const char* process)
    {
        item = std::make_unique<LinuxStatusItem>(LinuxStatusItemParts{
            .ink = *inkInForce,
            .fallback = &fallback,
            .openMenu = [this](Menu&, std::optional<ScreenPoint> anchor) { menuOpenedAt = anchor; },
            .warn = [this](std::string_view line) { warnings.emplace_back(line); },
            .desktop = {},
            .busAddress = daemon.address(),
            .processName =
                [process](std::uint32_t processId) {
                    EXPECT_EQ(processId, static_cast<std::uint32_t>(getpid()));
                    return process;
                },
        });
        item->onPictureWanted([this] { redraw(); });
        item->onClick([this](const StatusClick& click) { clicks.push_back(click); });
    }

    /// The same with a panel that is there first.
    void startOn(const char* process)
    {
        panel.emplace(daemon.address());
        startUnder(process);
    }

    void show(std::vector<std::string> readings)
    {
        picture = FakePicture(std::move(readings));
        redraw();
    }

    void redraw() { item->show(picture, toolTip, spokenLabel); }

    const std::string& onlyItem()
    {
        EXPECT_TRUE(panel->sees(1));
        return panel->items().front();
    }

    PrivateBus daemon;
    FakeInk ink;
    InkSource* inkInForce = &ink;
    FakeFallback fallback;
    std::optional<FakePanel> panel;
    FakePicture picture{{"12.3"}};
    std::optional<std::string> toolTip = "Mac using 12.3 W";
    std::string spokenLabel = "Mac using 12.3 watts";
    std::vector<std::string> warnings;
    std::vector<StatusClick> clicks;
    std::optional<ScreenPoint> menuOpenedAt;
    std::unique_ptr<LinuxStatusItem> item;
};

} // namespace amperly::test
