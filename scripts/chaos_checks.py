"""What scripts/chaos checks after a trial: the source, the destination and the reports."""
import collections
import hashlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import zipfile

OWN_FILE = re.compile(r"phone-[0-9a-f]{8}\.json(\.damaged(-\d+)?)?|phone-records\.txt")


CONVERTED_TO = {".jpg": [".JPG", ".PNG"], ".mp4": [".MOV"]}


class Wrong(Exception):
    """What a check found."""


def digest(data):
    return hashlib.sha256(data).hexdigest()


def frames_in(film):
    """Returns the number of pictures in a film that can be played to its end, else 0."""
    with tempfile.NamedTemporaryFile(suffix=".mp4") as file:
        file.write(film)
        file.flush()
        played = subprocess.run(["ffmpeg", "-v", "error", "-xerror", "-i", file.name, "-map", "0:v", "-f", "framecrc",
                                 "-"], capture_output=True, text=True, check=False)
    lines = [line for line in played.stdout.splitlines() if not line.startswith("#")]
    return len(lines) if played.returncode == 0 and not played.stderr else 0


def unnumbered(name):
    return re.sub(r" \(\d+\)(?=(\.[^.]*)?$)", "", name)


def files_in(folder):
    """Returns the relative paths of all entries that are no folders."""
    found = []
    for base, _, names in os.walk(folder):
        found += [os.path.relpath(os.path.join(base, name), folder) for name in names]
    return sorted(found)


def fingerprint(folder):
    """Returns content and time of every file of a folder."""
    prints = {}
    for path in files_in(folder):
        file = pathlib.Path(folder, path)
        prints[path] = (digest(file.read_bytes()), file.stat().st_mtime_ns)
    return prints


class Source:
    """The made-up phone. Its pictures are in a folder `pictures` of it."""

    def __init__(self, folder, pictures="media"):
        self.folder = folder
        self.before = fingerprint(folder)
        self.pictures = {os.path.basename(path): content for path, (content, _) in self.before.items()
                         if path.startswith(pictures + "/")}
        self.results = {}  # of conversions: the content by name
        self.frames = {}  # of converted films: their number by name
        self.result_of = {}  # the name of the result by that of the picture

    def learn_results(self, destination):
        """Takes the converted files of an undisturbed run for those that every run must make."""
        for path in files_in(destination):
            name = os.path.basename(path)
            stem, ending = os.path.splitext(name)
            for original in (stem + each for each in CONVERTED_TO.get(ending, [])):
                if original in self.pictures:
                    data = pathlib.Path(destination, path).read_bytes()
                    self.results[name] = digest(data)
                    self.result_of[original] = name
                    if ending == ".mp4":
                        self.frames[name] = frames_in(data)

    def require_unchanged(self):
        if fingerprint(self.folder) != self.before:
            raise Wrong("the source has changed")

    def require_all(self, *places):
        """Everything is in one of the places: half here and half there is not complete. Returns the
        number of copies of each picture there."""
        found = []
        for place in places:
            copies = pictures_in(self, place)
            missing = sorted(name for name in self.pictures
                             if name not in copies and self.result_of.get(name) not in copies)
            if not missing:
                return copies
            found.append(f"{len(missing)} files are missing: {', '.join(missing[:3])}")
        raise Wrong("; ".join(found))

    def require_own(self, name, data, where):
        name = unnumbered(name)
        # A picture that could not be converted is kept as it is.
        if digest(data) in (self.pictures.get(name), self.results.get(name)):
            return
        # An encoder with several threads does not make the same film twice.
        if name not in self.frames or frames_in(data) != self.frames[name]:
            raise Wrong(f"{where} differs from its source")


def is_temporary(path):
    return path.endswith(".part") or path.split("/")[0] == ".Tavrix-staging"


def pictures_in(source, destination):
    """Returns the number of copies of each picture. Raises Wrong if a file under its final name is
    not that of the source."""
    copies = collections.Counter()
    for path in files_in(destination):
        file = pathlib.Path(destination, path)
        if is_temporary(path) or ("/" not in path and OWN_FILE.fullmatch(path)):
            continue
        if not path.endswith(".zip"):
            source.require_own(file.name, file.read_bytes(), path)
            copies[unnumbered(file.name)] += 1
            continue
        try:
            with zipfile.ZipFile(file) as archive:
                for entry in archive.namelist():
                    name = os.path.basename(entry)
                    source.require_own(name, archive.read(entry), f"{path}: {entry}")
                    copies[unnumbered(name)] += 1
        except (zipfile.BadZipFile, EOFError, OSError) as error:
            raise Wrong(f"{path} is no whole archive: {error}") from error
    return copies


