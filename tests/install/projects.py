"""Projects outside the tree, built against the installed files alone."""
import json
import re
import shlex
import unittest

from outside import (ENVIRONMENT, EXAMPLES, HERE, KIT, QT, STAGE, SUFFIX, VERSION, build, fresh_copy,
                     installed_plugin, run)

BUFFER_OUTPUT = "F0 7E 46 45 F7 fits\n"

# What the plugin of the product "Orbit" must make of the answers in bus-conversation/main.cpp.
CONVERSATION = """\
without a bus
version: 0
serial number: 
code valid: 0
no answers
version: 0
serial number: 
code valid: 0
answers
version: 1023
serial number: 0102030405060708
code valid: 1
damaged code
code valid: 0
refusals: 101
update: 1 310005 F000217F3105430C00F7 2200
update of another product: 0 7f007f
no image: Bad input arguments
short message: Update data mismatch
"""


def commands_of(document):
    """The shell blocks of a document, as printed."""
    blocks = re.findall(r"^( *)```sh\n(.*?)^ *```$", document.read_text(encoding="utf-8"),
                        re.MULTILINE | re.DOTALL)
    return [re.sub(f"^{indent}", "", block, flags=re.MULTILINE) for indent, block in blocks]


def give_new_identity(folder):
    """The second step of the template's README, for family 31 and model 05."""
    header = folder / "Product.h"
    text = header.read_text(encoding="utf-8")
    for old, new in (("0x120005", "0x310005"), ("7F 12 05", "7F 31 05"),
                     ("7F 12 00 05 00", "7F 31 00 05 00")):
        assert old in text, old
        text = text.replace(old, new)
    header.write_text(text, encoding="utf-8")


