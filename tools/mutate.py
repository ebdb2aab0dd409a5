"""mutate.py [--seed S] [--jobs J] [N] [FOLDER...]: makes N random mistakes in the product's code, one at a time, and
runs the unit tests on each. Prints which were noticed and which survived.

All of it happens in a copy of the checkout, build/mutate/source, built with each folder a shared library. Mistakes are
compiled and linked beside that build, so there is nothing to undo. Where it can be, several of a file are compiled at
once, each behind a switch in the environment; the tests run once for each all the same. They run in a sandbox, for a
mistake may well delete files or end processes: it finds the file system read-only, and no process but its own."""

import argparse
import collections
import concurrent.futures
import dataclasses
import fcntl
import itertools
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile
import time

from changed_build import Build
from cpp_mistakes import Mistake, Source, edited

FOLDERS = ("telemetry", "prefs", "render", "flow", "settings", "app", "platform/linux")

# A mistake that takes all memory is one that the tests notice; the machine must not.
MOST_MEMORY = 8 << 30

# What a test may take, beside several times of what it takes without a mistake.
PATIENCE_SECONDS = 10

# What a switch asks.
SWITCH = """#pragma once
extern "C" char* getenv(const char*) noexcept;
extern "C" int atoi(const char*) noexcept;
inline bool amperlyMistake(int number)
{
    static const int made = getenv("AMPERLY_MISTAKE") != nullptr ? atoi(getenv("AMPERLY_MISTAKE")) : 0;
    return made == number;
}
"""

# As quickly as can be; a function that returns nothing where it should is no mistake that compiles.
COMPILE_FLAGS = ("-O0", "-g0", "-w", "-Werror=return-type")
LINK_FLAGS = ("-fuse-ld=lld", "-Wl,--strip-debug")


@dataclasses.dataclass
class Link:
    """A library or a program of the build, by its path there."""
    target: str
    objects: set
    libraries: set


class MutableBuild(Build):
    """The build that mistakes are made in, and what depends on what there."""

    def __init__(self, folder, root):
        super().__init__(folder, root)
        self.seconds = {}  # that each test program takes without a mistake
        self.links = {}
        for line in self.ninja("-t", "commands", "all").splitlines():
            for command in line.split(" && "):
                # What makes an archive reads "ar qc LIBRARY OBJECT...", what links "... OBJECT... -o TARGET LIBRARY...".
                if found := re.search(r"(?: -o |/\S*ar qc )(\S+(?:\.a|\.so|_test)) ", command):
                    words = set(command.split()) - {found[1]}
                    self.links[found[1]] = Link(found[1], {word for word in words if word.endswith(".o")},
                                                {word for word in words if word.endswith((".a", ".so"))})
        for link in self.links.values():
            link.libraries &= self.links.keys()
        self.programs = sorted(target for target in self.links if target.endswith("_test"))
        self.users = self.find_users()

    def find_users(self):
        """For each header of the checkout: the objects that include it."""
        users = collections.defaultdict(set)
        target = None
        for line in self.ninja("-t", "deps").splitlines():
            if not line.startswith(" "):
                target = line.partition(":")[0]
            elif line.strip().startswith(str(self.root)):
                users[os.path.relpath(line.strip(), self.root)].add(target)
        return users

    def made_from(self, file):
        """The objects that a source is compiled to, or that include a header."""
        return self.objects.get(file) or self.users[file]

    def needed(self, program):
        """The program and all libraries that it runs with."""
        return [self.links[target] for target in (*self.links[program].libraries, program)]

    def programs_for(self, file, objects):
        """The tests that can notice a mistake in these objects, those first that are most likely to."""
        stem = pathlib.Path(file).stem

        def likelihood(program):
            link = self.links[program]
            here = os.path.commonpath(["tests/" + file, program]).count("/")
            own = any(pathlib.Path(object).name.startswith(stem + "_test.") for object in link.objects)
            return (not own, -here, self.seconds[program])

        return sorted((program for program in self.programs
                       if any(link.objects & objects for link in self.needed(program))), key=likelihood)


