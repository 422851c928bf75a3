"""The trials of scripts/chaos whose destination is a volume of its own, which goes away or fails."""
import fcntl
import os
import pathlib
import re
import shutil
import signal
import struct
import subprocess
import threading
import time

import chaos_checks
from chaos_checks import Wrong
from chaos_trial import PATIENCE, Phone, some_call, tracing, was_injected

LOOP = ["mount", "-o", "loop"]
# By the name of the volume: megabytes, the command that makes it, and the one that mounts it.
FILE_SYSTEMS = {
    "ext4": (256, ["mkfs.ext4", "-q", "-F"], LOOP),
    "ext4 without letter case": (256, ["mkfs.ext4", "-q", "-F", "-O", "casefold"], LOOP),
    "xfs": (320, ["mkfs.xfs", "-q", "-f"], ["mount", "-o", "loop,nouuid"]),
    "xfs without letter case": (320, ["mkfs.xfs", "-q", "-f", "-n", "version=ci"], ["mount", "-o", "loop,nouuid"]),
    "btrfs": (256, ["mkfs.btrfs", "-q", "-f"], LOOP),
    "vfat": (64, ["mkfs.vfat"], ["mount", "-t", "vfat", "-o", "loop,utf8"]),
    "exfat": (64, ["mkfs.exfat"], ["mount", "-t", "exfat", "-o", "loop"]),
    "exfat by FUSE": (64, ["mkfs.exfat"], ["mount.exfat-fuse"]),
    "ntfs3": (64, ["mkntfs", "-q", "-F", "-f"], ["mount", "-t", "ntfs3", "-o", "loop"]),
    "ntfs-3g": (64, ["mkntfs", "-q", "-F", "-f"], ["ntfs-3g"]),
    "ntfs-3g with names of Windows": (64, ["mkntfs", "-q", "-F", "-f"], ["ntfs-3g", "-o", "windows_names"]),
    "ntfs-3g without letter case": (64, ["mkntfs", "-q", "-F", "-f"], ["lowntfs-3g", "-o", "ignore_case"]),
    "fuse2fs": (256, ["mkfs.ext4", "-q", "-F"], ["fuse2fs"]),
    "tmpfs": (0, [], ["mount", "-t", "tmpfs"]),
}
# Those that may be detached while they are in use, and those that fail at once when told to.
DETACHABLE = ["tmpfs", "ext4", "xfs", "btrfs"]
STOPPABLE = ["ext4", "xfs"]
SHUT_DOWN, WITHOUT_FLUSH = 0x8004587D, 2  # EXT4_IOC_SHUTDOWN, XFS_IOC_GOINGDOWN
DISK_CALLS = ["renameat2", "linkat", "fsync", "fdatasync", "syncfs", "mkdirat", "utimensat", "pwrite64", "unlinkat",
              "ftruncate"]
LOOKS = 5  # seconds between two looks of a run for its destination

mounting = threading.Lock()


def call(*command):
    """Runs a command. Raises OSError with what it said if it fails."""
    words = [str(word) for word in command]
    try:
        done = subprocess.run(words, capture_output=True, text=True, errors="replace", check=False, timeout=PATIENCE)
    except subprocess.TimeoutExpired:
        raise OSError(f"{words[0]} did not end") from None
    if done.returncode != 0:
        raise OSError(f"{' '.join(words[:3])}: {(done.stderr or done.stdout).strip()[-200:]}")


def mount_points_below(folder):
    """Returns the mount points inside a folder in the order of mounting."""
    found = []
    for line in pathlib.Path("/proc/self/mountinfo").read_text(errors="surrogateescape").splitlines():
        point = re.sub(r"\\([0-7]{3})", lambda match: chr(int(match[1], 8)), line.split()[4])
        if point.startswith(f"{folder}/"):
            found.append(point)
    return found


def unmount_below(folder):
    for point in reversed(mount_points_below(folder)):
        subprocess.run(["umount", "-l", point], capture_output=True, check=False)


