#include "settings/settings_view.h"

#include "platform/desktop.h"
#include "prefs/pref.h"
#include "render/look/text_style.h"
#include "render/status_renderer.h"
#include "settings/form_accessibility.h"
#include "settings/form_look.h"
#include "settings/form_scroll.h"
#include "settings/form_section.h"
#include "settings/mnemonic.h"
#include "settings/status_preview.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMessageBox>
#include <QVBoxLayout>

#include <utility>

namespace amperly {

SettingsView::SettingsView(LiveModel& live, LoginItem& loginItem, Desktop& desktop)
    : m_live(live)
    , m_store(PreferenceStore::standard())
    , m_desktop(desktop)
    , m_macStyle(Pref::macStyle)
    , m_chargerStyle(Pref::chargerStyle)
    , m_batteryStyle(Pref::batteryStyle)
    , m_macIcon(Pref::macIcon)
    , m_decimals(Pref::decimals)
    , m_showUnit(Pref::showUnit)
    , m_showUnitStacked(Pref::showUnitStacked)
    , m_largeText(Pref::largeText)
    , m_compact(Pref::compact)
    , m_stacked(Pref::stacked)
    , m_hideIdleBattery(Pref::hideIdleBattery)
    , m_interval(Pref::interval)
    , m_smoothing(Pref::smoothing)
    , m_clickShows(Pref::clickShows)
    , m_launchAtLogin(loginItem, [this](const std::string& failure) {
        QMessageBox(QMessageBox::Warning, QStringLiteral("Amperly"), toText(failure), QMessageBox::Ok, this)
            .exec();
    })
{
    describeFormToScreenReaders();
    layOut();
    refresh();
    followChanges();
}

void SettingsView::layOut()
{
    setMinimumSize(kForm.width, kForm.minimumHeight);

    auto* const form = new QWidget;
    form->setFixedWidth(kForm.width);
    auto* const sections = new QVBoxLayout(form);
    sections->setContentsMargins(kForm.margin, kForm.endMargin, kForm.margin, kForm.endMargin);
    sections->setSpacing(kForm.betweenSections);
    sections->addWidget(previewSection());
    sections->addWidget(readingsSection());
    sections->addWidget(formatSection());
    sections->addWidget(generalSection());
    sections->addWidget(closingSection());
    sections->addStretch();

    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(new FormScroll(form));
}

void SettingsView::followChanges()
{
    // The change is announced before it is made: look at it when the event loop comes round.
    m_subscription = m_live.objectWillChange([this] {
        if (!isVisible() || std::exchange(m_isRefreshDue, true))
            return;
        QMetaObject::invokeMethod(
            this,
            [this] {
                m_isRefreshDue = false;
                refreshPreview();
            },
            Qt::QueuedConnection);
    });
    m_preferenceSubscription = m_store.onDidChange([this] { refreshIfSeen(); });
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive) {
            m_launchAtLogin.readAgain();
            refreshIfSeen();
        }
    });
}

void SettingsView::refresh()
{
    m_bindings.showStoredValues();
    m_approval->setVisible(m_launchAtLogin.needsApproval());
    refreshPreview();
}

void SettingsView::refreshPreview()
{
    m_preview->show(StatusRenderer::image(m_live.sample(), m_store),
        toText(StatusRenderer::accessibilityText(m_live.sample())));
}

void SettingsView::refreshIfSeen()
{
    // A hidden window follows nothing, and catches up when it is shown.
    if (isVisible())
        refresh();
}

void SettingsView::showEvent(QShowEvent* event)
{
    refresh();
    QWidget::showEvent(event);
}

void SettingsView::keyPressEvent(QKeyEvent* event)
{
    // Where the desktop has no such letters, the key is for something else.
    if (event->key() == Qt::Key_Alt && !QKeySequence::mnemonic(QStringLiteral("&A")).isEmpty())
        showMnemonics(*window(), true);
    QWidget::keyPressEvent(event);
}

void SettingsView::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Alt)
        showMnemonics(*window(), false);
    QWidget::keyReleaseEvent(event);
}

void SettingsView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    // The key that is let go of in another window is not heard here.
    if (event->type() == QEvent::ActivationChange && !isActiveWindow())
        showMnemonics(*window(), false);
}

} // namespace amperly
