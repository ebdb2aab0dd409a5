#include "platform/linux/tray/linux_status_item.h"

#include <QGuiApplication>
#include <QScreen>
#include <utility>

namespace amperly {

LinuxStatusItem::LinuxStatusItem(LinuxStatusItemParts parts) : m_parts(std::move(parts))
{
    m_retry.setSingleShot(true);
    m_retry.setTimerType(Qt::VeryCoarseTimer);
    m_retry.setInterval(kBusRetry);
    QObject::connect(&m_retry, &QTimer::timeout, &m_context, [this] { joinBus(); });
    m_parts.ink.onChanged([this] { inkChanged(); });
    if (m_parts.fallback) {
        m_parts.fallback->onClick([this](const StatusClick& click) { handleClick(click); });
        m_parts.fallback->onPictureWanted([this] { wantPicture(); });
    }
    for (QScreen* const screen : QGuiApplication::screens())
        followScreen(*screen);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &m_context, [this](QScreen* screen) {
        followScreen(*screen);
        followScale();
    });
    QObject::connect(
        qGuiApp, &QGuiApplication::screenRemoved, &m_context, [this] { followScale(); },
        Qt::QueuedConnection);
    joinBus();
}

LinuxStatusItem::~LinuxStatusItem()
{
    m_parts.ink.onChanged(nullptr);
    if (m_parts.fallback) {
        showFallback(false);
        m_parts.fallback->onClick(nullptr);
        m_parts.fallback->onPictureWanted(nullptr);
    }
}

void LinuxStatusItem::joinBus()
{
    m_connection = BusConnection::open(m_parts.busAddress);
    if (!m_connection) {
        loseBus();
        return;
    }
    m_connection->onClosed([this] { loseBus(); });
    m_watcher = std::make_unique<StatusNotifierWatcher>(*m_connection, m_parts.processName);
    m_watcher->onChanged([this] { followWatcher(); });
}

void LinuxStatusItem::loseBus()
{
    // Once for each loss: the attempts that follow are nobody's concern.
    if (!std::exchange(m_lossTold, true) && m_parts.warn)
        m_parts.warn("Amperly: no session bus, looking for it again every minute");
    m_row.reset();
    m_registeredWith.clear();
    m_watcher.reset();
    m_connection.reset();
    if (m_opening)
        m_opening->closed();
    showFallback(true);
    m_retry.start();
}

void LinuxStatusItem::followWatcher()
{
    using Presence = StatusNotifierWatcher::Presence;
    m_lossTold = false;
    const Presence presence = m_watcher->presence();
    if (presence == Presence::WithHost) {
        const HostProfile profile = hostProfile(m_watcher->process(), m_parts.desktop);
        if (m_registeredWith != m_watcher->owner()) {
            m_registeredWith = m_watcher->owner();
            if (!m_row || m_row->profile() != profile)
                buildRow(profile);
            m_parts.ink.panelChanged();
            m_row->registerWith(m_registeredWith);
        }
    } else if (presence != Presence::WithoutHost) {
        // A watcher without a host keeps those who are with it. Nobody joins it, though: a host
        // that is just starting has read the list of items already and may not hear of one more.
        m_registeredWith.clear();
        if (m_row)
            m_row->forgetWatcher();
        if (m_opening)
            m_opening->closed();
    }
    showFallback(presence != Presence::WithHost);
}

void LinuxStatusItem::buildRow(const HostProfile& profile)
{
    m_row = std::make_unique<ItemRow>(profile, m_parts.busAddress, exportedMenu(profile));
    m_row->onClick([this](const StatusClick& click) { handleClick(click); });
    m_row->onActivationToken([](const std::string& token) {
        // Where the toolkit looks for it when a window asks for attention.
        qputenv("XDG_ACTIVATION_TOKEN", token.c_str());
    });
    m_row->onClosed([this] { loseBus(); });
    wantPicture();
}

