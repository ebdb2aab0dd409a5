// Amperly on this machine's own power figures.

#include "app/linux_program.h"
#include "platform/linux/power/linux_registry.h"
#include "platform/linux/power/no_smc_service.h"

int main(int argc, char** argv)
{
    amperly::NoSmcService noController;
    amperly::LinuxRegistry registry;
    return amperly::runLinuxProgram(
        argc, argv, amperly::kAmperly, {.smcService = noController, .registry = registry});
}
