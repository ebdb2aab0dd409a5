// Writes pictures of what Amperly looks like into the folder named on the command line, as the
// user's locale has it: one that is written from right to left gets the mirrored ones.

#include "platform/simulated/desktop/fixed_ui_font.h"
#include "render/status_art.h"
#include "tools/gallery_panel.h"
#include "tools/gallery_settings.h"
#include "tools/gallery_status.h"

#include <QApplication>
#include <QLatin1String>
#include <QLocale>
#include <cstdio>

int main(int argc, char** argv)
{
    using namespace amperly;
    const QApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("usage: amperly-gallery FOLDER\n", stderr);
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const FixedUiFont font({AMPERLY_PINNED_FONT, 0}, {AMPERLY_PINNED_FONT, 0});
    StatusArt art(font);
    QGuiApplication::setLayoutDirection(QLocale::system().textDirection());
    bool worked = writeSettingsGallery(folder, art) && writePanelGallery(folder, art);
    if (QGuiApplication::isLeftToRight())
        worked = worked && writeStatusGallery(folder, art)
            && writeHero(folder + QLatin1String("/hero.png"), art)
            && writePanelFrames(folder + QLatin1String("/panel-frames"), art);
    if (!worked) {
        std::fputs("amperly-gallery: a picture could not be written\n", stderr);
        return 1;
    }
    return 0;
}
