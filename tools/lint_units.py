"""lint_units.py BUILD SOURCE...: prints what clang-tidy is to be given so that it sees every SOURCE once: the build's
own units, in which a folder's sources are compiled together, the largest first. A source that the build leaves out
is an error."""

import json
import pathlib
import re
import sys


def main():
    root = pathlib.Path.cwd()
    sources = {str(root / name) for name in sys.argv[2:]}
    units = {}
    for entry in json.loads((pathlib.Path(sys.argv[1]) / "compile_commands.json").read_text()):
        unit = pathlib.Path(entry["file"])
        parts = re.findall(r'#include "(.*)"', unit.read_text()) if unit.parent.name == "Unity" else [str(unit)]
        if wanted := sources.intersection(parts):
            units[str(unit)] = sum(pathlib.Path(part).stat().st_size for part in parts)
            sources -= wanted
    if sources:
        sys.exit("lint: the build leaves out " + ", ".join(sorted(sources)))
    print("\n".join(sorted(units, key=units.get, reverse=True)))


if __name__ == "__main__":
    main()
