"""Plants faults, and checks that scripts/chaos finds them."""
import collections
import contextlib
import json
import pathlib
import random
import shutil
import signal
import sys
import tempfile
import threading
import types
import zipfile

import chaos_checks
import chaos_names
import chaos_trial
import chaos_volumes
from chaos_checks import Wrong


def is_found(check):
    try:
        check()
    except Wrong:
        return True
    return False


def planted_in_destinations():
    """Yields each fault of a destination and whether it is found."""
    with tempfile.TemporaryDirectory() as work:
        phone, place = pathlib.Path(work, "phone"), pathlib.Path(work, "Pictures")
        (phone / "media").mkdir(parents=True)
        for i in range(3):
            (phone / "media" / f"IMG_{i}.JPG").write_bytes(bytes([i]) * 100)
        source = chaos_checks.Source(phone)

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
            chaos_checks.require_complete(source, place, True)
            chaos_checks.require_true('{"report": {"files": [{"path": "day/IMG_1.JPG"}, {"kind": "failed"}]}}', place)

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
            yield name, is_found(check)


def planted_in_places():
    """Yields the faults of a run that met two volumes."""
    with tempfile.TemporaryDirectory() as work:
        phone, first, second = (pathlib.Path(work, name) for name in ("phone", "first", "second"))
        for place in (phone / "media", first, second):
            place.mkdir(parents=True)
        for name in ("IMG_0.JPG", "IMG_1.JPG"):
            (phone / "media" / name).write_text(name)
        source = chaos_checks.Source(phone)
        shutil.copy(phone / "media/IMG_0.JPG", first)
        report = json.dumps({"report": {"files": [{"path": "IMG_0.JPG"}, {"path": "IMG_1.JPG"}]}})
        yield "a report of a file on neither volume", is_found(lambda: chaos_checks.require_true(report, first, second))
        yield "a volume that was written below", is_found(lambda: chaos_volumes.require_untouched(first))
        shutil.copy(phone / "media/IMG_1.JPG", second)
        chaos_checks.require_true(report, first, second)
        yield "half here and half there", is_found(lambda: source.require_all(first, second))
        shutil.copy(phone / "media/IMG_0.JPG", second)
        source.require_all(first, second)

        chaos_checks.require_complete(source, second, True)
        (second / "IMG_0.JPG.converted.part").write_text("")
        yield "an unfinished file", is_found(lambda: chaos_checks.require_complete(source, second, True))
        chaos_checks.require_complete(source, second, True, has_failed=True)
        (second / "IMG_9.JPG.part").write_text("")
        yield "an unfinished file alone", is_found(lambda: chaos_checks.require_complete(source, second, True, True))

        for by_signal in (False, True):
            run = types.SimpleNamespace(printed=lambda: report, was_ended_by_signal=lambda ended=by_signal: ended)
            found = is_found(lambda ended=run: chaos_volumes.require_true(ended, first))
            yield "a file that a disk has lost, in the report of a stopped run", found != by_signal


def planted_in_runs():
    """Yields the faults of runs that hang or wait."""
    says = "I will carry on by myself."
    with tempfile.TemporaryDirectory() as work, contextlib.ExitStack() as closing:
        stopping = threading.Event()
        chaos = types.SimpleNamespace(source=None, pause=stopping.wait)
        trial = chaos_trial.Trial(chaos, work, random.Random(1))
        closing.callback(trial.close)

        def run(script):
            trial.command = lambda: ["sh", "-c", script]
            return trial.start()

        patience, chaos_trial.PATIENCE = chaos_trial.PATIENCE, 0.5
        closing.callback(setattr, chaos_trial, "PATIENCE", patience)
        yield "a run that hangs in silence", is_found(lambda: trial.finish_or_stop(run("sleep 60")))
        yield "a run that hangs after its wait", is_found(
            lambda: trial.finish_or_stop(run(f"echo '{says} It is back — carrying on.' >&2; sleep 60")))
        yield "a run that waits for ever", is_found(lambda: trial.finish(run(f"echo '{says}' >&2; sleep 60")))
        deaf = run("trap '' INT; echo; while :; do sleep 0.1; done")
        trial.wait(deaf, 5, deaf.printed)
        yield "a run that ignores its interrupt", is_found(lambda: trial.stop(deaf, signal.SIGINT))
        status = trial.finish_or_stop(run(f"echo '{says}' >&2; sleep 60"))
        yield "a run that waits, not counted", status == -signal.SIGKILL and trial.has_waited and trial.was_cut
        yield "a report that is no JSON", is_found(lambda: trial.finish(run("echo '{'")))
        trial.has_struck = False
        trial.end(run("exit 3"), 5)
        yield "a fault that came too late", not trial.has_struck
        trial.end(run("sleep 60"), 0)
        yield "a fault that struck", trial.has_struck


