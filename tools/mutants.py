#!/usr/bin/env python3
"""How much the tests catch: changes one place of the product at a time and looks whether a test fails.

  tools/mutants.py [--count 200] [--seed 1]     draws the places and tries those not tried yet
  tools/mutants.py --again FILE                 tries the places of such a list on today's tree
  tools/mutants.py --report [FILE]              what is known so far
  tools/mutants.py ... --commit REVISION        of this commit, instead of the one checked out
  tools/mutants.py ... --configure "-DNAME=..." gives cmake further words
  tools/mutants.py ... --longest SECONDS        leaves out suites that take longer by themselves

Everything happens in a copy of the commit that is checked out, build/mutants/tree, with a build of its
own; the tree that you work in stays as it is. The list, build/mutants/seed<N>.jsonl, has a line per
place: killed (and by which test), survived, does not build, or gone (the place is no more). An
interrupted run goes on where it was. First a build that reports which places are reached runs every
suite of the tests once; a mutant then has only the suites run that come to its place (all, where it
stands outside of functions): those of its house first, then those of the houses above, then the
others. The first failure ends it. A program that takes three times as long as without the change, and
ten seconds more, has failed too.
"""

import argparse
import json
import os
import shlex
import signal
import subprocess
import sys
import tempfile
import time
from dataclasses import asdict
from pathlib import Path

from mutants.places import Place, all_lines, draw, find_again
from mutants.reach import Probes, reached_by

ROOT = Path(__file__).resolve().parent.parent
WORK = ROOT / "build" / "mutants"
TREE = WORK / "tree"
BUILD = TREE / "build" / "dev"
ORDER = ("core", "platform", "data", "terrain", "objects", "app")
LOOKS_AT_THE_BUILD = ("test_assets",)  # these compare what programs make while all is built
PATIENCE_FACTOR, PATIENCE_EXTRA = 3, 10  # times a program's usual time, and seconds
FLAGS = "-O0 -g0"  # without optimisation a build takes half as long


class Program:
    """A test program, or a test that is one command. `suites` holds how long each of its suites takes
    and which places it reaches; a command has one, named "*"."""

    def __init__(self, path, command, folder, environment, in_suites):
        self.path, self.command, self.folder = path, command, folder
        self.environment = dict(item.split("=", 1) for item in environment)
        self.in_suites = in_suites
        self.suites = {}

    @property
    def name(self):
        return self.path.name if self.in_suites else " ".join([self.path.name, *self.command[1:]])

    @property
    def rank(self):
        """Position of its house in the order of the houses; what belongs to none comes last."""
        house = self.path.name.removeprefix("test_").removesuffix("_ui").removesuffix("_qt")
        return ORDER.index(house) if house in ORDER else len(ORDER)

    def stamp(self):
        return self.path.stat().st_mtime_ns if self.path.exists() else 0

    def seconds(self, suites):
        return sum(self.suites[suite]["seconds"] if suite in self.suites else 300 for suite in suites)