def require_complete(source, destination, once):
    """Everything is there, once if `once`, and nothing else."""
    copies = source.require_all(destination)
    if once and max(copies.values()) > 1:
        raise Wrong(f"copied twice: {copies.most_common(1)[0][0]}")
    left = [path for path in files_in(destination) if is_temporary(path)]
    if left or os.path.exists(os.path.join(destination, ".Tavrix-staging")):
        raise Wrong(f"left behind: {', '.join(left[:3]) or '.Tavrix-staging'}")


def is_there(destination, path):
    """Returns True if a path of a report exists; one inside an archive begins with the archive's."""
    archive, ending, entry = path.partition(".zip/")
    if not ending:
        return os.path.lexists(os.path.join(destination, path))
    try:
        with zipfile.ZipFile(os.path.join(destination, archive + ".zip")) as opened:
            return entry in opened.namelist()
    except (zipfile.BadZipFile, OSError):
        return False


def missing_of(text, *places):
    """Returns the files that the report of a run names and that are in none of the places."""
    if not text.strip():
        return []
    try:
        report = json.loads(text).get("report") or {}
    except ValueError as error:
        raise Wrong(f"the report is no JSON: {error}") from error
    paths = [file["path"] for file in report.get("files", []) if file.get("path")]
    return [path for path in paths if not any(is_there(place, path) for place in places)]


def require_true(text, *places):
    """The report of a run names only files that are there, in one of the places."""
    missing = missing_of(text, *places)
    if missing:
        raise Wrong(f"the report names {missing[0]}, which is missing")


def self_test():
    """Each fault that is planted must be found, and a right destination must pass."""
    with tempfile.TemporaryDirectory() as work:
        phone, place = pathlib.Path(work, "phone"), pathlib.Path(work, "Pictures")
        (phone / "media").mkdir(parents=True)
        for i in range(3):
            (phone / "media" / f"IMG_{i}.JPG").write_bytes(bytes([i]) * 100)
        source = Source(phone)

        def right():
            shutil.rmtree(place, ignore_errors=True)
            (place / "day").mkdir(parents=True)
            (place / "phone-00000000.json").write_text("{}")
            shutil.copy(phone / "media/IMG_0.JPG", place / "day/IMG_0 (2).JPG")
            shutil.copy(phone / "media/IMG_1.JPG", place / "day")
            with zipfile.ZipFile(place / "day.zip", "w") as archive:
                archive.write(phone / "media/IMG_2.JPG", "day/IMG_2.JPG")

        def check():
            source.require_unchanged()
            require_complete(source, place, True)
            require_true('{"report": {"files": [{"path": "day/IMG_1.JPG"}, {"kind": "failed"}]}}', place)

        def other_archive():
            with zipfile.ZipFile(place / "day.zip", "w") as archive:
                archive.writestr("day/IMG_2.JPG", "other")

        faults = {
            "a flipped byte": lambda: (place / "day/IMG_1.JPG").write_bytes(b"\x01" * 99 + b"\x02"),
            "an emptied file": lambda: (place / "day/IMG_1.JPG").write_bytes(b""),
            "another picture of that name": lambda: shutil.copy(phone / "media/IMG_0.JPG", place / "day/IMG_1.JPG"),
            "a missing file": lambda: (place / "day/IMG_0 (2).JPG").unlink(),
            "a second copy": lambda: shutil.copy(phone / "media/IMG_1.JPG", place / "day/IMG_1 (2).JPG"),
            "a foreign file": lambda: (place / "day/x.txt").write_text("x"),
            "an unfinished file": lambda: (place / "day/IMG_1.JPG.part").write_text("x"),
            "an empty staging folder": lambda: (place / ".Tavrix-staging").mkdir(),
            "a temporary record": lambda: (place / "phone-00000000.0123456789ab.json.part").write_text("x"),
            "another result of a conversion": lambda: (place / "day/IMG_1.jpg").write_bytes(b"other"),
            "another file in an archive": other_archive,
            "a cut archive": lambda: (place / "day.zip").write_bytes((place / "day.zip").read_bytes()[:-30]),
            "a report of a missing file": lambda: (place / "day/IMG_1.JPG").rename(place / "IMG_1.JPG"),
            "a changed source": lambda: (phone / "media/IMG_0.JPG").write_bytes(b"other"),
        }
        right()
        check()
        for name, plant in faults.items():
            right()
            plant()
            try:
                check()
            except Wrong:
                continue
            sys.exit(f"chaos: {name} was not found")
    print(f"The checks find what they must find: {len(faults)} faults.")
