#!/usr/bin/env python3
"""Start-up until the window is drawn and still, against a bare window of the same toolkit.

    bench/startup.py BUILD-DIRECTORY [RUNS]

Starts its own display (Xvfb) and runs the program and the reference in turn, each time in a fresh home
without a session bus. A run's time goes from the start of the process to the last change of the screen
before the first 300 ms without one. The service is not there, or there, as the machine has it: the
program must come to rest either way. Prints the medians, the resident memory at rest, and the ratios.
"""
import ctypes
import ctypes.util
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

WIDTH, HEIGHT = 1400, 900
STILL = 0.3
LIMIT = 20.0


class Screen:
    """The root window's pixels, by XGetImage."""

    class Image(ctypes.Structure):
        _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("xoffset", ctypes.c_int),
                    ("format", ctypes.c_int), ("data", ctypes.c_void_p), ("byte_order", ctypes.c_int),
                    ("bitmap_unit", ctypes.c_int), ("bitmap_bit_order", ctypes.c_int),
                    ("bitmap_pad", ctypes.c_int), ("depth", ctypes.c_int),
                    ("bytes_per_line", ctypes.c_int)]

    def __init__(self, name: str):
        self.x = ctypes.CDLL(ctypes.util.find_library("X11"))
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.x.XDefaultRootWindow.restype = ctypes.c_ulong
        self.x.XGetImage.restype = ctypes.POINTER(self.Image)
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(name.encode()))
        self.root = ctypes.c_ulong(self.x.XDefaultRootWindow(self.display))

    def pixels(self) -> bytes:
        image = self.x.XGetImage(self.display, self.root, 0, 0, WIDTH, HEIGHT, ctypes.c_ulong(-1), 2)
        data = ctypes.string_at(image.contents.data, image.contents.bytes_per_line * HEIGHT)
        self.x.XFree(ctypes.c_void_p(image.contents.data))
        self.x.XFree(image)
        return data


def resident(pid: int) -> float:
    for line in pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines():
        if line.startswith("Pss:"):
            return int(line.split()[1]) / 1024
    raise RuntimeError("no memory figure")


def run(program: pathlib.Path, screen: Screen, display: str) -> tuple[float, float]:
    empty = screen.pixels()
    home = tempfile.mkdtemp()
    environment = {"PATH": os.environ["PATH"], "HOME": home, "DISPLAY": display, "LANG": "en_US.UTF-8",
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
                return (changed - start) * 1000, resident(process.pid)
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
    programs = {"bare window": build / "bin/bare_window", "quillmere": build / "bin/quillmere"}
    reading, writing = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0",
                               f"{WIDTH}x{HEIGHT}x24", "-nolisten", "tcp"], pass_fds=[writing],
                              stderr=subprocess.DEVNULL)
    try:
        display = ":" + os.read(reading, 16).decode().strip()
        screen = Screen(display)
        results = {name: [] for name in programs}
        for number in range(runs + 1):
            for name, program in programs.items():
                figure = run(program, screen, display)
                if number:                                    # the first round warms the file cache
                    results[name].append(figure)
        times = {name: statistics.median(t for t, _ in figures) for name, figures in results.items()}
        memory = {name: statistics.median(m for _, m in figures) for name, figures in results.items()}
        for name in programs:
            print(f"{name:12} {times[name]:7.0f} ms   {memory[name]:6.1f} MiB")
        print(f"ratio        {times['quillmere'] / times['bare window']:7.2f} (goal 1.5)"
              f"   {memory['quillmere'] / memory['bare window']:6.2f} (goal 1.5)")
        return 0
    finally:
        server.terminate()
        server.wait()


if __name__ == "__main__":
    sys.exit(main())
