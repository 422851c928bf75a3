"""What scripts/chaos checks after a trial: the source, the destination and the reports."""
import collections
import hashlib
import json
import os
import pathlib
import re
import subprocess
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


def finished(path):
    """Returns the path that a temporary file was to get."""
    return path.removesuffix(".part").removesuffix(".converted")


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


def require_complete(source, destination, once, has_failed=False):
    """Everything is there, once if `once`, and nothing else. On a disk that has failed, the record of an
    unfinished file may be lost while the file is not; it may stay beside the whole one."""
    copies = source.require_all(destination)
    if once and max(copies.values()) > 1:
        raise Wrong(f"copied twice: {copies.most_common(1)[0][0]}")
    files = files_in(destination)
    left = [path for path in files if is_temporary(path) and not (has_failed and finished(path) in files)]
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
