// The program on a Linux desktop: puts the parts of the back end together, hands them to the
// application object and runs the event loop.
#pragma once

namespace amperly {

class LoginItem;
class PowerSource;

/// What tells one program from another on the same desktop.
struct ProgramIdentity {
    const char* name; ///< as people read it
    const char* applicationId; ///< of its desktop entry
    const char* busName; ///< on the session bus
    const char* objectPath; ///< the same as a path
    const char* settingsFile; ///< below the user's config folder
};

inline constexpr ProgramIdentity kAmperly{
    .name = "Amperly",
    .applicationId = "io.github.amperly.Amperly",
    .busName = "io.github.amperly.Amperly",
    .objectPath = "/io/github/amperly/Amperly",
    .settingsFile = "amperly/amperly.ini",
};

inline constexpr ProgramIdentity kAmperlyDemo{
    .name = "Amperly Demo",
    .applicationId = "io.github.amperly.Amperly",
    .busName = "io.github.amperly.AmperlyDemo",
    .objectPath = "/io/github/amperly/AmperlyDemo",
    .settingsFile = "amperly/amperly-demo.ini",
};

/// What a program is about; all of it must outlive the program.
struct ProgramSubject {
    PowerSource& power;
    LoginItem* loginItem = nullptr; ///< none: the one of the user's session
};

/// Runs until the user quits; returns the process's exit status.
int runLinuxProgram(int argc, char** argv, const ProgramIdentity& identity, const ProgramSubject& subject);

} // namespace amperly
