"""Where the installed files lie, and what they say."""
import fnmatch
import json
import re
import unittest

from outside import BUILD, ENVIRONMENT, KIT, LIBDIR, PREFIX, SOURCE, SUFFIX, VERSION, installed_plugin, run

INCLUDES = f"include/hxmidikit{SUFFIX}/"
LIBRARIES = ["HxMidiData", "HxDeviceInterface", "HxHost", "HxSimulator", "HxPorts"]

# Every installed file fits one of these, and each of these has a file.
PLACES = [
    "bin/hxhost",
    "bin/hxmidi",
    INCLUDES + "mididata/HxMidiData.h",
    INCLUDES + "deviceinterface/Bus.h",
    INCLUDES + "deviceinterface/DeviceInterface.h",
    INCLUDES + "deviceinterface/FwUpdateProtocol.h",
    INCLUDES + "host/*.h",
    INCLUDES + "simulator/*.h",
    INCLUDES + "ports/*.h",
    f"LIB/libHxMidiData{SUFFIX}.a",
    f"LIB/libHxHost{SUFFIX}.a",
    f"LIB/libHxSimulator{SUFFIX}.a",
    f"LIB/libHxPorts{SUFFIX}.a",
    f"LIB/hxmidikit{SUFFIX}/plugins/libtarv_valdrinboot_3041.*",
    f"LIB/cmake/{KIT}/{KIT}Config.cmake",
    f"LIB/cmake/{KIT}/{KIT}ConfigVersion.cmake",
    f"LIB/cmake/{KIT}/HxMidiKit*Targets.cmake",
    f"LIB/cmake/{KIT}/HxMidiKit*Targets-*.cmake",
    f"LIB/cmake/{KIT}/FindRtMidi.cmake",
    f"LIB/cmake/{KIT}/FindSodium.cmake",
    *(f"LIB/pkgconfig/{library}{SUFFIX}.pc" for library in LIBRARIES),
    "share/doc/HxMidiKit/examples/minimal-host/*",
    "bin/hxupdate",
    "share/hxmidikit/sbom/*.spdx.json",
    "share/applications/com.tarv.hxupdate.desktop",
    "share/icons/hicolor/scalable/apps/com.tarv.hxupdate.svg",
    "share/metainfo/com.tarv.hxupdate.metainfo.xml",
    "share/doc/HxMidiKit/examples/plugin-template/*",
    "share/doc/HxMidiKit/examples/simulated-host/*",
]

# Documents of the source tree, and where they go.
DOCUMENTS = {
    "docs/**/*.md": "share/doc/HxMidiKit/{below}",
    "docs/**/*.png": "share/doc/HxMidiKit/{below}",
    "docs/**/*.svg": "share/doc/HxMidiKit/{below}",
    "docs/**/*.trace": "share/doc/HxMidiKit/{below}",
    "docs/**/*.json": "share/doc/HxMidiKit/{below}",
    "docs/man/*.1": "share/man/man1/{name}",
    "completions/*.bash": "share/bash-completion/completions/{stem}",
    "completions/_*": "share/zsh/site-functions/{name}",
    "completions/*.fish": "share/fish/vendor_completions.d/{name}",
}


def installed_files():
    return sorted(str(path.relative_to(PREFIX)) for path in PREFIX.rglob("*") if path.is_file())


def installed_documents():
    """Where each document of the source tree goes."""
    return {place.format(name=path.name, stem=path.stem,
                         below=path.relative_to(SOURCE / path.relative_to(SOURCE).parts[0])): path
            for pattern, place in DOCUMENTS.items() for path in SOURCE.glob(pattern)}


class Installed(unittest.TestCase):
    def test_every_file_lies_in_its_conventional_place(self):
        places = [place.replace("LIB", LIBDIR, 1) if place.startswith("LIB/") else place
                  for place in PLACES]
        files = [name for name in installed_files() if name not in installed_documents()]
        self.assertEqual([], [name for name in files
                              if not any(fnmatch.fnmatch(name, place) for place in places)])
        self.assertEqual([], [place for place in places if not fnmatch.filter(files, place)])

    def test_every_document_is_installed_as_it_is(self):
        self.assertIn("share/man/man1/hxhost.1", installed_documents())
        for name, source in installed_documents().items():
            self.assertEqual(source.read_bytes(), (PREFIX / name).read_bytes(), name)

    def test_files_name_no_folder_of_the_build(self):
        texts = [PREFIX / name for name in installed_files()
                 if not re.search(r"\.(a|so|dylib)$|^bin/", name)]
        self.assertGreater(len(texts), 30)
        for path in texts:
            content = path.read_bytes() # some are pictures
            for folder in (str(SOURCE), str(BUILD), "first-prefix"):
                self.assertNotIn(folder.encode(), content, path)

    def test_headers_include_only_installed_headers(self):
        headers = [name for name in installed_files() if name.startswith(INCLUDES)]
        self.assertGreater(len(headers), 30)
        for name in headers:
            text = (PREFIX / name).read_text(encoding="utf-8")
            for included in re.findall(r'^#include "(.*)"', text, re.MULTILINE):
                self.assertIn(INCLUDES + included, headers, name)

    def test_all_headers_compile_together(self):
        flags = run("pkg-config", "--cflags", "HxPorts" + SUFFIX).split()
        program = PREFIX.parent / "all-headers.cpp"
        program.write_text("".join(
            f'#include "{name[len(INCLUDES):]}"\n'
            for name in installed_files() if name.startswith(INCLUDES)), encoding="utf-8")
        run(ENVIRONMENT["CXX"], "-std=c++17", "-fPIC", "-Wall", "-Wextra", "-Werror",
            "-fsyntax-only", *flags, program)

    def test_pkg_config_knows_every_library(self):
        for library in (name + SUFFIX for name in LIBRARIES):
            self.assertEqual(f"{VERSION}\n", run("pkg-config", "--modversion", library))
            run("pkg-config", "--exists", "--print-errors", library)
            folder = run("pkg-config", "--variable=plugindir", library).strip()
            self.assertTrue(installed_plugin().samefile(f"{folder}/{installed_plugin().name}"))

    def test_version_is_the_same_everywhere(self):
        for program in ("hxhost", "hxmidi"):
            self.assertIn(VERSION, run(PREFIX / "bin" / program, "--version"))
        for name, pattern in (("CHANGELOG.md", r"^## ([0-9.]+)"),
                              ("debian/changelog", r"^hxmidikit \(([0-9.]+)\)")):
            text = (SOURCE / name).read_text(encoding="utf-8")
            self.assertEqual(VERSION, re.search(pattern, text, re.MULTILINE).group(1), name)

    def test_hxhost_finds_the_installed_plugin(self):
        result = json.loads(run(PREFIX / "bin/hxhost", "inspect", "--json", folder="/"))["result"]
        self.assertEqual(str(installed_plugin()), result["plugin"]["file"])
        self.assertEqual("Valdrin", result["device"]["productName"])