def planted_in_names():
    """Yields the faults of the copies of files with odd names."""
    for name, forms, others in (
            ("a:b.JPG", ["a:b.JPG", "a-b.JPG", "a-b (2).JPG"], ["a_b.JPG", "a-b.jpg", "a.JPG"]),
            ("CON.JPG", ["CON-.JPG", "CON.JPG"], ["CONX.JPG", "con.JPG"]),
            ("end .JPG", ["end .JPG", "end.JPG"], ["en.JPG"]),
            ("bad\udcff.JPG", ["bad\udcff.JPG", "bad\ufffd.JPG"], ["bad.JPG"]),
            ("cafe\u0301.JPG", ["caf\u00e9.JPG"], ["cafe.JPG"]),
            ("L" * 251 + ".JPG", ["L" * 247 + " (2).JPG", "L" * 251 + ".JPG"],
             ["M" * 251 + ".JPG", "L" * 20 + ".JPG"])):
        yield f"a form of {ascii(name)[:20]}", all(chaos_names.is_form_of(form, name) for form in forms)
        yield f"no form of {ascii(name)[:20]}", not any(chaos_names.is_form_of(other, name) for other in others)

    with tempfile.TemporaryDirectory() as work:
        names = chaos_names.OddNames(pathlib.Path(work, "odd"), random.Random(1))
        place = pathlib.Path(work, "Pictures")
        files = sorted((pathlib.Path(work, "odd") / "DCIM/100APPLE").iterdir())

        def right():
            shutil.rmtree(place, ignore_errors=True)
            place.mkdir()
            for file in files:
                shutil.copy(file, place)

        def check():
            names.copies_in(place, True)
            names.require_unchanged()

        copy = place / "a:b.JPG"
        faults = {
            "a missing odd name": copy.unlink,
            "a copy under a stranger's name": lambda: copy.rename(place / "other.JPG"),
            "a second copy of an odd name": lambda: shutil.copy(copy, place / "a-b (2).JPG"),
            "two files that have changed places": lambda: (copy.rename(place / "x"), (place / "a<b.JPG").rename(copy),
                                                           (place / "x").rename(place / "a<b.JPG")),
            "a half-written odd name": lambda: copy.write_bytes(copy.read_bytes()[:-1]),
            "an unfinished odd name": lambda: (place / "a:b.JPG.part").write_text("x"),
            "a changed odd name": lambda: files[0].write_bytes(b"other"),
        }
        right()
        check()
        for name, plant in faults.items():
            right()
            plant()
            yield name, is_found(check)


def planted_in_trials(attempt, kinds):
    """Yields the faults of trials that end in any way, and of their sums."""
    with tempfile.TemporaryDirectory() as work:
        chaos = types.SimpleNamespace(seed=1, source=None)
        chaos.trial = lambda choices, number: chaos_trial.Trial(chaos, tempfile.mkdtemp(dir=work), choices, number)
        ways = {"a check that failed": Wrong("planted"), "a KeyError": KeyError("planted"),
                "an OSError": OSError("planted"), "no fault": None}
        total = collections.Counter()

        def trial_of(error):
            def kind(trial):
                trial.has_struck = error is None
                trial.closing.append(lambda: closed.append(trial))
                if error:
                    raise error
            return kind

        for name, error in ways.items():
            closed = []
            kinds["planted"] = trial_of(error)
            with contextlib.redirect_stdout(None):
                row = attempt(chaos, "planted", 0, False)
            yield f"{name} in a trial", row["wrong"] == bool(error) and len(closed) == 1
            total += row
        del kinds["planted"]
        yield "folders that are left", not any(pathlib.Path(work).iterdir())
        sums = total["struck"] + total["missed"], total["as expected"] + total["wrong"]
        yield "sums that differ", sums == (len(ways), len(ways)) and total["trials"] == len(ways)


def self_test(attempt, kinds):
    """Each fault that is planted must be found, and what is right must pass."""
    count = 0
    for name, found in [*planted_in_destinations(), *planted_in_places(), *planted_in_runs(), *planted_in_names(),
                        *planted_in_trials(attempt, kinds)]:
        count += 1
        if not found:
            sys.exit(f"chaos: {name} was not found")
    print(f"The checks find what they must find: {count} faults.")