class Sandbox:
    """Runs programs of a build, each with file system, processes, network and memory bounded."""

    def __init__(self, build):
        self.build = build
        kept = {name: os.environ[name] for name in ("PATH", "LANG") if name in os.environ}
        self.environment = dict(kept, HOME="/tmp", XDG_RUNTIME_DIR="/tmp/run", QT_LOGGING_RULES="*=false")

    def run(self, program, libraries, seconds, mistake=0):
        """Whether the program succeeds within that time, and what it said. What it links is looked for among
        `libraries` first; the switch of that number is on."""
        command = ["prlimit", f"--as={MOST_MEMORY}", "--core=0", "bwrap", "--unshare-all", "--die-with-parent",
                   "--ro-bind", "/", "/", "--dev", "/dev", "--proc", "/proc", "--tmpfs", "/tmp",
                   "--dir", "/tmp/run", "--chmod", "0700", "/tmp/run", "--chdir", str(self.build.folder),
                   "--setenv", "LD_LIBRARY_PATH", libraries, "--setenv", "AMPERLY_MISTAKE", str(mistake),
                   program, "--gtest_brief=1", "--gtest_fail_fast"]
        with subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, text=True, errors="replace", start_new_session=True) as process:
            try:
                output, _ = process.communicate(timeout=seconds)
                return process.returncode == 0, output
            except subprocess.TimeoutExpired:
                process.kill()
                return False, f"takes longer than {seconds:.0f} seconds"


class DoesNotCompile(Exception):
    pass


class ChangedPrograms:
    """The test programs with one source changed, each made when it is asked for."""

    def __init__(self, build, sandbox, file, text, place):
        self.build, self.sandbox, self.text, self.place = build, sandbox, text, place
        self.made = {}
        self.passing = {}
        self.objects = build.made_from(file)
        self.include = None
        (place / "switch.h").write_text(SWITCH)
        if file not in build.objects:
            self.include = place / "include"
            header = self.include / file
            header.parent.mkdir(parents=True)
            header.write_text(text)

    def compile(self, object):
        if object not in self.made:
            self.made[object] = self.place / f"{len(self.made)}.o"
            done = self.build.compile(object, self.made[object], None if self.include else self.text, self.include,
                                      (*COMPILE_FLAGS, "-include", str(self.place / "switch.h")))
            if done.returncode != 0:
                raise DoesNotCompile(done.stderr)
        return str(self.made[object])

    def link(self, link):
        """Where the library or the program is, linked anew if the change is in it."""
        # Archives are not made anew: what goes into the program before them takes the place of what they hold.
        archived = {word for library in link.libraries if library.endswith(".a")
                    for word in self.build.links[library].objects & self.objects}
        if not archived and not link.objects & self.objects:
            return str(self.build.folder / link.target)
        if link.target not in self.made:
            words = [self.compile(word) if word in self.objects else word
                     for word in self.build.link_command(link.target)]
            self.made[link.target] = self.place / pathlib.Path(link.target).name
            words[words.index("-o") + 1] = str(self.made[link.target])
            words[1:1] = [self.compile(object) for object in sorted(archived)]
            done = subprocess.run([*words, *LINK_FLAGS], cwd=self.build.folder, capture_output=True, text=True,
                                  check=False)
            if done.returncode != 0:
                raise DoesNotCompile(done.stderr)
        return str(self.made[link.target])

    def passes(self, program, mistake):
        """Whether the program succeeds with the switch of that number on."""
        *_, path = [self.link(link) for link in self.build.needed(program) if not link.target.endswith(".a")]
        patience = PATIENCE_SECONDS + 5 * self.build.seconds[program]
        return self.sandbox.run(path, str(self.place), patience, mistake)[0]

    def passes_unswitched(self, program):
        if program not in self.passing:
            self.passing[program] = self.passes(program, 0)
        return self.passing[program]


@dataclasses.dataclass
class Outcome:
    file: str
    mistake: Mistake
    verdict: str  # "noticed", "survived" or "does not compile"
    by: str = ""


def try_alone(build, sandbox, file, mistake, place):
    """Makes the one mistake as it would be written."""
    text = edited((build.root / file).read_text(), mistake.edits)
    try:
        changed = ChangedPrograms(build, sandbox, file, text, place)
        for program in build.programs_for(file, changed.objects):
            if not changed.passes(program, 0):
                return Outcome(file, mistake, "noticed", program)
    except DoesNotCompile:
        return Outcome(file, mistake, "does not compile")
    return Outcome(file, mistake, "survived")