def mount(trial, point, *arguments):
    """Mounts something in the folder of the trial until the trial is over."""
    trial.closing.append(lambda: unmount_below(trial.folder))
    call("mount", *arguments, point)


def mount_image(command, image, point):
    if command[0] != "mount.exfat-fuse":
        return call(*command, image, point)
    # This driver takes devices only.
    device = subprocess.run(["losetup", "--find", "--show", str(image)], capture_output=True, text=True,
                            check=False).stdout.strip()
    try:
        call(*command, device, point)
    finally:
        # It is given back when its volume is unmounted.
        subprocess.run(["losetup", "--detach", device], capture_output=True, check=False)


class Volumes:
    """The file systems that this machine can mount, each as an empty image."""

    def __init__(self, folder):
        self.folder = folder
        self.kinds = []
        self.refusals = {}
        point = folder / "point"
        point.mkdir(parents=True)
        for kind, (megabytes, make, mounts) in FILE_SYSTEMS.items():
            image = folder / kind
            try:
                for tool in [*make[:1], mounts[0]]:
                    if shutil.which(tool) is None:
                        raise OSError(f"there is no {tool}")
                if make:
                    with open(image, "wb") as file:
                        file.truncate(megabytes << 20)
                    call(*make, image)
                mount_image(mounts, image, point)
                call("umount", point)
                self.kinds.append(kind)
            except OSError as error:
                self.refusals[kind] = str(error).splitlines()[0].split(": ")[-1].split(",")[0].rstrip(".")
        self.refusal = self.refusals.get("tmpfs", "")


class Volume:
    """A disk of a trial, empty at first."""

    def __init__(self, trial, kind, name):
        self.trial, self.kind = trial, kind
        self.image = trial.folder / name
        trial.closing.append(lambda: unmount_below(trial.folder))
        if kind == "tmpfs":
            # It stays mounted in a place of its own, so that it can go and come back.
            self.image.mkdir()
            call("mount", "-t", "tmpfs", "tmpfs", self.image)
        else:
            call("cp", "--sparse=always", trial.chaos.volumes.folder / kind, self.image)

    def mount(self, point):
        command = ["mount", "--bind"] if self.kind == "tmpfs" else FILE_SYSTEMS[self.kind][2]
        with mounting:
            for attempt in range(20):
                try:
                    return mount_image(command, self.image, point)
                except OSError:
                    # The loop device of the last time may just be on its way out.
                    if attempt == 19:
                        raise
                    time.sleep(0.05)

    def leave(self, point):
        """Takes the volume away. What is open on it can still be used."""
        with mounting:
            call("umount", "-l", point)

    def stop(self, point):
        """Every later access fails, and what was not yet on stable storage is lost."""
        descriptor = os.open(point, os.O_RDONLY)
        try:
            fcntl.ioctl(descriptor, SHUT_DOWN, struct.pack("I", WITHOUT_FLUSH))
        finally:
            os.close(descriptor)

    def replace(self):
        """A stopped disk comes back as another device: the old one may still be open."""
        old, self.image = self.image, self.image.with_name(self.image.name + " again")
        call("cp", "--sparse=always", old, self.image)


def note(trial, kind, what):
    if trial.has_struck:
        trial.chaos.tallies[kind][what] += 1


def require_true(run, *places):
    """Requires that the report of a run that was not killed names no missing file."""
    if not run.was_ended_by_signal():
        chaos_checks.require_true(run.printed(), *places)


def begin_on(trial, volume, point):
    """Starts a transfer from a phone onto the volume, and returns the run in the middle of it."""
    point.mkdir()
    volume.mount(point)
    trial.destination = point / trial.random.choice(["", "Pictures"])
    latency = trial.random.choice([300, 1000, 3000])
    Phone(trial, "--latency-us", latency)
    landed = trial.random.choice([len(trial.source.pictures), trial.random.randint(1, len(trial.source.pictures) - 1)])
    run = trial.start()
    trial.wait(run, PATIENCE, lambda: any(trial.destination.glob("phone-????????.json")))
    trial.wait(run, trial.random.random() * trial.chaos.phone_calls * latency / 1e6,
               lambda: count_landed(trial.destination) >= landed)
    trial.has_struck = run.status is None
    return run


