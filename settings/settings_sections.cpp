// What stands in the form, section by section and row by row.

#include "settings/settings_view.h"

#include "platform/desktop.h"
#include "prefs/pref.h"
#include "render/look/quiet_button.h"
#include "render/look/text_style.h"
#include "settings/form_button.h"
#include "settings/form_label.h"
#include "settings/form_look.h"
#include "settings/form_row.h"
#include "settings/form_section.h"
#include "settings/picker.h"
#include "settings/segmented_control.h"
#include "settings/status_preview.h"
#include "settings/symbol_icon.h"
#include "settings/toggle_switch.h"

#include <QHBoxLayout>

#include <vector>

namespace amperly {

namespace {

FormLabel* secondaryLabel(const QString& words)
{
    return new FormLabel(words, TextStyle::Body, FormLabel::Rank::Second);
}

} // namespace

FormSection* SettingsView::previewSection()
{
    auto* const section = new FormSection(QStringLiteral("Preview"), FormSection::Header::Spoken);
    m_preview = new StatusPreview;
    auto* const row = new QWidget;
    auto* const middle = new QHBoxLayout(row);
    middle->setContentsMargins(0, kForm.inset, 0, kForm.inset);
    middle->addStretch();
    middle->addWidget(m_preview);
    middle->addStretch();
    section->addRow(row);
    section->setFooter(QStringLiteral(
        "Menu bar space next to the notch is limited. If Amperly disappears, macOS has moved it behind "
        "the « button. Use the Stacked layout, show fewer readings, or try the compact options. Open "
        "Amperly from Spotlight to get back here."));
    return section;
}

FormSection* SettingsView::readingsSection()
{
    auto* const section = new FormSection(QStringLiteral("Readings"));
    section->addRow(stylePicker(QStringLiteral("&Mac power usage"), m_macStyle));
    section->addRow(stylePicker(QStringLiteral("&Charger input"), m_chargerStyle));
    section->addRow(stylePicker(QStringLiteral("&Battery charging / draining"), m_batteryStyle));
    section->addRow(macIconPicker());
    section->addRow(toggle(QStringLiteral("&Hide battery when idle"), m_hideIdleBattery));
    return section;
}

FormSection* SettingsView::formatSection()
{
    auto* const section = new FormSection(QStringLiteral("Format"));
    section->addRow(layoutSegments());
    section->addRow(decimalsSegments());
    section->addRow(unitToggle());
    section->addRow(toggle(QStringLiteral("Larger &text"), m_largeText));
    section->addRow(toggle(QStringLiteral("Compact &spacing"), m_compact));
    return section;
}

FormSection* SettingsView::generalSection()
{
    auto* const section = new FormSection(QStringLiteral("General"));
    section->addRow(launchToggle());
    section->addRow(approvalRow());
    section->addRow(intervalPicker());
    section->addRow(toggle(QStringLiteral("Smooth &readings"), m_smoothing));
    section->addRow(clickPicker());
    section->setFooter(QStringLiteral("Right-click Amperly for the simple menu any time."));
    return section;
}

FormSection* SettingsView::closingSection()
{
    auto* const section = new FormSection(QStringLiteral("Amperly"), FormSection::Header::Spoken);
    auto* const coffee = new QuietButton(QStringLiteral("☕ Buy me a coffee"), QuietButton::Tone::Link);
    coffee->setFont(textFont(TextStyle::Body));
    connect(coffee, &QuietButton::clicked, this, [this] { m_desktop.openAddress(Pref::coffeeURL()); });
    section->addRow(new FormRow(secondaryLabel(toText("Amperly " + Pref::version(m_desktop) + " is free.")),
        coffee, QuietButton::kSidePadding));

    auto* const reset = new FormButton(QStringLiteral("Reset to De&faults"));
    connect(reset, &FormButton::clicked, this, [this] { Pref::resetToDefaults(m_store); });
    section->addRow(new FormRow(nullptr, reset));
    return section;
}

QWidget* SettingsView::stylePicker(const QString& title, const PreferenceBinding<ReadingStyle>& selection)
{
    auto* const picker = new Picker;
    for (const ReadingStyle style : allCases)
        picker->addOption(toText(label(style)));
    m_bindings.bind<ReadingStyle>(*picker, selection, {allCases.begin(), allCases.end()});
    return new FormRow(title, picker);
}

QWidget* SettingsView::macIconPicker()
{
    auto* const picker = new Picker;
    std::vector<std::string> symbols;
    for (const MacIcon& icon : Pref::macIcons) {
        picker->addOption(toText(icon.name), symbolIcon(icon.symbol));
        symbols.emplace_back(icon.symbol);
    }
    m_bindings.bind<std::string>(*picker, m_macIcon, symbols);
    return new FormRow(QStringLiteral("Mac &icon"), picker);
}

QWidget* SettingsView::layoutSegments()
{
    auto* const segments = new SegmentedControl({QStringLiteral("Stacked"), QStringLiteral("Single line")});
    m_bindings.bind<bool>(*segments, m_stacked, {true, false});
    return new FormRow(QStringLiteral("&Layout"), segments);
}

QWidget* SettingsView::decimalsSegments()
{
    auto* const segments = new SegmentedControl({QStringLiteral("None"), QStringLiteral("One")});
    m_bindings.bind<std::int64_t>(*segments, m_decimals, {0, 1});
    return new FormRow(QStringLiteral("&Decimals"), segments);
}

QWidget* SettingsView::unitToggle()
{
    auto* const control = new ToggleSwitch;
    m_bindings.bind(
        *control, [this] { return unit().value().value_or(false); }, [this](bool on) { unit().set(on); });
    return new FormRow(QStringLiteral("Show \"W\" &unit"), control);
}

QWidget* SettingsView::launchToggle()
{
    auto* const control = new ToggleSwitch;
    m_bindings.bind(
        *control, [this] { return m_launchAtLogin.isOn(); },
        [this](bool on) {
            m_launchAtLogin.set(on);
            refreshIfSeen();
        });
    return new FormRow(QStringLiteral("Launch &at login"), control);
}

QWidget* SettingsView::approvalRow()
{
    auto* const open = new FormButton(QStringLiteral("&Open Settings…"));
    connect(open, &FormButton::clicked, this, [this] { m_launchAtLogin.openSystemSettings(); });
    m_approval = new FormRow(secondaryLabel(QStringLiteral("Needs approval in Login Items.")), open);
    m_approval->hide(); // before a layout has counted on it
    return m_approval;
}

QWidget* SettingsView::intervalPicker()
{
    auto* const picker = new Picker;
    for (const QString& name :
        {QStringLiteral("1 second"), QStringLiteral("2 seconds"), QStringLiteral("5 seconds")})
        picker->addOption(name);
    m_bindings.bind<double>(*picker, m_interval, {1.0, 2.0, 5.0});
    return new FormRow(QStringLiteral("Update &every"), picker);
}

QWidget* SettingsView::clickPicker()
{
    auto* const picker = new Picker;
    picker->addOption(QStringLiteral("Power flow panel"));
    picker->addOption(QStringLiteral("Simple menu"));
    m_bindings.bind<std::string>(*picker, m_clickShows, {"panel", "menu"});
    return new FormRow(QStringLiteral("Clic&k shows"), picker);
}

QWidget* SettingsView::toggle(const QString& title, const PreferenceBinding<bool>& binding)
{
    auto* const control = new ToggleSwitch;
    m_bindings.bind(*control, binding);
    return new FormRow(title, control);
}

const PreferenceBinding<bool>& SettingsView::unit() const
{
    return m_stacked.value().value_or(false) ? m_showUnitStacked : m_showUnit;
}

} // namespace amperly
