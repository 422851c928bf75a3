"""Drives the window on a display without a screen, as a screen reader does: finds controls by role
and name, presses them and types into them. Must be run by the system's Python, whose packages it
needs (scripts/install-dependencies window-test)."""
import contextlib
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "dev"
PATIENCE = 30  # seconds until something that must happen counts as missing


def build(*targets):
    """Installs what is missing and builds the programs; quiet unless it fails."""
    command = 'source "$0"/common.bash; "$0"/install-dependencies build window window-test;' \
              'configure dev -DTAVRIX_WINDOW=ON; build dev "$@"'
    subprocess.run(["bash", "-euo", "pipefail", "-c", command, ROOT / "scripts", *targets], check=True)


def enter_session():
    """Runs the calling script again with a session bus of its own, if it has none yet."""
    if os.environ.get("TAVRIX_TEST_SESSION"):
        return
    environment = dict(os.environ, TAVRIX_TEST_SESSION="1", NO_AT_BRIDGE="1")
    command = ["dbus-run-session", "--", "/usr/bin/python3", *sys.argv]
    # The bus reports every service that it starts.
    finished = subprocess.run(command, env=environment, stderr=subprocess.PIPE, text=True, check=False)
    noise = ("dbus-daemon[", "SpiRegistry daemon")
    for line in finished.stderr.splitlines():
        if not line.startswith(noise):
            print(line, file=sys.stderr)
    sys.exit(finished.returncode)


def wait_until(what, condition):
    """Returns the first true value of the condition. Ends the script if there is none in time."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        value = condition()
        if value:
            return value
        time.sleep(0.05)
    sys.exit(f"{pathlib.Path(sys.argv[0]).name}: waited in vain for {what}")


class Desk(contextlib.ExitStack):
    """A display, a home folder, and the programs on them; all end with it."""

    def __init__(self, size):
        super().__init__()
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="tavrix-desk-"))
        self.callback(shutil.rmtree, self.home, ignore_errors=True)
        runtime = self.home / ".run"
        runtime.mkdir(mode=0o700)
        reading, writing = os.pipe()
        self.start(["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{size}x24"],
                   stderr=subprocess.DEVNULL, pass_fds=[writing])
        self.environment = dict(os.environ, DISPLAY=":" + os.read(reading, 8).decode().strip(),
                                HOME=str(self.home), XDG_RUNTIME_DIR=str(runtime), LANG="en_US.UTF-8",
                                TZ="Europe/Moscow", QT_QPA_PLATFORM="xcb",
                                QT_QUICK_BACKEND="software", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        for name in ("XDG_STATE_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "LC_ALL"):
            self.environment.pop(name, None)

    def start(self, command, **options):
        """Starts a program, which ends with the desk."""
        options.setdefault("env", getattr(self, "environment", None))
        process = subprocess.Popen([str(word) for word in command], **options)
        self.callback(self.stop, process)
        return process

    @staticmethod
    def stop(process):
        process.terminate()
        process.wait()

    def start_window_manager(self):
        """Windows fill the screen and have no frame."""
        settings = self.home / "openbox.xml"
        settings.write_text('<openbox_config xmlns="http://openbox.org/3.4/rc"><applications>'
                            '<application class="*"><decor>no</decor><maximized>yes</maximized>'
                            '</application></applications></openbox_config>')
        self.start(["openbox", "--config-file", settings], stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)

    def run(self, *command):
        """Runs a program of the build, and returns its standard output."""
        command = [str(word) for word in command]
        return subprocess.run(command, env=self.environment, check=True, text=True,
                              stdout=subprocess.PIPE).stdout

    def make_sample(self, folder):
        self.run(BUILD / "tavrix-sample", folder)
        return folder


class Phone:
    """A simulated phone with the pictures of the sample, which the programs of a desk find on the cable."""

    UNDATED = 1777100000  # 25 April 2026

    def __init__(self, desk):
        self.desk = desk
        self.socket = desk.home / "usbmuxd"
        self.process = None
        desk.environment["USBMUXD_SOCKET_ADDRESS"] = f"UNIX:{self.socket}"
        sample = desk.make_sample(desk.home / "sample")
        self.folder = desk.home / "iphone"
        (self.folder / "DCIM").mkdir(parents=True)
        for shot in json.loads((sample / "snapshot.json").read_text()):
            # Some files have no date of their own, and must not be of today.
            date = shot.get("itemDate") or self.UNDATED
            os.utime(sample / "media" / shot["name"], (date, date))
        (sample / "media").rename(self.folder / "DCIM" / "100APPLE")

    def plug(self, *options):
        """Puts the phone on the cable."""
        self.process = self.desk.start([BUILD / "tavrix-phone-simulator", self.folder, self.socket, *options],
                                       stdout=subprocess.DEVNULL)

    def unplug(self):
        self.desk.stop(self.process)

    def originals(self):
        """Returns the bytes of its files by their names."""
        return {file.name: file.read_bytes() for file in self.folder.glob("DCIM/*/*")}


class Window:
    """The window of the program, seen as a screen reader sees it."""

    def __init__(self, desk, *arguments):
        import pyatspi  # on the bus of the session
        self.desk = desk
        self.reader = pyatspi
        self.process = desk.start([BUILD / "tavrix-window", *arguments])
        self.program = wait_until("the window", self.find_program)

    def find_program(self):
        for program in self.reader.Registry.getDesktop(0):
            if program is not None and program.name == "tavrix-window" and program.childCount:
                return program
        return None

    def all(self, item=None):
        """Yields everything that shows in the window, in the order of the screen reader."""
        try:
            children = list(item if item is not None else self.program)
        except Exception:  # it has gone in the meantime
            return
        for child in children:
            try:
                if child is None or not child.getState().contains(self.reader.STATE_SHOWING):
                    continue
            except Exception:
                continue
            yield child
            yield from self.all(child)

    def has(self, item, *states):
        held = item.getState()
        return all(held.contains(getattr(self.reader, "STATE_" + state)) for state in states)

    def actions(self, item):
        if "Action" not in self.reader.listInterfaces(item):
            return []
        action = item.queryAction()
        return [action.getName(i) for i in range(action.nActions)]

    def look_for(self, name, role=None):
        """Returns the first item whose name begins so, or None."""
        for item in self.all():
            try:
                if item.name.startswith(name) and role in (None, item.getRoleName()):
                    return item
            except Exception:
                continue
        return None

    def find(self, name, role=None):
        return wait_until(f"“{name}”", lambda: self.look_for(name, role))

    def do(self, item, *names):
        """Carries out the first of these actions that the item has."""
        offered = self.actions(item)
        for name in names:
            if name in offered:
                return item.queryAction().doAction(offered.index(name))
        sys.exit(f"“{item.name}” has none of the actions {names}, only {offered}")

    def press(self, name, role=None):
        self.do(self.find(name, role), "Press", "Toggle")

    def type(self, item, text):
        """Types into an empty field, and ends with Enter."""
        self.do(item, "SetFocus")
        wait_until(f"the focus in “{item.name}”", lambda: self.has(item, "FOCUSED"))
        self.desk.run("xdotool", "type", "--delay", "5", text)
        self.desk.run("xdotool", "key", "Return")
