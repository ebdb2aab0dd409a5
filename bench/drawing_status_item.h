// A status item that does all the work of the real one short of talking to anybody: it recognises
// what is shown already, and draws what is not.
#pragma once

#include "platform/coverage_mask.h"
#include "platform/status_item.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace amperly {

class DrawingStatusItem final : public StatusItem {
public:
    /// Which pictures a change makes it draw.
    enum class Panel {
        Plain, ///< the whole picture at one pixel per point
        Wide, ///< the whole picture and one tile, each at one and two pixels per point
        Tiles, ///< one square for each reading
    };

    explicit DrawingStatusItem(Panel panel) : m_panel(panel) { }

    void show(const StatusPicture& picture, std::optional<std::string_view> toolTip,
        std::string_view spokenLabel) override;
    void onPictureWanted(std::function<void()>) override { }
    void onClick(ClickHandler) override { }
    void setMenu(Menu&) override { }
    void openMenu(std::optional<ScreenPoint>) override { }

    /// How often something that is shown differed from before.
    [[nodiscard]] int changes() const { return m_changes; }

private:
    void drawAll(const StatusPicture& picture);

    const Panel m_panel;
    std::optional<std::uint64_t> m_key;
    std::optional<std::string> m_toolTip;
    std::string m_spokenLabel;
    CoverageMask m_scratch;
    std::vector<CoverageMask> m_shown;
    int m_changes = 0;
};

} // namespace amperly
