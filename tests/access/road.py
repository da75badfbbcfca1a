#!/usr/bin/python3
"""Drives the real program through its main road by AT-SPI alone, in a display and a session bus of its own:
first start, import, a dive and ten of its samples, the device and a download, a change of a gas.

Usage: road.py --benthor FILE --kdsim FILE --makedemo FILE --makestore FILE --files FOLDER [--wayland]
With --wayland the display is a compositor without a screen and without a keyboard: no key is pressed on that road.
Ends with 77, and says why, where a tool that it needs is not installed."""

import argparse
import os
import sys

import stage

SAMPLES = 10
LEAD = 3  # rows of the chart before the first sample
PORT = "3"


def read_arguments():
    parser = argparse.ArgumentParser()
    for name in ("benthor", "kdsim", "makedemo", "makestore", "files"):
        parser.add_argument(f"--{name}", required=True)
    parser.add_argument("--wayland", action="store_true")
    return parser.parse_args()


def require(holds, what):
    if not holds:
        raise spi.RoadError(what)


def answer(reader, words, button):
    """A box that asks or tells, by its words."""

    asked = []

    def look():
        for box in reader.windows():
            if box.get_role() not in (spi.Atspi.Role.ALERT, spi.Atspi.Role.DIALOG):
                continue
            told = [spi.quietly(one.get_name) or "" for one in [box, *spi.walk(box)]]
            if any(words in one for one in told):
                return box
            # A device that is asked for dives at once may not have told its type yet; the question is
            # answered while it stands.
            if "Product Type" in told and told not in asked:
                no = [one for one in spi.all_of(box, spi.Atspi.Role.PUSH_BUTTON) if one.get_name() == "No"]
                if no:
                    asked.append(told)
                    spi.act(no[0], "Press")
        return None

    box = spi.wait_for(f'a box that says "{words}"', look)
    spi.press(box, button)


def first_start(reader):
    spi.step("First start: the guide is read and closed for good")
    guide = reader.window("Getting Started")
    spi.find(guide, spi.Atspi.Role.LABEL, "Tip 1 of 4")
    spi.press(guide, "Next")
    spi.find(guide, spi.Atspi.Role.LABEL, "Tip 2 of 4")
    show = spi.find(guide, spi.Atspi.Role.CHECK_BOX, "Show this screen at start up")
    require(spi.is_checked(show), "the guide does not say that it comes at each start")
    spi.act(show, "Toggle")
    spi.wait_for("the guide to stay away", lambda: not spi.is_checked(show))
    spi.press(guide, "Finish")
    answer(reader, "The manual can't be opened", "OK")  # this folder has none


def import_dives(reader):
    spi.step("The dives that wait are imported by themselves, and the end is said")
    answer(reader, "Dive(s) put into database.", "OK")
    reader.wait_said("The import has ended: 9 of 9 files")
    return reader.window("Benthor", exactly=True)


def open_a_dive(reader, main):
    spi.step("My Dives is pressed; the list has headings, rows with names, and one dive with errors")
    spi.press(main, "My Dives")
    listed = reader.window("My Dives")
    grid = spi.find(listed, spi.Atspi.Role.TABLE, "Dives")
    spi.wait_for("nine dives", lambda: spi.rows(grid) == 9)
    name = spi.column_named(grid, "Dive Name")
    damaged = [
        row for row in range(9) if "has errors" in spi.cell(grid, row, name).get_description()
    ]
    require(len(damaged) == 1, f"{len(damaged)} dives are said to have errors")
    row = spi.row_holding(grid, name, "Wreck2.txt")
    require(row >= 0, "Wreck2.txt is not in the list")
    spi.step("A dive is selected, said to be, and opened")
    spi.act(spi.cell(grid, row, name), "Press")
    spi.wait_for("the row to be selected", lambda: spi.is_selected(spi.cell(grid, row, name)))
    require("selected" in spi.cell(grid, row, name).get_description(), "the cell does not say that it is selected")
    spi.press(listed, "Open")
    return reader.window("Wreck2")


def read_the_dive(dive):
    spi.step("The chart tells the dive in sentences")
    chart = spi.find(dive, spi.Atspi.Role.CHART, "Chart of the dive")
    words = spi.wait_for("the dive in sentences", chart.get_description)
    for part in ("Deepest at", "Breathed: ", "samples every 10 seconds"):
        require(part in words, f'"{part}" is not told: {words}')
    return chart


def walk_samples(reader, chart):
    spi.step(f"{SAMPLES} samples by the arrow key, each said in words")
    spi.focus(chart)
    spi.tap("Home")
    spi.wait_for("the first row", lambda: spi.value_of(chart) == 1)
    for row in range(2, LEAD + SAMPLES + 1):
        heard = len(reader.said)
        spi.tap("Right")
        spi.wait_for(f"row {row}", lambda: spi.value_of(chart) == row)
        if row <= LEAD:
            continue
        spoken = spi.wait_for("words of the sample", lambda: reader.said[heard:])
        require("depth" in spoken[-1] and "PO2" in spoken[-1] and "gas" in spoken[-1], f"said was: {spoken}")


