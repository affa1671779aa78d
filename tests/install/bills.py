"""The bills of materials of what is installed: whole by the rules of SPDX 2.3, and true of the binaries."""
import json
import re
import shutil
import subprocess
import unittest

from outside import LIBDIR, PREFIX, SUFFIX, VERSION, installed_plugin

FOLDER = PREFIX / "share/hxmidikit/sbom"
PROGRAMS = ("hxhost", "hxmidi", "hxupdate")
OF_DOCUMENT = ("spdxVersion", "dataLicense", "SPDXID", "name", "documentNamespace", "creationInfo", "packages",
               "relationships")
OF_PACKAGE = ("SPDXID", "name", "versionInfo", "downloadLocation", "filesAnalyzed", "licenseConcluded",
              "licenseDeclared", "copyrightText")
IDENTIFIER = re.compile(r"SPDXRef-[A-Za-z0-9.-]+")
# Parts of the C library and of the compiler's own, whatever they are called.
RUNTIME = re.compile(r"lib(c|m|pthread|resolv|stdc\+\+|gcc_s)\.so|ld-linux")


def bill(name):
    return json.loads((FOLDER / f"{name}{SUFFIX}.spdx.json").read_text("utf-8"))


def names_in(document):
    return [package["name"] for package in document["packages"]]


def libraries_needed_by(binary):
    shown = subprocess.run(["readelf", "--wide", "--dynamic", binary], capture_output=True, text=True,
                           check=True).stdout
    return re.findall(r"\(NEEDED\) .*\[(.+)\]", shown)


def is_named(library, names):
    """libQt5Gui.so.5 is of the same package as Qt5::Core; librtmidi.so.6 is RtMidi::RtMidi."""
    stem = library.partition(".so")[0].removeprefix("lib").lower()
    return any(stem.startswith(name.partition("::")[0].lower()) for name in names)


class Installed(unittest.TestCase):
    def test_each_bill_has_what_spdx_asks_for(self):
        files = sorted(path.name for path in FOLDER.iterdir())
        self.assertEqual(files, sorted(f"{name}{SUFFIX}.spdx.json"
                                       for name in ("HxPorts", "tarv_valdrinboot_3041", *PROGRAMS)))
        for file in files:
            with self.subTest(file=file):
                self.check_document(json.loads((FOLDER / file).read_text("utf-8")))

    def check_document(self, document):
        self.assertEqual(sorted(document), sorted(OF_DOCUMENT))
        self.assertEqual((document["spdxVersion"], document["dataLicense"], document["SPDXID"]),
                         ("SPDX-2.3", "CC0-1.0", "SPDXRef-DOCUMENT"))
        self.assertRegex(document["documentNamespace"], r"^urn:uuid:[0-9a-f-]{36}$")
        self.assertRegex(document["creationInfo"]["created"], r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ$")
        self.assertTrue(all(re.match("(Tool|Organization|Person): ?.+", creator)
                            for creator in document["creationInfo"]["creators"]))
        identifiers = [package["SPDXID"] for package in document["packages"]]
        self.assertEqual(len(identifiers), len(set(identifiers)))
        for package in document["packages"]:
            self.assertEqual([field for field in OF_PACKAGE if package.get(field, "") == ""], [], package["name"])
            self.assertRegex(package["SPDXID"], IDENTIFIER)
        self.check_relationships(document["relationships"], identifiers)

    def check_relationships(self, relationships, identifiers):
        """The document describes the first package, and that depends on each of the others."""
        self.assertEqual([(one["spdxElementId"], one["relationshipType"], one["relatedSpdxElement"])
                          for one in relationships],
                         [("SPDXRef-DOCUMENT", "DESCRIBES", identifiers[0]),
                          *((identifiers[0], "DEPENDS_ON", other) for other in identifiers[1:])])

    def test_each_bill_names_what_its_binary_is_linked_with(self):
        if shutil.which("readelf") is None:
            self.skipTest("there is no readelf")
        binaries = {name: PREFIX / "bin" / name for name in PROGRAMS}
        binaries["tarv_valdrinboot_3041"] = installed_plugin()
        for name, binary in binaries.items():
            libraries = [library for library in libraries_needed_by(binary) if not RUNTIME.search(library)]
            self.assertGreater(len(libraries), 0)
            for library in libraries:
                self.assertTrue(is_named(library, names_in(bill(name))), f"{name}: {library}")
        self.assertFalse(is_named("librtmidi.so.6", names_in(bill("hxmidi"))))

    def test_the_bill_has_our_version_and_those_of_others(self):
        packages = {package["name"]: package for package in bill("hxhost")["packages"]}
        self.assertEqual(packages[f"hxhost{SUFFIX}"]["versionInfo"], VERSION)
        for name in ("CLI11::CLI11", "RtMidi::RtMidi"):
            self.assertRegex(packages[name]["versionInfo"], r"^\d+(\.\d+)+$")
        self.assertNotIn("RtMidi::RtMidi", names_in(bill("hxmidi")))