ExportedMenu LinuxStatusItem::exportedMenu(const HostProfile& profile)
{
    ExportedMenu menu{.menu = m_menu, .opening = m_opening.get(), .leading = {}};
    if (profile.leftClickOpensMenu) {
        // A click never arrives there, so the menu has to offer what it would do.
        MenuEntry open;
        open.title = "Open Amperly";
        open.activate = [this] {
            if (m_clickHandler)
                m_clickHandler({.button = ClickButton::Left, .anchor = {}});
        };
        MenuEntry separator;
        separator.separator = true;
        menu.leading = {std::move(open), std::move(separator)};
    }
    return menu;
}

void LinuxStatusItem::showFallback(bool shown)
{
    if (!m_parts.fallback || m_fallbackShown == shown)
        return;
    m_fallbackShown = shown;
    if (shown)
        wantPicture();
    else
        m_parts.fallback->hide();
}

void LinuxStatusItem::wantPicture()
{
    m_key.reset();
    if (m_pictureWanted)
        m_pictureWanted();
}

void LinuxStatusItem::show(
    const StatusPicture& picture, std::optional<std::string_view> toolTip, std::string_view spokenLabel)
{
    const double scale = qGuiApp->devicePixelRatio();
    const std::uint64_t key = picture.key();
    const bool samePicture = m_key == key && m_scale == scale;
    const bool sameTexts = m_toolTip == toolTip && m_spokenLabel == spokenLabel;
    if (samePicture && sameTexts) {
        refreshInk();
        return;
    }
    m_toolTip = toolTip;
    m_spokenLabel = spokenLabel;
    m_key = key;
    m_scale = scale;
    if (m_row) {
        m_row->showTexts(toolTip, spokenLabel);
        if (!samePicture)
            m_row->showPicture(picture, scale, m_parts.ink.ink(m_row->profile().ink));
        m_row->publish();
    }
    if (m_fallbackShown)
        m_parts.fallback->show(picture, toolTip, spokenLabel);
}

void LinuxStatusItem::followScreen(QScreen& screen)
{
    // Queued: the toolkit tells of a screen before it has looked for the largest scale of all.
    // A scale has no signal of its own; the screen's size in points or its resolution goes with it.
    QObject::connect(
        &screen, &QScreen::geometryChanged, &m_context, [this] { followScale(); }, Qt::QueuedConnection);
    QObject::connect(
        &screen, &QScreen::logicalDotsPerInchChanged, &m_context, [this] { followScale(); },
        Qt::QueuedConnection);
}

void LinuxStatusItem::followScale()
{
    if (m_key && m_scale != qGuiApp->devicePixelRatio())
        wantPicture();
}

void LinuxStatusItem::inkChanged()
{
    refreshInk();
    if (m_fallbackShown)
        m_parts.fallback->inkChanged();
}

void LinuxStatusItem::refreshInk()
{
    if (!m_row)
        return;
    m_row->setInk(m_parts.ink.ink(m_row->profile().ink));
    m_row->publish();
}

void LinuxStatusItem::handleClick(const StatusClick& click)
{
    // From the event loop, not from within the bus's dispatch: a menu runs a loop of its own.
    QMetaObject::invokeMethod(
        &m_context,
        [this, click] {
            if (m_clickHandler)
                m_clickHandler(click);
        },
        Qt::QueuedConnection);
}

void LinuxStatusItem::setMenu(Menu& menu)
{
    m_menu = &menu;
    if (!m_row) {
        m_opening = std::make_unique<MenuOpening>(menu);
        return;
    }
    // Items say at registration whether they have a menu, so they register anew.
    const HostProfile profile = m_row->profile();
    m_row.reset();
    m_opening = std::make_unique<MenuOpening>(menu);
    buildRow(profile);
    if (!m_registeredWith.empty())
        m_row->registerWith(m_registeredWith);
}

void LinuxStatusItem::openMenu(std::optional<ScreenPoint> anchor)
{
    if (m_menu && m_parts.openMenu)
        m_parts.openMenu(*m_menu, anchor);
}

} // namespace amperly
