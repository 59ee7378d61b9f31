#!/usr/bin/env python3
"""Holds the rules for coroutines that the second compiler needs and that keep waits visible.

A wait stands alone on its line, as `co_await name;` or `auto value = co_await name;`. Functions that
return a Task take their parameters by value, are marked [[nodiscard]] in headers, and are never
lambdas that capture. Prints each line that breaks a rule; exit code 1 if there is any.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = ("src", "local-service/src", "tests", "bench")

STANDING_ALONE = re.compile(r"^(?:[\w:<>,&*\s]+?\s[\w]+ = |[\w.]+ = )?co_await (?:std::move\()?[\w.*]+\)?;$")
CAPTURING = re.compile(r"\[[^\]\n]+\]\s*(?:\([^)]*\))?\s*(?:mutable\s*)?->\s*(?:QCoro::)?Task<[^{]*\{(?P<body>(?:[^{}]|\{[^{}]*\})*)\}")
DECLARATION = re.compile(r"^\s*(?P<marked>\[\[nodiscard\]\]\s+)?(?:virtual\s+|static\s+)*Task<.*>\s+\w+\((?P<parameters>[^;{]*)\)[^;{]*[;{]", re.M)


def faults(path: pathlib.Path):
    text = path.read_text()
    for number, line in enumerate(text.splitlines(), 1):
        code = line.split("//")[0].strip()
        if "co_await" in code and not STANDING_ALONE.match(code):
            yield number, "a wait must stand alone: auto value = co_await name;"
    for match in CAPTURING.finditer(text):
        if re.search(r"\bco_(await|return|yield)\b", match["body"]):
            yield text.count("\n", 0, match.start()) + 1, "a coroutine may not be a lambda that captures"
    for match in DECLARATION.finditer(text):
        number = text.count("\n", 0, match.start()) + 1 + match.group(0).startswith("\n")
        if path.suffix == ".h" and "private:" not in text[: match.start()].rsplit("public:", 1)[-1] and not match["marked"]:
            yield number, "a function that returns a Task is [[nodiscard]]"
        if re.search(r"(?<!Transport )&(?! transport)", re.sub(r"Transport &transport", "", match["parameters"])):
            yield number, "a coroutine takes its parameters by value"


def main() -> int:
    count = 0
    for folder in FOLDERS:
        for path in sorted((ROOT / folder).rglob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            for number, message in faults(path):
                print(f"{path.relative_to(ROOT)}:{number}: {message}")
                count += 1
    return 1 if count else 0


if __name__ == "__main__":
    sys.exit(main())
