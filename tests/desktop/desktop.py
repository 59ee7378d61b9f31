"""A desktop of its own for one test: display, buses, keyring, home, and the programs that run on it."""

import contextlib
import ctypes
import json
import os
import pathlib
import re
import signal
import subprocess
import tempfile
import time

# Seconds. A program with sanitizers beside a compiler takes its time; a fault need not be told soon.
PATIENCE = 90

KEPT_VARIABLES = ("PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS")

BUS = """<busconfig>
  <type>session</type>
  <listen>unix:dir={0}</listen>
  <servicedir>{0}/services</servicedir>
  <policy context="default">
    <allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/>
  </policy>
</busconfig>"""

libc = ctypes.CDLL(None)


def end_with_the_test():
    PR_SET_PDEATHSIG = 1
    libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def wait_for(condition, what):
    """The first true value of the condition. `what` is told, or called to tell, when there is none."""
    deadline = time.monotonic() + PATIENCE
    while not (value := condition()):
        if time.monotonic() > deadline:
            raise AssertionError(what() if callable(what) else what)
        time.sleep(0.1)  # and the program has its time to itself
    return value


class Desktop(contextlib.ExitStack):
    """Sets this process's environment too. Whatever it starts ends with it."""

    def __init__(self):
        super().__init__()
        self.folder = pathlib.Path(self.enter_context(tempfile.TemporaryDirectory(prefix="quillmere-")))
        self.home = self._directory("home")
        self.opened = self.folder / "opened"
        self._clean_environment()
        self._start_display()
        self._start_bus()
        self._start_keyring()

    def _directory(self, name):
        path = self.folder / name
        path.mkdir(mode=0o700, parents=True)
        return path

    def _clean_environment(self):
        kept = {name: os.environ[name] for name in KEPT_VARIABLES if name in os.environ}
        os.environ.clear()
        os.environ.update(kept, HOME=str(self.home), LANG="C.UTF-8", TZ="UTC",
                          XDG_RUNTIME_DIR=str(self._directory("run")), QT_QPA_PLATFORM="xcb",
                          GSETTINGS_BACKEND="memory")
        # What the program hands to the browser is written down instead.
        browser = self._directory("bin") / "xdg-open"
        browser.write_text(f'#!/bin/sh\necho "$1" >> "{self.opened}"\n')
        browser.chmod(0o755)
        os.environ["PATH"] = f"{browser.parent}:{os.environ['PATH']}"

    def start(self, *command, **options):
        """Starts a program that writes to its own log."""
        log = self.enter_context(open(self.folder / f"{pathlib.Path(command[0]).name}.log", "ab"))
        options = {"stdin": subprocess.DEVNULL, "stdout": log, "stderr": log} | options
        process = subprocess.Popen(command, preexec_fn=end_with_the_test, **options)
        self.callback(process.wait)
        self.callback(process.kill)
        return process

    def log(self, program):
        return (self.folder / f"{pathlib.Path(program).name}.log").read_text(errors="replace")

    def _start_display(self):
        reader, writer = os.pipe()
        self.start("Xvfb", "-displayfd", str(writer), "-screen", "0", "1600x1000x24", "-nolisten", "tcp",
                   pass_fds=[writer])
        os.close(writer)
        with open(reader) as told:
            os.environ["DISPLAY"] = ":" + told.readline().strip()

    def _start_bus(self):
        # Of the services of this machine, the bus may start the accessibility bus alone.
        services = self._directory("run/services")
        for folder in ("/usr/local/share", "/usr/share"):
            service = pathlib.Path(folder) / "dbus-1/services/org.a11y.Bus.service"
            if service.exists():
                (services / service.name).symlink_to(service)
                break
        configuration = self.folder / "bus.conf"
        configuration.write_text(BUS.format(services.parent))
        daemon = self.start("dbus-daemon", f"--config-file={configuration}", "--nofork", "--print-address",
                            stdout=subprocess.PIPE, text=True)
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = daemon.stdout.readline().strip()

    def _start_keyring(self):
        keyring = self.start("gnome-keyring-daemon", "--foreground", "--components=secrets", "--unlock",
                             stdin=subprocess.PIPE)
        keyring.stdin.write(b"\n")  # the password: an empty one
        keyring.stdin.close()

    def start_service(self, program):
        """The local service, on any free port. Returns its process and its address."""
        settings = self._directory("home/.config/quillmere-service") / "service.json"
        settings.write_text(json.dumps({"port": 0}))
        process = self.start(program)
        listening = lambda: re.search(r"http://127\.0\.0\.1:\d+", self.log(program))
        return process, wait_for(listening, "The service does not start.").group()

    def use_service(self, address):
        """The address that the program asks from its next start on."""
        settings = self._directory("home/.config/Quillmere.Local") / "Quillmere.Local.conf"
        settings.write_text(f"[General]\nserver={address}\n")

    def wait_for_window(self, process):
        """Waits for the window of the program and gives it the keyboard, as there is no window manager."""
        search = ("xdotool", "search", "--onlyvisible", "--pid", str(process.pid))
        ids = lambda: subprocess.run(search, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout
        window = wait_for(ids, "There is no window.").split()[-1]
        # The pointer rests where it points at nothing.
        subprocess.run(["xdotool", "mousemove", "1599", "999", "windowfocus", "--sync", window], check=True,
                       timeout=PATIENCE)


def press_keys(*keys):
    """By the names of X11, such as Tab or ctrl+Return."""
    subprocess.run(["xdotool", "key", "--delay", "5", *keys], check=True, timeout=PATIENCE)


def type_text(text):
    subprocess.run(["xdotool", "type", "--delay", "5", text], check=True, timeout=PATIENCE)