def try_switched(build, sandbox, file, mistakes, place):
    """Makes one mistake after the other by its switch, in one program. None where that does not compile or changes
    more than the mistake, and the numbers of those in whose lines the compiler found fault."""
    original = (build.root / file).read_text()
    text = edited(original, [(start, end, replacement.replace("@", f"amperlyMistake({number})"))
                             for number, mistake in enumerate(mistakes, 1) for start, end, replacement in mistake.switch])
    changed = ChangedPrograms(build, sandbox, file, text, place)
    outcomes = []
    try:
        for number, mistake in enumerate(mistakes, 1):
            outcomes.append(Outcome(file, mistake, "survived"))
            for program in build.programs_for(file, changed.objects):
                if not changed.passes(program, number):
                    if not changed.passes_unswitched(program):
                        return None, set()
                    outcomes[-1] = Outcome(file, mistake, "noticed", program)
                    break
    except DoesNotCompile as failure:
        lines = {int(line) for line in re.findall(rf"^{re.escape(str(place))}/(?!switch)\S*?:(\d+):", str(failure), re.M)}
        return None, {number for number, mistake in enumerate(mistakes)
                      if any(original.count("\n", 0, mistake.extent[0]) < line
                             <= original.count("\n", 0, mistake.extent[1]) + 1 for line in lines)}
    return outcomes, set()


def try_all(build, sandbox, file, mistakes, scratch):
    """The outcomes of mistakes in one file that don't overlap, if they have switches."""
    together = [mistake for mistake in mistakes if mistake.switch]
    alone = [mistake for mistake in mistakes if not mistake.switch]
    outcomes = []
    while together:
        with tempfile.TemporaryDirectory(dir=scratch) as place:
            found, wrong = try_switched(build, sandbox, file, together, pathlib.Path(place))
        if found is not None:
            outcomes += found
            break
        wrong = wrong or set(range(len(together)))
        alone += [mistake for number, mistake in enumerate(together) if number in wrong]
        together = [mistake for number, mistake in enumerate(together) if number not in wrong]
    for mistake in alone:
        with tempfile.TemporaryDirectory(dir=scratch) as place:
            outcomes.append(try_alone(build, sandbox, file, mistake, pathlib.Path(place)))
    return outcomes


def in_batches(chosen):
    """(file, mistakes) of such that don't overlap each other, from (file, mistake)."""
    batches = collections.defaultdict(list)
    for file, mistake in chosen:
        first, last = mistake.extent
        for batch in batches[file]:
            if all(last < other.extent[0] or other.extent[1] < first for other in batch):
                batch.append(mistake)
                break
        else:
            batches[file].append([mistake])
    return [(file, batch) for file in batches for batch in batches[file]]


def copy_checkout(checkout, copy):
    """Makes the copy equal to the checkout; what is equal already keeps its time."""
    listed = subprocess.run(["git", "-C", checkout, "ls-files", "-co", "--exclude-standard", "-z"],
                            capture_output=True, text=True, check=True).stdout
    wanted = {name for name in listed.split("\0") if name and (checkout / name).is_file()}
    for name in wanted:
        source, target = checkout / name, copy / name
        target.parent.mkdir(parents=True, exist_ok=True)
        if not target.is_file() or source.read_bytes() != target.read_bytes():
            shutil.copy(source, target)
    for path in copy.rglob("*"):
        if path.is_file() and str(path.relative_to(copy)) not in wanted:
            path.unlink()


def make_build(checkout, place):
    copy_checkout(checkout, place / "source")
    print("mutate: building without mistakes", file=sys.stderr)
    with (place / "build.log").open("w") as log:
        for command in (["cmake", "--preset", "mutate", "-B", place / "build"],
                        ["cmake", "--build", place / "build", "--target", "tests/all"]):
            if subprocess.run(command, cwd=place / "source", stdout=log, stderr=log, check=False).returncode != 0:
                sys.exit(f"mutate: the build fails; see {place / 'build.log'}")
    return MutableBuild(place / "build", place / "source")


def is_near(program, file):
    """Whether a test program stands where the tests of that file or folder do."""
    folder = pathlib.Path(program).parent.relative_to("tests")
    return pathlib.Path(file).is_relative_to(folder) or folder.is_relative_to(file)


def time_programs(build, sandbox, scratch, pool):
    """Runs all tests without a mistake, and remembers how long each takes."""
    print(f"mutate: running {len(build.programs)} test programs without mistakes", file=sys.stderr)

    def timed(program):
        started = time.monotonic()
        succeeded, output = sandbox.run(program, scratch, 300)
        return time.monotonic() - started, succeeded, output

    for program, (seconds, succeeded, output) in zip(build.programs, pool.map(timed, build.programs)):
        if not succeeded:
            sys.exit(f"mutate: {program} fails without any mistake:\n{output[-2000:]}")
        build.seconds[program] = seconds


