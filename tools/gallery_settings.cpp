#include "tools/gallery_settings.h"

#include "platform/memory_preference_store.h"
#include "platform/simulated/desktop/fake_login_item.h"
#include "platform/simulated/desktop/recording_desktop.h"
#include "prefs/pref.h"
#include "render/status_art.h"
#include "settings/settings_view.h"
#include "tools/desktop_palettes.h"
#include "tools/gallery_stage.h"

#include <QApplication>
#include <QImage>
#include <QPalette>
#include <QScrollArea>
#include <QScrollBar>

namespace amperly {
namespace {

/// The height that shows the whole form.
constexpr int kWhole = 0;

class SettingsGallery {
public:
    explicit SettingsGallery(QString folder) : m_folder(std::move(folder))
    {
        preferences.registerDefaults(Pref::defaults());
        desktop.setShortVersion("0.1.0");
        live.setSample(PowerSample{.systemLoad = 14.2,
            .adapterIn = 30.1,
            .battery = 15.9,
            .adapterRating = 67,
            .batteryPercent = 64,
            .externalConnected = true});
    }

    /// The form at a height, or whole, scrolled to its end if so wished.
    bool write(const QString& name, double scale, int height = kWhole, bool atEnd = false)
    {
        SettingsView view(live, loginItem, desktop);
        auto* const scroll = view.findChild<QScrollArea*>();
        view.resize(view.minimumWidth(), height);
        view.show();
        if (height == kWhole)
            view.resize(view.width(), scroll->widget()->heightForWidth(view.width()));
        QApplication::processEvents();
        if (atEnd)
            scroll->verticalScrollBar()->setValue(scroll->verticalScrollBar()->maximum());
        QImage image((QSizeF(view.size()) * scale).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        image.fill(view.palette().color(QPalette::Window));
        view.render(&image, {}, {}, QWidget::DrawChildren);
        return image.save(m_folder + QLatin1String("/settings-") + name + QLatin1String(".png"));
    }

    MemoryPreferenceStore preferences;
    FakeLoginItem loginItem;
    RecordingDesktop desktop;
    LiveModel live;

private:
    QString m_folder;
    Injected<PreferenceStore> m_currentPreferences{preferences};
};

} // namespace

bool writeSettingsGallery(const QString& folder, StatusArt& art)
{
    const Injected<StatusArt> inForce(art);
    const QPalette usual = QApplication::palette();
    bool worked = true;
    SettingsGallery gallery(folder);
    gallery.loginItem.setStatus(LoginItemStatus::Enabled);
    for (const Look& look : looks()) {
        QApplication::setPalette(look.palette);
        const QString name = QLatin1String(look.name);
        if (QGuiApplication::isRightToLeft()) {
            worked &= gallery.write(name + QLatin1String("-mirrored-1x"), 1.0);
            worked &= gallery.write(name + QLatin1String("-mirrored-2x"), 2.0);
            worked &= gallery.write(name + QLatin1String("-mirrored-small-screen"), 1.0, 400);
            continue;
        }
        for (const double scale : {1.0, 1.25, 1.5, 2.0})
            worked &= gallery.write(QStringLiteral("%1-%2x").arg(name).arg(scale), scale);
        worked &= gallery.write(name + QLatin1String("-small-screen"), 1.0, 400);
        worked &= gallery.write(name + QLatin1String("-small-screen-end"), 1.0, 400, true);
    }

    if (QGuiApplication::isRightToLeft()) {
        QApplication::setPalette(usual);
        return worked;
    }

    // What is seldom seen: approval wanted, values that no option stands for, no reading.
    gallery.loginItem.setStatus(LoginItemStatus::RequiresApproval);
    gallery.preferences.set(Pref::decimals, std::int64_t{2});
    gallery.preferences.set(Pref::interval, 3.0);
    gallery.preferences.set(Pref::macIcon, std::string("desktopcomputer"));
    gallery.preferences.set(Pref::stacked, false);
    gallery.preferences.set(Pref::largeText, true);
    for (const Look& look : looks()) {
        QApplication::setPalette(look.palette);
        worked &= gallery.write(QLatin1String(look.name) + QLatin1String("-rare-1x"), 1.0);
    }
    QApplication::setPalette(highContrastPalette());
    worked &= gallery.write(QStringLiteral("high-contrast-1x"), 1.0);
    QApplication::setPalette(usual);
    return worked;
}

} // namespace amperly
