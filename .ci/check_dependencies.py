#!/usr/bin/env python3
"""Checks that includes point one way only, and that the core stays free of toolkits.

platforms/* see probe/ and themselves, companion/ of it what both ends of the link share; probe/ sees itself, the standard library and
one JSON library; tests, examples and benchmarks see everything.
"""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)

# Folder of the including file -> project folders whose headers it may include.
VISIBLE = {
    "probe": ["probe/"],
    "platforms/linux": ["probe/", "platforms/linux/"],
    "platforms/qt6": ["probe/", "platforms/qt6/"],
    "companion": ["probe/link/", "probe/model/", "companion/"],
}
PROJECT_FOLDERS = ("probe/", "platforms/", "companion/", "tests/", "bench/", "examples/")
STANDARD_HEADER = re.compile(r"^[a-z_]+$")
JSON_LIBRARY = "rapidjson/"
# Instructions of the processor are the compiler's, not a library's.
PROCESSOR_FILES = {"probe/link/wide_base64.cpp": "immintrin.h"}
JSON_FILES = {"probe/link/json_value.cpp", "probe/link/json_writer.cpp"}


def violations(path: str, text: str):
    owner = next((folder for folder in VISIBLE if path.startswith(folder + "/")), None)
    if owner is None:
        return
    for match in INCLUDE.finditer(text):
        bracket, header = match.groups()
        if bracket == '"' and not header.startswith(PROJECT_FOLDERS):
            yield f'{path}: "{header}" is not named from the root of the project'
        elif header.startswith(PROJECT_FOLDERS):
            if not header.startswith(tuple(VISIBLE[owner])):
                yield f"{path}: {owner} must not see {header}"
        elif owner == "probe" and not STANDARD_HEADER.match(header):
            if PROCESSOR_FILES.get(path) != header and not (
                    header.startswith(JSON_LIBRARY) and path in JSON_FILES):
                yield f"{path}: the core must not include <{header}>"


def main() -> int:
    listed = subprocess.run(
        ["git", "ls-files", "--cached", "--others", "--exclude-standard", "*.h", "*.cpp"],
        cwd=ROOT, check=True, capture_output=True, text=True).stdout.split()
    files = [name for name in listed if (ROOT / name).exists()]
    found = [line for name in files
             for line in violations(name, (ROOT / name).read_text(encoding="utf-8"))]
    print("\n".join(found) if found else f"{len(files)} files, every include points the right way")
    if not any(name.startswith("probe/") for name in files):
        print("no file of the core was read: the check ran in the wrong place")
        return 1
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
