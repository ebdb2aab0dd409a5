// Amperly in the menu bar of a Mac.

#include "app/mac_program.h"
#include "platform/macos/fonts/system_font.h"

#include <QApplication>

#include <optional>

int main(int argc, char** argv)
{
    amperly::AccessoryApplication application; // before the toolkit's
    QApplication toolkit(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName(QStringLiteral("Amperly"));

    amperly::SystemFont font;
    std::optional<amperly::MacProgram> program;
    // Once the event loop runs, the system has launched the application to the end.
    QMetaObject::invokeMethod(
        &toolkit,
        [&] {
            program.emplace(application, font);
            program->start();
        },
        Qt::QueuedConnection);
    return QApplication::exec();
}