def count_landed(destination):
    return sum("/" in path and not chaos_checks.is_temporary(path) for path in chaos_checks.files_in(destination))


def require_untouched(point):
    if any(point.iterdir()):
        raise Wrong(f"the folder below the volume was written to: {sorted(os.listdir(point))[:3]}")


def volume_gone(trial):
    """The volume goes in the middle of a run; then it comes back, or another one, or none."""
    kind = trial.random.choice([each for each in DETACHABLE if each in trial.chaos.volumes.kinds])
    is_pulled = kind in STOPPABLE and trial.random.random() < 0.6
    then = ["the same", "another", "nothing", "the same"][trial.number % 4]
    trial.layout = trial.random.choice(["plain", "plain", "plain", "converted", "one archive"])
    volume, point = Volume(trial, kind, "disk"), trial.folder / "volume"
    run = begin_on(trial, volume, point)
    if is_pulled:
        volume.stop(point)
    volume.leave(point)
    if is_pulled:
        volume.replace()
    way = f"{'pulled' if is_pulled else 'detached'}, then {then}"
    try:
        AFTERWARDS[then](trial, run, volume, point, way)
    except Wrong as error:
        raise Wrong(f"{kind} {way}: {error}") from None
    trial.complete(has_failed=is_pulled)


def comes_back(trial, run, volume, point, way):
    trial.pause(trial.random.uniform(0, 3))
    require_untouched(point)
    volume.mount(point)
    is_pulled = way.startswith("pulled")
    status = trial.finish(run, not is_pulled)
    # A pulled disk may have lost the trace by which a run knows it.
    must_go_on = not is_pulled
    if status != 0 and (must_go_on or status != 3):
        raise Wrong(f"the run ended with status {status}: {trial.said.strip()[-300:]}")
    if status == 0:
        trial.source.require_all(trial.destination)
    require_true(run, trial.destination)
    note(trial, "volume gone", f"{way}: {'went on' if status == 0 else 'was interrupted'}")


def gives_way(trial, run, volume, point, way):
    """Another, empty volume takes the place of the one that went."""
    other = Volume(trial, trial.random.choice([volume.kind, "tmpfs"]), "another disk")
    trial.pause(trial.random.uniform(0, 3))
    require_untouched(point)
    other.mount(point)
    if trial.random.random() < 0.5:
        trial.destination.mkdir(exist_ok=True)
    ended = trial.wait(run, LOOKS + trial.random.uniform(0.5, 2))
    if not ended and not run.waits():
        raise Wrong(f"the run hangs without saying that it waits: {run.told().strip()[-300:]}")
    status = trial.take(run, False) if ended else trial.stop(run, signal.SIGINT, False)
    if status not in ([0, 3] if ended else [130]):
        raise Wrong(f"the run ended with status {status}: {trial.said.strip()[-300:]}")
    note(trial, "volume gone", f"{way}: " + ("waited on" if not ended else "went on" if status == 0 else
                                             "was interrupted"))
    elsewhere = trial.folder / "elsewhere"
    elsewhere.mkdir()
    volume.mount(elsewhere)
    first = elsewhere / trial.destination.relative_to(point)
    require_true(run, trial.destination, first)
    for place in (first, trial.destination):
        chaos_checks.pictures_in(trial.source, place)
    if status == 0:
        trial.source.require_all(first, trial.destination)
    volume.leave(elsewhere)
    other.leave(point)
    volume.mount(point)


