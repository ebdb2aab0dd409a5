// preference_writer FILE PREFIX COUNT: stores COUNT values under PREFIX0, PREFIX1 and so on,
// each with a write of its own. The other one of two programs that write at once.

#include "platform/linux/preferences/ini_preference_store.h"

#include <QCoreApplication>

#include <cstdlib>

int main(int argc, char** argv)
{
    if (argc != 4)
        return EXIT_FAILURE;
    const QCoreApplication application(argc, argv);
    bool hasFailed = false;
    {
        amperly::IniPreferenceStore store(argv[1], [&](const std::string&) { hasFailed = true; });
        const std::int64_t count = std::atoi(argv[3]);
        for (std::int64_t index = 0; index < count; ++index) {
            store.set(argv[2] + std::to_string(index), index);
            QCoreApplication::processEvents();
        }
    }
    return hasFailed ? EXIT_FAILURE : EXIT_SUCCESS;
}
