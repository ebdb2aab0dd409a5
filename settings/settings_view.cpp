#include "settings/settings_view.h"

#include "platform/desktop.h"
#include "prefs/pref.h"
#include "render/look/quiet_button.h"
#include "render/look/text_style.h"
#include "render/status_renderer.h"
#include "settings/form_accessibility.h"
#include "settings/form_button.h"
#include "settings/form_label.h"
#include "settings/form_look.h"
#include "settings/form_row.h"
#include "settings/form_section.h"
#include "settings/mnemonic.h"
#include "settings/picker.h"
#include "settings/quiet_scroll_bar.h"
#include "settings/segmented_control.h"
#include "settings/status_preview.h"
#include "settings/symbol_icon.h"
#include "settings/toggle_switch.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPointer>
#include <QScrollArea>
#include <QVBoxLayout>

#include <utility>
#include <vector>

namespace amperly {

namespace {

QString text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

FormLabel* secondaryLabel(const QString& words)
{
    return new FormLabel(words, TextStyle::Body, FormLabel::Rank::Second);
}

} // namespace

SettingsView::SettingsView(LiveModel& live)
    : m_live(live)
    , m_store(PreferenceStore::standard())
    , m_desktop(*Injected<Desktop>::current())
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
    , m_launchAtLogin(*Injected<LoginItem>::current(), [this](const std::string& failure) {
        QMessageBox(QMessageBox::Warning, QStringLiteral("Amperly"), text(failure), QMessageBox::Ok, this)
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

    // The scroll bar, where there is one, lies in the form's margin: nothing moves for it.
    auto* const scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setVerticalScrollBar(new QuietScrollBar);
    scroll->setWidgetResizable(true);
    scroll->setAlignment(Qt::AlignHCenter);
    scroll->setWidget(form);
    form->setAutoFillBackground(false);
    scroll->viewport()->setAutoFillBackground(false);
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(scroll);

    // However the focus comes to a control, by Tab, by its letter or by a screen reader.
    connect(qApp, &QApplication::focusChanged, scroll, [scroll, form](QWidget*, QWidget* now) {
        if (now != nullptr && form->isAncestorOf(now))
            scroll->ensureWidgetVisible(now, 0, kForm.rowHeight);
    });
}

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
    section->addRow(new FormRow(secondaryLabel(text("Amperly " + Pref::version(m_desktop) + " is free.")),
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
        picker->addOption(text(label(style)));
    m_bindings.bind<ReadingStyle>(*picker, selection, {allCases.begin(), allCases.end()});
    return new FormRow(title, picker);
}

QWidget* SettingsView::macIconPicker()
{
    auto* const picker = new Picker;
    std::vector<std::string> symbols;
    for (const MacIcon& icon : Pref::macIcons) {
        picker->addOption(text(icon.name), symbolIcon(icon.symbol));
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
    m_store.onDidChange([self = QPointer<SettingsView>(this)] {
        if (self)
            self->refreshIfSeen();
    });
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
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
        text(StatusRenderer::accessibilityText(m_live.sample())));
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
    if (event->key() == Qt::Key_Alt)
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
