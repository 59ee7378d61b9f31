#!/usr/bin/python3
"""From the first sight of the window into a case, without a mouse and by what is heard alone."""

import sys

from desktop import Desktop, press_keys, type_text
from screenreader import ScreenReader, spoken

PROGRAM, SERVICE = sys.argv[1:]

BRIDGE = "The telegram that asked for no more load on the Quebec Bridge"
PIGEONS = "Pigeons across the gap between two telegraph lines"


class Walk:
    def __init__(self, desktop):
        self.desktop = desktop
        self.reader = ScreenReader()
        _, address = desktop.start_service(SERVICE)
        desktop.use_service(address)
        self.program = self.reader.process = desktop.start(PROGRAM)
        desktop.wait_for_window(self.program)
        self.reader.find("Connected")

    def keys_lead_to(self, *steps):
        """Each step is a key, and the beginning of what is heard when the keyboard has got there."""
        for key, expected in steps:
            press_keys(key)
            heard = self.reader.next_focus()
            assert heard.startswith(expected), f"After {key} one hears {heard!r} instead of {expected!r}."

    def sidebar(self):
        self.keys_lead_to(
            ("Tab", "Quillmere.Chat, push button"),
            ("Tab", "Archives, list item, selected"),
            ("Down", "Ask, list item"),
            ("Down", "Wall, list item"),
            ("Down", "Conversations, list item"),
            ("Down", "Hard Lessons, list item"),
            ("Down", "First Light, list item"),
            ("Down", "New Bearings, list item"),
            ("Down", "Well Made, list item"),
            ("Down", "Small Beginnings, list item"),
            ("Down", "Browse all, list item"))
        press_keys("Return")
        self.reader.find("All archives", "heading")
        self.reader.find("70 cases", "status bar")

    def search(self):
        self.keys_lead_to(("ctrl+f", "Search cases, text"))
        type_text("bridge")
        self.reader.find("3 cases", "status bar")

    def choose(self):
        cases = self.reader.find("All archives", "list")
        assert len(self.reader.find_all(role="list item", root=cases)) == 3
        self.keys_lead_to(("Down", f"{BRIDGE}, list item"), ("Down", f"{PIGEONS}, list item"))
        press_keys("Return")
        page = self.reader.find(PIGEONS, "document frame")
        assert len(self.reader.find_all(PIGEONS, "heading", page)) == 1
        rows = self.reader.find_all(role="list item", root=cases)
        chosen = [spoken(case) for case in rows if "selected" in spoken(case)]
        assert len(chosen) == 1 and chosen[0].startswith(PIGEONS), chosen

    def read(self):
        self.keys_lead_to(
            ("Tab", "Save to wall, check box"),
            ("Tab", "Text size, push button"),
            ("Tab", "Share this case, push button"),
            ("Tab", "Contents, push button"))
        press_keys("Return")
        self.reader.find("What can be applied", "menu item")
        self.keys_lead_to(
            ("Down", "The beginning, menu item"),
            ("Down", "The first bet, menu item"),
            ("Return", "Contents, push button"))
        self.reader.wait_until_gone("The beginning", "heading")
        self.reader.find("The first bet", "heading")


with Desktop() as desktop:
    walk = Walk(desktop)
    for step in (walk.sidebar, walk.search, walk.choose, walk.read):
        step()
