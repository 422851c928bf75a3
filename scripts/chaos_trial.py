"""A trial of scripts/chaos: a destination, a user of the program, and the runs of the program."""
import os
import pathlib
import signal
import subprocess
import time

import chaos_checks
from chaos_checks import Wrong

CONVERTED = ["--set", "photoJPEG=true", "--set", "videoH264=true"]
LAYOUTS = {
    "plain": [],
    "converted": CONVERTED,
    "one archive": ["--set", "packAsZip=true"],
    "archives": ["--set", "packAsZip=true", "--set", "packPerGroup=true"],
    "converted archive": ["--set", "packAsZip=true", *CONVERTED],
}
PATIENCE = 90  # seconds until a run that should end counts as hanging


class Stopped(Exception):
    """The user has interrupted scripts/chaos."""


def says_that_it_waits(said):
    """Returns True if the last that a run said of a pause is that it waits."""
    return said.rfind("I will carry on by myself") > said.rfind("— carrying on.")


class Run:
    """A started program. What it prints goes to files, so that it can be read meanwhile."""

    def __init__(self, place, command, environment, limits):
        self.out, self.said = (open(f"{place}.{ending}", "w+b") for ending in ("out", "said"))
        self.process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL, stdout=self.out,
                                        stderr=self.said, preexec_fn=limits, start_new_session=True)

    @property
    def status(self):
        """None while it runs; negative or from 128 on if a signal has ended it."""
        return self.process.poll()

    def printed(self):
        return text_of(self.out)

    def told(self):
        return text_of(self.said)

    def waits(self):
        return says_that_it_waits(self.told())

    def was_ended_by_signal(self):
        # Also strace ends by the signal that ended its program. 130 is the program's own.
        return self.status is not None and (self.status < 0 or self.status > 130)

    def signal(self, number):
        # The run may be a child of the tracer; all of its group get the signal.
        try:
            os.killpg(self.process.pid, number)
        except ProcessLookupError:
            pass

    def close(self):
        if self.status is None:
            self.signal(signal.SIGKILL)
            self.process.wait()
        self.out.close()
        self.said.close()


def text_of(file):
    return os.pread(file.fileno(), 1 << 24, 0).decode("utf-8", "surrogateescape")


