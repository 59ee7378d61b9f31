#!/usr/bin/env python3
"""Start-up until the window is drawn and still, against a bare window of the same toolkit.

    bench/startup.py BUILD-DIRECTORY [RUNS] [SERVER]

Starts its own display (Xvfb) and runs the program and the reference in turn, each time in a fresh home
without a session bus. A run's time goes from the start of the process to the last change of the screen
before the first 300 ms without one. SERVER is the address of a service that answers; without it the
program meets a closed port and must come to rest with its message. Prints the medians of the time, of the
processor time until then, and of the memory at rest, and their ratios.
"""
import mmap
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

STILL = 0.3
LIMIT = 20.0
CLOSED_PORT = "http://127.0.0.1:9"


class Screen:
    """A display whose pixels are read from its memory, so that looking costs the display nothing."""

    def __init__(self):
        self.folder = tempfile.mkdtemp()
        reading, writing = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1400x900x24",
                                        "-nolisten", "tcp", "-noreset", "-nocursor", "-fbdir", self.folder],
                                       pass_fds=[writing], stderr=subprocess.DEVNULL)
        self.name = ":" + os.read(reading, 16).decode().strip()
        with open(f"{self.folder}/Xvfb_screen0", "rb") as file:
            self.memory = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)

    def pixels(self) -> bytes:
        return self.memory[:]

    def close(self) -> None:
        self.server.terminate()
        self.server.wait()
        shutil.rmtree(self.folder)


def processor_time(pid: int) -> float:
    return time.clock_gettime(~pid << 3 | 2)                  # the kernel's clock of another process


def proportional_memory(pid: int) -> float:
    for line in pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines():
        if line.startswith("Pss:"):
            return int(line.split()[1]) / 1024
    raise RuntimeError("no memory figure")


def fresh_home(server: str) -> str:
    home = tempfile.mkdtemp()
    settings = pathlib.Path(home, ".config/Quillmere.Local/Quillmere.Local.conf")
    settings.parent.mkdir(parents=True)
    settings.write_text(f"[General]\nserver={server}\n")
    return home


def run(program: pathlib.Path, screen: Screen, server: str) -> tuple[float, float, float]:
    """Milliseconds until still, milliseconds of processor time, MiB."""
    empty = screen.pixels()
    home = fresh_home(server)
    environment = {"PATH": os.environ["PATH"], "HOME": home, "DISPLAY": screen.name, "LANG": "en_US.UTF-8",
                   "XDG_RUNTIME_DIR": home, "QT_QPA_PLATFORM": "xcb"}
    start = time.monotonic()
    process = subprocess.Popen([program], env=environment, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    try:
        before, changed = empty, start
        while True:
            now = time.monotonic()
            pixels = screen.pixels()
            if pixels != before:
                before, changed = pixels, now
            elif pixels != empty and now - changed > STILL:
                return ((changed - start) * 1000, processor_time(process.pid) * 1000,
                        proportional_memory(process.pid))
            if process.poll() is not None or now - start > LIMIT:
                raise RuntimeError(f"{program.name} showed no window that came to rest")
            time.sleep(0.004)
    finally:
        process.kill()
        process.wait()
        shutil.rmtree(home, ignore_errors=True)
        while screen.pixels() != empty:
            time.sleep(0.01)


def main() -> int:
    build = pathlib.Path(sys.argv[1])
    runs = int(sys.argv[2]) if len(sys.argv) > 2 else 15
    server = sys.argv[3] if len(sys.argv) > 3 else CLOSED_PORT
    programs = {"bare window": build / "bin/bare_window", "quillmere": build / "bin/quillmere"}
    screen = Screen()
    try:
        figures = {name: [] for name in programs}
        for number in range(runs + 1):
            for name, program in programs.items():
                figure = run(program, screen, server)
                if number:                                    # the first round warms the file cache
                    figures[name].append(figure)
    finally:
        screen.close()
    medians = {name: [statistics.median(column) for column in zip(*rows)] for name, rows in figures.items()}
    for name, (still, processor, memory) in medians.items():
        print(f"{name:12} {still:7.0f} ms {processor:7.0f} ms of processor time {memory:7.1f} MiB")
    still, processor, memory = (ours / bare for ours, bare in zip(medians["quillmere"], medians["bare window"]))
    print(f"ratio        {still:7.2f}    {processor:7.2f}                      {memory:7.2f}   (goal 1.5)")
    return 0


if __name__ == "__main__":
    sys.exit(main())
