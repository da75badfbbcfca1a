"""What the road needs around it: a display, a session bus and a program folder of its own, and a device in
software. All of it ends with the test."""

import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time

SKIPPED = 77
LONGEST_START = 30  # seconds until a compositor takes connections
BUS_LAUNCHERS = ("/usr/libexec/at-spi-bus-launcher", "/usr/lib/at-spi2-core/at-spi-bus-launcher")


def skip(why):
    print(f"skipped: {why}")
    sys.exit(SKIPPED)


def need_tools(display):
    for tool in (display, "dbus-run-session"):
        if shutil.which(tool) is None:
            skip(f"{tool} is not installed")
    if not any(os.path.exists(path) for path in BUS_LAUNCHERS):
        skip("at-spi2-core is not installed")
    try:
        import gi

        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi  # noqa: F401
    except (ImportError, ValueError):
        skip("gir1.2-atspi-2.0 or python3-gi is not installed")


def start_display(folder):
    """A virtual display; its number is told when it takes connections."""
    reading, writing = os.pipe()
    # Without -noreset the server would begin anew, and refuse who comes meanwhile, when the first of its clients (a
    # part of the bus) goes.
    with open(os.path.join(folder, "xvfb.log"), "w", encoding="utf-8") as log:
        server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1920x1080x24", "-nolisten", "tcp",
             "-noreset"],
            pass_fds=[writing],
            stdout=log,
            stderr=log,
        )
    os.close(writing)
    number = b""
    while not number.endswith(b"\n"):
        part = os.read(reading, 16)
        if not part:
            skip("no virtual display comes up")
        number += part
    os.close(reading)
    return server, ":" + number.decode().strip()


def start_compositor(folder, runtime):
    """A compositor without a screen; it takes connections as soon as its socket is there."""
    name = "road"
    with open(os.path.join(folder, "weston.log"), "w", encoding="utf-8") as log:
        server = subprocess.Popen(
            ["weston", "--backend=headless-backend.so", "--use-pixman", "--width=1920", "--height=1080"]
            + ["--no-config", "--idle-time=0", f"--socket={name}"],
            env={"PATH": "/usr/bin:/bin", "XDG_RUNTIME_DIR": runtime},
            stdout=log,
            stderr=log,
        )
    end = time.monotonic() + LONGEST_START
    while not os.path.exists(os.path.join(runtime, name)):
        if server.poll() is not None or time.monotonic() > end:
            with open(os.path.join(folder, "weston.log"), encoding="utf-8") as log:
                print(log.read(), file=sys.stderr)
            server.kill()
            server.wait()
            raise RuntimeError("no compositor comes up")
        time.sleep(0.05)
    return server, name


def start_server(display, folder, runtime):
    """The server, and what the program has to know of it."""
    if display == "Xvfb":
        server, number = start_display(folder)
        return server, {"DISPLAY": number, "QT_QPA_PLATFORM": "xcb"}
    server, name = start_compositor(folder, runtime)
    # It has no seat, without which the toolkit's own way to methods of input ends in a crash (Qt 6.4).
    return server, {"WAYLAND_DISPLAY": name, "QT_QPA_PLATFORM": "wayland", "QT_IM_MODULE": "compose"}


def on_a_bus_of_its_own(arguments, display):
    """Runs this program again, in a session of its own with its own home; returns its exit code."""
    folder = tempfile.mkdtemp(prefix="benthor-access-")
    server = None
    try:
        places = {name: os.path.join(folder, name) for name in ("home", "config", "data", "cache", "run")}
        for place in places.values():
            os.mkdir(place, 0o700)
        server, told = start_server(display, folder, places["run"])
        environment = {
            "PATH": "/usr/bin:/bin:/usr/sbin:/sbin",
            "LC_ALL": "C.UTF-8",
            "HOME": places["home"],
            "XDG_CONFIG_HOME": places["config"],
            "XDG_DATA_HOME": places["data"],
            "XDG_CACHE_HOME": places["cache"],
            "XDG_RUNTIME_DIR": places["run"],
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "BENTHOR_ACCESS_FOLDER": folder,
        }
        environment |= told
        environment |= {name: told for name, told in os.environ.items() if name.endswith("SAN_OPTIONS")}
        session = subprocess.Popen(
            ["dbus-run-session", "--", sys.executable, "-B", *arguments], env=environment, start_new_session=True
        )
        code = session.wait()
        # What the bus has started goes with it; the group is this session's alone.
        try:
            os.killpg(session.pid, signal.SIGTERM)
        except ProcessLookupError:
            pass
        return code
    finally:
        if server is not None:
            server.terminate()
            server.wait()
        shutil.rmtree(folder, ignore_errors=True)


def program_folder(tools, files):
    """A folder as after an installation, with dives that wait in `new` and the guide still to be seen."""
    folder = os.path.join(os.environ["BENTHOR_ACCESS_FOLDER"], "Benthor")
    os.mkdir(folder)
    for name in os.listdir(files):
        shutil.copy(os.path.join(files, name), folder)
    offscreen = {**os.environ, "QT_QPA_PLATFORM": "offscreen"}
    subprocess.run([tools["makedemo"], folder], check=True, env=offscreen)
    os.remove(os.path.join(folder, "rb.mdb"))
    subprocess.run([tools["makestore"], os.path.join(folder, "rb.mdb")], check=True, env=offscreen)
    # The folder of the program is the program's folder.
    shutil.copy(tools["benthor"], os.path.join(folder, "benthor"))
    return folder


class Child:
    """A process that ends with the test."""

    def __init__(self, command, folder, log):
        self.log = os.path.join(os.environ["BENTHOR_ACCESS_FOLDER"], log)
        with open(self.log, "w", encoding="utf-8") as out:
            self.process = subprocess.Popen(command, cwd=folder, stdout=out, stderr=out)

    def has_ended(self):
        return self.process.poll() is not None

    def end(self):
        if not self.has_ended():
            self.process.terminate()
            try:
                self.process.wait(10)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()

    def words(self):
        with open(self.log, encoding="utf-8", errors="replace") as told:
            return told.read()