def run(command, limit=None, **options):
    """(exit code, output); ends the whole process group at the limit: code None."""
    with tempfile.TemporaryFile("w+") as output:
        process = subprocess.Popen(command, stdout=output, stderr=subprocess.STDOUT,
                                   stdin=subprocess.DEVNULL, start_new_session=True, **options)
        try:
            code = process.wait(limit)
        except subprocess.TimeoutExpired:
            code = None
        finally:
            try:
                os.killpg(process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
        process.wait()
        output.seek(0)
        return code, output.read()


def must(command, **options):
    code, output = run(command, **options)
    if code != 0:
        sys.exit(f"{' '.join(map(str, command))} failed:\n{output[-3000:]}")
    return output


def build_everything(more=()):
    # A warning about a mutant is no failure of it.
    rules = BUILD / "build.ninja"
    rules.write_text(rules.read_text().replace(" -Werror ", " "))
    must(["cmake", "--build", "--preset", "dev"], cwd=TREE, env={**os.environ, **dict(more)})


def prepare_tree(revision, words):
    commit = must(["git", "rev-parse", revision], cwd=ROOT).strip()
    if not (TREE / ".git").exists():
        must(["git", "worktree", "prune"], cwd=ROOT)
        must(["git", "worktree", "add", "--detach", "--force", TREE, commit], cwd=ROOT)
    must(["git", "checkout", "--quiet", "--force", "--detach", commit], cwd=TREE)
    must(["cmake", "--preset", "dev", f"-DCMAKE_CXX_FLAGS_RELWITHDEBINFO={FLAGS}", *words], cwd=TREE)
    return commit


def find_programs():
    listed = must(["ctest", "--show-only=json-v1"], cwd=BUILD)
    listed = json.loads(listed[listed.index("{\n"):])  # what finding the tests said comes before it
    programs = {}
    for test in listed["tests"]:
        path = Path(test["command"][0])
        properties = {item["name"]: item["value"] for item in test.get("properties", [])}
        is_part = any(word.startswith("--gtest_filter") for word in test["command"])
        command = [str(path), "--gtest_fail_fast", "--gtest_brief=1"] if is_part else test["command"]
        key = (path, () if is_part else tuple(command))
        programs.setdefault(key, Program(path, command, properties.get("WORKING_DIRECTORY", BUILD),
                                         properties.get("ENVIRONMENT", []), is_part))
    return sorted(programs.values(), key=lambda program: (program.rank, program.name))


def run_program(program, suites, more=()):
    """None when these suites pass, else what failed first."""
    limit = program.seconds(suites) * PATIENCE_FACTOR + PATIENCE_EXTRA
    command = list(program.command)
    if program.in_suites:
        command.append("--gtest_filter=" + ":".join(f"{suite}.*" for suite in suites))
    with tempfile.TemporaryDirectory(dir="/dev/shm" if Path("/dev/shm").is_dir() else None) as folder:
        environment = {**os.environ, **program.environment, **dict(more), "TMPDIR": folder}
        code, output = run(command, limit, cwd=program.folder, env=environment)
    if code == 0:
        return None
    failed = [line for line in output.split("\n") if line.startswith("[  FAILED  ]")]
    what = failed[0].removeprefix("[  FAILED  ]").strip() if failed else f"exit {code}"
    return f"{program.name}: {'too slow' if code is None else what}"


def suites_of(program):
    if not program.in_suites:
        return ["*"]
    listed = must([str(program.path), "--gtest_list_tests"], cwd=program.folder)
    return [line.split("#")[0].strip().removesuffix(".") for line in listed.split("\n")
            if line and not line.startswith((" ", "Running main"))]


def measure(places, commit):
    """The programs, with the suites that pass by themselves, and the numbers of the places whose
    reaching is known."""
    file = WORK / "reach.json"
    known = json.loads(file.read_text()) if file.exists() else {}
    if known.get("commit") != commit or known.get("places") != len(places):
        with Probes(TREE, places) as probes:
            _, built = reached_by(lambda more: build_everything(more.items()))
            known = {"commit": commit, "places": len(places), "probed": sorted(probes.numbers),
                     "programs": {}}
            for program in find_programs():
                measured = known["programs"][program.name] = {}
                for suite in suites_of(program):
                    began = time.monotonic()
                    failure, reached = reached_by(lambda more: run_program(program, [suite], more.items()))
                    seconds = time.monotonic() - began
                    print(f"{program.name} {suite}: {seconds:.1f} s"
                          + (f", left out: {failure}" if failure else ""), flush=True)
                    if program.name in LOOKS_AT_THE_BUILD:
                        reached = sorted({*reached, *built})
                    if not failure:
                        measured[suite] = {"seconds": seconds, "reached": reached}
        file.write_text(json.dumps(known))
    build_everything()
    programs = find_programs()
    for program in programs:
        program.suites = known["programs"].get(program.name, {})
    return programs, set(known["probed"])


def target_of(program):
    return program.path.relative_to(BUILD).as_posix() if BUILD in program.path.parents else "all"


def try_mutant(place, number, programs, longest):
    """(outcome, detail) of the changed tree; `number` is None where any suite may come to the place."""
    house = place.file.split("/")[0]
    rank = ORDER.index(house) if house in ORDER else len(ORDER)
    for program in [p for p in programs if p.rank >= rank] + [p for p in programs if p.rank < rank]:
        suites = [name for name, suite in program.suites.items()
                  if suite["seconds"] <= longest and (number is None or number in suite["reached"])]
        if not suites:
            continue
        before = program.stamp()
        code, output = run(["ninja", "-C", BUILD, target_of(program)], 900)
        if code != 0:
            return "does not build", next((line for line in output.split("\n") if "error:" in line), "")
        if number is None and program.in_suites and program.stamp() == before:
            continue
        failure = run_program(program, sorted(suites, key=lambda suite: program.seconds([suite])))
        if failure:
            return "killed", failure
    return "survived", ""


def try_places(places, here, list_file, programs, probed, longest):
    """Tries those of `places` that the list does not have; `here` is where each stands today."""
    known = {(r["file"], r["line"], r["new"]) for r in read_list(list_file)}
    for number, (place, today) in enumerate(zip(places, here)):
        if (place.file, place.line, place.new) in known:
            continue
        began = time.monotonic()
        outcome, detail = "gone", ""
        if today:
            path = TREE / today.file
            original = path.read_text()
            lines = original.split("\n")
            lines[today.line - 1] = today.new
            try:
                path.write_text("\n".join(lines))
                outcome, detail = try_mutant(today, number if number in probed else None, programs,
                                             longest)
            finally:
                path.write_text(original)
        record = {**asdict(place), "outcome": outcome, "detail": detail,
                  "seconds": round(time.monotonic() - began)}
        with list_file.open("a") as out:
            out.write(json.dumps(record) + "\n")
        print(f"{number + 1}/{len(places)} {outcome}: {place.file}:{place.line} {detail}", flush=True)


def read_list(file):
    return [json.loads(line) for line in file.read_text().splitlines()] if file.exists() else []


def report(file):
    records = read_list(file)
    valid = [r for r in records if r["outcome"] in ("killed", "survived")]
    by_house = {}
    for record in valid:
        by_house.setdefault(record["file"].split("/")[0], []).append(record["outcome"] == "killed")
    for house, killed in by_house.items():
        print(f"{house:10} {sum(killed):3} of {len(killed):3} killed")
    killed = sum(r["outcome"] == "killed" for r in valid)
    print(f"{killed} of {len(valid)} valid mutants killed ({100 * killed / max(len(valid), 1):.0f} %), "
          f"{len(records) - len(valid)} more do not build or are gone")
    for r in valid:
        if r["outcome"] == "survived":
            print(f"survived: {r['file']}:{r['line']}: {r['old'].strip()}  =>  {r['new'].strip()}")


def main():
    arguments = argparse.ArgumentParser(description=__doc__,
                                        formatter_class=argparse.RawDescriptionHelpFormatter)
    arguments.add_argument("--count", type=int, default=200)
    arguments.add_argument("--seed", type=int, default=1)
    arguments.add_argument("--again", type=Path)
    arguments.add_argument("--commit", default="HEAD")
    arguments.add_argument("--configure", default="")
    arguments.add_argument("--longest", type=float, default=float("inf"))
    arguments.add_argument("--report", type=Path, nargs="?", const=Path())
    chosen = arguments.parse_args()
    list_file = WORK / f"seed{chosen.seed}.jsonl"
    if chosen.report is not None:
        return report(chosen.report if chosen.report.name else list_file)
    if "DISPLAY" not in os.environ or "MUTANTS_DISPLAY" not in os.environ:
        os.environ.update(MUTANTS_DISPLAY="1", LIBGL_ALWAYS_SOFTWARE="1", QT_QPA_PLATFORM="xcb")
        os.execvp("xvfb-run", ["xvfb-run", "-a", "-s", "-screen 0 1280x800x24 -noreset",
                               sys.executable, *sys.argv])
    WORK.mkdir(parents=True, exist_ok=True)
    commit = prepare_tree(chosen.commit, shlex.split(chosen.configure))
    if chosen.again:
        places = [Place(**{key: r[key] for key in Place.__dataclass_fields__})
                  for r in read_list(chosen.again)]
        list_file = chosen.again.with_suffix(".again.jsonl")
    else:
        places_file = WORK / f"seed{chosen.seed}.places.json"
        if not places_file.exists():
            places_file.write_text(json.dumps([asdict(p) for p in draw(TREE, chosen.count, chosen.seed)]))
        places = [Place(**p) for p in json.loads(places_file.read_text())]
    everything = all_lines(TREE)
    here = [find_again(TREE, place, everything) for place in places]
    programs, probed = measure(here, commit)
    try_places(places, here, list_file, programs, probed, chosen.longest)
    return report(list_file)


if __name__ == "__main__":
    main()
