"""analyse.py BUILD: runs clang's static analyser, with its checks for Apple's frameworks, over the sources that only
macOS has, by the commands that compiled them. Any finding fails."""

import concurrent.futures
import json
import os
import pathlib
import shlex
import subprocess
import sys

OWN = ("platform/macos/", "render/macos/", "app/mac_")
CHECKERS = "osx,nullability,core,cplusplus,deadcode,unix"
# The toolkit frees queued calls itself, which the analyser takes for leaks in the toolkit's headers.
NOT = "cplusplus.NewDeleteLeaks"


def analyse(entry):
    words = [word for word in shlex.split(entry["command"]) if not word.endswith("ccache")]
    del words[words.index("-o") : words.index("-o") + 2]
    words.remove("-c")
    words += ["--analyze", "-Xclang", f"-analyzer-checker={CHECKERS}", "-Xclang", "-analyzer-output=text"]
    words += ["-Xclang", f"-analyzer-disable-checker={NOT}"]
    words += ["-Xclang", "-analyzer-werror", "-o", os.devnull]
    done = subprocess.run(words, cwd=entry["directory"], capture_output=True, text=True, check=False)
    return entry["file"], done.returncode, done.stdout + done.stderr


def main():
    build = pathlib.Path(sys.argv[1])
    root = pathlib.Path.cwd()
    commands = json.loads((build / "compile_commands.json").read_text())
    own = [entry for entry in commands if os.path.relpath(entry["file"], root).startswith(OWN)]
    if len(own) < 10:
        sys.exit("analyse: the build has hardly any sources of macOS's own")
    failures = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for file, status, output in pool.map(analyse, own):
            if status != 0 or "warning:" in output:
                failures += 1
                print(f"{file}:\n{output}", file=sys.stderr)
    if failures:
        sys.exit(f"analyse: findings in {failures} of {len(own)} files")
    print(f"analysed: {len(own)} files")


main()