def leave_the_dive(reader, dive):
    gauge = next(one for one in spi.walk(dive) if one.get_name() == "Average PPO2 gauge")
    require(spi.value_of(gauge) > 0, "the gauge has no value")
    require("0 to 1.82 bar" in gauge.get_description(), "the gauge does not say its range and unit")
    spi.press(dive, "Back to the dive list")
    reader.window("My Dives")


def connect(reader, main, device):
    spi.step("Download to PC; the device is switched on and its connection is said")
    spi.press(main, "Download to PC")
    link = reader.window("Dive Download")
    heard = len(reader.said)
    device()
    spi.act(spi.find(link, spi.Atspi.Role.MENU_ITEM, "Find KD"), "Press")
    grid = spi.find(link, spi.Atspi.Role.TABLE, "Dives of the device")
    spi.wait_for("the device's dives", lambda: spi.rows(grid) > 1)
    reader.wait_said("Link status: Connected", heard)
    return link, grid


def download(reader, link, grid):
    spi.step("Stored dives are said to be stored; a new one is selected and brought down")
    first = next(
        row for row in range(spi.rows(grid)) if "Already in My Dives" not in spi.cell(grid, row, 1).get_description()
    )
    spi.act(spi.cell(grid, first, 1), "Press")
    spi.wait_for("the dive to be selected", lambda: spi.is_selected(spi.cell(grid, first, 1)))
    heard = len(reader.said)
    spi.press(link, "Get Selected Dives")
    reader.wait_said("Dive 1 of 1", heard)
    answer(reader, "1  Dives Downloaded.", "OK")
    answer(reader, "import downloaded dives into database now", "Yes")
    answer(reader, "Dive(s) put into database.", "OK")
    reader.wait_said("The import has ended: 1 of 1 files", heard)


def change_a_gas(reader, main):
    spi.step("Setup + Gas: the oxygen of a gas is typed, and the change is told")
    spi.press(main, "Setup + Gas")
    gas = reader.window("Gas and System Settings")
    oxygen = spi.find(gas, spi.Atspi.Role.TEXT, "O2 per cent of gas 7")
    spi.wait_for("the gases of the device", lambda: spi.text_of(oxygen) == "18")
    spi.focus(oxygen)
    spi.type_over(oxygen, "16")
    spi.wait_for("the gas to be changed", lambda: spi.text_of(oxygen) == "16")
    spi.find(gas, spi.Atspi.Role.PAGE_TAB, "Changes (")


def walk_the_road(reader, device, keys):
    first_start(reader)
    main = import_dives(reader)
    dive = open_a_dive(reader, main)
    chart = read_the_dive(dive)
    if keys:
        walk_samples(reader, chart)
        leave_the_dive(reader, dive)
    else:
        spi.press(dive, "Back to the dive list")
        reader.window("My Dives")
    link, grid = connect(reader, main, device)
    download(reader, link, grid)
    if keys:
        change_a_gas(reader, main)
    spi.step("Exit")
    spi.press(main, "Exit")


PLACE = "main=@Rect(220 130 "


def put_place():
    """Where the window stood in a session that tells such places."""
    os.makedirs(os.path.dirname(settings_file()))
    with open(settings_file(), "w", encoding="utf-8") as settings:
        settings.write(f"[Windows]\n{PLACE}1200 720)\n")


def settings_file():
    return os.path.join(os.environ["XDG_CONFIG_HOME"], "Benthor", "Benthor.ini")


def require_nothing_of_wayland(program):
    """Where places cannot be set, nothing of it is complained of, and those of other sessions stay."""
    require(program.words() == "", f"the program complains: {program.words()}")
    with open(settings_file(), encoding="utf-8") as settings:
        kept = settings.read()
    require(PLACE in kept, f"the place of the main window is another one now: {kept}")


def run(arguments):
    folder = stage.program_folder(vars(arguments), arguments.files)
    if arguments.wayland:
        put_place()
    children = [stage.Child([os.path.join(folder, "benthor")], folder, "benthor.log")]

    def device():
        simulated = stage.Child([arguments.kdsim, folder, "--port", PORT, "--unpaced"], folder, "kdsim.log")
        children.append(simulated)
        spi.wait_for("the device to stand", lambda: "a device stands" in simulated.words())

    reader = None
    try:
        reader = spi.Reader("benthor", listens=not arguments.wayland)
        walk_the_road(reader, device, not arguments.wayland)
        spi.wait_for("the program to end", children[0].has_ended)
        if arguments.wayland:
            require_nothing_of_wayland(children[0])
        spi.step("The road was walked by what a screen reader has")
        return 0
    except spi.RoadError as error:
        spi.fail_with_tree(reader, error)
        print(children[0].words(), f"exit code: {children[0].process.poll()}", file=sys.stderr)
        return 1
    finally:
        for child in children:
            child.end()


if __name__ == "__main__":
    server = "weston" if "--wayland" in sys.argv else "Xvfb"
    stage.need_tools(server)
    if "BENTHOR_ACCESS_FOLDER" not in os.environ:
        sys.exit(stage.on_a_bus_of_its_own([os.path.abspath(__file__), *sys.argv[1:]], server))
    import atspi as spi

    sys.exit(run(read_arguments()))
