"""A person who meets the program through AT-SPI alone: finds things by role and name, presses them, reads them,
types. Nothing is looked at that a screen reader could not have, and nothing is waited for by the clock: every
step waits for what must come, and says what did not."""

import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

LONGEST = 30  # seconds until something must have come
STARTED = time.monotonic()


class RoadError(Exception):
    pass


def step(words):
    print(f"[{time.monotonic() - STARTED:5.1f} s] {words}", flush=True)


def quietly(ask, otherwise=None):
    """What goes away while one looks at it is not there."""
    try:
        return ask()
    except GLib.Error:
        return otherwise


def wait_for(what, condition, longest=LONGEST):
    """Until the condition gives something; events are taken in meanwhile."""
    context = GLib.MainContext.default()
    end = time.monotonic() + longest
    while True:
        while context.iteration(False):
            pass
        found = quietly(condition)
        if found:
            return found
        if time.monotonic() > end:
            raise RoadError(f"{what}: it did not come within {longest} s")
        time.sleep(0.02)  # between two looks; what proves is the condition


class Reader:
    """The screen reader's side: what it is told, and what it asks. One that does not listen looks for what was
    said where it still stands."""

    def __init__(self, name, listens=True):
        self.said = []
        self.listens = listens
        self._listener = Atspi.EventListener.new(self._hear)
        for kind in ("object:property-change:accessible-name", "object:state-changed:showing"):
            self._listener.register(kind)
        desktop = Atspi.get_desktop(0)

        def application():
            for at in range(desktop.get_child_count()):
                child = desktop.get_child_at_index(at)
                if child is not None and child.get_name().lower().startswith(name):
                    return child
            return None

        self.application = wait_for(f"the program {name} on the bus", application)

    def _hear(self, event):
        if quietly(lambda: event.source.get_role()) == Atspi.Role.NOTIFICATION:
            words = quietly(lambda: event.source.get_name())
            if words and event.type == "object:state-changed:showing" and event.detail1 == 1:
                self.said.append(words)

    def _standing(self):
        return [
            one.get_name()
            for window in self.windows()
            for one in walk(window)
            if quietly(one.get_role) == Atspi.Role.NOTIFICATION
        ]

    def wait_said(self, part, since=0):
        def heard():
            words = self.said[since:] if self.listens else self._standing()
            return next((one for one in words if part in one), None)

        return wait_for(f'to hear "{part}"', heard)

    def windows(self):
        found = []
        for at in range(quietly(self.application.get_child_count, 0)):
            child = quietly(lambda: self.application.get_child_at_index(at))
            if child is not None and quietly(lambda: is_shown(child)):
                found.append(child)
        return found

    def window(self, title, exactly=False):
        def look():
            return next(
                (
                    one
                    for one in self.windows()
                    if one.get_name() == title or (not exactly and title in one.get_name())
                ),
                None,
            )

        return wait_for(f'the window "{title}"', look)


def is_shown(one):
    states = one.get_state_set()
    return states.contains(Atspi.StateType.VISIBLE) and states.contains(Atspi.StateType.SHOWING)


def walk(root):
    """What is met below it, in the order of reading. The cells of a table are asked for by row and column."""
    for at in range(quietly(root.get_child_count, 0)):
        child = quietly(lambda: root.get_child_at_index(at))
        if child is None:
            continue
        yield child
        if quietly(child.get_role) != Atspi.Role.TABLE and quietly(lambda: is_shown(child)):
            yield from walk(child)


def all_of(root, role):
    return [one for one in walk(root) if quietly(one.get_role) == role and quietly(lambda: is_shown(one))]


def find(root, role, name):
    def look():
        return next((one for one in all_of(root, role) if name in one.get_name()), None)

    return wait_for(f'"{name}" ({role.value_nick})', look)


def has(root, role, name):
    return any(name in (quietly(one.get_name) or "") for one in all_of(root, role))


def is_enabled(one):
    return one.get_state_set().contains(Atspi.StateType.ENABLED)


def is_checked(one):
    return one.get_state_set().contains(Atspi.StateType.CHECKED)


def is_selected(one):
    return one.get_state_set().contains(Atspi.StateType.SELECTED)


def value_of(one):
    value = one.get_value_iface()
    return None if value is None else value.get_current_value()


def text_of(one):
    text = one.get_text_iface()
    return "" if text is None else text.get_text(0, text.get_character_count())


def act(one, action):
    wait_for(f'"{one.get_name()}" to be enabled', lambda: is_enabled(one))
    actions = one.get_action_iface()
    names = [actions.get_action_name(at) for at in range(actions.get_n_actions())]
    if action not in names:
        raise RoadError(f'"{one.get_name()}" offers {names}, not {action}')
    actions.do_action(names.index(action))


def press(root, name, role=Atspi.Role.PUSH_BUTTON):
    act(find(root, role, name), "Press")


def cell(table, row, column):
    return wait_for(
        f"the cell {row} {column}", lambda: table.get_table_iface().get_accessible_at(row, column)
    )


def rows(table):
    return table.get_table_iface().get_n_rows()


def column_named(table, heading):
    iface = table.get_table_iface()
    for column in range(iface.get_n_columns()):
        if iface.get_column_description(column) == heading:
            return column
    raise RoadError(f'no column "{heading}"')


def row_holding(table, column, text):
    for row in range(rows(table)):
        if cell(table, row, column).get_name() == text:
            return row
    return -1


KEYSYMS = {"Right": 0xFF53, "Home": 0xFF50}


def tap(name):
    Atspi.generate_keyboard_event(KEYSYMS[name], None, Atspi.KeySynthType.SYM)


def type_over(one, text):
    """What stands there is selected, as a reader selects it, and typed over."""
    there = one.get_text_iface()
    if there.get_n_selections() == 0:
        there.add_selection(0, there.get_character_count())
    wait_for("the text to be selected", lambda: there.get_n_selections() == 1)
    for letter in text:
        Atspi.generate_keyboard_event(ord(letter), None, Atspi.KeySynthType.SYM)


def focus(one):
    one.get_component_iface().grab_focus()
    wait_for(
        f'the focus on "{one.get_name()}"',
        lambda: one.get_state_set().contains(Atspi.StateType.FOCUSED),
    )


def tree(root, depth=0):
    """For a person who looks for what did not come."""
    lines = []
    for at in range(quietly(root.get_child_count, 0)):
        child = quietly(lambda: root.get_child_at_index(at))
        if child is None or not quietly(lambda: is_shown(child)):
            continue
        lines.append(f"{'  ' * depth}{child.get_role_name()} '{child.get_name()}' {child.get_description()!r}")
        if child.get_role() != Atspi.Role.TABLE:
            lines += tree(child, depth + 1)
    return lines


def fail_with_tree(reader, error):
    print(f"** {error}", file=sys.stderr)
    if reader is not None:
        print(f"-- said so far: {reader.said[-12:]}", file=sys.stderr)
        for at in range(quietly(reader.application.get_child_count, 0)):
            window = quietly(lambda: reader.application.get_child_at_index(at))
            if window is not None:
                print(f"-- {window.get_role_name()} '{window.get_name()}'", file=sys.stderr)
                print("\n".join(tree(window, 1)), file=sys.stderr)
