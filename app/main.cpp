// Amperly on this machine's own power figures.

#include "app/linux_program.h"
#include "platform/linux/power/linux_power_source.h"
#include "platform/linux/power/posix_files.h"

int main(int argc, char** argv)
{
    amperly::PosixFiles files;
    amperly::LinuxPowerSource power(files);
    return amperly::runLinuxProgram(argc, argv, amperly::kAmperly, {.power = power});
}
