// The content of the settings window: a form that edits every preference in the standard store,
// each change at once, with a preview of the status item above it.
#pragma once

#include "settings/form_bindings.h"
#include "settings/launch_at_login.h"
#include "settings/preference_binding.h"
#include "telemetry/live_model.h"

#include <QWidget>

#include <cstdint>
#include <string>

namespace amperly {

class Desktop;
class FormSection;
class StatusPreview;
enum class ReadingStyle;

class SettingsView : public QWidget {
public:
    /// Follows `live`, the standard preference store and the login item, all of which must outlive
    /// the view, as must the desktop.
    SettingsView(LiveModel& live, LoginItem& loginItem, Desktop& desktop);

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    FormSection* previewSection();
    FormSection* readingsSection();
    FormSection* formatSection();
    FormSection* generalSection();
    FormSection* closingSection();

    QWidget* stylePicker(const QString& title, const PreferenceBinding<ReadingStyle>& selection);
    QWidget* macIconPicker();
    QWidget* layoutSegments();
    QWidget* decimalsSegments();
    QWidget* unitToggle();
    QWidget* launchToggle();
    QWidget* approvalRow();
    QWidget* intervalPicker();
    QWidget* clickPicker();
    QWidget* toggle(const QString& title, const PreferenceBinding<bool>& binding);

    void layOut();
    void followChanges();
    void refresh();
    void refreshPreview();
    void refreshIfSeen();

    /// Whether the unit is shown in the layout that is in use: each has its own preference.
    [[nodiscard]] const PreferenceBinding<bool>& unit() const;

    LiveModel& m_live;
    PreferenceStore& m_store;
    Desktop& m_desktop;
    Subscription m_subscription;
    Subscription m_preferenceSubscription;

    PreferenceBinding<ReadingStyle> m_macStyle;
    PreferenceBinding<ReadingStyle> m_chargerStyle;
    PreferenceBinding<ReadingStyle> m_batteryStyle;
    PreferenceBinding<std::string> m_macIcon;
    PreferenceBinding<std::int64_t> m_decimals;
    PreferenceBinding<bool> m_showUnit;
    PreferenceBinding<bool> m_showUnitStacked;
    PreferenceBinding<bool> m_largeText;
    PreferenceBinding<bool> m_compact;
    PreferenceBinding<bool> m_stacked;
    PreferenceBinding<bool> m_hideIdleBattery;
    PreferenceBinding<double> m_interval;
    PreferenceBinding<bool> m_smoothing;
    PreferenceBinding<std::string> m_clickShows;
    LaunchAtLogin m_launchAtLogin;

    FormBindings m_bindings;
    StatusPreview* m_preview = nullptr;
    QWidget* m_approval = nullptr;
    bool m_isRefreshDue = false;
};

} // namespace amperly
