"""What a screen reader learns of the program over the accessibility bus."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib

from desktop import PATIENCE, press_keys, wait_for

# States that are told with a name, and how.
TOLD_STATES = {
    Atspi.StateType.CHECKED: "checked",
    Atspi.StateType.SELECTED: "selected",
    Atspi.StateType.EXPANDED: "expanded",
}


def turn_on_accessibility():
    """As the settings of a desktop do; it starts the accessibility bus."""
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    on = GLib.Variant("(ssv)", ("org.a11y.Status", "IsEnabled", GLib.Variant("b", True)))
    bus.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set", on, None,
                  Gio.DBusCallFlags.NONE, PATIENCE * 1000, None)
    Atspi.init()
    Atspi.set_timeout(PATIENCE * 1000, PATIENCE * 1000)


class ScreenReader:
    """Follows one process. Make it before the program starts, so that it misses nothing."""

    def __init__(self):
        turn_on_accessibility()
        self.process = None
        self._focused = []
        self._announced = []
        self._listeners = [self._listen("object:state-changed:focused", self._take_focus),
                           self._listen("object:state-changed:showing", self._take_shown)]

    def _listen(self, event, take):
        listener = Atspi.EventListener.new(take)
        listener.register(event)
        return listener

    def _take_focus(self, event):
        if event.detail1:
            self._focused.append(event.source)

    def _take_shown(self, event):
        try:
            if event.detail1 and event.source.get_role() == Atspi.Role.NOTIFICATION:
                self._announced.append(event.source.get_name())
        except GLib.Error:  # gone meanwhile
            pass

    def listen(self):
        """Takes in what the program has told since."""
        while GLib.MainContext.default().iteration(False):
            pass

    # Places

    def application(self):
        desktop = Atspi.get_desktop(0)
        desktop.clear_cache()
        for index in range(desktop.get_child_count()):
            with_windows = desktop.get_child_at_index(index)
            if with_windows and with_windows.get_process_id() == self.process.pid:
                with_windows.set_cache_mask(Atspi.Cache.NONE)
                return with_windows
        return None

    def places(self, root=None):
        """Everything on the screen, in the order of the tree."""
        self.listen()
        waiting = [root or self.application()]
        while waiting:
            place = waiting.pop()
            try:
                if place is None or not is_shown(place):
                    continue
                count = place.get_child_count()
                waiting += [place.get_child_at_index(index) for index in reversed(range(count))]
            except GLib.Error:  # gone meanwhile
                continue
            yield place

    def find_all(self, name=None, role=None, root=None):
        return [place for place in self.places(root) if is_called(place, name, role)]

    def find(self, name=None, role=None, root=None):
        """Waits for the first place of this name and role."""
        first = lambda: next((place for place in self.places(root) if is_called(place, name, role)), None)
        return wait_for(first, lambda: f"There is no {role or ''} {name!r} among\n{self.everything()}")

    def wait_until_gone(self, name, role=None):
        gone = lambda: not self.find_all(name, role)
        wait_for(gone, lambda: f"{name!r} stays among\n{self.everything()}")

    def press(self, name, role=None):
        """As an assistive technology does, wherever the keyboard is."""
        usable = lambda: next((place for place in self.find_all(name, role) if can_be_pressed(place)), None)
        place = wait_for(usable, lambda: f"No {name!r} can be pressed among\n{self.everything()}")
        Atspi.Action.do_action(place, actions_of(place).index("Press"))

    def go_to(self, name, role="text"):
        """Gives the keyboard to a field."""
        Atspi.Component.grab_focus(self.find(name, role))
        self.wait_until_at(name, role)

    def wait_until_at(self, name, role="text"):
        """Waits until the keyboard is there."""
        there = lambda: any(is_focused(place) for place in self.find_all(name, role))
        wait_for(there, lambda: f"The keyboard does not come to {name!r} among\n{self.everything()}")

    def everything(self):
        return "\n".join(spoken(place) for place in self.places())

    # What is heard

    def next_focus(self):
        """What is said where the keyboard comes to next."""
        def heard():
            self.listen()
            return self._focused
        wait_for(heard, lambda: f"The keyboard goes nowhere. There are\n{self.everything()}")
        return spoken(self._focused.pop(0))

    def tab_to(self, name):
        """Goes on by the tab key until this is heard. What is out of sight comes into view."""
        self.listen()
        self._focused.clear()
        passed = []
        while not passed or not passed[-1].startswith(name + ","):
            assert len(passed) < 60, f"{name!r} is not among {passed}."
            press_keys("Tab")
            passed.append(self.next_focus())

    def announced(self):
        """What was said unasked, in order."""
        self.listen()
        return self._announced


def is_shown(place):
    states = place.get_state_set()
    return place.get_role() == Atspi.Role.APPLICATION or states.contains(Atspi.StateType.SHOWING)


def actions_of(place):
    if "Action" not in place.get_interfaces():
        return []
    return [Atspi.Action.get_action_name(place, index) for index in range(Atspi.Action.get_n_actions(place))]


def can_be_pressed(place):
    return place.get_state_set().contains(Atspi.StateType.ENABLED) and "Press" in actions_of(place)


def is_focused(place):
    return place.get_state_set().contains(Atspi.StateType.FOCUSED)


def is_called(place, name, role):
    try:
        return (name is None or place.get_name() == name) and (role is None or place.get_role_name() == role)
    except GLib.Error:
        return False


def text_of(place):
    return Atspi.Text.get_text(place, 0, -1) if "Text" in place.get_interfaces() else ""


def spoken(place):
    """Name, role, states and description of a place, as they are read out."""
    try:
        states = place.get_state_set()
        parts = [place.get_name(), place.get_role_name()]
        parts += [word for state, word in TOLD_STATES.items() if states.contains(state)]
        parts.append(place.get_description())
        return ", ".join(part for part in parts if part)
    except GLib.Error:
        return "(gone)"
