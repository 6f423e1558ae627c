"""Which tests come to which places: a build in which every place reports that it was reached, and a run
of each suite of the tests with it. A mutant then needs only the tests that come to its place."""

import os
import tempfile
from pathlib import Path

from mutants.places import probe_at

PROBE = """#pragma once
#include <atomic>
#include <cstdio>
#include <cstdlib>
inline void MutantsPlaceReached(int number) {
  static std::atomic<bool> seen[100000];
  if (seen[number].load(std::memory_order_relaxed) || seen[number].exchange(true)) return;
  const char* path = std::getenv("MUTANTS_REACHED");
  if (std::FILE* file = path ? std::fopen(path, "a") : nullptr) {
    std::fprintf(file, "%d\\n", number);
    std::fclose(file);
  }
}
"""


class Probes:
    """The tree with a report in front of each place, as long as the `with` lasts. `number` gives the
    probe of a place's position in the list, or is without it where none could be put."""

    def __init__(self, tree, places):
        self.tree, self.originals, self.numbers = tree, {}, set()
        by_file = {}
        for number, place in enumerate(places):
            if place is not None:
                by_file.setdefault(place.file, []).append((number, place))
        header = tree.parent / "probe.h"
        header.write_text(PROBE)
        for file, numbered in by_file.items():
            text = (tree / file).read_text()
            lines = text.split("\n")
            points = [(probe_at(lines, place), number) for number, place in numbered]
            points = sorted((at, number) for at, number in points if at is not None)
            for (index, column), number in reversed(points):
                report = (f" if (!__builtin_is_constant_evaluated()) "
                          f"::MutantsPlaceReached({number}); ")
                lines[index] = lines[index][:column] + report + lines[index][column:]
                self.numbers.add(number)
            self.originals[file] = text
            self.originals[file, "probed"] = f'#include "{header}"\n' + "\n".join(lines)

    def __enter__(self):
        for file in [key for key in self.originals if isinstance(key, str)]:
            (self.tree / file).write_text(self.originals[file, "probed"])
        return self

    def __exit__(self, *_):
        for file in [key for key in self.originals if isinstance(key, str)]:
            (self.tree / file).write_text(self.originals[file])


def reached_by(run):
    """What run(environment) returns, and the places that were reached meanwhile."""
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder) / "reached"
        result = run({"MUTANTS_REACHED": os.fspath(path)})
        return result, sorted(set(map(int, path.read_text().split()))) if path.exists() else []
