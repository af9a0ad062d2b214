#!/usr/bin/env python3
"""Writes a help patch: make_help.py DESCRIPTION OUTPUT

The description says, line by line, what stands where (its head explains the form); the output is the JSON that the host
reads, one sub-patcher a tab. A line that cannot be understood ends the program with its number.
"""

import json
import re
import sys
from pathlib import Path

# Inlets, and the kinds of the outlets, of what the patches use; a signal outlet is "signal", any message "".
OBJECTS = {
    "phasor~": (2, ["signal"]), "sig~": (1, ["signal"]), "-~": (2, ["signal"]), "/~": (2, ["signal"]),
    "*~": (2, ["signal"]), "!-": (2, ["int"]), "print": (1, []), "dict": (2, ["dictionary", "", "", "", ""]),
}
WIDGETS = {  # inlets, outlets, width, height
    "toggle": (1, ["int"], 24, 24), "flonum": (1, ["", "bang"], 60, 22), "scope~": (2, [], 130, 100),
    "ezdac~": (2, [], 45, 45), "preset": (1, ["preset", "int", "preset", "int", ""], 100, 40),
}
LETTER_WIDTH, LINE_HEIGHT, WINDOW = 7, 22, [100.0, 100.0, 680.0, 640.0]


class Mistake(Exception):
    """A line of the description that cannot be understood."""


def patcher(rect, boxes, lines, **more):
    """A patcher with the keys that the host writes into every one."""
    return {
        "fileversion": 1,
        "appversion": {"major": 8, "minor": 2, "revision": 0, "architecture": "x64", "modernui": 1},
        "classnamespace": "box", "rect": rect, "bglocked": 0, "openinpresentation": 0, "default_fontsize": 12.0,
        "default_fontface": 0, "default_fontname": "Arial", "gridonopen": 1, "gridsize": [15.0, 15.0],
        "gridsnaponopen": 1, "objectsnaponopen": 1, "statusbarvisible": 2, "toolbarvisible": 1, "boxanimatetime": 200,
        "enablehscroll": 1, "enablevscroll": 1, "devicewidth": 0.0, "description": "", "digest": "", "tags": "",
        "style": "", **more, "boxes": [{"box": box} for box in boxes],
        "lines": [{"patchline": line} for line in lines],
    }


def box(identifier, maxclass, inlets, outlets, rect, **more):
    """A box; only one with outlets tells their kinds."""
    kinds = {"outlettype": outlets} if outlets else {}
    return {"id": identifier, "maxclass": maxclass, "numinlets": inlets, "numoutlets": len(outlets), **kinds,
            "patching_rect": [float(x) for x in rect], **more}


def connectors(text):
    """Inlets and outlet kinds of what is typed into an object box."""
    name = text.split()[0]
    if name == "tesk.fixnan~":
        channels = int((re.search(r"@numchannels (\d+)", text) or [0, 1])[1])
        return channels, ["signal"] * channels + [""]
    if name not in OBJECTS:
        raise Mistake(f"no object {name} is known")
    return OBJECTS[name]


class Tab:
    """One sub-patcher in the making."""

    def __init__(self, name):
        self.name, self.boxes, self.lines, self.ids, self.comments = name, [], [], {}, 0

    def add(self, name, make):
        if name in self.ids:
            raise Mistake(f"there is a {name} already")
        self.ids[name] = f"obj-{len(self.ids) + 1}"
        self.boxes.append(make(self.ids[name]))

    def comment(self, x, y, width, text, **more):
        self.comments += 1
        size = more.get("fontsize", 12.0)
        height = LINE_HEIGHT * size / 12.0 * (1 + len(text) * LETTER_WIDTH // width)
        self.add(f"comment {self.comments}", lambda i: box(i, "comment", 1, [], [x, y, width, height], text=text,
                                                           linecount=1 + len(text) * LETTER_WIDTH // width, **more))

    def named(self, kind, name, x, y, text):
        width = max(30, 16 + LETTER_WIDTH * len(text))
        if kind == "box":
            inlets, outlets = connectors(text)
            self.add(name, lambda i: box(i, "newobj", inlets, outlets, [x, y, width, LINE_HEIGHT], text=text))
        elif kind == "message":
            self.add(name, lambda i: box(i, "message", 2, [""], [x, y, width, LINE_HEIGHT], text=text))
        elif kind == "attribute":
            self.add(name, lambda i: box(i, "attrui", 1, [""], [x, y, 150, LINE_HEIGHT], attr=text))
        else:
            inlets, outlets, width, height = WIDGETS[kind]
            self.add(name, lambda i: box(i, kind, inlets, outlets, [x, y, width, height]))

    def cord(self, source, outlet, destination, inlet):
        for name, number, key in (source, outlet, "numoutlets"), (destination, inlet, "numinlets"):
            if name not in self.ids:
                raise Mistake(f"there is no {name} before this line")
            if number >= next(b[key] for b in self.boxes if b["id"] == self.ids[name]):
                raise Mistake(f"{name} has no such connector: {number}")
        self.lines.append({"source": [self.ids[source], outlet], "destination": [self.ids[destination], inlet]})


def read_line(tab, line):
    """Adds what one line says to the tab."""
    words = line.split(maxsplit=4)
    kind = words[0]
    if kind in ("text", "title"):
        _, x, y, width, text = words
        tab.comment(int(x), int(y), int(width), text, **({"fontsize": 24.0} if kind == "title" else {}))
    elif kind == "cord":
        _, source, outlet, destination, inlet = words
        tab.cord(source, int(outlet), destination, int(inlet))
    elif kind in ("box", "message", "attribute"):
        _, name, x, y, text = words
        tab.named(kind, name, int(x), int(y), text)
    elif kind in WIDGETS:
        _, name, x, y = words
        tab.named(kind, name, int(x), int(y), "")
    else:
        raise Mistake(f"unknown word {kind}")


def read_tabs(description):
    tabs = []
    for number, line in enumerate(description.splitlines(), 1):
        if not line.strip() or line.startswith("#"):
            continue
        try:
            if line.startswith("tab "):
                tabs.append(Tab(line.split()[1]))
            else:
                read_line(tabs[-1], line)
        except (Mistake, ValueError, IndexError) as mistake:
            raise SystemExit(f"line {number}: {mistake}: {line}") from mistake
    return tabs


def main():
    if len(sys.argv) != 3:
        raise SystemExit(__doc__)
    source, output = Path(sys.argv[1]), Path(sys.argv[2])
    tabs = read_tabs(source.read_text(encoding="utf-8"))
    boxes = []
    for index, tab in enumerate(tabs):
        inside = patcher([0.0, 26.0, *WINDOW[2:]], tab.boxes, tab.lines, showontab=1)
        boxes.append(box(f"obj-{index + 1}", "newobj", 0, [], [20, 20 + 30 * index, 100, LINE_HEIGHT],
                         text=f"p {tab.name}", patcher=inside))
    top = patcher(WINDOW, boxes, [], showrootpatcherontab=0, showontab=0, dependency_cache=[], autosave=0)
    output.parent.mkdir(parents=True, exist_ok=True)
    output.write_text(json.dumps({"patcher": top}, indent=4, ensure_ascii=False) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
