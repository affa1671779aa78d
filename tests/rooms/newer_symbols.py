"""No built file needs a function of Qt's libraries that the oldest Qt we build with does not have.

usage: newer_symbols.py OLDEST FILE...     OLDEST as "5.12"; FILE a program or library that is linked with Qt

Debian writes down for each function of a library which version of the library first had it
(/var/lib/dpkg/info/libqt5*.symbols, libqt6*.symbols). Exits 77 where there is nothing written down.

What this cannot see: functions that are in Qt's headers alone, and enumerators; newer_names.py looks for these.
"""
import glob
import re
import subprocess
import sys

WRITTEN_DOWN = "/var/lib/dpkg/info/libqt{major}*.symbols"
SKIPPED = 77

# Newer in the libraries, not in the language: with the older headers the same line means an older function.
SAME_LINE = {
    "qt_version_tag": "says which headers a file was built with",
    "qt_resourceFeatureZlib": "says how Qt's own tool has packed the resources",
    "_ZN10QJsonArrayC1EOS_": "QJsonArray's move constructor, in the header before 5.15",
    "_ZN10QJsonValueC1EOS_": "QJsonValue's move constructor, in the header before 5.15",
    "_ZN10QJsonValue4swapERS_": "QJsonValue::swap, in the header before 5.15",
    "_ZN11QJsonObjectC1EOS_": "QJsonObject's move constructor, in the header before 5.15",
    "_ZN11QJsonObjectC1ESt16initializer_listI5QPairI7QString10QJsonValueEE":
        "QJsonObject's constructor from a list, in the header before 5.15",
    "_ZN9QtPrivate12argToQStringE11QStringViewmPPKNS_7ArgBaseE":
        "QString::arg of several texts, before as a function each",
    "_ZN9QtPrivate26DeprecatedRefClassBehavior4warnENS0_11WarningTypeENS0_13EmittingClassE":
        "called by QJsonValueRef in the header, where nothing optimises it away",
    "_ZNK7QString5splitE5QChar6QFlagsIN2Qt18SplitBehaviorFlagsEENS2_15CaseSensitivityE":
        "QString::split without a behaviour, before with that of QString",
    "_ZN7QThread4waitE14QDeadlineTimer": "QThread::wait without a time, before with the longest number",
}


def version_of(text):
    numbers = re.match(r"(\d+)\.(\d+)", text)
    return tuple(map(int, numbers.groups())) if numbers else (0, 0)


def first_versions(text):
    """Map of functions to versions, of the text of a .symbols file."""
    lines = (line.split() for line in text.splitlines() if line.startswith(" "))
    return {words[0].partition("@")[0]: version_of(words[1]) for words in lines}


def needed(listing):
    """The functions of Qt in what nm prints."""
    names = (line.split()[-1] for line in listing.splitlines() if line.strip())
    return sorted(name.partition("@")[0] for name in names if "@Qt_" in name)


def complaints(functions, first, oldest):
    for name in functions:
        version = first.get(name)
        if version is None:
            yield f"{name}: not among the functions that Debian has written down"
        elif version > oldest and name not in SAME_LINE:
            yield f"{name}: came with Qt {version[0]}.{version[1]}; expected what Qt {oldest[0]}.{oldest[1]} has"


def main():
    oldest = version_of(sys.argv[1])
    first = {}
    for place in sorted(glob.glob(WRITTEN_DOWN.format(major=oldest[0]))):
        with open(place, encoding="utf-8") as file:
            first.update(first_versions(file.read()))
    if not first:
        print(f"skipped: there is no {WRITTEN_DOWN.format(major=oldest[0])}")
        return SKIPPED
    failed = False
    for place in sys.argv[2:]:
        words = ["nm", "-D", "--undefined-only", place]
        functions = needed(subprocess.run(words, capture_output=True, check=True, text=True).stdout)
        found = list(complaints(functions, first, oldest)) if functions else ["needs no function of Qt; expected some"]
        print("\n".join(f"{place}: {complaint}" for complaint in found)
              or f"{place}: {len(functions)} functions of Qt, none newer")
        failed = failed or bool(found)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
