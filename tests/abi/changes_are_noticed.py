"""Changes a copy of the sources (argument 1) in every way at once; scripts/abi must show each.

Argument 2 is the build folder.
"""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

SOURCE, BUILD = (pathlib.Path(name) for name in sys.argv[1:])
NEEDED = ["abi", "scripts", "mididata", "deviceinterface", "plugin"]
SKIPPED = 77
QT = re.search(r"^HX_QT:\w+=(\d)$", (BUILD / "CMakeCache.txt").read_text(encoding="utf-8"), re.MULTILINE).group(1)
RECORD = "abi/public-abi.txt" if QT == "5" else "abi/public-abi-qt6.txt"
ARRAY = 8 if QT == "5" else 24  # bytes of a QByteArray

# What is changed: file, text, new text, and a line of the difference that must be shown.
CHANGES = {
    "an operation is added in between": (
        "deviceinterface/DeviceInterface.h",
        "virtual QString nickName() = 0;", "virtual int addedInFront() { return 0; }\n"
        "    virtual QString nickName() = 0;",
        "+     8  int DeviceInterface::addedInFront()"),
    "a member is added at the end": (
        "mididata/HxMidiData.h",
        "quint64 auxC = 0;", "quint64 auxC = 0;\n    int added = 0;",
        f"+HxMidiData: {ARRAY + 40} bytes, aligned to 8"),
    "a member is added in between": (
        "deviceinterface/FwUpdateProtocol.h",
        "ResponceData fileCheck;", "int timeoutMsNow = 0;\n    ResponceData fileCheck;",
        "+    40  int timeoutMsNow"),
    "a value of an enumeration moves": (
        "deviceinterface/FwUpdateProtocol.h",
        "Fwd = 2,", "Fwd = 3,",
        "+     3  Fwd"),
    "a function is no longer there": (
        RECORD,
        "HxMidiData::chomp(int)\n", "HxMidiData::chomp(int)\nHxMidiData::chop(int)\n",
        "-HxMidiData::chop(int)"),
    "a symbol is exported that was not": (
        RECORD,
        "qt_plugin_instance\n", "",
        "+qt_plugin_instance"),
}


def make_change(root, name, old, new):
    path = root / name
    text = path.read_text(encoding="utf-8")
    assert old in text, f"{name} has no {old}"
    path.write_text(text.replace(old, new, 1), encoding="utf-8")


def check(root):
    return subprocess.run([sys.executable, str(root / "scripts/abi"), "--check", str(BUILD)],
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)


with tempfile.TemporaryDirectory() as folder:
    copy = pathlib.Path(folder)
    for needed in NEEDED:
        shutil.copytree(SOURCE / needed, copy / needed)
    for name, old, new, _ in CHANGES.values():
        make_change(copy, name, old, new)
    done = check(copy)

if done.returncode == SKIPPED:
    sys.exit(SKIPPED)
shown = done.stdout.splitlines()
missed = [what for what, change in CHANGES.items() if change[-1] not in shown]
if missed or done.returncode != 1:
    sys.exit(f"not noticed: {missed}, exit code {done.returncode}\n{done.stdout}")
print(f"{len(CHANGES)} changes noticed")