def find_places(build, folders):
    """All (file, mistakes of one place), and the files that no test is built from."""
    tested = set()
    for program in build.programs:
        tested.update(*(link.objects for link in build.needed(program)))
    places, untested = [], []
    for path in sorted(path for folder in folders for path in [build.root / folder, *(build.root / folder).rglob("*")]
                       if path.suffix in (".cpp", ".h")):
        file = str(path.relative_to(build.root))
        mistakes = Source(path.read_text()).mistakes()
        if build.made_from(file) & tested:
            places += [(file, several) for several in mistakes]
        elif mistakes:
            untested.append(file)
    return places, untested


def show(build, outcome):
    number, before, after = outcome.mistake.shown((build.root / outcome.file).read_text())
    print(f"{outcome.verdict}: {outcome.file}:{number} ({outcome.mistake.what})"
          + (f", by {pathlib.Path(outcome.by).name}" if outcome.by else ""), flush=True)
    if outcome.verdict == "survived":
        print(f"    - {before}\n    + {after}", flush=True)


def summarize(outcomes, folders):
    counts = collections.Counter((folder, outcome.verdict) for outcome in outcomes for folder in folders
                                 if pathlib.Path(outcome.file).is_relative_to(folder))
    print(f"\n{'folder':<24}{'tried':>8}{'noticed':>9}{'share':>8}")
    for folder in (*folders, "all"):
        if folder == "all":
            noticed, survived = (sum(outcome.verdict == verdict for outcome in outcomes)
                                 for verdict in ("noticed", "survived"))
        else:
            noticed, survived = counts[folder, "noticed"], counts[folder, "survived"]
        share = f"{100 * noticed / (noticed + survived):.1f} %" if noticed + survived else "-"
        print(f"{folder:<24}{noticed + survived:>8}{noticed:>9}{share:>8}")
    print(f"{sum(outcome.verdict == 'does not compile' for outcome in outcomes)} more did not compile.")


def main():
    parser = argparse.ArgumentParser(prog="./dev mutate", description="Makes random mistakes, to see the tests notice.")
    parser.add_argument("--seed", type=int, default=random.randrange(1_000_000), help="repeats the run that printed it")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="mistakes at a time")
    parser.add_argument("--near", action="store_true", help="run only the tests beside the mistake's folder")
    parser.add_argument("--build", type=pathlib.Path, help="make them beside this build, instead of one of its own")
    parser.add_argument("what", nargs="*", metavar="N|FOLDER", help="how many mistakes (100), and where")
    options = parser.parse_args()
    count = next((int(word) for word in options.what if word.isdigit()), 100)
    folders = [word.rstrip("/") for word in options.what if not word.isdigit()] or FOLDERS
    checkout = pathlib.Path(__file__).resolve().parent.parent
    for folder in folders:
        if not (checkout / folder).exists():
            parser.error(f"there is no {folder} here")

    place = checkout / "build/mutate"
    (place / "source").mkdir(parents=True, exist_ok=True)
    with (place / "lock").open("w") as lock, tempfile.TemporaryDirectory(dir=place) as scratch, \
            concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        fcntl.flock(lock, fcntl.LOCK_EX)
        build = MutableBuild(options.build, checkout) if options.build else make_build(checkout, place)
        if options.near:
            build.programs = [program for program in build.programs
                              if any(is_near(program, folder) for folder in folders)]
        sandbox = Sandbox(build)
        time_programs(build, sandbox, scratch, pool)
        places, untested = find_places(build, folders)
        if untested:
            print(f"mutate: no unit test has {', '.join(untested)}")
        chance = random.Random(options.seed)
        chance.shuffle(places)
        print(f"mutate: {count} mistakes in {len(places)} places; --seed {options.seed} makes the same again")
        started = time.monotonic()
        outcomes = []
        places = iter([(file, chance.choice(mistakes)) for file, mistakes in places])
        try:
            # Those that don't compile are replaced by others.
            while lacking := count - sum(outcome.verdict != "does not compile" for outcome in outcomes):
                chosen = list(itertools.islice(places, lacking))
                if not chosen:
                    break
                trials = [pool.submit(try_all, build, sandbox, file, mistakes, scratch)
                          for file, mistakes in in_batches(chosen)]
                for trial in concurrent.futures.as_completed(trials):
                    for outcome in trial.result():
                        show(build, outcome)
                        outcomes.append(outcome)
        except KeyboardInterrupt:
            pool.shutdown(wait=True, cancel_futures=True)
        summarize(outcomes, folders)
        if outcomes:
            print(f"{(time.monotonic() - started) / len(outcomes):.1f} seconds each.")


if __name__ == "__main__":
    main()
