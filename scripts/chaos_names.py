"""The trial of scripts/chaos with file names that some volumes refuse."""
import json
import os
import re
import subprocess
import unicodedata

import chaos_checks
import chaos_volumes
from chaos_checks import Wrong
from chaos_trial import PATIENCE

FORBIDDEN = re.compile(r'[/\\:?%*|"<>\x00-\x1f\x7f-\x9f]')
RESERVED = re.compile(r"(con|prn|aux|nul|com[1-9]|lpt[1-9])", re.IGNORECASE)
NAMES = [
    *(f"IMG_{number}{character}x.JPG" for number, character in enumerate(':?*<>|"\\%\t\n\r\x01\x1b\x7f\x85', 300)),
    "IMG_0001.JPG", "img_0001.jpg", "Img_0001.Jpg", "IMG_ÄÖ.JPG", "img_äö.jpg",
    "caf\u00e9.JPG", "cafe\u0301.JPG", "\ud55c.JPG", "\u1112\u1161\u11ab.JPG", "Straße.JPG", "STRASSE.JPG",
    "CON.JPG", "con.jpg", "aux.HEIC", "COM1.PNG", "lpt9.x.JPG", "NUL.MOV", "CONSOLE.JPG",
    "ends.with.dot..JPG", "ends with space .JPG", " begins with space.JPG",
    "several   spaces.JPG", "a:b.JPG", "a-b.JPG", "a?b.JPG", "a<b.JPG", "a - b (2).JPG", "a (2).JPG", "a (1).JPG",
    "\U0001f600\U0001f468\u200d\U0001f469\u200d\U0001f467.JPG", "\u200bzero width.JPG", "\u202eright to left.JPG",
    "\ufeffmark.JPG", "\ufffdreplacement.JPG", "фото.JPG", "写真.HEIC",
    "bad\udcff.JPG", "bad\udcfe.JPG", "cut\udce2\udc82.JPG",
    "surrogate\udced\udca0\udc80.JPG", "overlong\udcc0\udcaf.JPG",
    "~$temporary.JPG", "$RECYCLE.JPG", "%41.JPG", "-rf.JPG", "'quoted' \"twice\".JPG", "x.part.JPG",
    "L" * 251 + ".JPG", "L" * 250 + "2.JPG", "ж" * 125 + ".JPG", "\U0001f600" * 62 + ".JPG", "long:" * 50 + "x.JPG",
    "e\u0301" * 83 + ".JPG", "S" * 246 + " (2).JPG",
]


def unchanged(name):
    """Names that differ only in how their letters are composed are one name on some volumes."""
    return unicodedata.normalize("NFC", name.encode("utf-8", "surrogateescape").decode("utf-8", "replace"))


def safe_form(name):
    """Returns the name that volumes get which refuse `name`."""
    text = name.encode("utf-8", "surrogateescape").decode("utf-8", "replace")
    stem, dot, ending = text.rpartition(".")
    if not dot or not stem:
        stem, dot, ending = text, "", ""
    stem, ending = (FORBIDDEN.sub("-", part).strip() for part in (stem, ending))
    stem = stem.lstrip(".").rstrip(". ") or "untitled"
    ending = ending.rstrip(". ")
    safe = stem + ("." + ending if ending else "")
    first, rest = (safe + ".").split(".", 1)
    return f"{first}-{rest and '.'}{rest}".rstrip(".") if RESERVED.fullmatch(first) else safe


def is_form_of(found, name):
    """Returns True if a file `name` of the phone may be called `found` in a destination: its name
    or the safe form of it, perhaps with a number, and cut if it is long."""
    found = unchanged(found)
    for form in {unchanged(name), unchanged(safe_form(name))}:
        for each in {found, chaos_checks.unnumbered(found)}:
            if each == form:
                return True
            stem, ending = os.path.splitext(each)
            is_long = len(form.encode()) > 200 and len(found.encode()) > 200
            if is_long and form.startswith(stem) and form.endswith(ending):
                return True
    return False


