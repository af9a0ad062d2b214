#!/usr/bin/env python3
"""Runs clang-tidy over all sources of a compile database: clang_tidy.py BUILD_FOLDER

Nearly all of its time goes into the headers of the language, once per unit that it is given. So the sources that a
target has in one folder are put into one unit, by #include; sources whose names clash there are looked at alone.
Prints what is found. Exit status: 0 nothing, 1 something.
"""

import concurrent.futures
import itertools
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

CLASH = "[clang-diagnostic-error"


def options_of(command):
    """The options of a compiler's command line without those that name its input and output."""
    words = iter(shlex.split(command))
    words = itertools.dropwhile(lambda word: not word.startswith("-"), words)
    for word in words:
        if word in ("-o", "-c"):
            next(words)
        else:
            yield word


def read_units(database):
    """The sources of the database, by target, folder and options."""
    units = {}
    for entry in json.loads(database.read_text()):
        source = pathlib.Path(entry["directory"], entry["file"])
        target = re.search(r" -o (.*)\.dir/", entry["command"])[1]
        key = target, source.parent, tuple(options_of(entry["command"]))
        units.setdefault(key, []).append(source)
    return units


def configuration_of(folder):
    """The nearest file of settings above sources, which units do not lie beside."""
    return next(file for parent in [folder, *folder.parents] if (file := parent / ".clang-tidy").exists())


def run(source, options, configuration):
    """What clang-tidy prints about one source or unit."""
    command = ["clang-tidy", "--quiet", f"--config-file={configuration}", source,
               "--", *options, "-Wno-unknown-warning-option"]
    result = subprocess.run(command, capture_output=True, text=True)
    failed = result.returncode != 0 and not result.stdout.strip()
    return result.stderr if failed else result.stdout


def look_at(unit, sources, options):
    """What clang-tidy prints about sources of a folder that are compiled with the same options.
    unit -- the file to put them into
    """
    configuration = configuration_of(sources[0].parent)
    if len(sources) == 1:
        return run(sources[0], options, configuration)
    unit.write_text("".join(f'#include "{source}"\n' for source in sources))
    found = run(unit, options, configuration)
    if CLASH not in found:
        return found
    errors = [line for line in found.splitlines() if CLASH in line]
    alone = [source for source in sources if any(line.startswith(f"{source}:") for line in errors)] or sources
    together = [source for source in sources if source not in alone]
    found = [run(source, options, configuration) for source in alone]
    if together:
        found.append(look_at(unit, together, options))
    return "".join(found)


def main():
    build = pathlib.Path(sys.argv[1])
    folder = build / "units"
    folder.mkdir(exist_ok=True)
    units = sorted(read_units(build / "compile_commands.json").items(), key=lambda unit: -len(unit[1]))
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        jobs = [pool.submit(look_at, folder / f"{number}.cpp", sources, options)
                for number, ((_, _, options), sources) in enumerate(units)]
        findings = set()
        for job in concurrent.futures.as_completed(jobs):
            # A finding is its line and the lines below it; one in a header comes with every unit that has it.
            for finding in re.split(r"\n(?=/[^\n]*: (?:error|warning): )", job.result().strip()):
                if finding and finding not in findings:
                    findings.add(finding)
                    print(finding, flush=True)
    sys.exit(1 if findings else 0)


main()
