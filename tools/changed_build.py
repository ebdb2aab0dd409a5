"""A build in which one source is other than in the checkout. Nothing of the build is touched: the changed copy is
compiled beside it by the build's own commands, and what is linked from it is linked beside it too."""

import json
import os
import pathlib
import shlex
import subprocess


class Build:
    """A folder that CMake and ninja have built in. `root` is the checkout that it was built from."""

    def __init__(self, folder, root):
        self.folder = pathlib.Path(folder).resolve()
        self.root = pathlib.Path(root).resolve()
        self.entries = {}  # what compiles each object
        self.objects = {}  # those of each source
        for entry in json.loads((self.folder / "compile_commands.json").read_text()):
            words = shlex.split(entry["command"])
            target = words[words.index("-o") + 1]
            self.entries[target] = entry
            self.objects.setdefault(os.path.relpath(entry["file"], self.root), set()).add(target)

    def ninja(self, *words):
        return subprocess.run(["ninja", "-C", self.folder, *words], capture_output=True, text=True, check=True).stdout

    def link_command(self, target):
        """The words that link `target`, a path in the build's folder. They are to be run there."""
        # Ninja's rule for it reads ": && LINK && whatever comes after".
        return shlex.split(self.ninja("-t", "commands", "-s", target).split(" && ")[1])

    def compile(self, built, target, text=None, include=None, flags=("-Wno-error",)):
        """Compiles the source of `built`, an object of the build, to the object `target`: as it reads, or as `text`.
        Headers are looked for in the folder `include` first."""
        entry = self.entries[built]
        words = [word for word in shlex.split(entry["command"]) if not word.endswith("ccache")]
        words[words.index("-o") + 1] = str(target)
        place = words.index("-c") + 1
        if text is not None:
            copy = target.with_suffix(pathlib.Path(entry["file"]).suffix)
            copy.write_text(text)
            words[place] = str(copy)
        if include is not None:
            words[1:1] = ["-I", str(include)]
        words += flags
        return subprocess.run(words, cwd=entry["directory"], capture_output=True, text=True, check=False)
