"""A made-up machine's power files, which can change while a program reads them.

The kernel's power_supply folder is laid out below a folder of its own, and a preloaded library
(umockdev's) shows it to the program as /sys. Values are what the kernel would say: microwatts,
microvolts, microampere-hours, percent.
"""

import pathlib

PRELOAD = "libumockdev-preload.so.0"


class PowerMachine:
    def __init__(self, session):
        number = len(list(session.directory.glob("machine*")))
        self._root = session.directory / f"machine{number}"
        self._session = session
        for folder in ("sys/class/power_supply", "sys/devices/platform", "sys/bus"):
            (self._root / folder).mkdir(parents=True, exist_ok=True)
        self._root.chmod(0o755)

    def variables(self):
        """What a program's environment needs to see this machine instead of the real one."""
        return {"LD_PRELOAD": PRELOAD, "UMOCKDEV_DIR": str(self._root)}

    def add_battery(self, name="BAT0", **values):
        """A battery like most: it measures power, in microwatts. A value of None leaves it out."""
        self._add(name, "Battery", {
            "status": "Discharging", "present": 1, "technology": "Li-ion", "cycle_count": 12,
            "voltage_min_design": 11400000, "voltage_now": 11800000, "power_now": 12300000,
            "energy_full_design": 57000000, "energy_full": 50000000, "energy_now": 41000000,
            "capacity": 82, **values})

    def add_adapter(self, name="AC", online=0):
        self._add(name, "Mains", {"online": online})

    def change(self, name, **values):
        """Changes files of one supply, its uevent included, as the kernel would."""
        folder = self._folder(name)
        for key, value in values.items():
            if value is None:
                (folder / key).unlink(missing_ok=True)
            else:
                _replace(folder / key, f"{value}\n")
        self._write_uevent(name)

    def remove(self, name):
        """Takes a supply away, as if it were pulled out."""
        (self._root / "sys/class/power_supply" / name).unlink()

    def plug_in(self, adapter="AC", battery="BAT0", **values):
        self.change(adapter, online=1)
        self.change(battery, **{"status": "Charging", **values})

    def unplug(self, adapter="AC", battery="BAT0", **values):
        self.change(adapter, online=0)
        self.change(battery, **{"status": "Discharging", **values})

    def _add(self, name, kind, values):
        folder = self._folder(name)
        folder.mkdir(parents=True)
        (folder / "subsystem").symlink_to("../../../../class/power_supply")
        (folder / "type").write_text(f"{kind}\n")
        for key, value in values.items():
            if value is not None:
                (folder / key).write_text(f"{value}\n")
        self._write_uevent(name)
        link = self._root / "sys/class/power_supply" / name
        link.symlink_to(f"../../devices/platform/{name}/power_supply/{name}")

    def _folder(self, name):
        return self._root / "sys/devices/platform" / name / "power_supply" / name

    def _write_uevent(self, name):
        folder = self._folder(name)
        lines = [f"POWER_SUPPLY_NAME={name}"]
        for file in sorted(folder.iterdir()):
            if file.name not in ("uevent", "subsystem"):
                lines.append(f"POWER_SUPPLY_{file.name.upper()}={file.read_text().strip()}")
        _replace(folder / "uevent", "\n".join(lines) + "\n")


def _replace(path, text):
    """Writes in place, in one go: a reader keeps such files open and reads them from the start."""
    path = pathlib.Path(path)
    padded = text.encode()
    with open(path, "r+b" if path.exists() else "wb") as file:
        file.write(padded)
        file.truncate()