class Trial:
    """A destination and a user of the program of their own."""

    def __init__(self, chaos, folder, choices, number=0):
        self.chaos = chaos
        self.random = choices
        self.number = number
        self.source = chaos.source
        self.folder = pathlib.Path(folder)
        self.destination = self.folder / "Pictures"
        self.destination.mkdir(parents=True)
        self.state = self.folder / "home"
        self.state.mkdir()
        self.layout = "plain"
        self.cable = None  # the socket of a simulated phone, if the pictures come from one
        self.said = ""  # by the run that ended last
        self.has_struck = False  # the fault of the trial hit a run that was under way
        self.was_cut = False  # a run was ended by a signal, or left something to do for the next one
        self.has_waited = False  # a run said that it waits
        self.runs = []
        self.closing = []  # what gives back the phones and volumes of the trial

    def close(self):
        """Ends everything that the trial has started, and unmounts what it has mounted."""
        for run in self.runs:
            run.close()
        while self.closing:
            self.closing.pop()()

    def environment(self):
        names = ("HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME")
        environment = {"PATH": os.environ["PATH"], "LANG": "C.UTF-8", "TZ": "UTC",
                       **{name: str(self.state) for name in names}}
        if self.cable:
            environment["USBMUXD_SOCKET_ADDRESS"] = f"UNIX:{self.cable}"
        return environment

    def command(self):
        source = "phone" if self.cable else str(self.source.folder)
        return [str(self.chaos.program), "transfer", source, str(self.destination), "--json",
                "--lang", "en", *LAYOUTS[self.layout]]

    def start(self, around=(), limits=None):
        place = self.folder / f"run {len(self.runs)}"
        self.runs.append(Run(place, [*around, *self.command()], self.environment(), limits))
        return self.runs[-1]

    def pause(self, seconds):
        self.chaos.pause(seconds)

    def wait(self, run, seconds, until=lambda: False):
        """Returns True if the run ends, or `until` is true, within the time."""
        begin = time.monotonic()
        while run.status is None and not until():
            past = time.monotonic() - begin
            if past >= seconds:
                return False
            self.pause(min(0.002 if past < 1 else 0.02, seconds - past))
        return True

    def take(self, run, checks=True):
        """Notes what an ended run has said, and checks its report. Returns its status."""
        self.said = run.told()
        self.was_cut |= run.was_ended_by_signal()
        self.has_waited |= "I will carry on by myself" in self.said
        if checks and not run.was_ended_by_signal() and "Cannot write the result" not in self.said:
            chaos_checks.require_true(run.printed(), self.destination)
            if run.status == 0:
                self.source.require_all(self.destination)
        return run.status

    def stop(self, run, by, checks=True):
        """Ends a run by a signal. Returns its status."""
        run.signal(by)
        if not self.wait(run, PATIENCE):
            raise Wrong(f"a run did not end within {PATIENCE} seconds after {signal.Signals(by).name}")
        return self.take(run, checks)

    def end(self, run, seconds, by=signal.SIGKILL, until=lambda: False):
        """Ends a run after so many seconds, or when `until` is true, which is the fault of the trial.
        Returns its status."""
        self.wait(run, seconds, until)
        if run.status is not None:
            return self.take(run)
        self.has_struck = self.was_cut = True
        return self.stop(run, by)

    def finish(self, run, checks=True):
        """Waits for a run that must end by itself. Returns its status."""
        if not self.wait(run, PATIENCE):
            raise Wrong(f"a run {'still waits' if run.waits() else 'hangs'} after {PATIENCE} seconds: "
                        f"{run.told().strip()[-300:]}")
        return self.take(run, checks)

    def finish_or_stop(self, run, by=signal.SIGKILL, checks=True):
        """Waits for a run that must end or say that it waits; then it is ended. Returns its status."""
        if not self.wait(run, PATIENCE, run.waits):
            raise Wrong(f"a run hangs without saying that it waits: {run.told().strip()[-300:]}")
        if run.status is not None:
            return self.take(run, checks)
        self.pause(self.random.uniform(0, 0.5))
        self.was_cut = True
        return self.stop(run, by, checks)

    def complete(self, once=True, has_failed=False):
        """A next run completes, whatever happened before."""
        self.source.require_unchanged()
        copies = chaos_checks.pictures_in(self.source, self.destination)
        self.was_cut |= len(copies) < len(self.source.pictures)
        status = self.finish(self.start())
        if status != 0:
            raise Wrong(f"the next run ended with status {status}: {self.said.strip()[-300:]}")
        chaos_checks.require_complete(self.source, self.destination, once and self.layout == "plain", has_failed)
        self.source.require_unchanged()


class Phone:
    """A simulated phone on the cable of a trial, with the pictures of the source."""

    def __init__(self, trial, *faults):
        trial.source = trial.chaos.phone
        trial.cable = trial.folder / "usbmuxd"
        trial.closing.append(self.unplug)
        self.process = None
        self.command = [trial.chaos.simulator, trial.source.folder, trial.cable]
        self.plug(*faults)

    def plug(self, *faults):
        self.process = subprocess.Popen([*map(str, self.command), *map(str, faults)], stdout=subprocess.PIPE, text=True,
                                        start_new_session=True)
        self.process.stdout.readline()  # it is on the cable

    def unplug(self, by=signal.SIGTERM):
        """Returns the number of file calls that it answered; nothing is known of one that was killed."""
        if self.process is None:
            return 0
        self.process.send_signal(by)
        said = self.process.communicate()[0]
        self.process = None
        return int(said.split()[0]) if said else 0


def tracing(trial, injection):
    """Returns the beginning of a command that injects a fault, and its log."""
    log = trial.folder / "injected"
    return ["strace", "-f", "-q", "-o", str(log), "-e", f"trace={injection.split(':')[0]}", "-e",
            f"inject={injection}"], log


def was_injected(log):
    """Returns True if the fault was injected, or a process was killed by it."""
    text = log.read_text(errors="replace") if log.exists() else ""
    return "(INJECTED" in text or "+++ killed by SIGKILL" in text


def some_call(trial, calls):
    """Returns the number of a call. Every thread counts its own, so small numbers are met more often."""
    return int(calls ** trial.random.random())
