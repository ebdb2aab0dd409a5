"""check_includes.py [SOURCE...]: prints each #include that points up the picture of the folders in docs/architecture.md,
or across it, and fails if there is one. Without sources it checks itself on made-up ones."""

import fnmatch
import pathlib
import re
import sys

SEAM = ["platform"]  # interfaces and values; the back ends are in the folders below
NUMBERS = ["telemetry", "prefs", *SEAM]
DRAWING = ["render", "render/*", *NUMBERS]
PRODUCT = ["settings", "flow", "flow/glass", *DRAWING]
BACK_ENDS = ["platform/*"]

# What the files of a folder may include beside each other; `/*` is everything below. The first pattern counts.
MAY_INCLUDE = {
    # The programs, which put a back end under the application.
    "app/*main.*": ["app", *PRODUCT, *BACK_ENDS],
    "app/*_program.*": ["app", *PRODUCT, *BACK_ENDS],
    "app/*": PRODUCT,
    "settings/*": DRAWING,
    "flow/glass/*": [],
    "flow/*": ["flow/glass", *DRAWING],
    "render/macos/*": [*DRAWING, "platform/macos/*"],
    "render/*": DRAWING,
    "prefs/*": SEAM,
    "telemetry/*": SEAM,
    "platform/linux/*": ["platform/linux", "platform/linux/*", *SEAM],
    "platform/macos/*": ["platform/macos", "platform/macos/*", *SEAM],
    "platform/simulated/*": ["platform/simulated/*", *SEAM],
    "platform/*": [],
    "bench/*": ["app", *PRODUCT, *BACK_ENDS, "tests/*"],
    "tools/*": ["tools", *PRODUCT, *BACK_ENDS],
}

# What every test may include, beside the folder that it tests and what that may include, and what some may besides.
FOR_TESTS = ["tests/support", "platform/simulated/*", *NUMBERS]
SOME_TESTS = {
    "tests/support/*": DRAWING,
    "tests/fuzz/*": BACK_ENDS,
    "tests/app/*": ["tests/platform/macos/fakes"],
    "tests/render/macos/*": ["tests/platform/macos/fakes"],
    "tests/settings/*": ["tools"],  # the palettes of the gallery
    "tests/platform/linux/desktop/*": DRAWING,  # a palette of the desktop, down to the colours that come of it
    "tests/platform/macos/fakes/*": DRAWING,
    "tests/platform/macos/on_a_mac/*": DRAWING,
}


def allowed_for(file):
    """The folders that a file may include from, or None where no rule knows the file."""
    folder = str(pathlib.PurePath(file).parent)
    if file.startswith("tests/"):
        tested = allowed_for(file.removeprefix("tests/")) or []
        besides = [name for pattern, folders in SOME_TESTS.items() if fnmatch.fnmatch(file, pattern) for name in folders]
        return [folder, *tested, *(f"tests/{name}" for name in tested), *FOR_TESTS, *besides]
    for pattern, folders in MAY_INCLUDE.items():
        if fnmatch.fnmatch(file, pattern):
            return [folder, *folders]
    return None


def wrong_includes(file, text):
    """What a source includes of the project and may not, as (line number, include)."""
    allowed = allowed_for(file)
    for number, line in enumerate(text.splitlines(), 1):
        if found := re.match(r'\s*#\s*include\s+"([^"/.]+/[^"]*)"', line):
            folder = str(pathlib.PurePath(found[1]).parent)
            if allowed is None or not any(fnmatch.fnmatch(folder, pattern) for pattern in allowed):
                yield number, found[1]


def check_itself():
    def wrong(file, *includes):
        text = "".join(f'#include "{include}"\n' for include in includes)
        return [include for _, include in wrong_includes(file, text)]

    assert wrong("flow/flow_panel.cpp", "flow/headline.h", "flow/glass/bore.h", "render/look/symbol.h", "prefs/pref.h",
                 "platform/desktop.h") == []
    assert wrong("flow/glass/bore.cpp", "flow/glass/bore.h", "flow/headline.h") == ["flow/headline.h"]
    assert wrong("flow/headline.cpp", "settings/form.h", "app/delegate.h") == ["settings/form.h", "app/delegate.h"]
    assert wrong("telemetry/smc.h", "prefs/pref.h", "platform/registry.h") == ["prefs/pref.h"]
    assert wrong("render/tile.cpp", "platform/linux/text/font.h") == ["platform/linux/text/font.h"]
    assert wrong("platform/registry.h", "telemetry/smc.h") == ["telemetry/smc.h"]
    assert wrong("platform/linux/tray/item.cpp", "platform/linux/bus/bus.h", "platform/menu.h",
                 "platform/macos/foundation/strings.h") == ["platform/macos/foundation/strings.h"]
    assert wrong("app/delegate.cpp", "settings/form.h", "platform/linux/tray/item.h") == ["platform/linux/tray/item.h"]
    assert wrong("app/main.cpp", "platform/linux/power/power.h", "app/linux_program.h") == []
    assert wrong("tests/telemetry/smc_test.cpp", "telemetry/smc.h", "platform/simulated/laptop/smc.h",
                 "tests/support/run.h", "flow/headline.h") == ["flow/headline.h"]
    assert wrong("elsewhere/a.cpp", "platform/registry.h") == ["platform/registry.h"]
    assert wrong("telemetry/smc.cpp", "own.h") == []  # the file's own folder, on any path
    assert list(wrong_includes("telemetry/smc.cpp", '#include <map>\n  #  include "app/a.h"\n')) == [(2, "app/a.h")]


def main():
    check_itself()
    found = [f"{file}:{number}: may not include {include}" for file in sys.argv[1:]
             for number, include in wrong_includes(file, pathlib.Path(file).read_text())]
    if found:
        print(*found, sep="\n", file=sys.stderr)
        sys.exit(f"includes: {len(found)} point the wrong way; tools/check_includes.py says which may be")
    print(f"includes: {len(sys.argv) - 1} files")


if __name__ == "__main__":
    main()
