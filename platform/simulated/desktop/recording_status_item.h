// A status item that nobody sees: it draws what it is given as a real one would, keeps it for
// looking at, and is clicked by the caller.
#pragma once

#include "platform/status_item.h"

#include <cstdint>
#include <string>
#include <vector>

namespace amperly {

class RecordingStatusItem : public StatusItem {
public:
    /// What one call of show() brought. The picture is drawn every time, also where its key says
    /// that it is the one already shown.
    struct Shown {
        std::vector<std::string> readingTexts;
        std::optional<std::string> toolTip;
        std::string spokenLabel;
        double widthPoints = 0;
        double heightPoints = 0;
        double scale = 1; ///< pixels per point of the panel
        CoverageMask mask; ///< the whole picture at this scale
        friend bool operator==(const Shown&, const Shown&) = default;
    };

    /// Pixels per point of the panel; at 1 until set.
    void setScale(double scale) { m_scale = scale; }

    void show(const StatusPicture& picture, std::optional<std::string_view> toolTip,
        std::string_view spokenLabel) override;
    void onPictureWanted(std::function<void()> handler) override { m_pictureWanted = std::move(handler); }
    void onClick(ClickHandler handler) override { m_clicked = std::move(handler); }
    void setMenu(Menu& menu) override { m_menu = &menu; }

    /// Opens the menu; where it is open already, nothing happens.
    void openMenu(std::optional<ScreenPoint> anchor) override;

    /// Another panel takes over and asks for the picture.
    void wantPicture() const;

    // What the user does.
    void click(ClickButton button, std::optional<ScreenPoint> anchor = std::nullopt);
    void closeMenu(); ///< by Esc, say; nothing happens when it is not open

    /// Chooses the first entry with this title from the open menu, which closes before the
    /// entry acts. False where the user could not have: no open menu, no such entry, or one
    /// that is hidden, disabled or without an action.
    bool choose(std::string_view title);

    // What there is to be seen.
    [[nodiscard]] const std::optional<Shown>& shown() const { return m_shown; }
    [[nodiscard]] int showings() const { return m_showings; }
    [[nodiscard]] int changes() const { return m_changes; } ///< showings of something else than before

    /// Showings of a picture that was another than the one before and yet had its key.
    [[nodiscard]] int contradictions() const { return m_contradictions; }

    [[nodiscard]] Menu* menu() const { return m_menu; }
    [[nodiscard]] bool isMenuOpen() const { return m_menuOpen; }
    [[nodiscard]] int menuOpenings() const { return m_menuOpenings; }
    [[nodiscard]] std::optional<ScreenPoint> menuAnchor() const
    {
        return m_menuAnchor;
    } ///< of the last opening

    /// Titles as a user reads them from the menu: hidden entries left out, separators as "".
    [[nodiscard]] std::vector<std::string> visibleTitles() const;

private:
    double m_scale = 1;
    std::optional<Shown> m_shown;
    int m_showings = 0;
    int m_changes = 0;
    std::uint64_t m_key = 0; ///< of the picture shown
    int m_contradictions = 0;
    std::function<void()> m_pictureWanted;
    ClickHandler m_clicked;
    Menu* m_menu = nullptr;
    bool m_menuOpen = false;
    int m_menuOpenings = 0;
    std::optional<ScreenPoint> m_menuAnchor;
};

} // namespace amperly