class Installed(unittest.TestCase):
    maxDiff = None

    def test_a_host_builds_and_loads_the_plugin(self):
        folder = build(EXAMPLES / "minimal-host", "minimal-host")
        self.assertEqual(
            'Valdrin on port "Valdrin Update", identifier 0x300041\n'
            "identity request: F07E7F0601F7\n", run(folder / "minimal-host", installed_plugin()))

    def test_a_host_talks_to_the_simulated_product(self):
        folder = build(EXAMPLES / "simulated-host", "simulated-host")
        self.assertEqual("version: 1023\nserial number: 3330343130303031\n",
                         run(folder / "simulated-host", installed_plugin()))

    def test_a_second_plugin_is_made_from_the_template(self):
        folder = fresh_copy(EXAMPLES / "plugin-template", "orbit-plugin")
        rename, build_and_inspect = commands_of(folder / "README.md")
        run("bash", "-e", "-c", rename, folder=folder)
        give_new_identity(folder)
        if SUFFIX:
            build_and_inspect = build_and_inspect.replace("-B build", f"-B build -DKIT={KIT}")
        self.assertIn("Orbit", run("bash", "-e", "-c", build_and_inspect, folder=folder))

        plugin = next((folder / "build").glob("liborbitboot.*"))
        self.check_inspection(json.loads(run("hxhost", "inspect", "--json", "--plugin", plugin)))
        conversation = build(HERE / "bus-conversation", "bus-conversation")
        self.assertEqual(CONVERSATION, run(conversation / "bus-conversation", plugin))
        self.update_with(plugin, folder)
        self.refuse_images_of_the_other(plugin, folder)

    def update_with(self, plugin, folder):
        """The installed host does for this product, simulated, all that it does for its own."""
        with_plugin = ("--port", f"simulator:{folder}/product.state", "--plugin", plugin)
        identified = json.loads(run("hxhost", "identify", "--json", *with_plugin))["result"]
        self.assertEqual("Orbit", identified["product"])
        self.assertEqual("00 21 7F", identified["identity"]["manufacturer"])
        self.assertEqual("0x310005", identified["identity"]["identifier"])

        (folder / "code.bin").write_bytes(bytes(range(256)))
        image, trace = folder / "image.syx", folder / "update.trace"
        run("hxhost", "image", "build", folder / "code.bin", "-o", image, "--kind", "fwu",
            "--plugin", plugin)
        update = ("hxhost", "update", image, "--no-listen")
        run(*update, *with_plugin, "--fault", "power-cut:2-", status=7)
        run("hxhost", "recover", *with_plugin, status=8)
        run(*update, *with_plugin, "--trace", trace)
        run("hxhost", "verify", image, *with_plugin)
        run("hxhost", "recover", *with_plugin)
        run(*update, "--port", f"replay:{trace}", "--plugin", plugin)

    def refuse_images_of_the_other(self, plugin, folder):
        foreign = folder / "foreign.syx"
        run("hxhost", "image", "build", folder / "code.bin", "-o", foreign, "--kind", "fwu")
        update = ("hxhost", "update", "--no-listen", "--port", "simulator")
        run(*update, foreign)
        run(*update, foreign, "--plugin", plugin, status=9)
        run(*update, folder / "image.syx", status=9)

    def check_inspection(self, document):
        plugin, device = (document["result"][part] for part in ("plugin", "device"))
        self.assertEqual("com.tarv.qtio.DeviceInterface.OrbitBootInterface", plugin["interfaceId"])
        self.assertEqual("OrbitBootInterface", plugin["className"])
        self.assertEqual(["bootOrbitPlugin"], plugin["keys"])
        self.assertEqual("Orbit", device["productName"])
        self.assertEqual("Orbit Update", device["inPortName"])
        self.assertEqual("0x310005", device["rawIdentifier"])
        self.assertEqual([{"identifier": "0x310005", "name": "OrbitBoot"}], device["serves"])
        dictionary = {row["key"]: row["value"] for row in document["result"]["dictionary"]}
        self.assertEqual("F000217F310521F7", dictionary["esn.read"])

    def test_a_program_uses_only_the_byte_buffer(self):
        folder = build(HERE / "mididata-program", "mididata-program")
        self.assertEqual(BUFFER_OUTPUT, run(folder / "mididata-program"))

    def test_a_program_builds_with_pkg_config(self):
        program = STAGE / "built-with-pkg-config"
        flags = run("pkg-config", "--cflags", "--libs", "HxMidiData" + SUFFIX).split()
        run(ENVIRONMENT["CXX"], "-std=c++17", "-fPIC", *shlex.split(ENVIRONMENT["CXXFLAGS"]),
            HERE / "mididata-program/main.cpp", *flags, "-o", program)
        self.assertEqual(BUFFER_OUTPUT, run(program))

    def test_only_the_ports_need_the_midi_library(self):
        without = ("cmake", "-S", ".", "-B", "build", f"-DKIT={KIT}", "-DCMAKE_DISABLE_FIND_PACKAGE_RtMidi=ON")
        run(*without, folder=fresh_copy(HERE / "mididata-program", "without-rtmidi"))
        run(*without, folder=fresh_copy(EXAMPLES / "simulated-host", "ports-without-rtmidi"),
            status=1)

    def test_another_minor_version_is_refused(self):
        major, minor, _ = VERSION.split(".")
        self.configure_for_version(f"{major}.{minor}", status=0)
        self.configure_for_version(f"{major}.{int(minor) + 1}", status=1)

    def configure_for_version(self, version, status):
        folder = fresh_copy(HERE / "mididata-program", "some-version")
        project = folder / "CMakeLists.txt"
        text = project.read_text(encoding="utf-8")
        self.assertIn("${KIT} REQUIRED", text)
        project.write_text(text.replace("${KIT} REQUIRED", f"${{KIT}} {version} REQUIRED"), encoding="utf-8")
        run("cmake", "-S", ".", "-B", "build", f"-DKIT={KIT}", folder=folder, status=status)

    def test_a_project_of_the_other_qt_is_refused(self):
        self.configure_with_qt(QT, status=0)
        said = self.configure_with_qt(11 - QT, status=1)
        other = "HxMidiKit" if QT == 6 else "HxMidiKit-qt6"
        self.assertIn(f"{KIT} is made for Qt {QT}, and this project uses Qt {11 - QT}: "
                      f"find_package({other}) instead.", " ".join(said.split()))

    def configure_with_qt(self, major, status):
        """A project that has found this Qt, then finds the kit; a target stands for a Qt that is not here."""
        folder = fresh_copy(HERE / "mididata-program", f"with-qt{major}")
        project = folder / "CMakeLists.txt"
        text = project.read_text(encoding="utf-8")
        found = f"find_package(Qt{major} REQUIRED COMPONENTS Core)\n"
        if major != QT:
            found = f"add_library(Qt{major}::Core INTERFACE IMPORTED)\n"
        project.write_text(text.replace("find_package(", found + "find_package(", 1), encoding="utf-8")
        return run("cmake", "-S", ".", "-B", "build", f"-DKIT={KIT}", folder=folder, status=status, said=True)