class OddNames:
    """A made-up phone whose files have odd names, as far as this machine's disk accepts them."""

    def __init__(self, folder, choices):
        place = folder / "DCIM" / "100APPLE"
        place.mkdir(parents=True)
        self.folder = folder
        self.names = {}  # by the content
        for name in NAMES:
            data = choices.randbytes(choices.randint(1, 60_000))
            try:
                (place / name).write_bytes(data)
            except OSError:
                continue
            self.names[chaos_checks.digest(data)] = name
            seconds = 1_700_000_000 + 86_400 * choices.randrange(3)
            os.utime(place / name, (seconds, seconds))
        self.before = chaos_checks.fingerprint(folder)

    def copies_in(self, destination, is_finished, folds=False):
        """Returns the names of the copies. Raises Wrong if one is not whole, has a name that is not
        its own or is there twice; and, if `is_finished`, if one is missing or something is left.
        `folds` is for volumes that change the letter case of names."""
        found = {}
        for path in chaos_checks.files_in(destination):
            if chaos_checks.is_temporary(path) or ("/" not in path and chaos_checks.OWN_FILE.fullmatch(path)):
                if is_finished and chaos_checks.is_temporary(path):
                    raise Wrong(f"left behind: {path!a}")
                continue
            content = chaos_checks.digest((destination / path).read_bytes())
            name = self.names.get(content)
            if name is None:
                raise Wrong(f"{path!a} differs from its source")
            called = os.path.basename(path)
            if not is_form_of(called, name) and not (folds and is_form_of(called, name.lower())):
                raise Wrong(f"{name!a} is called {path!a}")
            if content in found:
                raise Wrong(f"copied twice: {name!a} as {found[content]!a} and {path!a}")
            found[content] = path
        if is_finished:
            self.require_all(destination)
        return found

    def require_all(self, destination):
        found = {chaos_checks.digest((destination / path).read_bytes()) for path in chaos_checks.files_in(destination)}
        missing = [name for content, name in self.names.items() if content not in found]
        if missing:
            raise Wrong(f"{len(missing)} files are missing: {', '.join(ascii(name) for name in missing[:5])}")

    def require_unchanged(self):
        if chaos_checks.fingerprint(self.folder) != self.before:
            raise Wrong("the source has changed")


def odd_names(trial):
    """Names that volumes refuse, on each file system in turn; two of three runs are killed."""
    names, volumes = trial.chaos.names, trial.chaos.volumes
    kinds = ["this machine's disk", *volumes.kinds]
    kind = kinds[trial.number % len(kinds)]
    trial.source = names
    if volumes.refusals:
        trial.chaos.notes.add("odd names, not mounted here: " + "; ".join(
            f"{each} ({reason})" for each, reason in volumes.refusals.items()))
    if kind in volumes.kinds:
        point = trial.folder / "volume"
        point.mkdir()
        chaos_volumes.Volume(trial, kind, "disk").mount(point)
        trial.destination = point / "Pictures"
        trial.destination.mkdir()
        if kind == "ext4 without letter case":
            chaos_volumes.call("chattr", "+F", trial.destination)
    try:
        copy(trial, names, kind == "ntfs-3g without letter case")
    except Wrong as error:
        raise Wrong(f"{kind}: {error}") from None
    trial.chaos.tallies["odd names"][kind] += 1


def copy(trial, names, folds):
    if trial.number % 3 or trial.random.random() < 0.3:
        landed = trial.random.randrange(len(names.names))
        trial.end(trial.start(), trial.random.uniform(0, 0.5),
                  until=lambda: chaos_volumes.count_landed(trial.destination) >= landed)
        trial.was_cut |= len(names.copies_in(trial.destination, False, folds)) < len(names.names)
    status = trial.finish(trial.start())
    names.copies_in(trial.destination, True, folds)
    if status != 0:
        raise Wrong(f"a run ended with status {status}: {trial.said.strip()[-300:]}")
    # What has another name than on the phone is known again.
    run = trial.start()
    if trial.finish(run) != 0:
        raise Wrong(f"the run with nothing to do ended with status {run.status}: {trial.said.strip()[-300:]}")
    copied = (json.loads(run.printed()).get("report") or {}).get("copied", 0)
    if copied:
        raise Wrong(f"the run with nothing to do copied {copied} files")
    names.copies_in(trial.destination, True, folds)
    verify(trial, folds)
    names.require_unchanged()


def verify(trial, folds):
    """The program's own check of the destination finds no loss and nothing unknown."""
    command = [str(trial.chaos.program), "verify", str(trial.destination), "--json", "--lang", "en"]
    done = subprocess.run(command, env=trial.environment(), capture_output=True, check=False, timeout=PATIENCE)
    counts = json.loads(done.stdout)["counts"]
    if folds:
        counts["unknown"] = 0  # the volume lists its files under other names than those recorded
    losses = {state: counts[state] for state in ("changed", "missing", "unreadable", "neverConfirmed", "unknown",
                                                 "leftOvers") if counts.get(state)}
    if done.returncode != 0 or losses:
        raise Wrong(f"verify ended with status {done.returncode} and found {losses}")
