// A Mac's desktop on Linux: what AppKit, Foundation and ServiceManagement were told by the
// program, and what a user, the system or another process does to it.
//
// Below it stand the classes that Amperly calls, with as much of their behaviour as it relies
// on. Objects live until the program ends; what was done wrong is written down. They are a
// belief about the real frameworks, kept by hand.
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

namespace amperly::fake_mac {

/// A line of the menu as it opened.
struct MenuRow {
    std::string title{};
    std::string shortcut{};
    bool separator = false;
    bool enabled = true;
    friend bool operator==(const MenuRow&, const MenuRow&) = default;
};

/// One bitmap of the status item's image; alpha by pixel, rows from the top.
struct Bitmap {
    int width = 0;
    int height = 0;
    std::vector<unsigned char> alpha;
    bool isBlack = true;
};

struct StatusItemState {
    int count = 0; ///< items in the menu bar
    bool hasMenu = false;
    int images = 0; ///< how often one was set
    bool isTemplate = false;
    double width = 0.0; ///< points
    double height = 0.0;
    std::vector<Bitmap> bitmaps;
    std::string title = "untouched";
    std::optional<std::string> toolTip;
    std::string spokenLabel;
    std::string autosaveName;
    bool onlyImage = false;
};

struct PopoverState {
    bool isShown = false;
    int showings = 0;
    bool animates = false;
    bool opensBelow = false;
    bool hasContent = false;
    double width = 0.0; ///< points
    double height = 0.0;
    int keyWindows = 0;
    int firstResponders = 0;
};

struct ApplicationState {
    int policy = -1;
    int activations = 0;
    int terminations = 0;
    std::vector<std::string> opened; ///< addresses
    std::string log;
};

/// What the system answers.
struct SystemState {
    double uptime = 1000.0; ///< seconds
    std::optional<double> visibleScreenHeight = 875.0;
    std::string bundlePath = "/Applications/Amperly.app";
    std::variant<std::monostate, std::string, int> bundleVersion = std::string("1.2.3");
    bool givesButton = true;
    double barThickness = 24.0; ///< points
    bool pointerOnItem = false;
    unsigned long pressedButtons = 0; ///< one bit for each
    bool windowsAreSeen = true; ///< by somebody
    long framesPerSecond = 120; ///< that the screen can show
    bool popoverClosesAtOnce = true; ///< instead of after its animation
    bool menuWaits = true; ///< the click that opens a menu returns when it has closed
    long loginStatus = 0;
    std::optional<std::string> loginFailure;
    int loginSettingsOpened = 0;
    bool savesPower = false;
    bool reducesMotion = false;
    bool increasesContrast = false;
    std::string locale = "en_US";
    std::string roundedFamily = ".AppleSystemUIFontRounded"; ///< empty where there is none
    std::set<std::string> symbols{"laptopcomputer", "bolt.fill", "house.fill"}; ///< the system's
    int symbolsMade = 0;
};

struct Stage {
    StatusItemState item;
    PopoverState popover;
    ApplicationState application;
    SystemState system;
    std::vector<MenuRow> menu; ///< visible lines of the last opening
    int menuOpenings = 0;
    int displayLinks = 0; ///< running
    float frameRate = 0.0F; ///< that the link made last prefers
    int timers = 0; ///< running
    int autoreleasePools = 0; ///< open
    double timerTolerance = 0.0; ///< of the timer that was made last
    int observers = 0; ///< of notifications and of keys
    std::vector<std::string> faults;
};

[[nodiscard]] Stage& stage();
void resetStage();

inline constexpr int kLeft = 0;
inline constexpr int kRight = 1;

/// Called while the menu is open; returns the index of the row to choose, or nothing.
using MenuUse = std::function<std::optional<int>()>;

/// A whole click on the status item, as the window server sends it: the press closes a transient
/// popover, the release reaches the button. With a menu attached the press opens that.
void click(int mouseButton, const MenuUse& use = {}, double heldSeconds = 0.05);

/// A press of the button by an assistive technology, without a mouse.
void pressByAccessibility();

/// Closes a menu that does not wait, as the user does.
void closeMenu();

/// A press somewhere else on the screen.
void pressElsewhere(int mouseButton = kLeft);

/// The system closes the popover, without a press of the mouse.
void closePopover();

/// The end of the popover's closing animation.
void finishPopoverAnimation();

/// The user opens the application while it runs; tells what the delegate answered.
[[nodiscard]] bool reopenApplication();

/// The user changes the region's settings.
void changeLocale(const std::string& identifier);

/// The user changes the accessibility settings of displays.
void changeDisplaySettings(bool reducesMotion, bool increasesContrast);

/// Lets time pass: timers fire.
void advance(double seconds);

/// The display shows a picture: links are called.
void showFrame(double timestamp);

/// Lets the main thread do what was handed to it.
void runMainQueue();

/// What another process writes into the user's defaults; nothing removes the value. It is heard
/// of on another thread.
using Stored = std::variant<std::monostate, std::string, long long, double, bool>;
void writeFromElsewhere(const std::string& key, const Stored& value);

/// What is stored, defaults aside.
[[nodiscard]] Stored storedValue(const std::string& key);

/// What removing a status item of that name does to the place where the user had moved it.
void forgetPlace(const std::string& autosaveName);

/// Stores an object that is neither text nor number.
void storeSomethingElse(const std::string& key);

/// A change that is announced by the notification alone, as that of a whole domain is.
void changeQuietly(const std::string& key, const Stored& value);

/// A change by another part of this process, on another thread.
void writeFromOtherThread(const std::string& key, const Stored& value);

} // namespace amperly::fake_mac
