#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Reads every window of the program as a screen reader does: over the accessibility bus.

usage: screen_reader.py PROGRAM    PROGRAM shows one window after the other (windows_on_bus.cpp). Exit 1: faults, each on
a line with its window.
"""
import os
import subprocess
import sys
import time

PATIENCE = 30  # seconds
faults = []


def start_display():
    """An X server on a free display; its number is in DISPLAY."""
    read, write = os.pipe()
    server = subprocess.Popen(
        ["Xvfb", "-displayfd", str(write), "-screen", "0", "1600x1200x24", "-nolisten", "tcp"],
        pass_fds=[write], stderr=subprocess.DEVNULL)
    os.close(write)
    with os.fdopen(read) as number:
        os.environ["DISPLAY"] = ":" + number.readline().strip()
    return server


def wait_for(what, condition):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        try:
            found = condition()
        except Exception:  # the window is being built
            found = None
        if found:
            return found
        time.sleep(0.05)
    sys.exit(f"screen_reader: waited too long for {what}")


class Node:
    """One control, as the bus has it."""

    def __init__(self, accessible):
        self.accessible = accessible
        self.role = accessible.getRoleName()
        self.name = accessible.name.strip()
        states = accessible.getState()
        self.showing = states.contains(pyatspi.STATE_SHOWING)
        self.focusable = states.contains(pyatspi.STATE_FOCUSABLE)

    def interfaces(self):
        return pyatspi.listInterfaces(self.accessible)

    def text(self):
        if "Text" not in self.interfaces():
            return None
        text = self.accessible.queryText()
        return text.getText(0, text.characterCount)

    def value(self):
        """Current, lowest and highest value; None for a control without one."""
        if "Value" not in self.interfaces():
            return None
        value = self.accessible.queryValue()
        return value.currentValue, value.minimumValue, value.maximumValue

    def set_value(self, number):
        self.accessible.queryValue().currentValue = number


# Lines of lists and entries of menus are read with their list or menu.
WITHIN = {"list item", "menu item", "table cell", "tree item", "page tab", "column header", "row header"}


def nodes_of(window):
    found = []

    def visit(accessible):
        node = Node(accessible)
        found.append(node)
        for at in range(min(accessible.childCount, 400)):
            child = accessible.getChildAtIndex(at)
            if child is not None and (node.role not in ("list", "table", "tree") or at < 5):
                visit(child)

    visit(window)
    return [node for node in found if node.showing or node.role in WITHIN]


def named(nodes, name):
    for node in nodes:
        if node.name == name:
            return node
    return None


def check_names(say, nodes):
    owners = {}
    for node in nodes:
        if not node.focusable or node.role in WITHIN:
            continue
        if not node.name:
            say(f"a {node.role} has no name")
        owners.setdefault(node.name, []).append(node.role)
    for name, roles in owners.items():
        if name and len(roles) > 1:
            say(f"'{name}' is the name of: {', '.join(roles)}")


def expect(say, node, name, role, text=None, value=None):
    if node is None:
        say(f"'{name}' is missing")
        return
    if node.role != role:
        say(f"'{name}' is a {node.role}, not a {role}")
    if text is not None and text not in (node.text() or ""):
        say(f"'{name}' has the text '{node.text()}', not '{text}'")
    if value is not None and node.value() != value:
        say(f"'{name}' has the value {node.value()}, not {value}")


def check_player(say, window):
    """The instruments of an editor with a sound of two seconds."""
    wave = wait_for("the length of the sound", lambda: with_maximum(window, "Golfvorm", 2000))
    expect(say, wave, "Golfvorm", "slider", "mixpunt")
    nodes = nodes_of(window)
    mix = named(nodes, "Outtromix in milliseconden vóór het einde")
    expect(say, mix, "Outtromix", "spin button", "0", (0, 0, 999999))
    if mix is not None:
        mix.set_value(500)
        expect(say, mix, "Outtromix", "spin button", "500", (500, 0, 999999))
        expect(say, wave, "Golfvorm", "slider", "0:00,500", (500, 0, 2000))
    expect(say, named(nodes, "Resterende seconden"), "Resterende seconden", "label", "2")
    expect(say, named(nodes, "Resterende tijd"), "Resterende tijd", "label")
    expect(say, named(nodes, "Niveau links"), "Niveau links", "progress bar", "stil", (-60, -60, 0))
    expect(say, named(nodes, "Plaats in het bestand"), "Plaats in het bestand", "slider")


def with_maximum(window, name, maximum):
    node = named(nodes_of(window), name)
    return node if node is not None and node.value() and node.value()[2] == maximum else None


def check_clock(say, window):
    nodes = nodes_of(window)
    clock = next((node for node in nodes if node.name == "Klok"), None)
    expect(say, clock, "Klok", "label")
    if clock is not None and (clock.text() or "").count(":") != 2:
        say(f"the clock has the text '{clock.text()}'")
    for mark in ("loopt", "verloopt", "geluidsbestand ontbreekt"):
        expect(say, named(nodes, mark), mark, "label", mark)


def check_list(say, window):
    line = wait_for("the state of a line",
                    lambda: next((n for n in nodes_of(window) if n.role == "list item" and "loopt t/m" in n.name), None))
    if not line.name.startswith("Spot"):
        say(f"a line of the list is read as '{line.name}'")


def check_block(say, window):
    strip = named(nodes_of(window), "Tijdlijn van het blok")
    expect(say, strip, "Tijdlijn van het blok", "slider", "positie 0:00,000")
    if strip is not None and strip.value()[2] <= 0:
        say("the time line has no length")


MORE = {"main": check_clock, "itemSpot": check_player, "itemPingle": check_player, "itemSpots": check_list,
        "listening": check_block}


def window_of(program):
    for app in pyatspi.Registry.getDesktop(0):
        if app is None or app.name != program:
            continue
        for at in range(app.childCount):
            window = app.getChildAtIndex(at)
            if window is not None and window.getState().contains(pyatspi.STATE_SHOWING):
                return window
    return None


def read_windows(path):
    program = subprocess.Popen([path], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    count = 0
    while True:
        program.stdin.write("\n")
        program.stdin.flush()
        name = program.stdout.readline().strip()
        if not name:
            break
        window = wait_for(name, lambda: window_of(os.path.basename(path)))

        def say(fault, name=name):
            faults.append(f"{name}: {fault}")

        nodes = nodes_of(window)
        check_names(say, nodes)
        if name in MORE:
            MORE[name](say, window)
        count += 1
        if os.environ.get("VERBOSE"):
            print(f"== {name}")
            for node in nodes:
                print(f"  {node.role}: {node.name!r} value={node.value()} text={node.text()!r}")
    return count, program.wait(PATIENCE)


display = start_display()
import pyatspi  # noqa: E402  needs the display

try:
    windows, code = read_windows(sys.argv[1])
finally:
    display.terminate()
print("\n".join(faults))
print(f"{windows} windows, {len(faults)} faults")
if windows < 20:
    sys.exit("screen_reader: too few windows were shown")
sys.exit(1 if faults or code != 0 else 0)