def stays_away(trial, run, volume, point, way):
    by = trial.random.choice([signal.SIGINT, signal.SIGINT, signal.SIGKILL])
    if trial.random.random() < 0.3:
        trial.pause(trial.random.uniform(0, 2))
        status = trial.stop(run, by, False)
    else:
        status = trial.finish_or_stop(run, by, False)
    if not run.was_ended_by_signal() and status not in (0, 3, 130):
        raise Wrong(f"the run ended with status {status}: {trial.said.strip()[-300:]}")
    note(trial, "volume gone", f"{way}: " + ("was killed" if run.was_ended_by_signal() else
                                             {0: "had ended", 3: "was interrupted", 130: "was cancelled"}[status]))
    require_untouched(point)
    volume.mount(point)
    require_true(run, trial.destination)


AFTERWARDS = {"the same": comes_back, "another": gives_way, "nothing": stays_away}


def failing_disk(trial):
    """From some moment on, the disk refuses what it is told to do, and stays where it is."""
    ways = [way for way, can in {"failing calls": not trial.chaos.untraced, "stopped disk": trial.chaos.can_mount,
                                 "thin disk": trial.chaos.can_mount}.items() if can]
    way = ways[trial.number % len(ways)]
    trial.layout = trial.random.choice(["plain", "plain", "converted", "one archive", "archives"])
    try:
        status = FAILURES[way](trial)
    except Wrong as error:
        raise Wrong(f"{way}: {error}") from None
    note(trial, "failing disk", f"{way}: " + {0: "completed", 1: "completed in part", 3: "was interrupted"}.get(
        status, f"status {status}"))
    trial.complete(has_failed=True)


def fail_calls(trial):
    calls = {call: count for call, count in trial.chaos.calls[trial.layout].items() if call in DISK_CALLS}
    number = max(1, some_call(trial, max(calls.values())))
    around, log = tracing(trial, f"{','.join(sorted(calls))}:error=EIO:when={number}+")
    status = trial.finish(trial.start(around))
    trial.has_struck = was_injected(log)
    return status


def stop_disk(trial):
    kind = trial.random.choice([each for each in STOPPABLE if each in trial.chaos.volumes.kinds])
    volume, point = Volume(trial, kind, "disk"), trial.folder / "volume"
    run = begin_on(trial, volume, point)
    volume.stop(point)
    # Some file systems report a stopped disk as one without its cable, which is waited for.
    status = trial.finish_or_stop(run, signal.SIGINT, False)
    volume.leave(point)
    volume.replace()
    volume.mount(point)
    require_true(run, trial.destination)
    if status == 0:
        trial.source.require_all(trial.destination)
    return status


def fill_store(trial):
    """The disk says that it has space, and cannot keep what is written to it."""
    kind = trial.random.choice([each for each in STOPPABLE if each in trial.chaos.volumes.kinds])
    store, point = trial.folder / "store", trial.folder / "volume"
    whole = sum(file.stat().st_size for file in (trial.source.folder / "media").iterdir())
    store.mkdir()
    mount(trial, store, "-t", "tmpfs", "tmpfs")
    volume = Volume(trial, kind, "store/disk")
    room = volume.image.stat().st_blocks * 512 + trial.random.randint(1 << 20, whole)
    call("mount", "-o", f"remount,size={room}", store)
    point.mkdir()
    volume.mount(point)
    trial.destination = point / "Pictures"
    run = trial.start()
    status = trial.finish(run, False)
    trial.has_struck = status != 0
    volume.leave(point)
    call("mount", "-o", f"remount,size={room + 2 * whole}", store)
    if kind == "ext4":
        subprocess.run(["e2fsck", "-p", "-f", volume.image], capture_output=True, check=False)
    volume.mount(point)
    trial.destination.mkdir(exist_ok=True)
    require_true(run, trial.destination)
    if status == 0:
        trial.source.require_all(trial.destination)
    return status


FAILURES = {"failing calls": fail_calls, "stopped disk": stop_disk, "thin disk": fill_store}
